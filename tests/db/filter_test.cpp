// The Filter criterion of a recordset, on a real recordset.
#include "db/filter.h"

#include <gtest/gtest.h>

#include "database_fixture.h"
#include "platform/runtime_error.h"

namespace lorvane::db {
namespace {

using namespace Qt::StringLiterals;
using testing::DatabaseFile;

constexpr char schema[] = R"sql(
CREATE TABLE Locali (id INTEGER PRIMARY KEY, CodLocale TEXT(6) COLLATE NOCASE,
  Insegna TEXT(50) COLLATE NOCASE, Importo CURRENCY, Data DATETIME, Sospeso BOOLEAN);
INSERT INTO Locali VALUES
  (1, 'L1', 'Bar Roma', 10, '2024-01-10 00:00:00', 0),
  (2, 'L2', 'Caffè Sport', 55.5, '2024-01-31 00:00:00', -1),
  (3, 'L3', 'BAR CITTÀ', 100, '2024-02-01 00:00:00', NULL),
  (4, 'L4', NULL, NULL, NULL, 0),
  (5, 'l1', 'Pub 1*', 10, '2024-01-10 00:00:00', 0);
)sql";

struct FilterCase {
    const char* name;
    const char* criteria;
    const char* ids;
};
void PrintTo(const FilterCase& c, std::ostream* os) { *os << c.criteria; }

class FilterTest : public ::testing::TestWithParam<FilterCase> {
  protected:
    void SetUp() override {
        connection.Open(file.connectionText());
        recordset = connection.OpenRecordset(u"SELECT * FROM Locali ORDER BY id"_s);
    }

    QString idsInView() {
        QStringList ids;
        for (; !recordset->Eof(); recordset->MoveNext())
            ids << recordset->Fields(u"id"_s).Value().text();
        return ids.join(u',');
    }

    DatabaseFile file{schema};
    Connection connection;
    RecordsetPtr recordset;
};

TEST_P(FilterTest, ShowsTheMatchingRows) {
    recordset->MoveNext();
    recordset->SetFilter(QString::fromUtf8(GetParam().criteria));
    const QString expected = QString::fromUtf8(GetParam().ids);
    EXPECT_EQ(recordset->RecordCount(), expected.isEmpty() ? 0 : int(expected.count(u',')) + 1);
    if (expected.isEmpty()) {
        EXPECT_TRUE(recordset->Bof() && recordset->Eof());
    }
    EXPECT_EQ(idsInView(), expected);
}

const FilterCase filterCases[] = {
    {"KeyEquals", "id=2", "2"},
    {"KeyEqualsWithBlanks", " id = 3 ", "3"},
    {"KeyAsText", "id='3'", "3"},
    {"NoMatch", "id=99", ""},
    {"TextIgnoresCase", "CodLocale='l1'", "1,5"},
    {"TextIgnoresCaseOfAccents", "Insegna='bar città'", "3"},
    {"NotEqual", "CodLocale<>'L1'", "2,3,4"},
    {"Range", "Importo>10 AND Importo<=100", "2,3"},
    {"AndOrFromLeftToRight", "id=1 OR id=2 AND Importo>50", "2"},
    {"OrAfterAnd", "id=1 AND Importo=10 OR id=4", "1,4"},
    {"Parentheses", "id=1 OR (id=2 AND Importo>50)", "1,2"},
    {"LikeStart", "Insegna LIKE 'bar*'", "1,3"},
    {"LikeEnd", "Insegna LIKE '%sport'", "2"},
    {"LikeBothEnds", "Insegna LIKE '*A*'", "1,2,3"},
    {"LikeWithoutWildcards", "Insegna LIKE 'bar roma'", "1"},
    {"Dates", "Data>=#01/31/2024#", "2,3"},
    {"DateEquals", "Data=#2024-01-10#", "1,5"},
    {"Boolean", "Sospeso=-1", "2"},
    {"NullEquals", "Insegna=Null", "4"},
    {"NullNotEquals", "Importo<>Null", "1,2,3,5"},
    {"BracketedName", "[CodLocale]='L2'", "2"},
    {"NegativeNumber", "Importo>-1", "1,2,3,5"},
    {"Decimal", "Importo=55.5", "2"},
};

INSTANTIATE_TEST_SUITE_P(Criteria, FilterTest, ::testing::ValuesIn(filterCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(FilterTest, EmptyCriterionShowsAllRowsFromTheFirst) {
    recordset->SetFilter(u"id=2"_s);
    recordset->SetFilter(QString());
    EXPECT_EQ(recordset->RecordCount(), 5);
    EXPECT_EQ(recordset->Filter(), QString());
    EXPECT_EQ(recordset->Fields(u"id"_s).Value().text(), u"1"_s);
}

TEST_F(FilterTest, BadCriteriaAreRefusedQuotingThem) {
    const char* bad[] = {
        "id==2",          "Nessuno=1",       "id 2", "Insegna LIKE 'b*r'", "id=2 AND",
        "Insegna LIKE 3", "id=#31/31/2024#", "(id=1"};
    for (const char* criteria : bad) {
        try {
            recordset->SetFilter(QString::fromUtf8(criteria));
            ADD_FAILURE() << criteria << " accepted";
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().startsWith(u"Filtro non valido"_s)) << error.what();
            EXPECT_TRUE(error.message().contains(QString::fromUtf8(criteria))) << error.what();
        }
    }
}

TEST_F(FilterTest, BracketsNestUpToTheLimitAndBeyondItAreRefusedWithoutACrash) {
    const auto nested = [](int depth) {
        return u"("_s.repeated(depth) + u"id=2"_s + u")"_s.repeated(depth);
    };
    recordset->SetFilter(nested(MaxFilterNesting));
    EXPECT_EQ(idsInView(), u"2"_s);
    for (const int depth : {MaxFilterNesting + 1, 100000}) {
        const QString criteria = nested(depth);
        try {
            recordset->SetFilter(criteria);
            ADD_FAILURE() << "accepted at depth " << depth;
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(
                u"più di %1 parentesi una dentro l'altra, al carattere %2"_s.arg(MaxFilterNesting)
                    .arg(MaxFilterNesting + 1)))
                << error.what();
            EXPECT_TRUE(error.message().contains(criteria.left(100))) << "the criterion is named";
            EXPECT_LT(error.message().size(), 1000) << "a long criterion is quoted cut";
        }
    }
}

TEST(EqualityKey, MatchesNumbersByValueAndTextsWithoutCase) {
    EXPECT_EQ(equalityKey(Variant(5)), equalityKey(Variant(5.0)));
    EXPECT_EQ(equalityKey(Variant(Currency{50000})), equalityKey(Variant(qint16(5))));
    EXPECT_EQ(equalityKey(Variant(u"Città"_s)), equalityKey(Variant(u"CITTÀ"_s)));
    EXPECT_NE(equalityKey(Variant(u"5"_s)), equalityKey(Variant(5)));
    EXPECT_TRUE(equalityKey(Variant::null()).isEmpty());
}

}  // namespace
}  // namespace lorvane::db
