#include "platform/component_registry.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QLibrary>
#include <QSettings>
#include <map>
#include <memory>

namespace lorvane::platform {

using namespace Qt::StringLiterals;

namespace {

const QString group = u"Componenti"_s;

QHash<QString, std::function<ComponentPtr()>>& providedClasses() {
    static QHash<QString, std::function<ComponentPtr()>> classes;
    return classes;
}

RuntimeError cannotCreate(const QString& progId, const QString& why) {
    return RuntimeError(u"Impossibile creare il componente ActiveX '%1': %2"_s.arg(progId, why));
}

// The registered key that names `progId`: program ids compare without regard to case.
QString keyOf(QSettings& settings, const QString& progId) {
    settings.beginGroup(group);
    const QStringList keys = settings.childKeys();
    settings.endGroup();
    for (const QString& key : keys) {
        if (key.compare(progId, Qt::CaseInsensitive) == 0) return key;
    }
    return {};
}

// Loads a library once for the life of the process: objects made from it may
// outlive every caller's interest in the library itself. The handles are
// released at exit; the code stays mapped (a QLibrary going away does not
// unload), since objects in other static storage may still run it.
QLibrary* load(const QString& path, QString* error) {
    static std::map<QString, std::unique_ptr<QLibrary>> loaded;
    const QString canonical = QFileInfo(path).absoluteFilePath();
    if (const auto found = loaded.find(canonical); found != loaded.end())
        return found->second.get();
    auto library = std::make_unique<QLibrary>(canonical);
    if (!library->load()) {
        *error = library->errorString();
        return nullptr;
    }
    return loaded.emplace(canonical, std::move(library)).first->second.get();
}

void callEntry(const QString& libraryPath, const char* entry) {
    QString error;
    QLibrary* library = load(libraryPath, &error);
    if (!library) {
        throw RuntimeError(u"Impossibile caricare la libreria '%1': %2"_s.arg(libraryPath, error));
    }
    auto function = reinterpret_cast<DllEntryFunction>(library->resolve(entry));
    if (!function) {
        throw RuntimeError(u"La libreria '%1' non ha il punto di ingresso %2."_s.arg(
            libraryPath, QString::fromLatin1(entry)));
    }
    if (const int result = function(); result != ResultOk) {
        throw RuntimeError(u"%1 della libreria '%2' non è riuscito (codice %3)."_s.arg(
            QString::fromLatin1(entry), libraryPath, QString::number(result)));
    }
}

}  // namespace

QString ComponentRegistry::registryFile() {
    const QString configured = qEnvironmentVariable("LORVANE_REGISTRY");
    if (!configured.isEmpty()) return configured;
    QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (config.isEmpty()) config = QDir::homePath() + u"/.config"_s;
    return config + u"/lorvane/components.ini"_s;
}

void ComponentRegistry::add(const QString& progId, const QString& libraryPath) {
    QSettings settings(registryFile(), QSettings::IniFormat);
    if (const QString old = keyOf(settings, progId); !old.isEmpty()) {
        settings.remove(group + u'/' + old);
    }
    settings.setValue(group + u'/' + progId, QFileInfo(libraryPath).absoluteFilePath());
    settings.sync();
    if (settings.status() != QSettings::NoError) {
        throw RuntimeError(
            u"Impossibile scrivere il registro dei componenti '%1'."_s.arg(registryFile()));
    }
}

void ComponentRegistry::remove(const QString& progId) {
    QSettings settings(registryFile(), QSettings::IniFormat);
    if (const QString key = keyOf(settings, progId); !key.isEmpty()) {
        settings.remove(group + u'/' + key);
        settings.sync();
    }
}

std::optional<QString> ComponentRegistry::libraryOf(const QString& progId) {
    QSettings settings(registryFile(), QSettings::IniFormat);
    const QString key = keyOf(settings, progId);
    if (key.isEmpty()) return std::nullopt;
    return settings.value(group + u'/' + key).toString();
}

void ComponentRegistry::registerServer(const QString& libraryPath) {
    callEntry(libraryPath, "DllRegisterServer");
}

void ComponentRegistry::unregisterServer(const QString& libraryPath) {
    callEntry(libraryPath, "DllUnregisterServer");
}

void ComponentRegistry::provide(const QString& progId, std::function<ComponentPtr()> factory) {
    if (factory) {
        providedClasses().insert(progId.toCaseFolded(), std::move(factory));
    } else {
        providedClasses().remove(progId.toCaseFolded());
    }
}

ComponentPtr ComponentRegistry::create(const QString& progId) {
    if (const auto provided = providedClasses().constFind(progId.toCaseFolded());
        provided != providedClasses().constEnd()) {
        ComponentPtr object = (*provided)();
        if (!object) throw cannotCreate(progId, u"la classe non ha dato l'oggetto."_s);
        return object;
    }
    const std::optional<QString> path = libraryOf(progId);
    if (!path) throw cannotCreate(progId, u"il componente non è registrato."_s);
    QString error;
    QLibrary* library = load(*path, &error);
    if (!library) throw cannotCreate(progId, u"impossibile caricare '%1': %2"_s.arg(*path, error));
    auto getClassObject =
        reinterpret_cast<DllGetClassObjectFunction>(library->resolve("DllGetClassObject"));
    if (!getClassObject)
        throw cannotCreate(progId, u"'%1' non è una libreria di componenti."_s.arg(*path));
    ClassFactory* factory = nullptr;
    if (getClassObject(progId.toUtf8().constData(), &factory) != ResultOk || !factory) {
        throw cannotCreate(progId, u"la libreria '%1' non fornisce la classe."_s.arg(*path));
    }
    ComponentPtr object = factory->CreateInstance();
    if (!object) throw cannotCreate(progId, u"la classe non ha dato l'oggetto."_s);
    return object;
}

bool ComponentRegistry::canUnloadNow(const QString& progId) {
    const std::optional<QString> path = libraryOf(progId);
    if (!path) return true;
    QString error;
    QLibrary* library = load(*path, &error);
    if (!library) return true;
    auto canUnload = reinterpret_cast<DllEntryFunction>(library->resolve("DllCanUnloadNow"));
    return !canUnload || canUnload() == ResultOk;
}

}  // namespace lorvane::platform
