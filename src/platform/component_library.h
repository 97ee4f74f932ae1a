// The standard work of a component library's entry points, shared by every
// library: serving its class factory, registering and unregistering itself.
#pragma once

#include <QString>

#include "platform/component.h"

namespace lorvane::platform {

// DllGetClassObject for a library with one creatable class `Class` under `progId`.
template <typename Class>
int serveClassObject(const char* requested, const char* progId, ClassFactory** factory) {
    class Factory final : public ClassFactory {
      public:
        ComponentPtr CreateInstance() override { return std::make_shared<Class>(); }
    };
    static Factory theFactory;
    if (!factory) return ClassNotAvailable;
    *factory = nullptr;
    if (!requested ||
        QString::fromUtf8(requested).compare(QLatin1String(progId), Qt::CaseInsensitive) != 0) {
        return ClassNotAvailable;
    }
    *factory = &theFactory;
    return ResultOk;
}

// DllRegisterServer: registers the library that holds `addressInLibrary` under `progId`.
int registerLibraryOf(const char* progId, const void* addressInLibrary);

// DllUnregisterServer: removes `progId` from the registry.
int unregisterLibrary(const char* progId);

}  // namespace lorvane::platform
