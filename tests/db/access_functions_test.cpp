// The Access functions every connection carries, called from SQL.
#include "db/access_functions.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include "database_fixture.h"
#include "platform/runtime_error.h"

namespace lorvane::db {
namespace {

using namespace Qt::StringLiterals;
using testing::DatabaseFile;
using testing::recordsetText;

struct FunctionCase {
    const char* expression;
    const char* result;  // as the recordset shows it; "NULL" for Null
};
void PrintTo(const FunctionCase& c, std::ostream* os) { *os << c.expression; }

// A test name from the expression: its letters and digits, the rest as "_".
std::string caseName(const ::testing::TestParamInfo<FunctionCase>& info) {
    std::string name;
    for (const char* p = info.param.expression; *p; ++p) {
        name += std::isalnum(static_cast<unsigned char>(*p)) ? *p : '_';
    }
    return name + "_" + std::to_string(info.index);
}

class AccessFunctions : public ::testing::TestWithParam<FunctionCase> {
  protected:
    void SetUp() override { connection.Open(file.connectionText()); }

    DatabaseFile file{
        "CREATE TABLE T (Data DATETIME, Vuoto TEXT);"
        "INSERT INTO T VALUES ('2024-02-29 13:45:00', NULL);"};
    Connection connection;
};

TEST_P(AccessFunctions, GiveWhatAccessGives) {
    const QString sql = u"SELECT "_s + QString::fromUtf8(GetParam().expression) + u" AS R FROM T"_s;
    RecordsetPtr recordset = connection.OpenRecordset(sql);
    EXPECT_EQ(recordsetText(*recordset), QString::fromUtf8(GetParam().result))
        << GetParam().expression;
}

const FunctionCase functionCases[] = {
    {"Nz(Vuoto, 'x')", "x"},
    {"Nz(Vuoto)", ""},
    {"Nz(3, 0)", "3"},
    {"Year(Data)", "2024"},
    {"Month(Data)", "2"},
    {"Day(Data)", "29"},
    {"Year(Vuoto)", "NULL"},
    {"Format(Data, 'dd/mm/yyyy')", "29/02/2024"},
    {"Format(Data, 'mm/dd/yyyy hh:nn')", "02/29/2024 13:45"},
    {"Format(1234.5, '#,##0.00')", "1.234,50"},
    {"UCase('città')", "CITTÀ"},
    {"LCase('ABC')", "abc"},
    {"UCase(Vuoto)", "NULL"},
    {"Trim('  a b  ')", "a b"},
    {"InStr('Bar Roma', 'roma')", "5"},
    {"InStr(6, 'abcabc', 'b')", "0"},
    {"InStr(3, 'abcabc', 'b')", "5"},
    {"InStr(1, 'abc', 'B', 0)", "0"},
    {"InStr(1, 'abc', 'B', 1)", "2"},
    {"InStr(Vuoto, 'a')", "NULL"},
    {"CDbl('1,5')", "1,5"},
    {"CStr(1.5)", "1,5"},
    {"CStr(Data)", "29/02/2024 13:45:00"},
    {"Val('1.5abc')", "1,5"},
    {"Val(' 1 2 3')", "123"},
    {"Val('abc')", "0"},
    {"Round(2.5)", "2"},
    {"Round(3.5)", "4"},
    {"Round(-2.5)", "-2"},
    {"Round(0.125, 2)", "0,12"},
    {"Round(1.005, 2)", "1"},
    {"Round(Vuoto, 2)", "NULL"},
    {"Mid('Lorvane', 2, 3)", "orv"},
    {"Mid('Lorvane', 5)", "ane"},
    {"Len('Città')", "5"},
    {"Len(Vuoto)", "NULL"},
    {"LEFT('Lorvane', 3)", "Lor"},
    {"RIGHT('Lorvane', 3)", "ane"},
    {"Left(Vuoto, 2)", "NULL"},
    {"IsNull(Vuoto)", "-1"},
    {"IsNull(1)", "0"},
    {"Int(-2.5)", "-3"},
    {"Fix(-2.5)", "-2"},
    {"CLng('12,5')", "12"},
    {"CInt(32767)", "32767"},
};

INSTANTIATE_TEST_SUITE_P(Calls, AccessFunctions, ::testing::ValuesIn(functionCases), caseName);

TEST_F(AccessFunctions, FailuresReachTheCallerWithTheirText) {
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT CInt(40000) FROM T", "Overflow"},
        {"SELECT CDbl(Vuoto) FROM T", "Utilizzo non valido di Null"},
        {"SELECT CDbl('abc') FROM T", "Tipo non corrispondente"},
        {"SELECT 1 / 0 FROM T", "Divisione per zero"},
        {"SELECT Mid('abc', 0) FROM T", "argomento non validi"},
    };
    for (const auto& [sql, message] : cases) {
        try {
            connection.OpenRecordset(QString::fromUtf8(sql));
            ADD_FAILURE() << sql << " gave no error";
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(QString::fromUtf8(message))) << error.what();
        }
    }
}

TEST(FoldedCollation, OrdersTextsByCaseFoldedCodePoints) {
    const auto compare = [](const char* a, const char* b) {
        return compareFoldedUtf8(a, int(strlen(a)), b, int(strlen(b)));
    };
    EXPECT_EQ(compare("CITTÀ", "città"), 0);
    EXPECT_EQ(compare("ABC", "abc"), 0);
    EXPECT_LT(compare("abc", "abd"), 0);
    EXPECT_LT(compare("ab", "abc"), 0);
    EXPECT_GT(compare("b", "A"), 0);
    EXPECT_GT(compare("é", "z"), 0);
    EXPECT_EQ(compare("", ""), 0);
}

TEST(LikeMatches, UsesPercentAndUnderscoreWithoutCase) {
    struct Case {
        const char* pattern;
        const char* text;
        bool matches;
    };
    const Case cases[] = {
        {"%", "", true},          {"%", "abc", true},       {"a%", "ABC", true},
        {"%c", "abc", true},      {"%b%", "abc", true},     {"a_c", "abc", true},
        {"a_c", "ac", false},     {"abc", "abcd", false},   {"%città%", "LA CITTÀ", true},
        {"a%c%e", "abcde", true}, {"a%c%e", "abcd", false}, {"03.%", "03.01", true},
        {"03.%", "030.1", false}, {"%%", "x", true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(likeMatches(QString::fromUtf8(c.pattern), QString::fromUtf8(c.text)), c.matches)
            << c.pattern << " / " << c.text;
    }
    EXPECT_TRUE(likeMatches(u"10!%"_s, u"10%"_s, U'!'));
    EXPECT_FALSE(likeMatches(u"10!%"_s, u"100"_s, U'!'));
}

}  // namespace
}  // namespace lorvane::db
