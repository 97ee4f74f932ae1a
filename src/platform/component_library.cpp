#include "platform/component_library.h"

#include <dlfcn.h>

#include <QFileInfo>

#include "platform/component_registry.h"

namespace lorvane::platform {

int registerLibraryOf(const char* progId, const void* addressInLibrary) {
    Dl_info info{};
    if (!dladdr(addressInLibrary, &info) || !info.dli_fname) return RegistrationFailed;
    try {
        ComponentRegistry::add(
            QLatin1String(progId),
            QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absoluteFilePath());
    } catch (const RuntimeError&) {
        return RegistrationFailed;
    }
    return ResultOk;
}

int unregisterLibrary(const char* progId) {
    try {
        ComponentRegistry::remove(QLatin1String(progId));
    } catch (const RuntimeError&) {
        return RegistrationFailed;
    }
    return ResultOk;
}

}  // namespace lorvane::platform
