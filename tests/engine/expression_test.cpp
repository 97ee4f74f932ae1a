// The computed items' expressions: values over a row and over the rows of a
// scope, Null and division by zero, and the faults found as they are parsed.
#include "engine/expression.h"

#include <gtest/gtest.h>

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;
using db::Variant;

// The rows' columns: In, Out, Molt, Zero, Nothing (Null), Name (a text).
const std::vector<std::vector<Variant>> rows = {
    {Variant(100.0), Variant(80.0), Variant(qint32(2)), Variant(0.0), Variant::null(),
     Variant(u"Bar"_s)},
    {Variant(50.0), Variant(10.0), Variant::null(), Variant(0.0), Variant::null(),
     Variant(u"Bar"_s)},
    {Variant(db::Currency::fromDouble(250.5)), Variant(200.0), Variant(qint32(1)), Variant(0.0),
     Variant::null(), Variant(u"Bar"_s)},
};
const QStringList columnNames = {u"In"_s, u"Out"_s, u"Molt"_s, u"Zero"_s, u"Nothing"_s, u"Name"_s};

// The value of `text` on the last row, with the sums over all three rows;
// "null" for Null, "error at N" for a fault.
std::string valueOf(const QString& text) {
    try {
        const Expression expression = Expression::parse(text);
        std::vector<int> columns;
        for (const QString& field : expression.fields()) {
            const auto found = std::find_if(
                columnNames.begin(), columnNames.end(),
                [&](const QString& name) { return name.compare(field, Qt::CaseInsensitive) == 0; });
            if (found == columnNames.end()) return "unknown " + field.toStdString();
            columns.push_back(int(found - columnNames.begin()));
        }
        ExpressionTotals totals;
        for (const auto& row : rows)
            expression.accumulate(row, columns, totals);
        const std::optional<double> value = expression.evaluate(rows.back(), columns, totals);
        return value ? QString::number(*value, 'g', 12).toStdString() : "null";
    } catch (const ExpressionError& error) {
        return "error at " + std::to_string(error.position);
    }
}

struct Case {
    const char* name;
    const char* text;
    const char* expected;
};

class ExpressionValue : public ::testing::TestWithParam<Case> {};

TEST_P(ExpressionValue, IsThatOfTheRowsAndScope) {
    EXPECT_EQ(valueOf(QString::fromUtf8(GetParam().text)), GetParam().expected) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Table, ExpressionValue,
    ::testing::Values(
        Case{"Number", "42", "42"}, Case{"DecimalNumber", "2.5 * 2", "5"},
        Case{"FieldOfTheRow", "Out", "200"}, Case{"CurrencyField", "In", "250.5"},
        Case{"BracketedField", "[Out] - [In]", "-50.5"},
        Case{"FieldNamesIgnoreCase", "out + OUT", "400"},
        Case{"PrecedenceOfProducts", "1 + 2 * 3 - 4 / 2", "5"},
        Case{"Parentheses", "(1 + 2) * 3", "9"}, Case{"LeftToRight", "8 / 2 / 2", "2"},
        Case{"UnaryMinus", "-Out + --3", "-197"}, Case{"UnaryMinusOfProduct", "-2 * -3", "6"},
        Case{"SumOverTheScope", "Sum(In)", "400.5"},
        Case{"SumOfAProduct", "Sum(Out * Molt)", "360"}, Case{"SumSkipsNullRows", "Sum(Molt)", "3"},
        Case{"SumOfNullsIsNull", "Sum(Nothing)", "null"}, Case{"CountOfRows", "Count()", "3"},
        Case{"PayoutPercentage", "100 * Sum(Out * Molt) / Sum(In * Molt)", "79.9112097669"},
        Case{"MeanPerRow", "Sum(In) / Count()", "133.5"},
        Case{"NullOperandGivesNull", "In + Nothing", "null"},
        Case{"NzReplacesNull", "In + Nz(Nothing, 1)", "251.5"},
        Case{"NzKeepsAValue", "Nz(Out, 1)", "200"},
        Case{"NzOfSumOfNulls", "Nz(Sum(Nothing), 0)", "0"},
        Case{"DivisionByZeroIsNull", "In / Zero", "null"},
        Case{"DivisionBySumOfZeroIsNull", "Sum(In) / Sum(Zero)", "null"},
        Case{"TextFieldIsNull", "Name * 2", "null"},
        Case{"FunctionNamesIgnoreCase", "sum(Out) + COUNT() + nz(Nothing, 0)", "293"},
        Case{"UnknownFieldIsLeftToTheCaller", "Out + Missing", "unknown Missing"},
        Case{"SyntaxTrailingOperator", "In +", "error at 5"},
        Case{"SyntaxUnknownFunction", "Avg(In)", "error at 1"},
        Case{"SyntaxUnclosedParenthesis", "(In + 1", "error at 8"},
        Case{"SyntaxUnclosedBracket", "[In + 1", "error at 1"},
        Case{"SyntaxStrayCharacter", "In % 2", "error at 4"},
        Case{"SyntaxTwoValues", "In Out", "error at 4"},
        Case{"SyntaxCountTakesNothing", "Count(In)", "error at 7"},
        Case{"SyntaxNzTakesTwo", "Nz(In)", "error at 6"},
        Case{"SumInsideSum", "Sum(1 + Sum(In))", "error at 9"},
        Case{"BadNumber", "1.2.3", "error at 1"}, Case{"Empty", "  ", "error at 3"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ExpressionDepth, NestingBeyondTheLimitIsRefusedNotOverflowed) {
    const auto nested = [](int depth) {
        return QString(depth, u'(') + u"1"_s + QString(depth, u')');
    };
    EXPECT_EQ(valueOf(nested(Expression::MaxDepth - 2)), "1");
    EXPECT_EQ(valueOf(nested(100000)).rfind("error at", 0), 0u);
    EXPECT_EQ(valueOf(QString(100000, u'-') + u"1"_s).rfind("error at", 0), 0u);
}

}  // namespace
}  // namespace lorvane::engine
