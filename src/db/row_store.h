// The rows of a client-side recordset, packed: each row is one run of bytes in
// large blocks (a tag and a compact payload per cell, texts in UTF-8), so a
// recordset of many rows costs about what its data costs as text.
#pragma once

#include <QStringView>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "db/variant.h"

namespace lorvane::db {

class RowStore {
  public:
    // Encodes one row, cell after cell, then `finish` stores it.
    class Writer {
      public:
        void addNull();
        void addBool(bool value);
        void addInteger(qint16 value);
        void addLong(qint32 value);
        void addDouble(double value);
        void addCurrency(Currency value);
        void addDate(qint64 seconds);
        void addUtf8(const char* text, int bytes);
        void addText(QStringView text);
        void addVariant(const Variant& value);

      private:
        friend class RowStore;
        char* reserve(size_t bytes);
        void used(const char* end);
        void putTagged(unsigned char tag, qint64 value);
        static char* writeVarint(char* out, quint64 value);
        std::string bytes_;
    };

    // The cells of one row, located once so that each reads directly.
    class RowView {
      public:
        int size() const { return int(cells_.size()); }
        Variant cell(int column) const;
        // For a text cell: its UTF-8 bytes, kept in the store. False for other cells.
        bool utf8(int column, const char** data, int* bytes) const;

      private:
        friend class RowStore;
        std::vector<const unsigned char*> cells_;
    };

    explicit RowStore(int columns) : columns_(columns) {}
    RowStore(const RowStore&) = delete;
    RowStore& operator=(const RowStore&) = delete;

    Writer& writer() {
        writer_.bytes_.clear();
        return writer_;
    }
    // Stores the row in `writer` as a new last row and gives its index.
    int append(const Writer& writer);
    // Stores the row in `writer` in place of row `row`.
    void replace(int row, const Writer& writer);
    // Stores row `row` again with `value` in cell `column`.
    void replaceCell(int row, int column, const Variant& value);
    // Forgets the last row (its bytes stay until the store goes).
    void removeLast() { rows_.pop_back(); }

    int rowCount() const { return int(rows_.size()); }
    void view(int row, RowView* out) const;
    // Bytes held, for measurements.
    size_t bytesReserved() const;

  private:
    static constexpr size_t BlockSize = 1 << 20;
    const unsigned char* store(const std::string& bytes);

    int columns_;
    Writer writer_;
    std::vector<std::unique_ptr<unsigned char[]>> blocks_;  // the last one is being filled
    std::vector<std::unique_ptr<unsigned char[]>> largeRows_;
    size_t blockUsed_ = BlockSize;
    size_t reserved_ = 0;
    std::vector<const unsigned char*> rows_;
};

}  // namespace lorvane::db
