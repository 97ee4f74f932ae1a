// The computed items of layouts: an expression over the fields of the current
// row, numbers, + - * /, unary minus, parentheses, Sum(expr) and Count() over
// a scope of rows, and Nz(x, y). Parsed once when the layout is read; the
// renderer binds its field names to columns and evaluates it per band.
#pragma once

#include <QString>
#include <optional>
#include <span>
#include <vector>

#include "db/variant.h"

namespace lorvane::engine {

// A syntax fault: what is wrong and the character (from 1) where it was found.
struct ExpressionError {
    QString what;
    int position = 0;
};

// The running figures of one scope for one expression: the sum of each Sum()
// term over the scope's rows (nullopt while every value was Null) and the
// number of rows.
struct ExpressionTotals {
    std::vector<std::optional<double>> sums;
    int count = 0;
};

class Expression {
  public:
    // Nesting deeper than this (parentheses, signs, calls) is refused.
    static constexpr int MaxDepth = 32;

    // Throws ExpressionError.
    static Expression parse(const QString& text);

    // The field names as written, without brackets, each once. The caller
    // finds each in its rows: `columns[i]` below is the position of fields()[i].
    const std::vector<QString>& fields() const { return fields_; }

    // The number of Sum() terms: the size of ExpressionTotals::sums.
    int sumTerms() const { return int(sumRoots_.size()); }
    bool usesTotals() const { return usesTotals_; }
    // Adds the row to `totals`: each Sum() term's value (Null skipped) and one row.
    void accumulate(std::span<const db::Variant> row, std::span<const int> columns,
                    ExpressionTotals& totals) const;

    // The value over `row` with Sum() and Count() taken from `totals`; nullopt
    // for Null (a Null operand without Nz, a division by zero, a field that is
    // not a number).
    std::optional<double> evaluate(std::span<const db::Variant> row, std::span<const int> columns,
                                   const ExpressionTotals& totals) const;

  private:
    enum class Op { Number, Field, Negate, Add, Subtract, Multiply, Divide, Sum, Count, Nz };
    struct Node {
        Op op;
        double number = 0;  // Number
        int index = -1;     // Field: into fields_; Sum: its term
        int left = -1, right = -1;
    };
    friend class ExpressionParser;

    struct Scope {
        std::span<const db::Variant> row;
        std::span<const int> columns;
        const ExpressionTotals* totals;  // null inside a Sum() term
    };
    std::optional<double> value(int node, const Scope& scope) const;

    std::vector<Node> nodes_;
    int root_ = -1;
    std::vector<QString> fields_;
    std::vector<int> sumRoots_;  // the operand of each Sum()
    bool usesTotals_ = false;
};

}  // namespace lorvane::engine
