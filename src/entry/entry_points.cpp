// The four entry points of the component library liblorvanestampe.so.
#include "entry/configura.h"
#include "platform/component_library.h"

#define LORVANE_EXPORT extern "C" __attribute__((visibility("default")))

using lorvane::entry::Configura;
using lorvane::entry::ConfiguraInterface;
namespace platform = lorvane::platform;

LORVANE_EXPORT int DllGetClassObject(const char* progId, platform::ClassFactory** factory) {
    return platform::serveClassObject<Configura>(progId, ConfiguraInterface::ProgId, factory);
}

LORVANE_EXPORT int DllCanUnloadNow() {
    return lorvane::entry::liveObjects() == 0 ? platform::ResultOk : platform::ResultFalse;
}

LORVANE_EXPORT int DllRegisterServer() {
    return platform::registerLibraryOf(ConfiguraInterface::ProgId,
                                       reinterpret_cast<const void*>(&DllRegisterServer));
}

LORVANE_EXPORT int DllUnregisterServer() {
    return platform::unregisterLibrary(ConfiguraInterface::ProgId);
}
