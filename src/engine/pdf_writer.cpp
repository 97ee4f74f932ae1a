#include "engine/pdf_writer.h"

#include <QFile>
#include <QPageSize>
#include <QPdfWriter>
#include <cstdio>

#include "engine/painter.h"
#include "platform/runtime_error.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;

void replaceFile(const QString& partial, const QString& path) {
    if (std::rename(QFile::encodeName(partial).constData(), QFile::encodeName(path).constData()) !=
        0) {
        QFile::remove(partial);
        throw RuntimeError(u"Impossibile scrivere il file '%1'."_s.arg(path));
    }
}

void writePdf(const PageDocument& document, const QString& path, bool properties) {
    const QString partial = path + u".part"_s;
    {
        QPdfWriter writer(partial);
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
            QFile::remove(partial);
            throw RuntimeError(u"Impossibile scrivere il file '%1'."_s.arg(path));
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
    if (QFile(partial).size() == 0) {
        QFile::remove(partial);
        throw RuntimeError(u"Impossibile scrivere il file '%1'."_s.arg(path));
    }
    replaceFile(partial, path);
}

}  // namespace lorvane::engine
