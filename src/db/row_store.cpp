#include "db/row_store.h"

#include <cstring>

namespace lorvane::db {

namespace {

enum Tag : unsigned char {
    TagNull,
    TagEmpty,
    TagFalse,
    TagTrue,
    TagInteger,
    TagLong,
    TagDouble,
    TagCurrency,
    TagDate,
    TagDecimal,
    TagText,
};

quint64 readVarint(const unsigned char*& p) {
    quint64 value = 0;
    int shift = 0;
    while (true) {
        const unsigned char byte = *p++;
        value |= quint64(byte & 0x7F) << shift;
        if (!(byte & 0x80)) return value;
        shift += 7;
    }
}

qint64 readSigned(const unsigned char*& p) {
    const quint64 raw = readVarint(p);
    return qint64(raw >> 1) ^ -qint64(raw & 1);
}

// Moves past one cell.
void skipCell(const unsigned char*& p) {
    switch (*p++) {
        case TagInteger:
        case TagLong:
        case TagCurrency:
        case TagDate:
            readVarint(p);
            break;
        case TagDouble:
            p += sizeof(double);
            break;
        case TagDecimal:
            p += 1 + sizeof(Int128);
            break;
        case TagText: {
            const quint64 bytes = readVarint(p);
            p += bytes;
            break;
        }
        default:
            break;
    }
}

}  // namespace

// Room for `bytes` more bytes at the end of the row; `used` gives back what was not written.
char* RowStore::Writer::reserve(size_t bytes) {
    const size_t size = bytes_.size();
    bytes_.resize(size + bytes);
    return bytes_.data() + size;
}

void RowStore::Writer::used(const char* end) { bytes_.resize(size_t(end - bytes_.data())); }

char* RowStore::Writer::writeVarint(char* out, quint64 value) {
    while (value >= 0x80) {
        *out++ = char((value & 0x7F) | 0x80);
        value >>= 7;
    }
    *out++ = char(value);
    return out;
}

void RowStore::Writer::putTagged(unsigned char tag, qint64 value) {
    char* out = reserve(11);
    *out++ = char(tag);
    used(writeVarint(out, (quint64(value) << 1) ^ quint64(value >> 63)));
}

void RowStore::Writer::addNull() { bytes_.push_back(char(TagNull)); }
void RowStore::Writer::addBool(bool value) { bytes_.push_back(char(value ? TagTrue : TagFalse)); }
void RowStore::Writer::addInteger(qint16 value) { putTagged(TagInteger, value); }
void RowStore::Writer::addLong(qint32 value) { putTagged(TagLong, value); }
void RowStore::Writer::addCurrency(Currency value) { putTagged(TagCurrency, value.scaled); }
void RowStore::Writer::addDate(qint64 seconds) { putTagged(TagDate, seconds); }

void RowStore::Writer::addDouble(double value) {
    char* out = reserve(1 + sizeof value);
    *out = char(TagDouble);
    std::memcpy(out + 1, &value, sizeof value);
}

void RowStore::Writer::addUtf8(const char* text, int bytes) {
    char* out = reserve(11 + size_t(bytes));
    *out++ = char(TagText);
    out = writeVarint(out, quint64(bytes));
    std::memcpy(out, text, size_t(bytes));
    used(out + bytes);
}

// UTF-16 to UTF-8 straight into the row, without a temporary array.
void RowStore::Writer::addText(QStringView text) {
    const size_t worst = size_t(text.size()) * 3;
    char* const tagAt = reserve(11 + worst);
    *tagAt = char(TagText);
    // The length is not known before the conversion: keep room for the
    // longest varint it can need, then move the text down to follow it.
    char lengthBytes[10];
    const int room = int(writeVarint(lengthBytes, worst) - lengthBytes);
    char* const start = tagAt + 1 + room;
    char* out = start;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(char16_t(c), text[++i].unicode());
        }
        if (c < 0x80) {
            *out++ = char(c);
        } else if (c < 0x800) {
            *out++ = char(0xC0 | (c >> 6));
            *out++ = char(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            *out++ = char(0xE0 | (c >> 12));
            *out++ = char(0x80 | ((c >> 6) & 0x3F));
            *out++ = char(0x80 | (c & 0x3F));
        } else {
            *out++ = char(0xF0 | (c >> 18));
            *out++ = char(0x80 | ((c >> 12) & 0x3F));
            *out++ = char(0x80 | ((c >> 6) & 0x3F));
            *out++ = char(0x80 | (c & 0x3F));
        }
    }
    const size_t length = size_t(out - start);
    char* const lengthEnd = writeVarint(tagAt + 1, length);
    std::memmove(lengthEnd, start, length);
    used(lengthEnd + length);
}

void RowStore::Writer::addVariant(const Variant& value) {
    switch (value.type()) {
        case VarType::Empty:
            bytes_.push_back(char(TagEmpty));
            break;
        case VarType::Null:
            addNull();
            break;
        case VarType::Boolean:
            addBool(*value.get<bool>());
            break;
        case VarType::Integer:
            addInteger(*value.get<qint16>());
            break;
        case VarType::Long:
            addLong(*value.get<qint32>());
            break;
        case VarType::Double:
            addDouble(*value.get<double>());
            break;
        case VarType::Currency:
            addCurrency(*value.get<Currency>());
            break;
        case VarType::Date:
            addDate(value.get<DateTime>()->seconds());
            break;
        case VarType::Decimal: {
            const Decimal& decimal = *value.get<Decimal>();
            const Int128 mantissa = decimal.mantissa();
            char* out = reserve(2 + sizeof mantissa);
            out[0] = char(TagDecimal);
            out[1] = char(decimal.scale());
            std::memcpy(out + 2, &mantissa, sizeof mantissa);
            break;
        }
        case VarType::String:
            addText(*value.get<QString>());
            break;
    }
}

bool RowStore::RowView::utf8(int column, const char** data, int* bytes) const {
    const unsigned char* p = cells_[size_t(column)];
    if (*p++ != TagText) return false;
    *bytes = int(readVarint(p));
    *data = reinterpret_cast<const char*>(p);
    return true;
}

Variant RowStore::RowView::cell(int column) const {
    const unsigned char* p = cells_[size_t(column)];
    switch (*p++) {
        case TagNull:
            return Variant::null();
        case TagEmpty:
            return Variant();
        case TagFalse:
            return Variant(false);
        case TagTrue:
            return Variant(true);
        case TagInteger:
            return Variant(qint16(readSigned(p)));
        case TagLong:
            return Variant(qint32(readSigned(p)));
        case TagDouble: {
            double value;
            std::memcpy(&value, p, sizeof value);
            return Variant(value);
        }
        case TagCurrency:
            return Variant(Currency{readSigned(p)});
        case TagDate:
            return Variant(DateTime::fromSeconds(readSigned(p)));
        case TagDecimal: {
            const int scale = *p++;
            Int128 mantissa;
            std::memcpy(&mantissa, p, sizeof mantissa);
            return Variant(Decimal(mantissa, scale));
        }
        default: {
            const quint64 bytes = readVarint(p);
            return Variant(QString::fromUtf8(reinterpret_cast<const char*>(p), qsizetype(bytes)));
        }
    }
}

const unsigned char* RowStore::store(const std::string& bytes) {
    const size_t size = size_t(bytes.size());
    unsigned char* target = nullptr;
    if (size > BlockSize / 4) {  // a large row gets a block of its own
        largeRows_.push_back(std::make_unique_for_overwrite<unsigned char[]>(size));
        reserved_ += size;
        target = largeRows_.back().get();
    } else {
        if (blockUsed_ + size > BlockSize) {
            // Not cleared first: every byte is written before it is read.
            blocks_.push_back(std::make_unique_for_overwrite<unsigned char[]>(BlockSize));
            reserved_ += BlockSize;
            blockUsed_ = 0;
        }
        target = blocks_.back().get() + blockUsed_;
        blockUsed_ += size;
    }
    std::memcpy(target, bytes.data(), size);
    return target;
}

int RowStore::append(const Writer& writer) {
    rows_.push_back(store(writer.bytes_));
    return int(rows_.size() - 1);
}

void RowStore::replace(int row, const Writer& writer) { rows_[size_t(row)] = store(writer.bytes_); }

void RowStore::replaceCell(int row, int column, const Variant& value) {
    const unsigned char* const begin = rows_[size_t(row)];
    const unsigned char* at = begin;
    for (int i = 0; i < column; ++i)
        skipCell(at);
    const unsigned char* end = at;
    for (int i = column; i < columns_; ++i)
        skipCell(end);
    const unsigned char* after = at;
    skipCell(after);
    std::string& bytes = writer().bytes_;
    bytes.assign(reinterpret_cast<const char*>(begin), size_t(at - begin));
    writer_.addVariant(value);
    bytes.append(reinterpret_cast<const char*>(after), size_t(end - after));
    rows_[size_t(row)] = store(bytes);
}

void RowStore::view(int row, RowView* out) const {
    out->cells_.resize(size_t(columns_));
    const unsigned char* p = rows_[size_t(row)];
    for (int i = 0; i < columns_; ++i) {
        out->cells_[size_t(i)] = p;
        skipCell(p);
    }
}

size_t RowStore::bytesReserved() const { return reserved_ + rows_.capacity() * sizeof(void*); }

}  // namespace lorvane::db
