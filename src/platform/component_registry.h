// The per-user registry of component libraries, and creation of objects by
// program id ("LorvaneStampe.Configura", "LorvaneRicerca.Ricerca").
#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "platform/component.h"

namespace lorvane::platform {

class ComponentRegistry {
  public:
    // The registry file: $LORVANE_REGISTRY when set, otherwise
    // $XDG_CONFIG_HOME/lorvane/components.ini (~/.config when unset).
    static QString registryFile();

    static void add(const QString& progId, const QString& libraryPath);
    static void remove(const QString& progId);
    static std::optional<QString> libraryOf(const QString& progId);

    // Loads `libraryPath` and calls its DllRegisterServer (or
    // DllUnregisterServer). Throws RuntimeError naming the library on failure.
    static void registerServer(const QString& libraryPath);
    static void unregisterServer(const QString& libraryPath);

    // Makes an object of the class registered under `progId`: an in-process
    // factory given to provide() first, else the registered library's class
    // factory. Throws RuntimeError naming the id when it is not registered or
    // the library does not give the object.
    static ComponentPtr create(const QString& progId);

    // Asks the library registered under `progId` whether its objects are all gone.
    static bool canUnloadNow(const QString& progId);

    // A class made in this process instead of from a library (a test's stand-in,
    // or a host that links the component in). An empty function withdraws it.
    static void provide(const QString& progId, std::function<ComponentPtr()> factory);
};

// Creates an object and gives it as the interface `T`; throws RuntimeError
// naming the id when the object is not of that interface.
template <typename T>
std::shared_ptr<T> createComponent(const QString& progId);

}  // namespace lorvane::platform

#include "platform/component_registry_impl.h"
