#include "engine/report.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include "engine/grid.h"
#include "engine/pdf_writer.h"
#include "engine/renderer.h"
#include "engine/rtf_writer.h"
#include "engine/xls_writer.h"
#include "platform/runtime_error.h"
#include "platform/windows_paths.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;

Report::Report(LayoutSpec layout) : layout_(std::move(layout)), title_(layout_.title) {}

void Report::SetTitle(const QString& title) {
    title_ = title;
    if (pages_) pages_->title = title;
}

void Report::SetAuthor(const QString& author) {
    author_ = author;
    if (pages_) pages_->author = author;
}

void Report::SetKeepRenderedPages(bool keep) {
    keepRenderedPages_ = keep;
    if (!keep) pages_.reset();
}

const PageDocument& Report::Pages() {
    if (!pages_ || !keepRenderedPages_) {
        pages_ = std::make_unique<PageDocument>(render(layout_, RenderInfo{title_, author_, {}}));
    }
    return *pages_;
}

void Report::Export(bool promptUser) {
    if (promptUser)
        throw RuntimeError(u"Il motore di stampa esporta senza domande: Export vuole False."_s);
    const ExportOptions& options = exportOptions_;
    if (options.DestinationType != ExportDestination::Disk) {
        throw RuntimeError(
            u"Destinazione di esportazione non gestita: %1."_s.arg(options.DestinationType));
    }
    if (options.DiskFileName.isEmpty())
        throw RuntimeError(u"Manca il nome del file di esportazione."_s);
    if (options.FormatType != ExportFormat::Pdf && options.FormatType != ExportFormat::Word &&
        options.FormatType != ExportFormat::Excel) {
        throw RuntimeError(u"Formato di esportazione sconosciuto: %1."_s.arg(options.FormatType));
    }
    const PageDocument& document = Pages();
    switch (options.FormatType) {
        case ExportFormat::Pdf:
            writePdf(document, options.DiskFileName, writeDocumentProperties_);
            break;
        case ExportFormat::Word: {
            const double k = PointsPerMm;
            writeRtf(buildGrid(document, true),
                     RtfPage{layout_.pageMm * k, layout_.marginLeftMm * k, layout_.marginTopMm * k,
                             layout_.marginRightMm * k, layout_.marginBottomMm * k},
                     options.DiskFileName);
            break;
        }
        default: {
            XlsOptions xls;
            if (writeDocumentProperties_ && !title_.isEmpty()) xls.sheetName = title_;
            xls.columnHeadings = options.ExcelColumnHeadings;
            xls.keepFormats = options.KeepDisplayFormats;
            xls.landscape = layout_.pageMm.width() > layout_.pageMm.height();
            writeXls(buildGrid(document, false), options.DiskFileName, xls);
        }
    }
}

ReportPtr Application::OpenReport(const QString& windowsPath, int openMethod) {
    const QString path = platform::toLocalPath(windowsPath);  // the catalogue writes "Report\x.lrl"
    if (!QFileInfo(path).isFile()) {
        throw RuntimeError(u"Impossibile aprire il report '%1': il file non esiste."_s.arg(path));
    }
    if (openMethod != OpenThroughCopy) return std::make_shared<Report>(loadLayout(path));
    // Read through a copy, so the layout file can change while the report is open.
    QTemporaryFile copy(QDir::tempPath() + u"/lorvane-report-XXXXXX.lrl"_s);
    QFile original(path);
    if (!copy.open() || !original.open(QIODevice::ReadOnly) || copy.write(original.readAll()) < 0 ||
        !copy.flush()) {
        throw RuntimeError(
            u"Impossibile aprire il report '%1': %2"_s.arg(path, original.errorString()));
    }
    try {
        return std::make_shared<Report>(
            loadLayout(copy.fileName(), QFileInfo(path).absolutePath()));
    } catch (const RuntimeError& error) {
        throw RuntimeError(QString(error.message()).replace(copy.fileName(), path));
    }
}

}  // namespace lorvane::engine
