#include "engine/pdf_writer.h"

#include <QFile>
#include <QPageSize>
#include <QPdfWriter>

#include "engine/painter.h"
#include "platform/output_file.h"
#include "platform/runtime_error.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;

void writePdf(const PageDocument& document, const QString& path, bool properties) {
    // QPdfWriter does not look at its device's errors: the file keeps the
    // first one, and commit() refuses to put a cut file in place.
    platform::OutputFile file(path);
    {
        QPdfWriter writer(&file);
        if (properties) writer.setTitle(document.title);
        writer.setCreator(u"Lorvane Stampe"_s);
        writer.setResolution(1200);
        const auto pageSizeOf = [](const Page& page) {
            return QPageSize(page.size, QPageSize::Point);
        };
        writer.setPageSize(document.pages.empty() ? QPageSize(QPageSize::A4)
                                                  : pageSizeOf(document.pages.front()));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0), QPageLayout::Point);
        QPainter painter;
        if (!painter.begin(&writer)) {
            throw RuntimeError(platform::cannotWriteMessage(
                path, file.failure().isEmpty() ? u"il PDF non si può iniziare"_s : file.failure()));
        }
        const double scale = writer.resolution() / 72.0;
        for (size_t i = 0; i < document.pages.size(); ++i) {
            if (i > 0) {
                writer.setPageSize(pageSizeOf(document.pages[i]));
                writer.newPage();
            }
            painter.save();
            painter.scale(scale, scale);
            paintPage(painter, document.pages[i]);
            painter.restore();
        }
        painter.end();
    }
    file.commit();
}

}  // namespace lorvane::engine
