// The lorvane program: the reference host of the printing module (its main
// window, the launcher) and its command-line tools.
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QTextStream>
#include <memory>

#include "host/cli_render.h"
#include "host/cli_sql.h"
#include "host/demo/cli_demo_install.h"
#include "host/demo/demo_data.h"
#include "host/launcher_window.h"
#include "platform/component_registry.h"
#include "platform/message_box.h"
#include "platform/windows_paths.h"

namespace {

using namespace Qt::StringLiterals;
using namespace lorvane;

constexpr char usage[] =
    "uso: lorvane [--percorso CARTELLA]          apre il menu delle stampe (la prima volta\n"
    "                                            crea l'installazione dimostrativa)\n"
    "     lorvane sql DATABASE \"ISTRUZIONE\"      esegue un'istruzione SQL (dialetto Access)\n"
    "     lorvane demo-install CARTELLA [--venues N] [--months M] [--seed S] [--today gg/mm/aaaa]\n"
    "                                            scrive un'installazione dimostrativa\n"
    "     lorvane render LAYOUT [--pdf F] [--doc F] [--xls F] [--png CARTELLA]\n"
    "                                            stampa un layout sul suo file di lavoro, senza "
    "finestre\n";

QString defaultInstallation() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/lorvane/demo"_s;
}

// The component libraries built with this program, registered for this user so
// that the suite's objects are created by program id.
void registerComponents() {
    for (const char* library : {LORVANE_MODULE_LIBRARY, LORVANE_SEARCH_LIBRARY}) {
        QString path = QString::fromLocal8Bit(library);
        if (!QFileInfo::exists(path))
            path = QCoreApplication::applicationDirPath() + u'/' + QFileInfo(path).fileName();
        platform::ComponentRegistry::registerServer(path);
    }
}

int runLauncher(const QStringList& args) {
    QString folder = defaultInstallation();
    if (const qsizetype at = args.indexOf(u"--percorso"_s); at >= 0 && at + 1 < args.size())
        folder = args[at + 1];
    try {
        if (!QFileInfo::exists(folder + u'/' +
                               QLatin1String(host::InstallationFiles::MainDatabase))) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
            QDir().mkpath(QFileInfo(folder).absolutePath());
            demo::writeDemoInstallation(folder, demo::DemoOptions{});
            QApplication::restoreOverrideCursor();
        }
        QDir().mkpath(platform::workFolder());
        registerComponents();
        auto referenceHost = std::make_shared<host::ReferenceHost>(folder);
        auto* window = new host::LauncherWindow(referenceHost);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
        return QApplication::exec();
    } catch (const RuntimeError& error) {
        QApplication::restoreOverrideCursor();
        platform::MsgBox(error.message(), platform::MsgBoxStyle::Critical, u"Lorvane"_s);
        return 2;
    }
}

}  // namespace

int main(int argc, char** argv) {
    // The command-line tools run without a display; only the launcher shows windows.
    const QString command = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    const bool tool = command == u"sql"_s || command == u"demo-install"_s;
    const bool drawsWithoutWindow = command == u"render"_s;
    if (drawsWithoutWindow && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QCoreApplication> app(tool                 ? new QCoreApplication(argc, argv)
                                          : drawsWithoutWindow ? new QGuiApplication(argc, argv)
                                                               : new QApplication(argc, argv));
    QCoreApplication::setApplicationName(u"lorvane"_s);
    QCoreApplication::setOrganizationName(u"lorvane"_s);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = QCoreApplication::arguments().mid(1);
    if (command == u"sql"_s) return host::runSqlCommand(args.mid(1), out, err);
    if (command == u"demo-install"_s) return demo::runDemoInstallCommand(args.mid(1), out, err);
    if (command == u"render"_s) return host::runRenderCommand(args.mid(1), out, err);
    if (command == u"--help"_s || command == u"-h"_s) {
        out << usage;
        return 0;
    }
    if (args.isEmpty() || command == u"--percorso"_s) return runLauncher(args);
    err << usage;
    return 2;
}
