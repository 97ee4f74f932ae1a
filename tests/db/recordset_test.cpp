// Client-side recordsets: counting, moving, field types, write-back.
#include "db/recordset.h"

#include <gtest/gtest.h>

#include "database_fixture.h"
#include "platform/runtime_error.h"

namespace lorvane::db {
namespace {

using namespace Qt::StringLiterals;
using testing::DatabaseFile;
using testing::recordsetText;

constexpr char schema[] = R"sql(
CREATE TABLE Tipi (Si BOOLEAN, SiNo YESNO, Corto SMALLINT, Intero INTEGER, Lungo LONG,
  Contatore COUNTER, Doppio DOUBLE, Valuta CURRENCY, Data DATETIME, Decimale DECIMAL(18,4),
  Testo TEXT(50), Nota MEMO);
INSERT INTO Tipi VALUES (-1, 0, 7, 8, 9, 10, 1.5, 0.1, '2024-02-29 00:00:00', '12.3456', 'abc', 'lunga');
CREATE TABLE Locali (id INTEGER PRIMARY KEY AUTOINCREMENT, CodLocale TEXT(6) COLLATE NOCASE,
  Insegna TEXT(50) COLLATE NOCASE, Sospeso BOOLEAN, Rimanenza CURRENCY DEFAULT 0);
INSERT INTO Locali (CodLocale, Insegna, Sospeso, Rimanenza) VALUES ('L1', 'Bar Roma', 0, 10.5),
  ('L2', 'Caffè Sport', -1, NULL), ('L3', NULL, NULL, 3);
CREATE TABLE Note (id INTEGER PRIMARY KEY, CodLocale TEXT(6), Importo CURRENCY);
INSERT INTO Note VALUES (1, 'L1', 0.1), (2, 'L1', 0.2), (3, 'L2', 5);
CREATE VIEW VistaLocali AS SELECT * FROM Locali;
)sql";

class RecordsetTest : public ::testing::Test {
  protected:
    void SetUp() override { connection.Open(file.connectionText()); }
    RecordsetPtr open(const QString& sql) { return connection.OpenRecordset(sql); }

    DatabaseFile file{schema};
    Connection connection;
};

TEST_F(RecordsetTest, CountIsExactAtOnceAndMovingWalksEveryRow) {
    RecordsetPtr recordset = open(u"SELECT * FROM Locali ORDER BY id"_s);
    EXPECT_EQ(recordset->RecordCount(), 3);
    EXPECT_FALSE(recordset->Bof());
    EXPECT_EQ(recordset->Fields(u"codlocale"_s).Value().text(), u"L1"_s);
    EXPECT_EQ(recordset->Fields(1).Value().text(), u"L1"_s);
    EXPECT_EQ(recordsetText(*recordset),
              u"1|L1|Bar Roma|Falso|10,5;2|L2|Caffè Sport|Vero|NULL;3|L3|NULL|NULL|3"_s);
    EXPECT_TRUE(recordset->Eof());
    EXPECT_THROW(recordset->MoveNext(), RuntimeError);
    EXPECT_THROW(recordset->Fields(0).Value(), RuntimeError);
    recordset->MoveFirst();
    EXPECT_EQ(recordset->AbsolutePosition(), 1);
}

TEST_F(RecordsetTest, OrderByAPositionMeansTheColumnAskedFor) {
    RecordsetPtr recordset = open(u"SELECT Rimanenza, CodLocale FROM Locali ORDER BY 1 DESC"_s);
    QStringList codes;
    for (; !recordset->Eof(); recordset->MoveNext())
        codes << recordset->Fields(u"CodLocale"_s).Value().text();
    EXPECT_EQ(codes, QStringList({u"L1"_s, u"L3"_s, u"L2"_s}));
    EXPECT_TRUE(recordset->IsUpdatable());
}

TEST_F(RecordsetTest, EmptyResultIsBothBofAndEof) {
    RecordsetPtr recordset = open(u"SELECT * FROM Locali WHERE id = 99"_s);
    EXPECT_EQ(recordset->RecordCount(), 0);
    EXPECT_TRUE(recordset->Bof());
    EXPECT_TRUE(recordset->Eof());
    EXPECT_THROW(recordset->MoveFirst(), RuntimeError) << "no first record to move to";
}

TEST_F(RecordsetTest, UnknownFieldGivesTheCollectionMessage) {
    RecordsetPtr recordset = open(u"SELECT * FROM Locali"_s);
    try {
        recordset->Fields(u"Nessuno"_s);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.message().startsWith(u"Impossibile trovare l'elemento nell'insieme"_s));
        EXPECT_TRUE(error.message().contains(u"Nessuno"_s));
    }
    EXPECT_EQ(recordset->FindField(u"NESSUNO"_s), nullptr);
    EXPECT_THROW(recordset->Fields(5), RuntimeError);
}

TEST_F(RecordsetTest, FieldTypesFollowTheDeclaredColumnTypes) {
    RecordsetPtr recordset = open(u"SELECT * FROM Tipi"_s);
    const std::tuple<const char*, int, const char*> expected[] = {
        {"Si", 11, "Vero"},           {"SiNo", 11, "Falso"}, {"Corto", 2, "7"},
        {"Intero", 3, "8"},           {"Lungo", 3, "9"},     {"Contatore", 3, "10"},
        {"Doppio", 5, "1,5"},         {"Valuta", 6, "0,1"},  {"Data", 7, "29/02/2024"},
        {"Decimale", 131, "12,3456"}, {"Testo", 202, "abc"}, {"Nota", 203, "lunga"},
    };
    for (const auto& [name, type, text] : expected) {
        const Field& field = recordset->Fields(QString::fromUtf8(name));
        EXPECT_EQ(field.Type(), type) << name;
        EXPECT_EQ(field.Value().text(), QString::fromUtf8(text)) << name;
    }
    EXPECT_EQ(recordset->Fields(u"Testo"_s).DefinedSize(), 50);
    EXPECT_EQ(recordset->Fields(u"Corto"_s).Value().type(), VarType::Integer);
    EXPECT_EQ(recordset->Fields(u"Valuta"_s).Value().type(), VarType::Currency);
}

TEST_F(RecordsetTest, ExpressionsTakeTheTypeOfTheirFirstValue) {
    RecordsetPtr recordset = open(
        u"SELECT COUNT(*) AS N, SUM(Importo) AS S, MAX(CodLocale) AS M, 'x' & '' AS T, "
        "#01/02/2024# AS D, 1.5 AS F FROM Note"_s);
    const std::pair<const char*, int> expected[] = {{"N", 3},   {"S", 5}, {"M", 202},
                                                    {"T", 202}, {"D", 7}, {"F", 5}};
    for (const auto& [name, type] : expected) {
        EXPECT_EQ(recordset->Fields(QString::fromUtf8(name)).Type(), type) << name;
    }
    EXPECT_EQ(recordset->Fields(u"S"_s).Value().text(), u"5,3"_s);
}

TEST_F(RecordsetTest, WholeNumbersFollowedByAFractionWidenToDouble) {
    RecordsetPtr recordset =
        open(u"SELECT id * 1.5 / 1.5 + IIF(id = 3, 0.25, 0) AS X FROM Note ORDER BY id"_s);
    EXPECT_EQ(recordsetText(*recordset), u"1;2;3,25"_s);
    EXPECT_EQ(recordset->Fields(0).Type(), 5);
}

struct UpdatableCase {
    const char* name;
    const char* sql;
    bool updatable;
};
void PrintTo(const UpdatableCase& c, std::ostream* os) { *os << c.sql; }

class RecordsetUpdatable : public RecordsetTest,
                           public ::testing::WithParamInterface<UpdatableCase> {};

TEST_P(RecordsetUpdatable, OnlyWhenItReadsOneTable) {
    RecordsetPtr recordset = open(QString::fromUtf8(GetParam().sql));
    EXPECT_EQ(recordset->IsUpdatable(), GetParam().updatable);
    if (!GetParam().updatable) {
        try {
            recordset->AddNew();
            FAIL() << "AddNew accepted";
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(u"non è aggiornabile"_s)) << error.what();
        }
    }
}

const UpdatableCase updatableCases[] = {
    {"WholeTable", "SELECT * FROM Locali", true},
    {"TableWithWhere", "SELECT * FROM Locali WHERE Sospeso = 0 ORDER BY Insegna", true},
    {"TableWithAlias", "SELECT l.* FROM Locali l WHERE l.id > 1", true},
    {"SomeColumnsAndAnExpression", "SELECT id, CodLocale, LEFT(Insegna, 3) AS Breve FROM Locali",
     true},
    {"Join", "SELECT l.* FROM Locali l INNER JOIN Note n ON n.CodLocale = l.CodLocale", false},
    {"TwoTables", "SELECT l.* FROM Locali l, Note n WHERE n.CodLocale = l.CodLocale", false},
    {"Aggregate", "SELECT COUNT(*) FROM Locali", false},
    {"Grouped", "SELECT CodLocale FROM Note GROUP BY CodLocale", false},
    {"Distinct", "SELECT DISTINCT CodLocale FROM Note", false},
    {"DerivedTable", "SELECT * FROM (SELECT * FROM Locali) x", false},
    {"Union", "SELECT CodLocale FROM Locali UNION SELECT CodLocale FROM Note", false},
    {"View", "SELECT * FROM VistaLocali", false},
};

INSTANTIATE_TEST_SUITE_P(Statements, RecordsetUpdatable, ::testing::ValuesIn(updatableCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(RecordsetTest, AddNewAndUpdateWriteTheRowAtOnce) {
    RecordsetPtr recordset = open(u"SELECT * FROM Locali"_s);
    recordset->AddNew();
    recordset->Fields(u"CodLocale"_s) = u"L4"_s;
    recordset->Fields(u"Insegna"_s) = u"Bar Nuovo"_s;
    recordset->Fields(u"Sospeso"_s) = Variant::null();
    recordset->Update();
    EXPECT_EQ(recordset->RecordCount(), 4);
    EXPECT_EQ(recordset->Fields(u"id"_s).Value().text(), u"4"_s) << "the counter comes back";
    EXPECT_EQ(recordset->Fields(u"Rimanenza"_s).Value().text(), u"0"_s) << "so does the default";
    // The same connection sees it at once; another one after UpdateBatch.
    EXPECT_EQ(recordsetText(*open(u"SELECT Insegna FROM Locali WHERE CodLocale = 'l4'"_s)),
              u"Bar Nuovo"_s);
    recordset->UpdateBatch(Recordset::AffectAllChapters);
    EXPECT_EQ(file.query("SELECT id, CodLocale, Insegna, Sospeso FROM Locali WHERE id = 4"),
              u"4|L4|Bar Nuovo|NULL"_s);

    // A row giving fewer fields than the one before reads the others back.
    recordset->AddNew();
    recordset->Fields(u"CodLocale"_s) = u"L5"_s;
    recordset->Update();
    EXPECT_EQ(recordset->Fields(u"id"_s).Value().text(), u"5"_s);
    EXPECT_TRUE(recordset->Fields(u"Insegna"_s).Value().isNull());
    EXPECT_EQ(recordset->Fields(u"CodLocale"_s).Value().text(), u"L5"_s);
}

TEST_F(RecordsetTest, AssigningInTheCurrentRowEditsIt) {
    RecordsetPtr recordset = open(u"SELECT * FROM Locali WHERE CodLocale = 'L2'"_s);
    recordset->Fields(u"Rimanenza"_s) = 2.75;
    recordset->Fields(u"Sospeso"_s) = false;
    EXPECT_EQ(recordset->EditMode(), Recordset::EditInProgress);
    EXPECT_EQ(recordset->Fields(u"Rimanenza"_s).Value().text(), u"2,75"_s);
    recordset->MoveNext();  // moving on writes the edit, as the legacy API does
    recordset->Close();
    EXPECT_EQ(file.query("SELECT Rimanenza, Sospeso FROM Locali WHERE CodLocale = 'L2'"),
              u"2.75|0"_s);
}

TEST_F(RecordsetTest, AssignmentsAreConvertedToTheFieldType) {
    RecordsetPtr recordset = open(u"SELECT * FROM Tipi"_s);
    recordset->Fields(u"Intero"_s) = u"12"_s;
    recordset->Fields(u"Valuta"_s) = u"1.234,5678"_s;
    recordset->Fields(u"Data"_s) = u"31/12/2024"_s;
    recordset->Fields(u"Si"_s) = 0;
    recordset->Fields(u"Testo"_s) = 1.5;
    recordset->Update();
    recordset->Close();
    EXPECT_EQ(file.query("SELECT Intero, Valuta, Data, Si, Testo FROM Tipi"),
              u"12|1234.5678|2024-12-31 00:00:00|0|1,5"_s);
}

TEST_F(RecordsetTest, AssignmentsThatDoNotFitFailAndNameTheField) {
    RecordsetPtr recordset = open(u"SELECT * FROM Tipi"_s);
    const std::pair<const char*, Variant> cases[] = {
        {"Testo", Variant(QString(51, u'x'))},
        {"Intero", Variant(u"dodici"_s)},
        {"Corto", Variant(40000)},
        {"Data", Variant(u"31/02/2024"_s)},
    };
    for (const auto& [name, value] : cases) {
        try {
            recordset->Fields(QString::fromUtf8(name)) = value;
            ADD_FAILURE() << name << " accepted";
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(QString::fromUtf8(name))) << error.what();
        }
    }
    recordset->CancelUpdate();
    recordset->Close();
    EXPECT_EQ(file.query("SELECT Testo, Intero, Corto FROM Tipi"), u"abc|8|7"_s);
}

TEST_F(RecordsetTest, ExpressionFieldsCannotBeWritten) {
    RecordsetPtr recordset = open(u"SELECT *, LEFT(Insegna, 3) AS Breve FROM Locali"_s);
    EXPECT_THROW(recordset->Fields(u"Breve"_s) = u"x"_s, RuntimeError);
    recordset->Fields(u"Insegna"_s) = u"Bar Corto"_s;
    recordset->Update();
    recordset->Close();
    EXPECT_EQ(file.query("SELECT Insegna FROM Locali WHERE id = 1"), u"Bar Corto"_s);
}

TEST_F(RecordsetTest, CloseIsRefusedWhileAnEditIsPending) {
    RecordsetPtr recordset = open(u"SELECT * FROM Locali"_s);
    recordset->AddNew();
    recordset->Fields(u"CodLocale"_s) = u"L9"_s;
    EXPECT_THROW(recordset->Close(), RuntimeError);
    recordset->CancelUpdate();
    recordset->Close();
    EXPECT_EQ(recordset->State(), Recordset::StateClosed);
    EXPECT_THROW(recordset->RecordCount(), RuntimeError);
    EXPECT_EQ(file.query("SELECT count(*) FROM Locali"), u"3"_s);
}

TEST_F(RecordsetTest, WritesAfterTheConnectionClosedAreRefused) {
    RecordsetPtr recordset = open(u"SELECT * FROM Locali"_s);
    connection.Close();
    EXPECT_EQ(recordset->RecordCount(), 3) << "the rows stay readable";
    recordset->AddNew();
    recordset->Fields(u"CodLocale"_s) = u"L9"_s;
    EXPECT_THROW(recordset->Update(), RuntimeError);
}

TEST_F(RecordsetTest, OpenedThroughACommand) {
    Command command;
    command.ActiveConnection = &connection;
    command.CommandText = u"SELECT * FROM Note"_s;
    Recordset recordset;
    recordset.Open(command);
    EXPECT_EQ(recordset.RecordCount(), 3);
    EXPECT_TRUE(recordset.IsUpdatable());
}

// A column the row left out is what the file made of it: Null where nothing
// fills it, a trigger's value, the counter's number (the row id under the
// key's own name, whatever the statement calls it, and past a sequence that
// ran ahead of the rows), and Null for a key that only looks like a counter
// (a DESC key is not the row id).
struct LeftOutCase {
    const char* name;
    const char* table;
    const char* setup;  // run after the table is made
    const char* select;
    const char* expected;  // "Numero|Nota" of the added row
};

const LeftOutCase leftOutCases[] = {
    {"NothingFillsIt", "Piana (Numero INTEGER, Codice TEXT, Nota TEXT)", nullptr,
     "SELECT * FROM Piana", "NULL|NULL"},
    {"ATrigger", "Firmata (Numero INTEGER PRIMARY KEY, Codice TEXT, Nota TEXT)",
     "CREATE TRIGGER Firma AFTER INSERT ON Firmata BEGIN UPDATE Firmata SET Nota = "
     "'dal trigger ' || new.Numero WHERE rowid = new.rowid; END",
     "SELECT * FROM Firmata", "42|dal trigger 42"},
    {"TheCounter", "Contata (Numero INTEGER PRIMARY KEY AUTOINCREMENT, Codice TEXT, Nota TEXT)",
     nullptr, "SELECT * FROM Contata", "42|NULL"},
    {"TheCounterPastItsSequence",
     "Saltata (Numero INTEGER PRIMARY KEY AUTOINCREMENT, Codice TEXT, Nota TEXT)",
     "INSERT INTO sqlite_sequence (name, seq) VALUES ('Saltata', 50)", "SELECT * FROM Saltata",
     "51|NULL"},
    {"TheCounterRenamed", "Rinominata (id INTEGER PRIMARY KEY, Codice TEXT, Nota TEXT)", nullptr,
     "SELECT Nota, id AS Numero, Codice FROM Rinominata", "42|NULL"},
    {"ADescendingKey", "Discendente (Numero INTEGER PRIMARY KEY DESC, Codice TEXT, Nota TEXT)",
     nullptr, "SELECT * FROM Discendente", "NULL|NULL"},
};

class RecordsetLeftOut : public RecordsetTest, public ::testing::WithParamInterface<LeftOutCase> {};

TEST_P(RecordsetLeftOut, IsWhatTheFileMadeOfIt) {
    const LeftOutCase& c = GetParam();
    file.query((QByteArray("CREATE TABLE ") + c.table).constData());
    if (c.setup) file.query(c.setup);
    const QString table = QString::fromLatin1(c.table).section(u' ', 0, 0);
    // A row put in first, so that the next row id is 42 where there is one.
    file.query(
        u"INSERT INTO %1 (rowid, Codice) VALUES (41, 'Z')"_s.arg(table).toUtf8().constData());
    RecordsetPtr recordset = open(QString::fromLatin1(c.select));
    for (int row = 0; row < 2; ++row) {  // the second row goes the way the first set up
        recordset->AddNew();
        recordset->Fields(u"Codice"_s) = u"A"_s;
        recordset->Update();
    }
    recordset->SetAbsolutePosition(2);
    const auto shown = [](const Variant& value) {
        return value.isNull() ? u"NULL"_s : value.text();
    };
    EXPECT_EQ(shown(recordset->Fields(u"Numero"_s).Value()) + u'|' +
                  shown(recordset->Fields(u"Nota"_s).Value()),
              QString::fromLatin1(c.expected));
    if (QByteArray(c.expected).endsWith("|NULL") && c.expected[0] != 'N') {
        const int first = QString::fromLatin1(c.expected).section(u'|', 0, 0).toInt();
        EXPECT_EQ(recordset->Fields(u"Numero"_s).Value().type(), VarType::Long);
        recordset->MoveNext();
        EXPECT_EQ(recordset->Fields(u"Numero"_s).Value().text(), QString::number(first + 1));
        EXPECT_EQ(recordset->Fields(u"Codice"_s).Value().text(), u"A"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(Columns, RecordsetLeftOut, ::testing::ValuesIn(leftOutCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(RecordsetTest, FilterFollowsAddedRowsSoDuplicateKeysAreCaught) {
    RecordsetPtr source = open(u"SELECT * FROM Note WHERE id IN (1, 3)"_s);
    RecordsetPtr target = open(u"SELECT * FROM Note WHERE id = 99"_s);
    connection.Execute(u"DELETE * FROM Note"_s);
    for (int pass = 0; pass < 2; ++pass) {  // the same keys twice
        for (source->MoveFirst(); !source->Eof(); source->MoveNext()) {
            target->SetFilter(u"id="_s + source->Fields(u"id"_s).Value().text());
            if (target->RecordCount() != 0) continue;
            target->AddNew();
            for (int i = 0; i < source->FieldCount(); ++i) {
                target->Fields(source->Fields(i).Name()) = source->Fields(i).Value();
            }
            target->Update();
        }
    }
    target->SetFilter(QString());
    EXPECT_EQ(target->RecordCount(), 2);
    target->UpdateBatch(Recordset::AffectAll);
    EXPECT_EQ(file.query("SELECT id, CodLocale, Importo FROM Note ORDER BY id"),
              u"1|L1|0.1;3|L2|5"_s);
}

TEST_F(RecordsetTest, EditingTheFilteredKeyKeepsLookupsRight) {
    RecordsetPtr recordset = open(u"SELECT * FROM Note"_s);
    recordset->SetFilter(u"id=2"_s);
    ASSERT_EQ(recordset->RecordCount(), 1);
    recordset->Fields(u"id"_s) = 20;
    recordset->Update();
    recordset->SetFilter(u"id=2"_s);
    EXPECT_EQ(recordset->RecordCount(), 0);
    recordset->SetFilter(u"id=20"_s);
    EXPECT_EQ(recordset->RecordCount(), 1);
}

}  // namespace
}  // namespace lorvane::db
