#include "engine/expression.h"

#include <algorithm>

namespace lorvane::engine {

using namespace Qt::StringLiterals;

// A recursive-descent parser over the text:
//   sum     := product (('+' | '-') product)*
//   product := unary (('*' | '/') unary)*
//   unary   := '-' unary | '+' unary | primary
//   primary := number | name | '[' name ']' | '(' sum ')' | name '(' arguments ')'
class ExpressionParser {
  public:
    explicit ExpressionParser(const QString& text) : text_(text) {}

    Expression run() {
        expression_.root_ = sum();
        skipSpaces();
        if (at_ < text_.size()) fail(u"\"%1\" inatteso"_s.arg(text_[at_]));
        return std::move(expression_);
    }

  private:
    using Op = Expression::Op;

    [[noreturn]] void fail(const QString& what, qsizetype at = -1) const {
        throw ExpressionError{what, int(at < 0 ? at_ : at) + 1};
    }

    void skipSpaces() {
        while (at_ < text_.size() && text_[at_].isSpace())
            ++at_;
    }
    bool accept(QChar c) {
        skipSpaces();
        if (at_ < text_.size() && text_[at_] == c) {
            ++at_;
            return true;
        }
        return false;
    }
    void expect(QChar c) {
        if (!accept(c)) {
            if (at_ >= text_.size()) fail(u"manca \"%1\" alla fine"_s.arg(c));
            fail(u"atteso \"%1\" invece di \"%2\""_s.arg(c, text_[at_]));
        }
    }

    int add(Expression::Node node) {
        expression_.nodes_.push_back(node);
        return int(expression_.nodes_.size()) - 1;
    }

    // Counts one level of nesting for the life of the object; every way down
    // (parentheses, signs, calls) passes through unary().
    struct Nesting {
        explicit Nesting(ExpressionParser& parser) : parser_(parser) {
            if (++parser_.depth_ > Expression::MaxDepth) {
                parser_.fail(u"espressione annidata oltre %1 livelli"_s.arg(Expression::MaxDepth));
            }
        }
        ~Nesting() { --parser_.depth_; }
        ExpressionParser& parser_;
    };

    int sum() {
        int left = product();
        for (;;) {
            if (accept(u'+')) {
                left = add({Op::Add, 0, -1, left, product()});
            } else if (accept(u'-')) {
                left = add({Op::Subtract, 0, -1, left, product()});
            } else {
                return left;
            }
        }
    }

    int product() {
        int left = unary();
        for (;;) {
            if (accept(u'*')) {
                left = add({Op::Multiply, 0, -1, left, unary()});
            } else if (accept(u'/')) {
                left = add({Op::Divide, 0, -1, left, unary()});
            } else {
                return left;
            }
        }
    }

    int unary() {
        Nesting nesting(*this);
        if (accept(u'-')) return add({Op::Negate, 0, -1, unary(), -1});
        if (accept(u'+')) return unary();
        return primary();
    }

    int field(const QString& name) {
        auto& fields = expression_.fields_;
        const auto found = std::find_if(fields.begin(), fields.end(), [&](const QString& f) {
            return f.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (found != fields.end()) return add({Op::Field, 0, int(found - fields.begin())});
        fields.push_back(name);
        return add({Op::Field, 0, int(fields.size()) - 1});
    }

    int primary() {
        skipSpaces();
        if (at_ >= text_.size()) fail(u"l'espressione finisce prima del tempo"_s);
        const qsizetype start = at_;
        const QChar c = text_[at_];
        if (accept(u'(')) {
            const int inner = sum();
            expect(u')');
            return inner;
        }
        if (c.isDigit() || c == u'.') {
            while (at_ < text_.size() && (text_[at_].isDigit() || text_[at_] == u'.'))
                ++at_;
            bool ok = false;
            const double number = text_.mid(start, at_ - start).toDouble(&ok);
            if (!ok) fail(u"numero \"%1\" non valido"_s.arg(text_.mid(start, at_ - start)), start);
            return add({Op::Number, number});
        }
        if (c == u'[') {
            const qsizetype close = text_.indexOf(u']', at_);
            if (close < 0) fail(u"manca \"]\" dopo \"[\""_s);
            const QString name = text_.mid(at_ + 1, close - at_ - 1).trimmed();
            if (name.isEmpty()) fail(u"nome di campo vuoto fra parentesi quadre"_s);
            at_ = close + 1;
            return field(name);
        }
        if (c.isLetter() || c == u'_') {
            while (at_ < text_.size() && (text_[at_].isLetterOrNumber() || text_[at_] == u'_'))
                ++at_;
            const QString name = text_.mid(start, at_ - start);
            if (!accept(u'(')) return field(name);
            return call(name, start);
        }
        fail(u"\"%1\" inatteso"_s.arg(c));
    }

    // After "name(": the call's arguments and ")".
    int call(const QString& name, qsizetype start) {
        if (name.compare(u"Count"_s, Qt::CaseInsensitive) == 0) {
            if (inSum_) fail(u"Count dentro Sum"_s, start);
            expect(u')');
            expression_.usesTotals_ = true;
            return add({Op::Count});
        }
        if (name.compare(u"Sum"_s, Qt::CaseInsensitive) == 0) {
            if (inSum_) fail(u"Sum dentro Sum"_s, start);
            inSum_ = true;
            const int inner = sum();
            inSum_ = false;
            expect(u')');
            expression_.usesTotals_ = true;
            expression_.sumRoots_.push_back(inner);
            return add({Op::Sum, 0, int(expression_.sumRoots_.size()) - 1, inner});
        }
        if (name.compare(u"Nz"_s, Qt::CaseInsensitive) == 0) {
            const int value = sum();
            expect(u',');
            const int fallback = sum();
            expect(u')');
            return add({Op::Nz, 0, -1, value, fallback});
        }
        fail(u"funzione \"%1\" sconosciuta (si usano Sum, Count, Nz)"_s.arg(name), start);
    }

    const QString& text_;
    qsizetype at_ = 0;
    int depth_ = 0;
    bool inSum_ = false;
    Expression expression_;
};

Expression Expression::parse(const QString& text) { return ExpressionParser(text).run(); }

void Expression::accumulate(std::span<const db::Variant> row, std::span<const int> columns,
                            ExpressionTotals& totals) const {
    totals.sums.resize(sumRoots_.size());
    for (size_t i = 0; i < sumRoots_.size(); ++i) {
        const std::optional<double> term = value(sumRoots_[i], {row, columns, nullptr});
        if (!term) continue;
        std::optional<double>& sum = totals.sums[i];
        sum = sum.value_or(0) + *term;
    }
    ++totals.count;
}

std::optional<double> Expression::evaluate(std::span<const db::Variant> row,
                                           std::span<const int> columns,
                                           const ExpressionTotals& totals) const {
    return value(root_, {row, columns, &totals});
}

std::optional<double> Expression::value(int index, const Scope& scope) const {
    const Node& node = nodes_[size_t(index)];
    const auto operand = [&](int which) { return value(which, scope); };
    const ExpressionTotals* totals = scope.totals;
    switch (node.op) {
        case Op::Number:
            return node.number;
        case Op::Field: {
            if (size_t(node.index) >= scope.columns.size()) return std::nullopt;
            const size_t column = size_t(scope.columns[size_t(node.index)]);
            if (column >= scope.row.size()) return std::nullopt;
            const db::Variant& cell = scope.row[column];
            if (cell.isNull() || cell.isEmpty() || !cell.isNumeric()) return std::nullopt;
            return cell.toDouble();
        }
        case Op::Negate: {
            const auto a = operand(node.left);
            return a ? std::optional(-*a) : std::nullopt;
        }
        case Op::Add:
        case Op::Subtract:
        case Op::Multiply:
        case Op::Divide: {
            const auto a = operand(node.left);
            const auto b = operand(node.right);
            if (!a || !b) return std::nullopt;
            if (node.op == Op::Add) return *a + *b;
            if (node.op == Op::Subtract) return *a - *b;
            if (node.op == Op::Multiply) return *a * *b;
            if (*b == 0) return std::nullopt;
            return *a / *b;
        }
        case Op::Sum:
            if (!totals || size_t(node.index) >= totals->sums.size()) return std::nullopt;
            return totals->sums[size_t(node.index)];
        case Op::Count:
            return totals ? double(totals->count) : 0.0;
        case Op::Nz: {
            const auto a = operand(node.left);
            return a ? a : operand(node.right);
        }
    }
    return std::nullopt;
}

}  // namespace lorvane::engine
