#include "output/export.h"

#include <QDir>

#include "entry/module_values.h"
#include "platform/shell.h"
#include "platform/windows_paths.h"

namespace lorvane::output {

using namespace Qt::StringLiterals;

namespace {

// The steps every export takes; only the format and the Excel headings differ.
void exportAs(engine::Report& report, const QString& nomeFile, const QString& titolo,
              const ExportKind& kind) {
    report.SetTitle(titolo);
    report.SetAuthor(entry::moduleValues().host ? entry::moduleValues().host->User() : QString());
    report.SetKeepRenderedPages(false);
    report.SetWriteDocumentProperties(true);
    engine::ExportOptions& options = report.GetExportOptions();
    options.DestinationType = engine::ExportDestination::Disk;
    options.DiskFileName = platform::toLocalPath(nomeFile);
    if (kind.format == engine::ExportFormat::Excel) options.ExcelColumnHeadings = true;
    options.FormatType = kind.format;
    options.KeepDisplayFormats = true;
    report.Export(false);
}

}  // namespace

void CreaCartelleEsportazione(const QString& percorso, const ExportKind& kind) {
    QDir().mkdir(platform::toLocalPath(percorso + u"export\\"_s));
    QDir().mkdir(platform::toLocalPath(percorso + QLatin1String(kind.folder)));
}

QString NomeFileEsportazione(const QString& percorso, const ExportKind& kind,
                             const QString& codiceStampa) {
    const int number = int(platform::Rnd() * 1000);
    return percorso + QLatin1String(kind.folder) + codiceStampa + QString::number(number) +
           QLatin1String(kind.extension);
}

void EsportaPdf(engine::Report& report, const QString& nomeFile, const QString& titolo) {
    exportAs(report, nomeFile, titolo, PdfExport);
}

void EsportaWord(engine::Report& report, const QString& nomeFile, const QString& titolo) {
    exportAs(report, nomeFile, titolo, WordExport);
}

void EsportaExcel(engine::Report& report, const QString& nomeFile, const QString& titolo) {
    exportAs(report, nomeFile, titolo, ExcelExport);
}

}  // namespace lorvane::output
