// The four entry points of the component library liblorvanestampe.so.
#include <dlfcn.h>

#include <QString>

#include "entry/configura.h"
#include "platform/component_registry.h"

namespace {

using namespace lorvane;

class ConfiguraFactory final : public platform::ClassFactory {
public:
    platform::ComponentPtr CreateInstance() override { return std::make_shared<entry::Configura>(); }
};

QString thisLibrary() {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&thisLibrary), &info) || !info.dli_fname) return {};
    return QString::fromLocal8Bit(info.dli_fname);
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int DllGetClassObject(const char* progId,
                                                              platform::ClassFactory** factory) {
    static ConfiguraFactory configuraFactory;
    if (!factory) return platform::ClassNotAvailable;
    *factory = nullptr;
    if (QString::fromUtf8(progId).compare(QLatin1String(entry::ConfiguraInterface::ProgId),
                                          Qt::CaseInsensitive) != 0) {
        return platform::ClassNotAvailable;
    }
    *factory = &configuraFactory;
    return platform::ResultOk;
}

__attribute__((visibility("default"))) int DllCanUnloadNow() {
    return entry::liveObjects() == 0 ? platform::ResultOk : platform::ResultFalse;
}

__attribute__((visibility("default"))) int DllRegisterServer() {
    const QString path = thisLibrary();
    if (path.isEmpty()) return platform::RegistrationFailed;
    try {
        platform::ComponentRegistry::add(QLatin1String(entry::ConfiguraInterface::ProgId), path);
    } catch (const RuntimeError&) {
        return platform::RegistrationFailed;
    }
    return platform::ResultOk;
}

__attribute__((visibility("default"))) int DllUnregisterServer() {
    platform::ComponentRegistry::remove(QLatin1String(entry::ConfiguraInterface::ProgId));
    return platform::ResultOk;
}

}  // extern "C"
