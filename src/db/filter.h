// A recordset's Filter criterion: "field op value" terms with = <> < > <= >=
// and LIKE, joined by AND and OR taken from left to right without precedence,
// strings in '...', dates in #...#, LIKE with "*" or "%" at the ends.
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "db/field_type.h"
#include "db/variant.h"

namespace lorvane::db {

// How many brackets a criterion may nest one inside the other; a deeper one
// is refused with an error, never a crash (parsing, matching and freeing all
// recur on the brackets).
inline constexpr int MaxFilterNesting = 100;

class RecordFilter {
  public:
    struct Field {
        int index = -1;
        FieldType type;
    };
    using FieldLookup = std::function<std::optional<Field>(const QString& name)>;
    using ValueOf = std::function<Variant(int column)>;

    // Parses `criteria`; each value is converted to its field's type. Throws
    // RuntimeError quoting the criterion when it does not parse or names an
    // unknown field.
    static RecordFilter parse(const QString& criteria, const FieldLookup& lookup);

    bool matches(const ValueOf& valueOf) const;

    // When the whole criterion is one "field = value": the field and the value.
    std::optional<std::pair<int, Variant>> singleEquality() const;

    RecordFilter(RecordFilter&&) noexcept;
    RecordFilter& operator=(RecordFilter&&) noexcept;
    ~RecordFilter();

    struct Node;

  private:
    explicit RecordFilter(std::unique_ptr<Node> root);
    std::unique_ptr<Node> root_;
};

// The key under which a value is found by equality: numbers by value, texts
// case-folded, dates by second. Empty for Null, which equals nothing.
QString equalityKey(const Variant& value);

}  // namespace lorvane::db
