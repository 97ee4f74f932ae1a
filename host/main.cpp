// The lorvane program: the reference host of the printing module (its main
// window, the launcher) and its command-line tools.
#include <QApplication>
#include <QGuiApplication>
#include <QLocale>
#include <QTextStream>
#include <memory>

#include "host/cli_render.h"
#include "host/cli_run.h"
#include "host/cli_sql.h"
#include "host/components.h"
#include "host/demo/cli_demo_install.h"
#include "host/launcher_window.h"
#include "platform/message_box.h"
#include "platform/runtime_error.h"
#include "platform/translations.h"

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
    "finestre\n"
    "     lorvane run CODICE [--percorso CARTELLA] [--host-log FILE] [--preview-png CARTELLA]\n"
    "                        [--today gg/mm/aaaa] [--grid-answer TESTO] AZIONE...\n"
    "                                            apre la schermata di una stampa senza finestre\n"
    "                                            e la usa come un utente; le azioni:\n"
    "         set NOME=VALORE    casella di testo, data (gg/mm/aaaa), casella di spunta o\n"
    "                            opzione (0|1), combo per testo della voce (\"\" la svuota)\n"
    "         pick NOME=INDICE   combo o lista per posizione (-1 toglie la scelta), pagina di\n"
    "                            una scheda (Tab1, Pers)\n"
    "         tick NOME=CHIAVE   spunta un nodo di Tree per chiave, una causale di ListCausali\n"
    "         untick NOME=CHIAVE per codice; untick toglie la spunta\n"
    "         click NOME         preme un pulsante (CmdRicerca, CmdStampa, CmdPdf, CmdXls...)\n"
    "         key NOME=CODICE    preme un tasto sul controllo (46 Canc, 13 Invio)\n"
    "         timer              fa scattare Timer1 una volta\n";

int runLauncher(const QStringList& args) {
    QString folder = host::defaultInstallation();
    if (const qsizetype at = args.indexOf(u"--percorso"_s); at >= 0 && at + 1 < args.size())
        folder = args[at + 1];
    try {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        host::prepareInstallation(folder, true);
        QApplication::restoreOverrideCursor();
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
    const bool usesScreensWithoutWindow = command == u"run"_s;
    if ((drawsWithoutWindow || usesScreensWithoutWindow) &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QCoreApplication> app(tool                 ? new QCoreApplication(argc, argv)
                                          : drawsWithoutWindow ? new QGuiApplication(argc, argv)
                                                               : new QApplication(argc, argv));
    QCoreApplication::setApplicationName(u"lorvane"_s);
    QCoreApplication::setOrganizationName(u"lorvane"_s);
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    platform::installItalianTranslations();
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = QCoreApplication::arguments().mid(1);
    if (command == u"sql"_s) return host::runSqlCommand(args.mid(1), out, err);
    if (command == u"demo-install"_s) return demo::runDemoInstallCommand(args.mid(1), out, err);
    if (command == u"render"_s) return host::runRenderCommand(args.mid(1), out, err);
    if (command == u"run"_s) return host::runScreenCommand(args.mid(1), out, err);
    if (command == u"--help"_s || command == u"-h"_s) {
        out << usage;
        return 0;
    }
    if (args.isEmpty() || command == u"--percorso"_s) return runLauncher(args);
    err << usage;
    return 2;
}
