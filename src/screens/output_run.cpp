// The order of a run from an output button: the checks, the layout opened,
// the preparation, then the preview or the file.
#include <QTabWidget>

#include "engine/report.h"
#include "engine/report_viewer.h"
#include "output/catalogue.h"
#include "output/export.h"
#include "output/frm_anteprima.h"
#include "platform/message_box.h"
#include "platform/runtime_error.h"
#include "platform/shell.h"
#include "platform/windows.h"
#include "platform/windows_paths.h"
#include "screens/filter_screen.h"
#include "workdb/work_database.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

namespace {

void showNoData() {
    platform::MsgBox(u"Nessun dato da stampare"_s, platform::MsgBoxStyle::Information,
                     u"Lorvane"_s);
}

// Without a program for the type, the desktop shows nothing: the user is told
// where the file is.
void showWrittenButNotOpened(const QString& path) {
    platform::MsgBox(
        u"Il file è stato scritto in:\n%1\n\nSu questo computer non c'è un programma "
        u"che lo apra."_s.arg(path),
        platform::MsgBoxStyle::Information, u"Lorvane"_s);
}

using ExportRoutine = void (*)(engine::Report&, const QString&, const QString&);

ExportRoutine exportRoutineOf(const output::ExportKind& kind) {
    if (kind.format == engine::ExportFormat::Word) return output::EsportaWord;
    if (kind.format == engine::ExportFormat::Excel) return output::EsportaExcel;
    return output::EsportaPdf;
}

}  // namespace

bool FilterScreen::reportChosen() { return output::VerificaSelezioneStampa(List1, List2, Pers); }

bool FilterScreen::ControlloProprio(Output) {
    return !profile_.controllaCausali || ControllaCausali();
}

void FilterScreen::ApriTemporaneo(const QString& percorso) {
    workdb::ApriTemporaneo(percorso, profile_.workFolderCopy, profile_.workFolderConnection);
}

// The template of the layout chosen, copied and opened; the work tables the
// profile names emptied; the report's data; the causali of the run kept for
// the next one, whatever the count.
qint16 FilterScreen::PreparaStampa() {
    ApriTemporaneo(output::PercorsoTemporaneo(List1, List2, Pers));
    for (const char* table : profile_.emptiedBeforeRun)
        workdb::ConnessioneTemporanea().Execute(u"DELETE * FROM "_s + QLatin1String(table));
    const qint16 rows = PreparaDati();
    SalvaCausali();
    return rows;
}

// The layout is opened before the data are prepared, so that a missing one
// stops the run before the slow part. After a failure the hourglass stays,
// except where the profile puts it back.
void FilterScreen::CmdStampa_Click() {
    if (!ControlloIniziale() || !reportChosen() || !ControlloProprio(Output::Preview)) return;
    if (profile_.hourglass) setMousePointer(MousePointer::Hourglass);
    try {
        const QString path = output::PercorsoReport(List1, List2, Pers);
        engine::Application application;
        std::shared_ptr<engine::Report> report = application.OpenReport(path, 1);
        report->SetTitle(output::ListaAttiva(List1, List2, Pers));
        const qint16 rows = PreparaStampa();
        if (profile_.countTest && rows == 0) {
            showNoData();
            setMousePointer(MousePointer::Default);
            return;
        }
        if (profile_.hourglass) setMousePointer(MousePointer::Default);
        output::FrmAnteprima& preview = output::FrmAnteprima::instance();
        preview.AnteprimaReport(report);
        preview.Report1()->setDisplayGroupTree(false);
        platform::showModal(&preview);
    } catch (const RuntimeError& error) {
        platform::ErrorBox(error.message());
        if (profile_.pointerBackOnError) setMousePointer(MousePointer::Default);
    }
}

// The preparation runs with no handler of the click's own: its failures are
// the preparation's to show. The report is opened after it, and released
// before the file is opened, so that the engine has let go of it.
void FilterScreen::CmdEsporta_Click(Output output, const output::ExportKind& kind) {
    if (!ControlloIniziale() || !reportChosen() || !ControlloProprio(output)) return;
    if (profile_.hourglass) setMousePointer(MousePointer::Hourglass);
    platform::Randomize();
    const qint16 rows = PreparaStampa();
    if (profile_.countTest && rows == 0) {
        showNoData();
        setMousePointer(MousePointer::Default);
        return;
    }
    const QString percorso = host().Percorso();
    output::CreaCartelleEsportazione(percorso, kind);
    try {
        QString nomeFile;
        {
            engine::Application application;
            std::shared_ptr<engine::Report> report =
                application.OpenReport(output::PercorsoReport(List1, List2, Pers), 1);
            nomeFile =
                output::NomeFileEsportazione(percorso, kind, entry::moduleValues().codiceStampa);
            exportRoutineOf(kind)(*report, nomeFile, output::ListaAttiva(List1, List2, Pers));
        }
        const QString written = platform::toLocalPath(nomeFile);
        if (profile_.hourglass) setMousePointer(MousePointer::Default);
        if (!platform::ShellOpen(written)) showWrittenButNotOpened(written);
    } catch (const RuntimeError& error) {
        if (profile_.hourglass) setMousePointer(MousePointer::Default);
        platform::ErrorBox(error.message());
    }
}

}  // namespace lorvane::screens
