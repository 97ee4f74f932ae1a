#include "host/cli_render.h"

#include <QDir>

#include "engine/painter.h"
#include "engine/report.h"
#include "platform/runtime_error.h"

namespace lorvane::host {

using namespace Qt::StringLiterals;

namespace {

constexpr double PngDpi = 110;

}  // namespace

int runRenderCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (args.isEmpty() || args.size() % 2 == 0) {
        err << "uso: lorvane render LAYOUT [--pdf FILE] [--doc FILE] [--xls FILE] [--png "
               "CARTELLA]\n";
        return 2;
    }
    QHash<QString, QString> outputs;
    for (qsizetype i = 1; i + 1 < args.size(); i += 2) {
        static const QStringList known = {u"--pdf"_s, u"--doc"_s, u"--xls"_s, u"--png"_s};
        if (!known.contains(args[i])) {
            err << "opzione sconosciuta: " << args[i] << '\n';
            return 2;
        }
        outputs.insert(args[i], args[i + 1]);
    }
    try {
        engine::ReportPtr report =
            engine::Application().OpenReport(args[0], engine::Application::OpenThroughCopy);
        const engine::PageDocument& document =
            report->Pages();  // rendered once, kept for every output
        const std::pair<const char*, int> formats[] = {{"--pdf", engine::ExportFormat::Pdf},
                                                       {"--doc", engine::ExportFormat::Word},
                                                       {"--xls", engine::ExportFormat::Excel}};
        for (const auto& [option, format] : formats) {
            if (!outputs.contains(QLatin1String(option))) continue;
            engine::ExportOptions& options = report->GetExportOptions();
            options.DestinationType = engine::ExportDestination::Disk;
            options.DiskFileName = outputs[QLatin1String(option)];
            options.FormatType = format;
            options.KeepDisplayFormats = true;
            report->Export(false);
        }
        if (outputs.contains(u"--png"_s)) {
            engine::writePageImages(document, outputs[u"--png"_s], PngDpi);
        }
        out << document.pages.size() << (document.pages.size() == 1 ? " pagina\n" : " pagine\n");
    } catch (const RuntimeError& error) {
        err << error.message() << '\n';
        return 2;
    }
    return 0;
}

}  // namespace lorvane::host
