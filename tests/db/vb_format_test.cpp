#include "db/vb_format.h"

#include <gtest/gtest.h>

namespace lorvane::db {
namespace {

struct Row {
    const char* name;
    Variant value;
    const char* format;
    const char* expected;
};

void expectRows(std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FormatVariant(row.value, QString::fromUtf8(row.format)),
                  QString::fromUtf8(row.expected));
    }
}

// Wednesday 31 January 2024, 14:05:09.
Variant sample() { return Variant(DateTime::fromParts(QDate(2024, 1, 31), QTime(14, 5, 9))); }

TEST(FormatVariant, DatePatterns) {
    const Variant d = sample();
    expectRows({
        {"month_first", d, "mm/dd/yyyy", "01/31/2024"},
        {"day_first", d, "dd/mm/yyyy", "31/01/2024"},
        {"iso_order", d, "yyyy-mm-dd", "2024-01-31"},
        {"unpadded_and_short_year", d, "d/m/yy", "31/1/24"},
        {"tokens_ignore_case", d, "DD/MM/YYYY", "31/01/2024"},
        {"month_name_lower_case", d, "mmmm", "gennaio"},
        {"month_abbreviation", d, "mmm", "gen"},
        {"day_abbreviation", d, "ddd", "mer"},
        {"day_name", d, "dddd", "mercoledì"},
        {"time", d, "hh:nn:ss", "14:05:09"},
        {"m_after_hour_is_minutes", d, "hh:mm", "14:05"},
        {"m_after_hour_past_literal_is_minutes", d, "h\"h\"m", "14h5"},
        {"m_before_hour_is_month", d, "m hh", "1 14"},
        {"unpadded_time", d, "h:n:s", "14:5:9"},
        {"twelve_hour_clock", d, "hh:nn AM/PM", "02:05 PM"},
        {"twelve_hour_letters_keep_case", d, "h a/p", "2 p"},
        {"quarter_weekday_week_dayofyear", d, "q w ww y", "1 4 5 31"},
        {"quoted_and_escaped_literals", d, "d \"di\" mmmm \\y", "31 di gennaio y"},
        {"short_date_token", d, "ddddd", "31/01/2024"},
        {"general_date_token", d, "c", "31/01/2024 14:05:09"},
    });
}

TEST(FormatVariant, NamedDateFormats) {
    const Variant d = sample();
    expectRows({
        {"short_date", d, "Short Date", "31/01/2024"},
        {"long_date", d, "Long Date", "mercoledì 31 gennaio 2024"},
        {"medium_date", d, "Medium Date", "31-gen-24"},
        {"general_date", d, "General Date", "31/01/2024 14:05:09"},
        {"names_ignore_case", d, "short time", "14:05"},
        {"long_time", d, "Long Time", "14:05:09"},
        {"number_as_serial", Variant(qint32(45322)), "Short Date", "31/01/2024"},
    });
}

TEST(FormatVariant, TextThatReadsAsADate) {
    expectRows({
        {"iso_storage_form", "2024-01-31 00:00:00", "dd/mm/yyyy", "31/01/2024"},
        {"italian_short_date", "31/01/2024", "yyyy-mm-dd", "2024-01-31"},
        {"named_format", "2024-01-31 14:05:09", "Long Time", "14:05:09"},
        {"serial_number", Variant(45322.5), "dd/mm/yyyy hh:nn", "31/01/2024 12:00"},
        {"other_text_unchanged", "abc", "dd/mm/yyyy", "abc"},
        {"other_text_unchanged_by_number_format", "n/d", "#,##0.00", "n/d"},
    });
}

TEST(FormatVariant, NumberPatterns) {
    expectRows({
        {"grouping_and_decimals", 1234.5, "#,##0.00", "1.234,50"},
        {"grouping_millions", 1234567.891, "#,##0", "1.234.568"},
        {"percent", 0.5, "0%", "50%"},
        {"negative_section_has_no_sign", Variant(qint16(-3)), "0;(0)", "(3)"},
        {"zero_section", 0.0, "0;-0;zero", "zero"},
        {"positive_with_three_sections", 5.0, "0;-0;zero", "5"},
        {"single_section_adds_minus", -1234.5, "#,##0.00", "-1.234,50"},
        {"empty_negative_section_uses_first", -5.0, "0;;zero", "-5"},
        {"half_away_from_zero", 2.5, "0", "3"},
        {"negative_half_away_from_zero", -2.5, "0", "-3"},
        {"decimal_written_value_rounds", 2.675, "0.00", "2,68"},
        {"another_written_tie", 1.005, "0.00", "1,01"},
        {"rounds_to_negative_zero", -0.001, "0.00", "-0,00"},
        {"hash_drops_leading_zero", 0.5, "#.##", ",5"},
        {"point_stays_without_fraction", 5.0, "#.##", "5,"},
        {"optional_fraction_digit_dropped", 1.5, "0.0#", "1,5"},
        {"optional_fraction_digit_kept", 1.25, "0.0#", "1,25"},
        {"zero_padding", Variant(qint16(7)), "000", "007"},
        {"more_digits_than_placeholders", Variant(qint32(123456)), "0", "123456"},
        {"comma_before_point_divides_by_thousand", Variant(qint32(1234567)), "#,##0,", "1.235"},
        {"two_commas_divide_by_million", Variant(qint32(1234567)), "0,,.0", "1,2"},
        {"digits_around_literal", Variant(qint32(123456)), "000-000", "123-456"},
        {"quoted_prefix", 1234.5, "\"Tot: \"#,##0.00", "Tot: 1.234,50"},
        {"escaped_suffix", 3.0, "0\\x", "3x"},
        {"scientific", 1234.5, "0.00E+00", "1,23E+03"},
        {"scientific_negative_exponent", 0.00012, "0.0E-00", "1,2E-04"},
        {"scientific_rounding_carries", 99999.0, "0.0E+0", "1,0E+5"},
        {"scientific_minus_hides_plus", 1234.5, "0.0e-0", "1,2e3"},
        {"currency_value_exact", Currency{12345}, "0.000", "1,235"},
        {"decimal_value_exact", Decimal(123456789012345678, 10), "#,##0.0000000000",
         "12.345.678,9012345678"},
        {"boolean_is_minus_one", true, "0", "-1"},
        {"date_as_serial", Variant(DateTime::fromParts(QDate(2024, 1, 31))), "0", "45322"},
        {"numeric_text", "1.234,5", "#,##0.00", "1.234,50"},
    });
}

TEST(FormatVariant, NamedNumberFormats) {
    expectRows({
        {"standard", 1234.5, "Standard", "1.234,50"},
        {"fixed", 1234.5, "Fixed", "1234,50"},
        {"currency", 1234.5, "Currency", "€ 1.234,50"},
        {"negative_currency", -1234.5, "Currency", "-€ 1.234,50"},
        {"general_number", 1234.5, "General Number", "1234,5"},
        {"general_number_of_currency", Currency{12345}, "General Number", "1,2345"},
        {"percent", 0.5, "Percent", "50,00%"},
        {"scientific", 1234.5, "Scientific", "1,23E+03"},
        {"yes_no", true, "Yes/No", "Sì"},
        {"true_false_of_zero", 0.0, "True/False", "Falso"},
        {"on_off_of_number", Variant(qint16(5)), "On/Off", "Attivo"},
    });
}

TEST(FormatVariant, NullEmptyFormatAndEmptyValue) {
    expectRows({
        {"null_number_format", Variant::null(), "0", ""},
        {"null_named_format", Variant::null(), "Standard", ""},
        {"null_date_format", Variant::null(), "dd/mm/yyyy", ""},
        {"null_fourth_section", Variant::null(), "0;-0;0;\"n/d\"", "n/d"},
        {"empty_format_is_cstr", 1234.5, "", "1234,5"},
        {"empty_format_boolean", true, "", "Vero"},
        {"empty_format_null", Variant::null(), "", ""},
        {"empty_value_as_zero", Variant(), "0.00", "0,00"},
    });
}

TEST(FormatVariant, TextPlaceholders) {
    expectRows({
        {"numeric_text_stays_as_written", "0012", "@", "0012"},
        {"upper_case", "città", ">", "CITTÀ"},
        {"padded_on_the_left", "ab", "@@@@", "  ab"},
        {"padded_on_the_right", "ab", "!@@@@", "ab  "},
        {"number_uses_its_text", 1.5, "&", "1,5"},
        {"null", Variant::null(), "@", ""},
    });
}

}  // namespace
}  // namespace lorvane::db
