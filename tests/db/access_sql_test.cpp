// The Access dialect, checked by what the statements do on a real file.
#include "db/access_sql.h"

#include <gtest/gtest.h>

#include <random>

#include "database_fixture.h"
#include "platform/runtime_error.h"

namespace lorvane::db {
namespace {

using namespace Qt::StringLiterals;

using testing::DatabaseFile;
using testing::recordsetText;

constexpr char schema[] = R"sql(
CREATE TABLE AnagraficaLocali (id INTEGER PRIMARY KEY, CodLocale TEXT(20) COLLATE NOCASE,
  Insegna TEXT(50) COLLATE NOCASE, Citta TEXT(50) COLLATE NOCASE,
  CodiceAzienda TEXT(10) COLLATE NOCASE, Sospeso BOOLEAN);
INSERT INTO AnagraficaLocali VALUES (1, 'L1', 'Bar Roma', 'CITTÀ di Castello', 'AZ1', 0),
  (2, 'L2', 'Caffè Sport', 'Milano', 'AZ1', -1), (3, 'L3', 'Bar Centrale', NULL, 'AZ2', NULL);
CREATE TABLE NoteTeste (id INTEGER PRIMARY KEY, DataRegistrazione DATETIME,
  CodLocale TEXT(20) COLLATE NOCASE, CodCausale TEXT(10) COLLATE NOCASE,
  CodiceAzienda TEXT(10) COLLATE NOCASE, UtileLocale CURRENCY, Arrotondamenti CURRENCY);
INSERT INTO NoteTeste VALUES (1, '2024-01-10 00:00:00', 'L1', 'INC6', 'AZ1', 100, 2),
  (2, '2024-01-31 00:00:00', 'L1', 'INC', 'AZ1', NULL, 2),
  (3, '2024-02-01 00:00:00', 'L2', 'INC6', 'AZ1', 50.5, NULL),
  (4, '2024-03-15 00:00:00', 'L3', 'PRE', 'AZ2', 10, 0);
CREATE TABLE NoteRighe (IdTesta INTEGER, Data DATETIME, CodConto TEXT(20) COLLATE NOCASE,
  Dare CURRENCY, Avere CURRENCY, codLocale TEXT(20) COLLATE NOCASE);
INSERT INTO NoteRighe VALUES (1, '2024-01-10 00:00:00', '03.01', 100, 0, 'L1'),
  (1, '2024-01-10 00:00:00', '05.01', NULL, 100, 'L1'),
  (3, '2024-02-01 00:00:00', '03.02', 50.5, 0, 'L2'),
  (4, '2024-03-15 00:00:00', '03.01', 0, 10, 'L3');
CREATE TABLE NoteIncassi (IdTesta INTEGER, LinkScheda INTEGER, DataIncasso DATETIME,
  CodLocale TEXT(20) COLLATE NOCASE, Contratto TEXT(10) COLLATE NOCASE, ParzialeIn CURRENCY);
INSERT INTO NoteIncassi VALUES (1, 11, '2024-01-10 00:00:00', 'L1', 'C1', 60),
  (1, 12, '2024-01-10 00:00:00', 'L1', 'C2', 40), (3, 21, '2024-02-01 00:00:00', 'L2', 'C1', 50.5);
CREATE TABLE MagSchede (id INTEGER PRIMARY KEY, CodLocale TEXT(20) COLLATE NOCASE,
  Obsoleto BOOLEAN, CodiceABarre TEXT(20));
INSERT INTO MagSchede VALUES (11, 'L1', 0, '123'), (12, 'L1', NULL, NULL), (21, 'L2', -1, '');
CREATE TABLE AnagraficaPianoConti (id INTEGER PRIMARY KEY, CodiceConto TEXT(20) COLLATE NOCASE,
  Descrizione TEXT(50) COLLATE NOCASE, TipoConto INTEGER, LivelloConto INTEGER);
INSERT INTO AnagraficaPianoConti VALUES (1, '03.01', 'Cliente Roma', 0, 2),
  (2, '03.02', 'Cliente Sport', 0, 2), (3, '05.01', 'Ricavi', 1, 2), (4, '06.01', 'Costi', 1, 2);
CREATE TABLE Saldi (id INTEGER, CodiceConto TEXT(20) COLLATE NOCASE, Descrizione TEXT(50),
  dare CURRENCY, avere CURRENCY, saldo CURRENCY, Mastro TEXT(2), TipoConto INTEGER,
  CodiceLocale TEXT(20), LivelloConto INTEGER);
CREATE TABLE TipoContratto (Contratto TEXT(10) COLLATE NOCASE, PercentualeComodato DOUBLE);
INSERT INTO TipoContratto VALUES ('C1', 10), ('C2', 0);
CREATE TABLE "Tabella Strana" ("Nome Campo" TEXT, Valore INTEGER);
INSERT INTO "Tabella Strana" VALUES ('x', 1);
)sql";

class AccessSqlTest : public ::testing::Test {
  protected:
    void SetUp() override { connection.Open(file.connectionText()); }

    QString read(const QString& sql) {
        RecordsetPtr recordset = connection.OpenRecordset(sql);
        return recordsetText(*recordset);
    }

    DatabaseFile file{schema};
    Connection connection;
};

struct ReadCase {
    const char* name;
    const char* sql;
    const char* rows;
};
void PrintTo(const ReadCase& c, std::ostream* os) { *os << c.sql; }

class AccessSqlReads : public AccessSqlTest, public ::testing::WithParamInterface<ReadCase> {};

TEST_P(AccessSqlReads, GiveTheRowsAccessWould) {
    EXPECT_EQ(read(QString::fromUtf8(GetParam().sql)), QString::fromUtf8(GetParam().rows));
}

const ReadCase readCases[] = {
    {"DateMonthFirst",
     "SELECT id FROM NoteTeste WHERE DataRegistrazione >= #01/31/2024# AND "
     "DataRegistrazione <= #02/01/2024# ORDER BY id",
     "2;3"},
    {"DateDayFirstWhenFirstNumberIsNoMonth",
     "SELECT id FROM NoteTeste WHERE DataRegistrazione = #31/01/2024#", "2"},
    {"DateIso", "SELECT id FROM NoteTeste WHERE DataRegistrazione < #2024-01-31#", "1"},
    {"DateMonthFirstWithHyphens",
     "SELECT id FROM NoteTeste WHERE DataRegistrazione >= #03-15-2024#", "4"},
    {"DateWithTime", "SELECT id FROM NoteTeste WHERE DataRegistrazione < #01/10/2024 00:00:01#",
     "1"},
    {"BetweenDates",
     "SELECT id FROM NoteTeste WHERE (DataRegistrazione BETWEEN #01/10/2024# AND #01/31/2024#) "
     "ORDER BY id",
     "1;2"},
    {"BetweenDatesReversed",
     "SELECT id FROM NoteTeste WHERE (DataRegistrazione BETWEEN #01/31/2024# AND #01/10/2024#) "
     "ORDER BY id",
     "1;2"},
    {"BetweenExpressionsReversed",
     "SELECT id FROM NoteTeste WHERE 2 BETWEEN id + 2 AND id ORDER BY id", "1;2"},
    {"NotBetween", "SELECT id FROM NoteTeste WHERE id NOT BETWEEN 3 AND 2 ORDER BY id", "1;4"},
    {"IifWithCommas",
     "SELECT id, IIF(UtileLocale IS NULL, 0, UtileLocale) AS U FROM NoteTeste ORDER BY id",
     "1|100;2|0;3|50,5;4|10"},
    {"IifWithSemicolonsOverAggregates",
     "SELECT CodConto, iif(SUM(Dare) IS NULL ; 0 ; SUM(Dare);) AS TotDare FROM NoteRighe "
     "GROUP BY CodConto ORDER BY CodConto",
     "03.01|100;03.02|50,5;05.01|0"},
    {"IifWithSemicolonsAdded",
     "SELECT id, (IIF(UtileLocale IS NOT NULL ; UtileLocale ; 0 ;) + "
     "IIF(Arrotondamenti IS NOT NULL; Arrotondamenti ; 0 ;)) AS UtileLocale FROM NoteTeste ORDER "
     "BY id",
     "1|102;2|2;3|50,5;4|10"},
    {"IifIsLazy", "SELECT IIF(id > 0, 'ok', 1 / 0) AS R FROM NoteTeste WHERE id = 1", "ok"},
    {"LeftOfAColumn",
     "SELECT id, LEFT(CodiceConto, 2) AS Mastro FROM AnagraficaPianoConti WHERE ( TipoConto=0 OR "
     "TipoConto=1) ORDER BY id",
     "1|03;2|03;3|05;4|06"},
    {"ParenthesisedJoinChain",
     "SELECT DISTINCT nt.id FROM ((NoteTeste nt INNER JOIN NoteIncassi ni ON ni.idTesta=nt.id) "
     "INNER JOIN NoteRighe nr ON nr.idTesta=nt.id) INNER JOIN AnagraficaLocali al ON "
     "al.CodLocale=nt.CodLocale ORDER BY nt.id",
     "1;3"},
    {"DerivedTableJoinedInWhere",
     " SELECT apc.id, tmp.CodConto AS CodiceConto, tmp.TotDare AS dare, (tmp.TotDare - "
     "tmp.TotAvere) AS saldo "
     " FROM  AnagraficaPianoConti apc,  (  SELECT CodConto, iif(SUM(Dare) IS NULL ; 0 ; "
     "SUM(Dare);) AS TotDare, "
     "iif(SUM(Avere) IS NULL ; 0 ; SUM(Avere);) AS TotAvere  FROM NoteRighe  WHERE  Data >= "
     "#01/01/2024#  "
     "GROUP BY CodConto  ) tmp  WHERE  tmp.CodConto=apc.CodiceConto ORDER BY apc.id",
     "1|03.01|100|90;2|03.02|50,5|50,5;3|05.01|0|-100"},
    {"DerivedTableWithAs",
     " SELECT  LinkScheda  FROM  NoteIncassi  WHERE  IdTesta IN (SELECT id FROM (SELECT * FROM "
     "NoteTeste "
     "WHERE CodCausale = 'INC6' )AS tmpTable) ORDER BY LinkScheda",
     "11;12;21"},
    {"NotBeforeIsNull",
     "SELECT id FROM MagSchede WHERE (CodiceABarre<>'' OR NOT CodiceABarre IS NULL) ORDER BY id",
     "11;21"},
    {"DistinctTableStar",
     "SELECT COUNT(*) AS N FROM (SELECT DISTINCT nt.* FROM NoteTeste nt INNER JOIN NoteIncassi ni "
     "ON "
     "ni.idTesta=nt.id)",
     "2"},
    {"ConcatenationTakesNullAsEmpty",
     "SELECT Insegna & ' - ' & Citta AS T FROM AnagraficaLocali ORDER BY id",
     "Bar Roma - CITTÀ di Castello;Caffè Sport - Milano;Bar Centrale - "},
    {"ConcatenationOfNullsIsNull", "SELECT Citta & Citta AS T FROM AnagraficaLocali WHERE id = 3",
     "NULL"},
    {"ConcatenationBindsLooserThanPlus", "SELECT 1 + 2 & 3 AS T", "33"},
    {"DivisionIsFloating", "SELECT 7 / 2 AS R", "3,5"},
    {"TrueIsMinusOne", "SELECT id FROM MagSchede WHERE Obsoleto = True", "21"},
    {"FalseIsZero", "SELECT id FROM MagSchede WHERE Obsoleto = False", "11"},
    {"BracketedNames", "SELECT [Nome Campo], [Valore] FROM [Tabella Strana]", "x|1"},
    {"TextEqualityIgnoresCaseOfAccentedLetters",
     "SELECT id FROM AnagraficaLocali WHERE Citta = 'città di castello'", "1"},
    {"LikeIgnoresCaseOfAccentedLetters",
     "SELECT id FROM AnagraficaLocali WHERE Citta LIKE '%CITTà%'", "1"},
    {"LikeWithUnderscore", "SELECT id FROM AnagraficaLocali WHERE Insegna LIKE 'bar _oma'", "1"},
    {"InListIgnoresCase",
     "SELECT id FROM NoteTeste WHERE CodCausale IN ('inc6', 'inc') ORDER BY id", "1;2;3"},
    {"NotIn", "SELECT id FROM NoteTeste WHERE CodCausale NOT IN ('INC6', 'INC')", "4"},
    {"InSubqueryIgnoresCase",
     "SELECT id FROM AnagraficaLocali WHERE CodLocale IN (SELECT LCase(CodLocale) FROM MagSchede) "
     "ORDER BY id",
     "1;2"},
    {"StringLiteralsKeptAsWritten", "SELECT 'a #1/1/2024# [x] iif(b ; c ;) & ''q''' AS T",
     "a #1/1/2024# [x] iif(b ; c ;) & 'q'"},
    {"DoubleQuotedString", "SELECT \"Bar\" & 'o' AS T", "Baro"},
    {"LeftJoinGroupHavingOrderDesc",
     "SELECT al.CodLocale, COUNT(nt.id) AS N FROM AnagraficaLocali al LEFT JOIN NoteTeste nt ON "
     "nt.CodLocale=al.CodLocale GROUP BY al.CodLocale HAVING COUNT(nt.id) >= 1 ORDER BY "
     "al.CodLocale DESC",
     "L3|1;L2|1;L1|2"},
    {"HavingWithDatesWithHyphens",
     "SELECT NoteIncassi.IdTesta, Sum(NoteIncassi.ParzialeIn) AS SommaDiParzialeIn FROM "
     "(NoteIncassi "
     "INNER JOIN TipoContratto ON NoteIncassi.Contratto = TipoContratto.Contratto) INNER JOIN "
     "NoteTeste "
     "ON NoteIncassi.IdTesta = NoteTeste.id GROUP BY NoteIncassi.IdTesta, NoteIncassi.Contratto, "
     "NoteTeste.CodCausale, TipoContratto.PercentualeComodato, NoteTeste.DataRegistrazione HAVING "
     "(((NoteTeste.CodCausale)='INC6') AND ((TipoContratto.PercentualeComodato)>0) AND "
     "((NoteTeste.DataRegistrazione)>=#01-01-2024#)) and NoteTeste.DataRegistrazione<=#02-29-2024# "
     "ORDER BY NoteIncassi.IdTesta",
     "1|60;3|50,5"},
    {"DatePlusDays", "SELECT id FROM NoteTeste WHERE DataRegistrazione + 1 = #02/01/2024#", "2"},
    {"DateMinusDate",
     "SELECT DataRegistrazione - #01/01/2024# AS Giorni FROM NoteTeste WHERE id = 2", "30"},
    {"PlusJoinsTwoTexts", "SELECT 'a' + 'b' AS T", "ab"},
    {"ModAndIntegerDivision", "SELECT 7 Mod 3 AS M, 7 \\ 2 AS D", "1|3"},
    {"UnaryMinusAndPower", "SELECT -2 ^ 2 AS P", "-4"},
    {"ExistsSubquery",
     "SELECT id FROM AnagraficaLocali al WHERE EXISTS (SELECT * FROM MagSchede ms WHERE "
     "ms.CodLocale = al.CodLocale) ORDER BY id",
     "1;2"},
    {"TopWithOrder", "SELECT TOP 2 id FROM NoteTeste ORDER BY id DESC", "4;3"},
    {"Union", "SELECT CodLocale FROM MagSchede UNION SELECT CodLocale FROM NoteTeste ORDER BY 1",
     "L1;L2;L3"},
    {"TrailingSemicolon", "SELECT id FROM MagSchede WHERE id = 11;  ", "11"},
    {"MinusTrue", "SELECT -True AS N, - -True AS M, -False AS F", "1|-1|0"},
    {"MinusTrueBeforeALineBreakIsNoComment",
     "SELECT count(*) AS n FROM AnagraficaLocali WHERE CodLocale='none' OR -True = '\n1=1))) --'",
     "0"},
    {"MinusTrueAfterMinus", "SELECT 5 - -True AS N, 5--True AS M", "4|4"},
};

INSTANTIATE_TEST_SUITE_P(Constructs, AccessSqlReads, ::testing::ValuesIn(readCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(AccessSqlTest, UnnamedExpressionsAreNamedAsJetNamesThem) {
    RecordsetPtr recordset =
        connection.OpenRecordset(u"SELECT COUNT(*), MAX(id), id FROM NoteTeste"_s);
    EXPECT_EQ(recordset->Fields(0).Name(), u"Expr1000"_s);
    EXPECT_EQ(recordset->Fields(1).Name(), u"Expr1001"_s);
    EXPECT_EQ(recordset->Fields(2).Name(), u"id"_s);
}

TEST_F(AccessSqlTest, DeleteStarFromRemovesTheRows) {
    EXPECT_EQ(connection.Execute(u"DELETE * FROM NoteRighe WHERE CodConto='03.01'"_s), 2);
    EXPECT_EQ(connection.Execute(u"Delete * from NoteIncassi"_s), 3);
    EXPECT_EQ(file.query("SELECT count(*) FROM NoteRighe"), u"2"_s);
    EXPECT_EQ(file.query("SELECT count(*) FROM NoteIncassi"), u"0"_s);
}

TEST_F(AccessSqlTest, InsertSelectWithoutColumnListMatchesColumnsByName) {
    const long added = connection.Execute(
        u" INSERT INTO Saldi  SELECT  apc.id, apc.CodiceConto, apc.Descrizione, 0 AS avere, 5 AS "
        u"dare, "
        "7 AS saldo, '03' AS Mastro, apc.TipoConto, '' AS CodiceLocale, apc.LivelloConto  FROM  "
        "AnagraficaPianoConti apc  WHERE  apc.CodiceConto NOT IN (SELECT CodiceConto FROM Saldi) "_s);
    EXPECT_EQ(added, 4);
    EXPECT_EQ(file.query("SELECT dare, avere, saldo, Mastro FROM Saldi WHERE id = 3"),
              u"5|0|7|03"_s);
}

TEST_F(AccessSqlTest, InsertSelectWithOtherNamesGoesByPosition) {
    connection.Execute(
        u"INSERT INTO TipoContratto SELECT CodConto, Dare FROM NoteRighe WHERE IdTesta = 3"_s);
    EXPECT_EQ(file.query("SELECT * FROM TipoContratto WHERE Contratto = '03.02'"), u"03.02|50.5"_s);
}

TEST_F(AccessSqlTest, UpdateWithQualifiedTargetAndValues) {
    EXPECT_EQ(connection.Execute(
                  u"UPDATE NoteTeste nt SET nt.UtileLocale = 1.25 WHERE nt.CodLocale = 'l1'"_s),
              2);
    connection.Execute(
        u"INSERT INTO MagSchede (id, CodLocale, Obsoleto) VALUES (30, 'L9', True)"_s);
    EXPECT_EQ(file.query("SELECT UtileLocale FROM NoteTeste WHERE id = 2"), u"1.25"_s);
    EXPECT_EQ(file.query("SELECT Obsoleto FROM MagSchede WHERE id = 30"), u"-1"_s);
}

TEST_F(AccessSqlTest, SchemaStatementsKeepJetTypesAndFoldCase) {
    connection.Execute(
        u"CREATE TABLE Prova (id COUNTER PRIMARY KEY, Nome TEXT(10), Attivo YESNO, Importo CURRENCY)"_s);
    connection.Execute(u"INSERT INTO Prova (Nome, Attivo, Importo) VALUES ('Città', True, 1.5)"_s);
    EXPECT_EQ(read(u"SELECT id, Nome FROM Prova WHERE Nome = 'CITTÀ'"_s), u"1|Città"_s);
    RecordsetPtr recordset = connection.OpenRecordset(u"SELECT * FROM Prova"_s);
    EXPECT_EQ(recordset->Fields(u"id"_s).Type(), 3);
    EXPECT_EQ(recordset->Fields(u"Attivo"_s).Type(), 11);
    EXPECT_EQ(recordset->Fields(u"Importo"_s).Type(), 6);
    connection.Execute(u"DROP TABLE Prova"_s);
    EXPECT_EQ(file.query("SELECT count(*) FROM sqlite_master WHERE name = 'Prova'"), u"0"_s);
}

struct FaultCase {
    const char* name;
    const char* sql;
    const char* message;  // a part of the error text
};
void PrintTo(const FaultCase& c, std::ostream* os) { *os << c.sql; }

class AccessSqlFaults : public AccessSqlTest, public ::testing::WithParamInterface<FaultCase> {};

TEST_P(AccessSqlFaults, AreReportedWithTheStatementAndThePlace) {
    const QString sql = QString::fromUtf8(GetParam().sql);
    try {
        connection.OpenRecordset(sql);
        FAIL() << "no error for " << GetParam().sql;
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.message().contains(QString::fromUtf8(GetParam().message)))
            << error.what();
        EXPECT_TRUE(error.message().contains(sql)) << error.what();
    }
}

const FaultCase faultCases[] = {
    {"MisspeltInAfterAlias",
     "select * from anagraficalocali al  WHERE codLocale al.IN (SELECT codlocale FROM magschede "
     "WHERE "
     "CodConcessionario = 'X')",
     "vicino a \"al.IN"},
    {"MisspeltAndAfterAlias",
     "SELECT * FROM AnagraficaLocali al WHERE al.Insegna like '%x%' al.AND codAgente = 'A1'",
     "vicino a \"al.AND"},
    {"ApostropheInUserText", "SELECT * FROM AnagraficaLocali WHERE Insegna like '%O'Brien%'",
     "carattere non valido"},
    {"UnterminatedString", "SELECT * FROM AnagraficaLocali WHERE Insegna = 'Bar", "non chiuso"},
    {"ImpossibleDate", "SELECT * FROM NoteTeste WHERE DataRegistrazione = #13/13/2024#",
     "data non valida"},
    {"EmptyAccountCriterion",
     "SELECT *, LEFT(CodiceConto, 2) AS Mastro FROM AnagraficaPianoConti WHERE ()",
     "attesa un'espressione"},
    {"IifWithTwoOperands", "SELECT iif(id > 1 ; 2 ;) AS X FROM NoteTeste", "attesa un'espressione"},
    {"UnknownTable", "SELECT * FROM Inesistente", "Tabella 'Inesistente' inesistente"},
    {"UnknownColumn", "SELECT Nessuno FROM NoteTeste", "Campo 'Nessuno' inesistente"},
    {"CharacterAtTheEnd", "SELECT id FROM NoteTeste WHERE id = 1 )", "atteso fine istruzione"},
};

INSTANTIATE_TEST_SUITE_P(Faults, AccessSqlFaults, ::testing::ValuesIn(faultCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Statements that define columns are passed through token by token: a ";"
// there would end the statement inside SQLite, with a second one after it.
TEST_F(AccessSqlTest, SemicolonInAColumnDefinitionIsRefusedBeforeSqliteSeesIt) {
    const char* statements[] = {
        "CREATE TABLE Prova (a TEXT(10) DEFAULT 'x'; DROP TABLE NoteTeste, b INTEGER)",
        "CREATE TABLE Prova (a INTEGER, CHECK (a > 0); DROP TABLE NoteTeste)",
        "ALTER TABLE NoteTeste ADD COLUMN Nuovo INTEGER DEFAULT 0; DROP TABLE NoteRighe",
    };
    for (const char* statement : statements) {
        try {
            connection.Execute(QString::fromUtf8(statement));
            ADD_FAILURE() << "no error for " << statement;
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(u"\";\" non ammesso nella definizione"_s))
                << error.what();
        }
    }
    EXPECT_EQ(file.query("SELECT count(*) FROM sqlite_master WHERE name IN ('NoteTeste', "
                         "'NoteRighe', 'Prova')"),
              u"2"_s);
}

// Each shape nests by repeating `open` before the innermost `core` and `close`
// after it, `each` levels a time; `overhead` is the levels the statement
// around it takes.
struct NestingCase {
    const char* name;
    const char* head;
    const char* open;
    const char* core;
    const char* close;
    int overhead;
    int each;

    QString statement(int depth) const {
        return QString::fromUtf8(head) + QString::fromUtf8(open).repeated(depth) +
               QString::fromUtf8(core) + QString::fromUtf8(close).repeated(depth);
    }
};
void PrintTo(const NestingCase& c, std::ostream* os) { *os << c.name; }

class AccessSqlNesting : public ::testing::TestWithParam<NestingCase> {};

TEST_P(AccessSqlNesting, IsTranslatedUpToTheLimitAndRefusedBeyondItWithoutACrash) {
    const NestingCase& shape = GetParam();
    const int deepest = (MaxSqlNesting - shape.overhead) / shape.each;
    EXPECT_NO_THROW(translateAccessSql(shape.statement(deepest)));
    for (const int depth : {deepest + 1, 5000}) {
        const QString sql = shape.statement(depth);
        try {
            translateAccessSql(sql);
            ADD_FAILURE() << "no error at depth " << depth;
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(u"annidamento troppo profondo"_s)) << error.what();
            EXPECT_TRUE(error.message().contains(u"al carattere "_s)) << error.what();
            EXPECT_TRUE(error.message().contains(sql.left(100))) << "the statement is named";
            EXPECT_LT(error.message().size(), 1000) << "a long statement is quoted cut";
        }
    }
}

const NestingCase nestingCases[] = {
    {"Brackets", "SELECT ", "(", "1", ")", 2, 1},
    {"FunctionArguments", "SELECT ", "Abs(", "1", ")", 2, 1},
    {"Not", "SELECT id FROM NoteTeste WHERE ", "NOT ", "id = 1", "", 2, 1},
    {"Signs", "SELECT ", "- ", "1", "", 2, 1},
    {"BracketedJoins", "SELECT * FROM ", "(", "NoteTeste", ")", 2, 1},
    {"Subqueries", "SELECT ", "(SELECT ", "1", ")", 2, 2},
};

INSTANTIATE_TEST_SUITE_P(Shapes, AccessSqlNesting, ::testing::ValuesIn(nestingCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Where SQLite would read a comment or a statement's end in a translation:
// outside quoted texts and names, "--", "/*" or ";". Empty when there is none.
QString unquotedHazard(const QString& sql) {
    QChar quote;
    for (qsizetype i = 0; i < sql.size(); ++i) {
        const QChar c = sql[i];
        if (!quote.isNull()) {
            if (c == quote) quote = QChar();  // a doubled quote closes and opens again
            continue;
        }
        if (c == u'\'' || c == u'"') {
            quote = c;
        } else if (c == u';') {
            return sql.mid(i, 10);
        } else if ((c == u'-' || c == u'/') && i + 1 < sql.size() &&
                   sql[i + 1] == (c == u'-' ? u'-' : u'*')) {
            return sql.mid(i, 10);
        }
    }
    return {};
}

// Random statements from pieces a user's text could bring: whatever the
// translator accepts, SQLite must read as the translator read it.
class RandomStatements {
  public:
    explicit RandomStatements(unsigned seed) : random_(seed) {}

    QString next() {
        switch (pick(4)) {
            case 0:
                return u"SELECT "_s + expression(3) + u" AS x FROM t WHERE "_s + expression(3);
            case 1:
                return u"UPDATE t SET a = "_s + expression(3) + u" WHERE "_s + expression(2);
            case 2:
                return u"CREATE TABLE t (a TEXT(10)"_s + loose(4) + u", b INTEGER"_s + loose(3) +
                       u')';
            default:
                return u"SELECT "_s + loose(8) + u" FROM t"_s;
        }
    }

  private:
    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }

    QString gap() {
        static const char* const gaps[] = {"", " ", "  ", "\n", "\t"};
        return QString::fromUtf8(gaps[pick(5)]);
    }

    QString literal() {
        static const char* const literals[] = {
            "1",    "-1",     "0.5",    "True", "False",        "Null", "'--'",
            "'/*'", "';'",    "'a''b'", "\"\"", "#01/02/2024#", "x",    "[a -- b]",
            "[;]",  "\"--\"", "t.x",    "1E3",  "'\n1=1))) --'"};
        return QString::fromUtf8(literals[pick(std::size(literals))]);
    }

    QString expression(int depth) {
        if (depth == 0) return literal();
        static const char* const unary[] = {"-", "+", "NOT "};
        static const char* const binary[] = {
            "=", "<>", "<", ">", "<=",    ">=",    "+",    "-",     "*",
            "/", "\\", "^", "&", " Mod ", " AND ", " OR ", " LIKE "};
        switch (pick(6)) {
            case 0:
                return QString::fromUtf8(unary[pick(3)]) + gap() + expression(depth - 1);
            case 1:
            case 2:
                return expression(depth - 1) + gap() + QString::fromUtf8(binary[pick(17)]) + gap() +
                       expression(depth - 1);
            case 3:
                return u'(' + gap() + expression(depth - 1) + gap() + u')';
            case 4:
                return u"iif("_s + expression(depth - 1) + u" ; "_s + expression(depth - 1) +
                       u" ; "_s + expression(depth - 1) + u" ;)"_s;
            default:
                return literal();
        }
    }

    // Pieces in any order, as mistyped text gives them.
    QString loose(int count) {
        static const char* const pieces[] = {"-", "-",   "/",       "*",   ";",    "True",
                                             "1", "'x'", "DEFAULT", "NOT", "NULL", "(",
                                             ")", ",",   "CHECK",   "-1",  "[a]",  "."};
        QString text;
        for (int i = pick(count + 1); i > 0; --i)
            text += gap() + QString::fromUtf8(pieces[pick(std::size(pieces))]);
        return text;
    }

    std::mt19937 random_;
};

TEST(AccessSqlTranslation, NeverHoldsACommentOrASecondStatementOutsideQuotes) {
    RandomStatements statements(20240229);
    int translated = 0;
    for (int i = 0; i < 20000; ++i) {
        const QString statement = statements.next();
        QString sql;
        try {
            sql = translateAccessSql(statement).sql;
        } catch (const RuntimeError&) {
            continue;
        }
        ++translated;
        ASSERT_EQ(unquotedHazard(sql), QString())
            << statement.toStdString() << "\n  became  " << sql.toStdString();
    }
    EXPECT_GT(translated, 5000) << "the generator must give mostly statements that translate";
}

TEST(AccessDateLiteral, ReadsTheThreeFormsAndRefusesImpossibleDates) {
    const std::pair<const char*, const char*> cases[] = {
        {"01/31/2024", "2024-01-31 00:00:00"},
        {"1/2/2024", "2024-01-02 00:00:00"},
        {"31/01/2024", "2024-01-31 00:00:00"},
        {"2024-01-31", "2024-01-31 00:00:00"},
        {"01-31-2024", "2024-01-31 00:00:00"},
        {"12/31/99", "1999-12-31 00:00:00"},
        {"01/02/29", "2029-01-02 00:00:00"},
        {"02/29/2024 13:05", "2024-02-29 13:05:00"},
        {"02/29/2024 1:05:09 PM", "2024-02-29 13:05:09"},
        {"10:30", "1899-12-30 10:30:00"},
        {"02/29/2023", ""},
        {"13/13/2024", ""},
        {"2024-02-30", ""},
        {"01/31/2024 25:00", ""},
        {"", ""},
        {"abc", ""},
    };
    for (const auto& [text, iso] : cases) {
        EXPECT_EQ(accessDateLiteralToIso(QString::fromUtf8(text)), QString::fromUtf8(iso)) << text;
    }
}

}  // namespace
}  // namespace lorvane::db
