#include "engine/rtf_writer.h"

#include <QDir>
#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <vector>

#include "platform/output_file.h"
#include "platform/runtime_error.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;

namespace {

int twips(double points) { return qRound(points * 20); }

// Windows-1252 agrees with Latin-1 from 0xA0 up; 0x80-0x9F hold these.
constexpr std::array<char16_t, 32> cp1252High = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// The Windows-1252 byte of `c`, or 0 when the code page has none.
unsigned char cp1252Byte(char16_t c) {
    if (c >= 0xA0 && c <= 0xFF) return static_cast<unsigned char>(c);
    for (size_t i = 0; i < cp1252High.size(); ++i) {
        if (cp1252High[i] == c) return static_cast<unsigned char>(0x80 + i);
    }
    return 0;
}

// Text in the document's code page; the rest as Unicode with "?" for readers
// that skip it, each in a group of its own: some readers drop the whole word
// that follows \u instead of just one character.
void appendText(QByteArray& out, QStringView text) {
    for (const QChar qc : text) {
        const char16_t c = qc.unicode();
        if (c == u'\\' || c == u'{' || c == u'}') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c == u'\n') {
            out += "\\line ";
        } else if (c == u'\t') {
            out += "\\tab ";
        } else if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
            continue;
        } else if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (const unsigned char byte = cp1252Byte(c)) {
            out += "\\'";
            out += QByteArray::number(byte, 16).rightJustified(2, '0');
        } else {
            out += "{\\u";
            out += QByteArray::number(static_cast<qint16>(c));
            out += "?}";
        }
    }
}

struct FontFace {
    const char* name;    // as Word knows it
    const char* family;  // RTF family hint
    int pitch;           // 0 default, 1 fixed, 2 variable
};

// The report's fonts as a word processor on Windows finds them: the Liberation
// families are drawn to the metrics of these.
FontFace faceOf(const QString& family) {
    static const std::map<QString, FontFace, std::less<>> known = {
        {u"Liberation Sans"_s, {"Arial", "swiss", 2}},
        {u"Arial"_s, {"Arial", "swiss", 2}},
        {u"Liberation Serif"_s, {"Times New Roman", "roman", 2}},
        {u"Times New Roman"_s, {"Times New Roman", "roman", 2}},
        {u"Liberation Mono"_s, {"Courier New", "modern", 1}},
        {u"Courier New"_s, {"Courier New", "modern", 1}},
    };
    const auto found = known.find(family);
    return found != known.end() ? found->second : FontFace{nullptr, "nil", 0};
}

// The font table: one entry per face, the first one the default.
class FontTable {
  public:
    explicit FontTable(const Grid& grid) {
        for (const GridCell& cell : grid.cells)
            indexOf(cell.font.family);
        if (entries_.isEmpty()) indexOf(FontSpec().family);
    }

    int indexOf(const QString& family) {
        const FontFace face = faceOf(family);
        const QString name = face.name ? QString::fromLatin1(face.name) : family;
        const auto found = indexes_.find(name);
        if (found != indexes_.end()) return found->second;
        const int index = static_cast<int>(indexes_.size());
        indexes_.emplace(name, index);
        entries_ += "{\\f" + QByteArray::number(index) + "\\f" + face.family;
        if (face.pitch) entries_ += "\\fprq" + QByteArray::number(face.pitch);
        entries_ += "\\fcharset0 ";
        appendText(entries_, name);
        entries_ += ";}";
        return index;
    }

    const QByteArray& entries() const { return entries_; }

  private:
    std::map<QString, int> indexes_;
    QByteArray entries_;
};

void appendNumber(QByteArray& out, const char* word, int value) {
    out += word;
    out += QByteArray::number(value);
}

// Paper and margins, for the document and again for its one section, as
// word processors read one or the other.
void appendPageSetup(QByteArray& out, const RtfPage& page) {
    struct Setting {
        const char* document;
        const char* section;
        double points;
    };
    const Setting settings[] = {{"\\paperw", "\\pgwsxn", page.sizePt.width()},
                                {"\\paperh", "\\pghsxn", page.sizePt.height()},
                                {"\\margl", "\\marglsxn", page.marginLeftPt},
                                {"\\margr", "\\margrsxn", page.marginRightPt},
                                {"\\margt", "\\margtsxn", page.marginTopPt},
                                {"\\margb", "\\margbsxn", page.marginBottomPt}};
    const bool landscape = page.sizePt.width() > page.sizePt.height();
    for (const Setting& setting : settings)
        appendNumber(out, setting.document, twips(setting.points));
    if (landscape) out += "\\landscape";
    out += "\n\\sectd";
    for (const Setting& setting : settings)
        appendNumber(out, setting.section, twips(setting.points));
    if (landscape) out += "\\lndscpsxn";
    out += '\n';
}

// A paragraph outside the table, `heightPt` tall whatever its font.
void appendSpacer(QByteArray& out, double heightPt, const char* content) {
    out += "\\pard\\plain";
    appendNumber(out, "\\sl-", std::max(1, twips(heightPt)));
    out += "\\slmult0\\fs2";
    out += content;
    out += "\\par\n";
}

const char* alignmentWord(Align align) {
    switch (align) {
        case Align::Center:
            return "\\qc";
        case Align::Right:
            return "\\qr";
        case Align::Left:
            break;
    }
    return "\\ql";
}

// One grid row as a table row. The columns before, between and after the
// cells become empty cells, one per stretch, so the cells keep their places.
void appendRow(QByteArray& out, const Grid& grid, const GridRow& row,
               std::span<const GridCell> cells, FontTable& fonts) {
    const int columns = static_cast<int>(grid.columnWidthsPt.size());
    std::vector<double> edges{0};
    for (const double width : grid.columnWidthsPt)
        edges.push_back(edges.back() + width);

    struct Stretch {
        int end;
        const GridCell* cell;
    };
    std::vector<Stretch> stretches;
    int column = 0;
    for (const GridCell& cell : cells) {
        const int start = std::clamp(cell.column, column, columns);
        const int end = std::clamp(start + std::max(1, cell.columnSpan), start, columns);
        if (start > column) stretches.push_back({start, nullptr});
        if (end > start) stretches.push_back({end, &cell});
        column = end;
    }
    if (column < columns) stretches.push_back({columns, nullptr});

    out += "\\trowd\\trgaph0\\trleft0\\trpaddl0\\trpaddr0\\trpaddfl3\\trpaddfr3";
    appendNumber(out, "\\trrh", std::max(1, twips(row.heightPt)));
    for (const Stretch& stretch : stretches)
        appendNumber(out, "\\cellx", twips(edges[stretch.end]));
    out += '\n';
    for (const Stretch& stretch : stretches) {
        out += "\\pard\\plain\\intbl";
        if (const GridCell* cell = stretch.cell) {
            out += alignmentWord(cell->align);
            appendNumber(out, "\\f", fonts.indexOf(cell->font.family));
            appendNumber(out, "\\fs", std::max(2, qRound(cell->font.sizePt * 2)));
            if (cell->font.bold) out += "\\b";
            if (cell->font.italic) out += "\\i";
            out += ' ';
            appendText(out, cell->text);
        } else {
            out += "\\fs2";
        }
        out += "\\cell\n";
    }
    out += "\\row\n";
}

// Writes the document row by row: the text goes out in pieces, so a long
// report never sits whole in memory. `flush` receives each piece.
template <typename Flush>
void writeDocument(const Grid& grid, const RtfPage& page, Flush flush) {
    constexpr qsizetype Piece = 1 << 18;  // bytes
    FontTable fonts(grid);
    QByteArray out = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1040\\uc1\n{\\fonttbl";
    out += fonts.entries();
    out += "}\n";
    appendPageSetup(out, page);
    auto cell = grid.cells.begin();
    for (int r = 0; r < static_cast<int>(grid.rows.size()); ++r) {
        const GridRow& row = grid.rows[r];
        while (cell != grid.cells.end() && cell->row < r)
            ++cell;
        const auto first = cell;
        while (cell != grid.cells.end() && cell->row == r)
            ++cell;
        if (row.pageBreakBefore) appendSpacer(out, 1, "\\page");
        if (first == cell) {
            appendSpacer(out, row.heightPt, "");
        } else {
            appendRow(out, grid, row, std::span(first, cell), fonts);
        }
        if (out.size() >= Piece) {
            flush(out);
            out.clear();
        }
    }
    // A document cannot end inside a table.
    appendSpacer(out, 1, "");
    out += "}\n";
    flush(out);
}

}  // namespace

void writeRtf(const Grid& grid, const RtfPage& page, const QString& path) {
    platform::OutputFile file(path);
    writeDocument(grid, page, [&](const QByteArray& piece) {
        if (file.write(piece) != piece.size()) {
            throw RuntimeError(u"Impossibile scrivere il documento Word '%1': %2"_s.arg(
                QDir::toNativeSeparators(path), file.failure()));
        }
    });
    file.commit();
}

}  // namespace lorvane::engine
