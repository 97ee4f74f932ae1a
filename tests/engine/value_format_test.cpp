// The display formats of layouts.
#include "engine/value_format.h"

#include <gtest/gtest.h>

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;
using db::Variant;

TEST(ValueFormat, WritesAmountsAndDatesTheItalianWay) {
    const std::tuple<Variant, const char*, const char*> cases[] = {
        {Variant(1234567.891), "#.##0,00", "1.234.567,89"},
        {Variant(-1234.5), "#.##0,00", "-1.234,50"},
        {Variant(0.0), "#.##0,00", "0,00"},
        {Variant(2.675), "0,00", "2,68"},
        {Variant(db::Currency{12345}), "#.##0,00", "1,23"},
        {Variant(999.5), "#.##0", "1.000"},
        {Variant(42), "0000", "0042"},
        {Variant(0.125), "0,0%", "12,5%"},
        {Variant(1234.5), "€ #.##0,00", "€ 1.234,50"},
        {Variant(1.5), "0,##", "1,5"},
        {Variant(u"1234,5"_s), "#.##0,00", "1.234,50"},
        {Variant(db::DateTime::fromParts(QDate(2024, 2, 29))), "dd/MM/yyyy", "29/02/2024"},
        {Variant(u"2024-02-29 13:45:00"_s), "dd/MM/yyyy HH:mm", "29/02/2024 13:45"},
        {Variant(db::DateTime::fromParts(QDate(2024, 1, 5))), "d MMMM yyyy", "5 gennaio 2024"},
        {Variant(u"non è un numero"_s), "#.##0,00", "non è un numero"},
        {Variant::null(), "#.##0,00", ""},
        {Variant(1234.5), "", "1234,5"},
    };
    for (const auto& [value, format, text] : cases) {
        EXPECT_EQ(formatValue(value, QString::fromUtf8(format)), QString::fromUtf8(text))
            << format << " " << text;
    }
}

}  // namespace
}  // namespace lorvane::engine
