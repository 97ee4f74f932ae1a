// The module-wide values: every instance of Configura and every screen share
// them, and a value stays until the next assignment.
#pragma once

#include <QString>
#include <atomic>

#include "entry/host_contract.h"

namespace lorvane::entry {

struct ModuleValues {
    QString codiceStampa;
    QString codiceEsportazione;
    QString codice;
    QString parametri;
    QString campoRicerca;
    QString risposta;
    QString modale;
    HostPtr host;  // set by Configura.Applicazione, never cleared
};

ModuleValues& moduleValues();

// Objects of the module that are alive (Configura instances, open screens):
// the library may be unloaded only when none is.
std::atomic<int>& liveObjects();

// Counts one live object for as long as it lives.
class LiveObject {
  public:
    LiveObject() { ++liveObjects(); }
    LiveObject(const LiveObject&) : LiveObject() {}
    LiveObject& operator=(const LiveObject&) = default;
    ~LiveObject() { --liveObjects(); }
};

}  // namespace lorvane::entry
