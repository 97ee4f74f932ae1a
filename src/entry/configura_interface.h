// The public class of the module as a host sees it: created by program id
// through the component registry, given the host and a report code, started.
#pragma once

#include <QString>

#include "entry/host_contract.h"
#include "platform/component.h"

namespace lorvane::entry {

class ConfiguraInterface : public platform::ComponentObject {
  public:
    static constexpr char ProgId[] = "LorvaneStampe.Configura";

    virtual QString CodiceStampa() const = 0;
    virtual void SetCodiceStampa(const QString& value) = 0;
    virtual QString CodiceEsportazione() const = 0;
    virtual void SetCodiceEsportazione(const QString& value) = 0;
    virtual QString Codice() const = 0;
    virtual void SetCodice(const QString& value) = 0;
    virtual QString Parametri() const = 0;
    virtual void SetParametri(const QString& value) = 0;
    // Opens the screen of CodiceStampa: modal when Modale is "1", else modeless.
    virtual void Start() = 0;
    virtual void SetApplicazione(HostPtr host) = 0;
    virtual QString Ver() const = 0;
    virtual QString CampoRicerca() const = 0;
    virtual void SetCampoRicerca(const QString& value) = 0;
    virtual QString Risposta() const = 0;
    virtual void SetRisposta(const QString& value) = 0;
    virtual QString Modale() const = 0;
    virtual void SetModale(const QString& value) = 0;
};

}  // namespace lorvane::entry
