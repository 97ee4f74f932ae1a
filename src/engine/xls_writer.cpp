#include "engine/xls_writer.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-stdio.h>
#include <gsf/gsf-utils.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <map>
#include <mutex>
#include <tuple>

#include "platform/runtime_error.h"

namespace lorvane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr int MaxRows = 65536;
constexpr int MaxColumns = 256;
constexpr int MaxRecordData = 8224;  // bytes of one record's data; more goes in CONTINUE records
constexpr int MaxCellText = 32767;
constexpr int MaxPageBreaks = 1026;
constexpr quint16 FirstCustomFormat = 164;
constexpr quint16 DefaultCellXf = 15;  // XFs 0..14 are the style XFs every workbook carries
constexpr quint16 BoldFont = 5;        // font index 4 does not exist: the fifth FONT record is 5

enum Record : quint16 {
    Eof = 0x000A,
    HorizontalPageBreaks = 0x001B,
    DateMode = 0x0022,
    Continue = 0x003C,
    Window1 = 0x003D,
    Codepage = 0x0042,
    DefColWidth = 0x0055,
    ColInfo = 0x007D,
    BoundSheet = 0x0085,
    Font = 0x0031,
    Xf = 0x00E0,
    MergedCells = 0x00E5,
    Sst = 0x00FC,
    LabelSst = 0x00FD,
    ExtSst = 0x00FF,
    Dimensions = 0x0200,
    Blank = 0x0201,
    Number = 0x0203,
    BoolErr = 0x0205,
    Row = 0x0208,
    Window2 = 0x023E,
    WsBool = 0x0081,
    Setup = 0x00A1,
    Style = 0x0293,
    Format = 0x041E,
    Bof = 0x0809,
};

// Little-endian record data.
struct Bytes {
    QByteArray data;

    Bytes& u8(quint8 v) {
        data.append(char(v));
        return *this;
    }
    Bytes& u16(quint16 v) {
        char b[2];
        qToLittleEndian(v, b);
        data.append(b, 2);
        return *this;
    }
    Bytes& u32(quint32 v) {
        char b[4];
        qToLittleEndian(v, b);
        data.append(b, 4);
        return *this;
    }
    Bytes& f64(double v) {
        quint64 bits;
        std::memcpy(&bits, &v, sizeof bits);
        char b[8];
        qToLittleEndian(bits, b);
        data.append(b, 8);
        return *this;
    }
    Bytes& raw(const QByteArray& v) {
        data.append(v);
        return *this;
    }
};

// The Workbook stream as it grows; offsets into it are what BOUNDSHEET and
// EXTSST point at.
class Stream {
  public:
    qsizetype size() const { return data_.size(); }
    const QByteArray& data() const { return data_; }

    void record(quint16 id, const QByteArray& body) {
        Bytes header;
        header.u16(id).u16(quint16(body.size()));
        data_.append(header.data).append(body);
    }
    void record(quint16 id, const Bytes& body) { record(id, body.data); }
    void patchU32(qsizetype at, quint32 value) { qToLittleEndian(value, data_.data() + at); }

  private:
    QByteArray data_;
};

bool fitsLatin1(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x100; });
}

// The characters of a BIFF8 string: one byte each when they all fit, UTF-16LE otherwise.
QByteArray stringChars(QStringView text, bool wide) {
    QByteArray out;
    out.reserve(text.size() * (wide ? 2 : 1));
    for (QChar c : text) {
        out.append(char(c.unicode() & 0xFF));
        if (wide) out.append(char(c.unicode() >> 8));
    }
    return out;
}

// A string with its length (one byte when `shortLength`, else two), the flag
// byte and the characters.
QByteArray unicodeString(QStringView text, bool shortLength) {
    const bool wide = !fitsLatin1(text);
    Bytes b;
    if (shortLength) {
        b.u8(quint8(text.size()));
    } else {
        b.u16(quint16(text.size()));
    }
    b.u8(wide ? 1 : 0).raw(stringChars(text, wide));
    return b.data;
}

// Excel refuses sheet names longer than 31 characters, empty, with : \ / ? * [ ]
// or starting or ending with an apostrophe.
QString sheetNameOf(const QString& wanted) {
    QString name = wanted.trimmed().left(31).trimmed();
    for (QChar& c : name) {
        if (QStringView(u":\\/?*[]").contains(c) || c.unicode() < 0x20) c = u'_';
    }
    if (name.startsWith(u'\'')) name[0] = u'_';
    if (name.endsWith(u'\'')) name[name.size() - 1] = u'_';
    return name.isEmpty() ? u"Report"_s : name;
}

// Appends `text` as literal text of an Excel format: quoted, with '%' left
// outside the quotes so that Excel still scales by 100 as the layout does.
void appendLiteral(QString& out, QStringView text) {
    bool open = false;
    for (QChar c : text) {
        const bool unquoted = c == u'%' || c == u'"';
        if (unquoted && open) {
            out += u'"';
            open = false;
        }
        if (c == u'%') {
            out += c;
        } else if (c == u'"') {
            out += u"\\\""_s;
        } else {
            if (!open) out += u'"';
            open = true;
            out += c;
        }
    }
    if (open) out += u'"';
}

bool isNumberPatternChar(QChar c) { return c == u'#' || c == u'0' || c == u'.' || c == u','; }

// A layout number format ("#.##0,00", "0%", "€ #.##0,00") in Excel notation:
// the digit pattern with its separators swapped, the text around it quoted.
QString excelNumberFormat(const QString& format) {
    const qsizetype first =
        std::find_if(format.begin(), format.end(), isNumberPatternChar) - format.begin();
    qsizetype last = first;
    while (last < format.size() && isNumberPatternChar(format[last]))
        ++last;
    QString out;
    appendLiteral(out, QStringView(format).left(first));
    for (qsizetype i = first; i < last; ++i) {
        const QChar c = format[i];
        out += c == u'.' ? u',' : c == u',' ? u'.' : c;
    }
    appendLiteral(out, QStringView(format).mid(last));
    return out;
}

// A layout date format (Qt letters: d, M, y, H, h, m, s, z, AP, 'quoted text')
// in Excel notation. Excel tells months from minutes by their neighbours
// (next to h or s is minutes), which matches how such formats are written.
QString excelDateFormat(const QString& format) {
    QString out;
    QString literal;
    auto flush = [&] {
        appendLiteral(out, literal);
        literal.clear();
    };
    for (qsizetype i = 0; i < format.size(); ++i) {
        const QChar c = format[i];
        if (c == u'\'') {
            const qsizetype end = format.indexOf(u'\'', i + 1);
            if (end == i + 1) {
                literal += u'\'';
            } else {
                literal += format.mid(i + 1, end < 0 ? -1 : end - i - 1);
            }
            i = end < 0 ? format.size() : end;
            continue;
        }
        QString token;
        switch (c.unicode()) {
            case u'd':
                token = u"d"_s;
                break;
            case u'M':
                token = u"m"_s;
                break;
            case u'y':
                token = u"y"_s;
                break;
            case u'H':
            case u'h':
                token = u"h"_s;
                break;
            case u'm':
                token = u"m"_s;
                break;
            case u's':
                token = u"s"_s;
                break;
            case u'z':
                token = u"0"_s;
                break;
            case u'A':
            case u'a':
                if (i + 1 < format.size() && (format[i + 1] == u'P' || format[i + 1] == u'p')) ++i;
                token = c == u'A' ? u"AM/PM"_s : u"am/pm"_s;
                break;
            case u'/':
            case u':':
            case u'-':
            case u' ':
            case u'.':
                token = c;
                break;
            default:
                literal += c;
                continue;
        }
        flush();
        out += token;
    }
    flush();
    return out;
}

bool isLayoutNumberFormat(const QString& format) {
    return format.contains(u'#') || format.contains(u'0');
}

bool isLayoutDateFormat(const QString& format) {
    return !isLayoutNumberFormat(format) && std::any_of(format.begin(), format.end(), [](QChar c) {
        return QStringView(u"dMyHhms").contains(c);
    });
}

// The date format of a date shown without one, as the runtime's text of a
// date: the time alone on day 0, the time added when it is not midnight.
QString defaultDateFormat(double serial) {
    if (serial >= 0 && serial < 1) return u"hh:mm:ss"_s;
    if (serial != std::floor(serial)) return u"dd/mm/yyyy hh:mm:ss"_s;
    return u"dd/mm/yyyy"_s;
}

QByteArray bof(quint16 substreamType) {
    Bytes b;
    b.u16(0x0600).u16(substreamType).u16(0x0DBB).u16(0x07CC).u32(0).u32(0x0006);
    return b.data;
}

// Arial 10, the font Excel measures column widths with. Bold sets the weight
// and, as Excel itself does, the otherwise unused first flag bit that some
// readers take for bold.
QByteArray fontRecord(bool bold) {
    Bytes b;
    b.u16(200).u16(bold ? 1 : 0).u16(0x7FFF).u16(bold ? 700 : 400).u16(0).u8(0).u8(2).u8(0).u8(0);
    b.raw(unicodeString(u"Arial", true));
    return b.data;
}

// One XF: font, number format, horizontal alignment (0 general, 1 left,
// 2 centre, 3 right) at the bottom of the cell, no borders, no fill.
QByteArray xfRecord(quint16 font, quint16 format, bool isStyle, quint8 align,
                    quint8 usedAttributes) {
    Bytes b;
    b.u16(font).u16(format).u16(isStyle ? 0xFFF5 : 0x0001);
    b.u8(quint8(align | 0x20)).u8(0).u8(0).u8(usedAttributes);
    b.u32(0).u32(0).u16(0x20C0);
    return b.data;
}

quint8 alignCode(Align align) {
    switch (align) {
        case Align::Left:
            return 1;
        case Align::Center:
            return 2;
        case Align::Right:
            return 3;
    }
    return 0;
}

// The fonts, number formats and XFs of the workbook: one cell XF for each
// distinct format, boldness and alignment in use.
class Styles {
  public:
    // `excelFormat` "" is General.
    quint16 xf(const QString& excelFormat, bool bold, Align align) {
        const auto key = std::make_tuple(excelFormat, bold, alignCode(align));
        if (const auto found = xfByKey_.find(key); found != xfByKey_.end()) return found->second;
        const quint16 index = quint16(DefaultCellXf + 1 + cellXfs_.size());
        cellXfs_.push_back(
            {quint16(bold ? BoldFont : 0), formatIndex(excelFormat), alignCode(align)});
        xfByKey_.emplace(key, index);
        return index;
    }

    // FONT, FORMAT, XF and STYLE records, in this order.
    void write(Stream& out) const {
        for (int i = 0; i < 4; ++i)
            out.record(Font, fontRecord(false));
        out.record(Font, fontRecord(true));
        for (qsizetype i = 0; i < formats_.size(); ++i) {
            Bytes b;
            b.u16(quint16(FirstCustomFormat + i)).raw(unicodeString(formats_[i], false));
            out.record(Format, b);
        }
        out.record(Xf, xfRecord(0, 0, true, 0, 0));
        for (int i = 1; i < DefaultCellXf; ++i)
            out.record(Xf, xfRecord(0, 0, true, 0, 0xF4));
        out.record(Xf, xfRecord(0, 0, false, 0, 0));
        for (const CellXf& xf : cellXfs_) {
            out.record(Xf, xfRecord(xf.font, xf.format, false, xf.align, 0x1C));
        }
        Bytes normal;
        normal.u16(0x8000).u8(0).u8(0xFF);
        out.record(Style, normal);
    }

  private:
    struct CellXf {
        quint16 font;
        quint16 format;
        quint8 align;
    };

    quint16 formatIndex(const QString& format) {
        if (format.isEmpty()) return 0;
        qsizetype at = formats_.indexOf(format);
        if (at < 0) {
            at = formats_.size();
            formats_.append(format);
        }
        return quint16(FirstCustomFormat + at);
    }

    QStringList formats_;
    std::vector<CellXf> cellXfs_;
    std::map<std::tuple<QString, bool, quint8>, quint16> xfByKey_;
};

// The shared string table: each distinct text once, cells refer to it by index.
class SharedStrings {
  public:
    quint32 index(const QString& text) {
        ++uses_;
        if (const auto found = indexByText_.constFind(text); found != indexByText_.cend()) {
            return found.value();
        }
        const quint32 added = quint32(texts_.size());
        indexByText_.insert(text, added);
        texts_.append(text);
        return added;
    }

    // SST, split into CONTINUE records where it outgrows one record, then
    // EXTSST with where every bucket of strings starts in the stream.
    void write(Stream& out) const {
        const int perBucket = std::max(8, int((texts_.size() + 127) / 128));
        Bytes extsst;
        extsst.u16(quint16(perBucket));

        Bytes current;
        current.u32(uses_).u32(quint32(texts_.size()));
        bool first = true;
        auto flush = [&] {
            out.record(first ? Sst : Continue, current);
            first = false;
            current = Bytes();
        };
        for (qsizetype i = 0; i < texts_.size(); ++i) {
            const QString& text = texts_[i];
            const bool wide = !fitsLatin1(text);
            const int charSize = wide ? 2 : 1;
            if (current.data.size() + 3 + charSize > MaxRecordData) flush();
            if (i % perBucket == 0) {
                const quint16 inRecord = quint16(4 + current.data.size());
                extsst.u32(quint32(out.size() + inRecord)).u16(inRecord).u16(0);
            }
            current.u16(quint16(text.size())).u8(wide ? 1 : 0);
            qsizetype done = 0;
            while (true) {
                const qsizetype room = (MaxRecordData - current.data.size()) / charSize;
                const qsizetype count = std::min(room, text.size() - done);
                current.raw(stringChars(QStringView(text).mid(done, count), wide));
                done += count;
                if (done == text.size()) break;
                flush();
                current.u8(wide ? 1 : 0);  // a string carried on starts with its flags again
            }
        }
        flush();
        out.record(ExtSst, extsst);
    }

  private:
    QStringList texts_;
    QHash<QString, quint32> indexByText_;
    quint32 uses_ = 0;
};

struct SheetCell {
    enum class Kind { Text, Number, Boolean, Blank };
    int row = 0;
    int column = 0;
    Kind kind = Kind::Blank;
    quint32 string = 0;
    double number = 0;
    quint16 xf = DefaultCellXf;
};

struct SheetRow {
    quint16 heightTwips = 255;
    bool customHeight = false;
};

struct Merge {
    int row, firstColumn, lastColumn;
};

// The worksheet as BIFF sees it: rows, cells in row order, column widths in
// 1/256 of a character, page breaks (the first row of each page after the
// first) and merged ranges.
struct Sheet {
    std::vector<SheetRow> rows;
    std::vector<SheetCell> cells;
    std::vector<quint16> columnWidths;
    std::vector<int> pageBreaks;
    std::vector<Merge> merges;
    bool landscape = false;
};

// Dates before 01/03/1900 are written as text: Excel counts a 29/02/1900 that
// never was, so its serials of those days differ from the runtime's.
constexpr double FirstFaithfulSerial = 61;

SheetCell convertCell(const GridCell& cell, int row, const XlsOptions& options, Styles& styles,
                      SharedStrings& strings) {
    SheetCell out;
    out.row = row;
    out.column = cell.column;
    const bool bold = cell.font.bold;
    auto asText = [&](const QString& text) {
        out.xf = styles.xf({}, bold, cell.align);
        if (text.isEmpty()) return;
        out.kind = SheetCell::Kind::Text;
        out.string = strings.index(text.left(MaxCellText));
    };
    const db::Variant& value = cell.value;
    switch (value.type()) {
        case db::VarType::Empty:
            asText(cell.text);
            break;
        case db::VarType::Null:
            asText({});
            break;
        case db::VarType::String:
            asText(cell.text.isEmpty() ? *value.get<QString>() : cell.text);
            break;
        case db::VarType::Boolean:
            out.kind = SheetCell::Kind::Boolean;
            out.number = *value.get<bool>() ? 1 : 0;
            out.xf = styles.xf({}, bold, cell.align);
            break;
        case db::VarType::Date: {
            const double serial = value.get<db::DateTime>()->toSerial();
            if (serial < 0 || (serial >= 1 && serial < FirstFaithfulSerial)) {
                asText(cell.text.isEmpty() ? value.toString() : cell.text);
                break;
            }
            out.kind = SheetCell::Kind::Number;
            out.number = serial;
            const bool own = options.keepFormats && isLayoutDateFormat(cell.format);
            out.xf = styles.xf(own ? excelDateFormat(cell.format) : defaultDateFormat(serial), bold,
                               cell.align);
            break;
        }
        default: {
            const double number = value.toDouble();
            if (!std::isfinite(number)) {
                asText(cell.text);
                break;
            }
            out.kind = SheetCell::Kind::Number;
            out.number = number;
            const bool own = options.keepFormats && isLayoutNumberFormat(cell.format);
            out.xf = styles.xf(own ? excelNumberFormat(cell.format) : QString(), bold, cell.align);
            break;
        }
    }
    return out;
}

// The headings of the extra first row: the page-header row with the most
// cells names the columns (it is the row of column titles, not a report title
// above it); a column it leaves out has no heading.
std::vector<GridCell> headingCells(const Grid& grid) {
    std::vector<int> cellsPerRow(grid.rows.size(), 0);
    for (const GridCell& cell : grid.cells) {
        const auto row = size_t(cell.row);
        if (row < grid.rows.size() && grid.rows[row].kind == BandKind::PageHeader)
            ++cellsPerRow[row];
    }
    const auto best = std::max_element(cellsPerRow.begin(), cellsPerRow.end());
    const int titleRow =
        best == cellsPerRow.end() || *best == 0 ? -1 : int(best - cellsPerRow.begin());

    std::vector<GridCell> headings;
    for (const GridCell& cell : grid.cells) {
        if (cell.row != titleRow || cell.column < 0 || cell.text.trimmed().isEmpty()) continue;
        GridCell heading;
        heading.column = cell.column;
        heading.text = cell.text.trimmed();
        heading.align = cell.align;
        heading.font.bold = true;
        headings.push_back(std::move(heading));
    }
    return headings;
}

// Excel column units from points: Arial 10's '0' is 7 pixels at 96 dpi and a
// column has 5 pixels of padding, so the column keeps its width on paper. A
// column is never narrower than its longest text needs, up to 60 characters.
quint16 columnUnits(double widthPt, qsizetype longestText, bool bold) {
    const double fromPoints = widthPt > 0 ? std::max(0.0, (widthPt * 4.0 / 3.0 - 5.0) / 7.0) : 8.43;
    const double fromText =
        longestText > 0 ? double(std::min<qsizetype>(longestText, 60)) * (bold ? 1.1 : 1.0) + 1 : 0;
    return quint16(std::min(255.0, std::max(fromPoints, fromText)) * 256.0 + 0.5);
}

qsizetype longestLine(const QString& text) {
    qsizetype longest = 0;
    for (QStringView line : QStringView(text).split(u'\n'))
        longest = std::max(longest, line.size());
    return longest;
}

Sheet planSheet(const Grid& grid, const XlsOptions& options, Styles& styles, SharedStrings& strings,
                const QString& path) {
    int columns = int(grid.columnWidthsPt.size());
    for (const GridCell& cell : grid.cells) {
        columns = std::max(columns, cell.column + std::max(1, cell.columnSpan));
    }
    const int offset = options.columnHeadings ? 1 : 0;
    if (int(grid.rows.size()) + offset > MaxRows || columns > MaxColumns) {
        throw RuntimeError(
            u"Impossibile creare il file Excel \"%1\": il report supera i limiti di "
            u"un foglio Excel 97-2003 (65.536 righe, 256 colonne)."_s.arg(
                QDir::toNativeSeparators(path)));
    }

    Sheet sheet;
    sheet.landscape = options.landscape;
    sheet.rows.resize(grid.rows.size() + size_t(offset));
    for (size_t i = 0; i < grid.rows.size(); ++i) {
        const GridRow& row = grid.rows[i];
        const double twips = std::clamp(std::round(row.heightPt * 20), 1.0, 8190.0);
        sheet.rows[i + size_t(offset)] = {quint16(twips), true};
        if (row.pageBreakBefore && i > 0 && sheet.pageBreaks.size() < size_t(MaxPageBreaks)) {
            sheet.pageBreaks.push_back(int(i) + offset);
        }
    }

    std::vector<qsizetype> longest(size_t(columns), 0);
    std::vector<bool> boldColumn(size_t(columns), false);
    auto add = [&](const GridCell& cell, int row) {
        sheet.cells.push_back(convertCell(cell, row, options, styles, strings));
        const int span = std::max(1, cell.columnSpan);
        if (span > 1) {
            sheet.merges.push_back({row, cell.column, std::min(cell.column + span, columns) - 1});
        } else if (const qsizetype length = longestLine(cell.text);
                   length > longest[size_t(cell.column)]) {
            longest[size_t(cell.column)] = length;
            boldColumn[size_t(cell.column)] = cell.font.bold;
        }
    };
    if (options.columnHeadings) {
        for (const GridCell& heading : headingCells(grid))
            add(heading, 0);
    }
    for (const GridCell& cell : grid.cells) {
        if (cell.column >= 0 && cell.row >= 0 && size_t(cell.row) < grid.rows.size()) {
            add(cell, cell.row + offset);
        }
    }
    std::stable_sort(sheet.cells.begin(), sheet.cells.end(),
                     [](const SheetCell& a, const SheetCell& b) {
                         return std::tie(a.row, a.column) < std::tie(b.row, b.column);
                     });

    for (int column = 0; column < columns; ++column) {
        const double widthPt =
            size_t(column) < grid.columnWidthsPt.size() ? grid.columnWidthsPt[size_t(column)] : 0;
        sheet.columnWidths.push_back(
            columnUnits(widthPt, longest[size_t(column)], boldColumn[size_t(column)]));
    }
    return sheet;
}

void writeCell(Stream& out, const SheetCell& cell) {
    Bytes b;
    b.u16(quint16(cell.row)).u16(quint16(cell.column)).u16(cell.xf);
    switch (cell.kind) {
        case SheetCell::Kind::Text:
            out.record(LabelSst, b.u32(cell.string));
            break;
        case SheetCell::Kind::Number:
            out.record(Number, b.f64(cell.number));
            break;
        case SheetCell::Kind::Boolean:
            out.record(BoolErr, b.u8(quint8(cell.number)).u8(0));
            break;
        case SheetCell::Kind::Blank:
            out.record(Blank, b);
            break;
    }
}

// The worksheet substream, its records in the order Excel expects them.
void writeSheet(Stream& out, const Sheet& sheet) {
    out.record(Bof, bof(0x0010));
    // Excel's own sheet options (automatic breaks shown, outline sums below
    // and right) with fit to page, which SETUP below makes one page wide.
    out.record(WsBool, Bytes().u16(0x04C1 | 0x0100));
    if (!sheet.pageBreaks.empty()) {
        Bytes b;
        b.u16(quint16(sheet.pageBreaks.size()));
        for (int row : sheet.pageBreaks)
            b.u16(quint16(row)).u16(0).u16(0x00FF);
        out.record(HorizontalPageBreaks, b);
    }
    // A4, scale 100, first page 1, one page wide and as many pages tall as
    // needed, the orientation of the report's page, 600 dpi, header and footer
    // margins of 0.5 inch, one copy.
    Bytes setup;
    setup.u16(9).u16(100).u16(1).u16(1).u16(0).u16(sheet.landscape ? 0x0000 : 0x0002);
    out.record(Setup, setup.u16(600).u16(600).f64(0.5).f64(0.5).u16(1));
    out.record(DefColWidth, Bytes().u16(8));
    for (size_t column = 0; column < sheet.columnWidths.size(); ++column) {
        Bytes b;
        b.u16(quint16(column)).u16(quint16(column)).u16(sheet.columnWidths[column]);
        out.record(ColInfo, b.u16(DefaultCellXf).u16(0).u16(0));
    }
    int lastColumn = -1;
    for (const SheetCell& cell : sheet.cells)
        lastColumn = std::max(lastColumn, cell.column);
    Bytes dimensions;
    dimensions.u32(0).u32(sheet.cells.empty() ? 0 : quint32(sheet.cells.back().row + 1));
    out.record(Dimensions, dimensions.u16(0).u16(quint16(lastColumn + 1)).u16(0));

    // Rows go in blocks of 32: the ROW records of the block, then its cells.
    auto cell = sheet.cells.begin();
    for (size_t blockStart = 0; blockStart < sheet.rows.size(); blockStart += 32) {
        const size_t blockEnd = std::min(sheet.rows.size(), blockStart + 32);
        auto blockCells = cell;
        for (size_t row = blockStart; row < blockEnd; ++row) {
            int first = 0, last = 0;
            auto rowCell = blockCells;
            if (rowCell != sheet.cells.end() && size_t(rowCell->row) == row)
                first = rowCell->column;
            for (; rowCell != sheet.cells.end() && size_t(rowCell->row) == row; ++rowCell) {
                last = rowCell->column + 1;
            }
            blockCells = rowCell;
            const SheetRow& info = sheet.rows[row];
            Bytes b;
            b.u16(quint16(row)).u16(quint16(first)).u16(quint16(last)).u16(info.heightTwips);
            out.record(Row, b.u16(0).u16(0).u32((info.customHeight ? 0x0140u : 0x0100u) |
                                                (quint32(DefaultCellXf) << 16)));
        }
        for (; cell != blockCells; ++cell)
            writeCell(out, *cell);
    }

    Bytes window2;
    window2.u16(0x06B6).u16(0).u16(0).u16(64).u16(0).u16(0).u16(0).u32(0);
    out.record(Window2, window2);
    for (size_t at = 0; at < sheet.merges.size(); at += 1026) {
        const size_t end = std::min(sheet.merges.size(), at + 1026);
        Bytes b;
        b.u16(quint16(end - at));
        for (size_t i = at; i < end; ++i) {
            const Merge& m = sheet.merges[i];
            b.u16(quint16(m.row))
                .u16(quint16(m.row))
                .u16(quint16(m.firstColumn))
                .u16(quint16(m.lastColumn));
        }
        out.record(MergedCells, b);
    }
    out.record(Eof, QByteArray());
}

QByteArray workbookStream(const Grid& grid, const XlsOptions& options, const QString& path) {
    Styles styles;
    SharedStrings strings;
    const Sheet sheet = planSheet(grid, options, styles, strings, path);

    Stream out;
    out.record(Bof, bof(0x0005));
    out.record(Codepage, Bytes().u16(1200));
    Bytes window1;
    window1.u16(0).u16(0).u16(0x4000).u16(0x2000).u16(0x0038).u16(0).u16(0).u16(1).u16(0x0258);
    out.record(Window1, window1);
    out.record(DateMode, Bytes().u16(0));
    styles.write(out);
    const qsizetype sheetOffsetAt = out.size() + 4;
    Bytes boundSheet;
    boundSheet.u32(0).u8(0).u8(0).raw(unicodeString(sheetNameOf(options.sheetName), true));
    out.record(BoundSheet, boundSheet);
    strings.write(out);
    out.record(Eof, QByteArray());
    out.patchU32(sheetOffsetAt, quint32(out.size()));
    writeSheet(out, sheet);
    return out.data();
}

[[noreturn]] void failWriting(const QString& path, const QString& reason) {
    throw RuntimeError(u"Impossibile scrivere il file Excel \"%1\": %2."_s.arg(
        QDir::toNativeSeparators(path), reason));
}

QString reasonOf(GsfOutput* output, GError* error) {
    if (error == nullptr && output != nullptr)
        error = const_cast<GError*>(gsf_output_error(output));
    return error != nullptr ? QString::fromUtf8(error->message) : u"errore di scrittura"_s;
}

// Writes `stream` as the "Workbook" stream of a new compound file at `target`.
// Returns "" on success, the reason of the failure otherwise.
QString writeCompoundFile(const QString& target, const QByteArray& stream) {
    static std::once_flag initialised;
    std::call_once(initialised, [] { gsf_init(); });

    GError* error = nullptr;
    GsfOutput* sink = gsf_output_stdio_new(QFile::encodeName(target).constData(), &error);
    if (sink == nullptr) {
        const QString reason = reasonOf(nullptr, error);
        if (error != nullptr) g_error_free(error);
        return reason;
    }
    GsfOutfile* root = gsf_outfile_msole_new(sink);
    GsfOutput* workbook = gsf_outfile_new_child(root, "Workbook", FALSE);
    QString reason;
    if (workbook == nullptr ||
        !gsf_output_write(workbook, size_t(stream.size()),
                          reinterpret_cast<const guint8*>(stream.constData()))) {
        reason = reasonOf(workbook, nullptr);
    }
    if (workbook != nullptr) {
        if (!gsf_output_close(workbook) && reason.isEmpty()) reason = reasonOf(workbook, nullptr);
        g_object_unref(workbook);
    }
    if (!gsf_output_close(GSF_OUTPUT(root)) && reason.isEmpty()) {
        reason = reasonOf(GSF_OUTPUT(root), nullptr);
    }
    g_object_unref(root);
    if (!gsf_output_is_closed(sink) && !gsf_output_close(sink) && reason.isEmpty()) {
        reason = reasonOf(sink, nullptr);
    }
    g_object_unref(sink);
    return reason;
}

}  // namespace

void writeXls(const Grid& grid, const QString& path, const XlsOptions& options) {
    const QByteArray stream = workbookStream(grid, options, path);

    const QFileInfo info(path);
    if (!info.dir().exists()) failWriting(path, u"la cartella non esiste"_s);
    const QString part = path + u".part"_s;
    const QString reason = writeCompoundFile(part, stream);
    if (!reason.isEmpty()) {
        QFile::remove(part);
        failWriting(path, reason);
    }
    std::error_code error;
    std::filesystem::rename(std::filesystem::path(part.toStdU16String()),
                            std::filesystem::path(path.toStdU16String()), error);
    if (error) {
        QFile::remove(part);
        failWriting(path, QString::fromStdString(error.message()));
    }
}

}  // namespace lorvane::engine
