// The four entry points of the component library that serves LorvaneRicerca.Ricerca.
#include "host/search/search_component.h"
#include "platform/component_library.h"

#define LORVANE_EXPORT extern "C" __attribute__((visibility("default")))

using lorvane::entry::SearchComponent;
using lorvane::host::RicercaComponent;
namespace platform = lorvane::platform;

LORVANE_EXPORT int DllGetClassObject(const char* progId, platform::ClassFactory** factory) {
    return platform::serveClassObject<RicercaComponent>(progId, SearchComponent::ProgId, factory);
}

LORVANE_EXPORT int DllCanUnloadNow() {
    return RicercaComponent::liveCount() == 0 ? platform::ResultOk : platform::ResultFalse;
}

LORVANE_EXPORT int DllRegisterServer() {
    return platform::registerLibraryOf(SearchComponent::ProgId,
                                       reinterpret_cast<const void*>(&DllRegisterServer));
}

LORVANE_EXPORT int DllUnregisterServer() {
    return platform::unregisterLibrary(SearchComponent::ProgId);
}
