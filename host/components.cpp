#include "host/components.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

#include <QDir>

#include "host/demo/demo_data.h"
#include "host/progress_window.h"
#include "host/reference_host.h"
#include "platform/clock.h"
#include "platform/component_registry.h"
#include "platform/windows_paths.h"

namespace lorvane::host {

using namespace Qt::StringLiterals;

QString defaultInstallation() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/lorvane/demo"_s;
}

// A library is taken where it was built, else beside the program (an
// installed copy).
void registerComponents() {
    for (const char* library : {LORVANE_MODULE_LIBRARY, LORVANE_SEARCH_LIBRARY}) {
        QString path = QString::fromLocal8Bit(library);
        if (!QFileInfo::exists(path))
            path = QCoreApplication::applicationDirPath() + u'/' + QFileInfo(path).fileName();
        platform::ComponentRegistry::registerServer(path);
    }
}

bool isInstallation(const QString& folder) {
    return QFileInfo::exists(folder + u'/' + QLatin1String(InstallationFiles::MainDatabase));
}

void prepareInstallation(const QString& folder, bool showProgress) {
    if (!isInstallation(folder)) {
        QDir().mkpath(QFileInfo(folder).absolutePath());
        demo::DemoOptions options;
        options.lastDay = platform::Today();
        const auto write = [&] { demo::writeDemoInstallation(folder, options); };
        if (showProgress) {
            runWithProgress(
                u"Lorvane"_s,
                u"Primo avvio: preparazione dell'installazione dimostrativa in "
                u"%1.\nAttendere qualche secondo…"_s.arg(QDir::toNativeSeparators(folder)),
                write);
        } else {
            write();
        }
    }
    QDir().mkpath(platform::workFolder());
    registerComponents();
}

}  // namespace lorvane::host
