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

void RowStore::Writer::putVarint(quint64 value) {
    while (value >= 0x80) {
        bytes_.append(char((value & 0x7F) | 0x80));
        value >>= 7;
    }
    bytes_.append(char(value));
}

void RowStore::Writer::addNull() {
    bytes_.append(char(TagNull));
}
void RowStore::Writer::addBool(bool value) {
    bytes_.append(char(value ? TagTrue : TagFalse));
}

void RowStore::Writer::addInteger(qint16 value) {
    bytes_.append(char(TagInteger));
    putSigned(value);
}

void RowStore::Writer::addLong(qint32 value) {
    bytes_.append(char(TagLong));
    putSigned(value);
}

void RowStore::Writer::addDouble(double value) {
    bytes_.append(char(TagDouble));
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void RowStore::Writer::addCurrency(Currency value) {
    bytes_.append(char(TagCurrency));
    putSigned(value.scaled);
}

void RowStore::Writer::addDate(qint64 seconds) {
    bytes_.append(char(TagDate));
    putSigned(seconds);
}

void RowStore::Writer::addUtf8(const char* text, int bytes) {
    bytes_.append(char(TagText));
    putVarint(quint64(bytes));
    bytes_.append(text, bytes);
}

void RowStore::Writer::addVariant(const Variant& value) {
    switch (value.type()) {
        case VarType::Empty:
            bytes_.append(char(TagEmpty));
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
            bytes_.append(char(TagDecimal));
            bytes_.append(char(decimal.scale()));
            bytes_.append(reinterpret_cast<const char*>(&mantissa), sizeof mantissa);
            break;
        }
        case VarType::String: {
            const QByteArray utf8 = value.get<QString>()->toUtf8();
            addUtf8(utf8.constData(), int(utf8.size()));
            break;
        }
    }
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

const unsigned char* RowStore::store(const QByteArray& bytes) {
    const size_t size = size_t(bytes.size());
    unsigned char* target = nullptr;
    if (size > BlockSize / 4) {  // a large row gets a block of its own
        largeRows_.push_back(std::make_unique<unsigned char[]>(size));
        reserved_ += size;
        target = largeRows_.back().get();
    } else {
        if (blockUsed_ + size > BlockSize) {
            blocks_.push_back(std::make_unique<unsigned char[]>(BlockSize));
            reserved_ += BlockSize;
            blockUsed_ = 0;
        }
        target = blocks_.back().get() + blockUsed_;
        blockUsed_ += size;
    }
    std::memcpy(target, bytes.constData(), size);
    return target;
}

int RowStore::append(const Writer& writer) {
    rows_.push_back(store(writer.bytes_));
    return int(rows_.size() - 1);
}

void RowStore::replace(int row, const Writer& writer) {
    rows_[size_t(row)] = store(writer.bytes_);
}

void RowStore::view(int row, RowView* out) const {
    out->cells_.resize(size_t(columns_));
    const unsigned char* p = rows_[size_t(row)];
    for (int i = 0; i < columns_; ++i) {
        out->cells_[size_t(i)] = p;
        skipCell(p);
    }
}

size_t RowStore::bytesReserved() const {
    return reserved_ + rows_.capacity() * sizeof(void*);
}

}  // namespace lorvane::db
