// The ledger cards: their statements for all, some and none of the criteria,
// what the work file holds after a run on the real screens, and bad input.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>

#include "db/database_fixture.h"
#include "platform/runtime_error.h"
#include "reports/accounting/frm_stampa_scheda.h"
#include "reports/accounting/scheda_sql.h"
#include "screens/controls.h"
#include "support/database_contents.h"
#include "support/report_screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;
using reports::SchedaCriteri;

SchedaCriteri criteri(const char* azienda = "", const char* esattore = "", const char* conto = "",
                      bool tutti = true) {
    SchedaCriteri c;
    c.dallaData = QDate(2025, 1, 1);
    c.allaData = QDate(2025, 3, 20);
    c.azienda = QString::fromUtf8(azienda);
    c.esattore = QString::fromUtf8(esattore);
    c.conto = QString::fromUtf8(conto);
    c.tutti = tutti;
    c.idDa = u"3"_s;
    c.idA = u"9"_s;
    c.causali = u"'INC6', 'GIR'"_s;
    return c;
}

struct StatementRow {
    const char* name;
    QString (*build)(const SchedaCriteri&);
    SchedaCriteri criteri;
    std::string sql;
};

class SchedaStatements : public ::testing::TestWithParam<StatementRow> {};

TEST_P(SchedaStatements, AreTheirPiecesInOrder) {
    EXPECT_EQ(GetParam().build(GetParam().criteri), QString::fromStdString(GetParam().sql));
}

QString righe(const SchedaCriteri& c) { return reports::sqlRigheLocale(c, u"L0001"_s); }
QString saldi(const SchedaCriteri& c) { return reports::sqlSaldiLocale(c, u"L0001"_s); }

constexpr char righeHead[] =
    "SELECT * FROM NoteRighe nr INNER JOIN NoteTeste nt ON nt.id=nr.idTesta WHERE nr.CodConto  "
    "LIKE '%1' AND nr.Data>=#01/01/2025# AND nr.Data<=#03/20/2025# AND nr.codLocale='L0001'";
constexpr char saldiHead[] =
    " SELECT apc.id, tmp.CodConto AS CodiceConto, apc.Descrizione, tmp.TotDare AS dare, "
    "tmp.TotAvere AS avere, (tmp.TotDare - tmp.TotAvere) AS saldo, '03' AS Mastro, apc.TipoConto, "
    "'L0001' AS CodiceLocale, apc.LivelloConto FROM AnagraficaPianoConti apc INNER JOIN ( SELECT "
    "CodConto, iif(SUM(Dare) IS NULL ; 0 ; SUM(Dare);) AS TotDare, iif(SUM(Avere) IS NULL ; 0 ; "
    "SUM(Avere);) AS TotAvere FROM NoteRighe nr INNER JOIN NoteTeste nt ON nt.id=nr.idTesta WHERE "
    "nr.CodConto  LIKE '%1' AND nr.Data<#01/01/2025# AND nr.codLocale='L0001'";
constexpr char saldiTail[] =
    " GROUP BY CodConto ) tmp ON tmp.CodConto=apc.CodiceConto WHERE apc.LivelloConto=2 AND "
    "apc.CodiceConto  LIKE '%1'";
constexpr char idDa[] = " (SELECT CodiceConto FROM AnagraficaPianoConti WHERE id=3)";
constexpr char idA[] = " (SELECT CodiceConto FROM AnagraficaPianoConti WHERE id=9)";

std::string with(const char* text, const char* account) {
    return QString::fromLatin1(text).arg(QLatin1String(account)).toStdString();
}
std::string righeContab(const char* middle) {
    return std::string(
               " SELECT nr.*,nt.CodEsattore FROM NoteRighe nr INNER JOIN NoteTeste nt ON "
               "nt.id=nr.idTesta WHERE nr.data>=#01/01/2025# AND  nr.data <= #03/20/2025# AND  "
               "nt.CodCausale IN ('INC6', 'GIR')") +
           middle + " AND nr.CodConto>=" + idDa + " AND nr.CodConto<=" + idA;
}
std::string saldiContab(const char* middle) {
    return std::string(
               " SELECT apc.id, tmp.CodConto AS CodiceConto, apc.Descrizione, tmp.TotDare AS "
               "dare, tmp.TotAvere AS avere, (tmp.TotDare - tmp.TotAvere) AS saldo, '03' AS "
               "Mastro, apc.TipoConto, '' AS CodiceLocale, apc.LivelloConto FROM "
               "AnagraficaPianoConti apc INNER JOIN ( SELECT nr.CodConto, iif(SUM(nr.Dare) IS "
               "NULL ; 0 ; SUM(nr.Dare);) AS TotDare, iif(SUM(nr.Avere) IS NULL ; 0 ; "
               "SUM(nr.Avere);) AS TotAvere FROM NoteRighe nr INNER JOIN NoteTeste nt ON "
               "nt.id=nr.idTesta WHERE nr.data<#01/01/2025# AND nt.CodCausale IN ('INC6', "
               "'GIR')") +
           middle +
           " GROUP BY CodConto ) tmp ON tmp.CodConto=apc.CodiceConto WHERE apc.LivelloConto=2 "
           "AND  apc.CodiceConto>=" +
           idDa + " AND apc.CodiceConto<=" + idA;
}
constexpr char venuesAndCollector[] =
    " AND nr.codLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) AND "
    "nt.CodEsattore='ES''01'";

INSTANTIATE_TEST_SUITE_P(
    Schede, SchedaStatements,
    ::testing::Values(
        StatementRow{"ChartOfCustomers", reports::sqlPianoContiClienti, criteri(),
                     "SELECT *, LEFT(CodiceConto, 2) AS Mastro FROM AnagraficaPianoConti WHERE "
                     "LivelloConto=2 AND CodiceConto  LIKE '03.%'"},
        StatementRow{"ChartOfOneCustomer", reports::sqlPianoContiClienti, criteri("", "", "03.005"),
                     "SELECT *, LEFT(CodiceConto, 2) AS Mastro FROM AnagraficaPianoConti WHERE "
                     "LivelloConto=2 AND CodiceConto  LIKE '03.005'"},
        StatementRow{"LinesNone", righe, criteri(), with(righeHead, "03.%")},
        StatementRow{
            "LinesAll", righe, criteri("AZ01", "ES'01", "03.005"),
            with(righeHead, "03.005") + " AND nt.CodiceAzienda='AZ01' AND nt.CodEsattore='ES''01'"},
        StatementRow{"BalancesNone", saldi, criteri(),
                     with(saldiHead, "03.%") + with(saldiTail, "03.%")},
        StatementRow{
            "BalancesCollectorAndAccount", saldi, criteri("", "ES01", "03.005"),
            with(saldiHead, "03.005") + " AND nt.CodEsattore='ES01'" + with(saldiTail, "03.005")},
        StatementRow{
            "BalancesCompanyMisspelt", saldi, criteri("AZ01"),
            with(saldiHead, "03.%") + " AND nt.odiceAzienda='AZ01')" + with(saldiTail, "03.%")},
        StatementRow{"RangeOfTheChart", reports::sqlPianoContiIntervallo, criteri(),
                     std::string(" SELECT *, LEFT(CodiceConto, 2) AS Mastro  FROM "
                                 "AnagraficaPianoConti  WHERE  CodiceConto >= ") +
                         idDa + " AND  CodiceConto <= " + idA},
        StatementRow{"AccountLinesNone", reports::sqlRigheContab, criteri(), righeContab("")},
        StatementRow{"AccountLinesAll", reports::sqlRigheContab,
                     criteri("AZ01", "ES'01", "", false), righeContab(venuesAndCollector)},
        StatementRow{"AccountBalancesNone", reports::sqlSaldiContab, criteri(), saldiContab("")},
        StatementRow{"AccountBalancesAll", reports::sqlSaldiContab,
                     criteri("AZ01", "ES'01", "", false), saldiContab(venuesAndCollector)}),
    [](const ::testing::TestParamInfo<StatementRow>& info) {
        return std::string(info.param.name);
    });

TEST(SchedaWorkStatements, CleanAndFillTheWorkFile) {
    EXPECT_EQ(reports::sqlPulisciSaldi(),
              u" DELETE * FROM SALDI  WHERE  Saldi.CodiceLocale NOT IN (SELECT codLocale FROM "
              u"NoteRighe)  AND  Saldi.saldo = 0 "_s);
    EXPECT_EQ(reports::sqlContiSenzaSaldo(),
              u" INSERT INTO Saldi SELECT apc.id,apc.CodiceConto,apc.Descrizione,0 AS dare,0 AS "
              u"avere,0 AS saldo,'03' AS Mastro,apc.TipoConto,'' AS CodiceLocale,apc.LivelloConto "
              u"FROM AnagraficaPianoConti apc WHERE apc.CodiceConto NOT IN (SELECT CodiceConto "
              u"FROM Saldi)"_s);
}

struct SearchRow {
    const char* name;
    bool sospesi;
    const char* esattore;
    const char* nome;
    const char* zona;
    std::string tail;
};

class SchedaSearch : public ::testing::TestWithParam<SearchRow> {};

TEST_P(SchedaSearch, StartsWithThePeriodAndWritesOnlyAndForms) {
    screens::FrameCriteria c;
    c.dallaData = QDate(2025, 1, 1);
    c.allaData = QDate(2025, 3, 20);
    c.sospesi = GetParam().sospesi;
    c.nomeLocale = QString::fromUtf8(GetParam().nome);
    c.zona = QString::fromUtf8(GetParam().zona);
    EXPECT_EQ(reports::sqlRicercaSchede(c, QString::fromUtf8(GetParam().esattore)),
              u"SELECT * FROM AnagraficaLocali al  WHERE al.CodLocale IN ( SELECT DISTINCT "
              u"nr.codLocale FROM NoteRighe nr INNER JOIN NoteTeste nt ON nt.id=nr.idTesta WHERE "
              u"nr.Data>=#01/01/2025# AND nr.Data<=#03/20/2025#"_s +
                  QString::fromStdString(GetParam().tail));
}

INSTANTIATE_TEST_SUITE_P(
    Schede, SchedaSearch,
    ::testing::Values(SearchRow{"NothingTyped", true, "", "", "", " )"},
                      SearchRow{"NotSuspended", false, "", "", "", " ) AND al.sospeso = 0 "},
                      SearchRow{"AllSet", false, "ES'01", "Bar", "Z1",
                                " AND nt.CodEsattore='ES''01' ) AND al.sospeso = 0  AND "
                                "al.Insegna like '%Bar%' AND al.Codzona='Z1' "},
                      SearchRow{"NameFirstStillAnd", true, "", "Bar", "",
                                " ) AND al.Insegna like '%Bar%'"}),
    [](const ::testing::TestParamInfo<SearchRow>& info) { return std::string(info.param.name); });

// The real screens on the fixture's installation (notes from 01/01/2025 to
// 31/03/2025, balances opened on 31/12/2024, today 20/03/2025).
class SchedaRun : public testing::ReportScreenTest {
  protected:
    // The rows of every table of the main database but AnagraficaLocali_Tmp.
    static QString fingerprint(const QString& database = {}) {
        return testing::databaseContents(database.isEmpty() ? folder() + u"/Lorvane.db"_s
                                                            : database);
    }
    // The first venue in use, and its customer account.
    static QString venue() {
        return mainQuery(u"SELECT MIN(CodLocale) FROM AnagraficaLocali WHERE Sospeso = 0"_s);
    }
    static QString accountOf(const QString& code) {
        return mainQuery(u"SELECT CodiceConto FROM AnagraficaLocali WHERE CodLocale = '"_s + code +
                         u"'"_s);
    }
};

QString opened(const QString& sql) { return u"OpenRecordset("_s + sql + u")"_s; }

// The customer card's statements: the chart, the venue ticked (twice into
// the venue table), then per venue its lines and its balances.
struct CardRow {
    const char* name;
    bool collector;  // ES01 chosen
    bool account;    // the venue's own account chosen
};

class SchedaLocaleStatements : public SchedaRun, public ::testing::WithParamInterface<CardRow> {};

TEST_P(SchedaLocaleStatements, AreThoseOfItsCriteriaAndWriteOnlyTheVenueTable) {
    const QString before = fingerprint();
    openScreen("StampaSchedaLocale");
    const QString code = venue();
    SchedaCriteri c;
    c.dallaData = QDate(2025, 1, 1);
    c.allaData = testing::fixedToday();
    if (GetParam().collector) {
        c.esattore = mainQuery(u"SELECT codEsattore FROM AnagraficaLocali WHERE CodLocale = '"_s +
                               code + u"'"_s);
        choose("cmbEsattore", c.esattore);
    }
    if (GetParam().account) {
        c.conto = accountOf(code);
        choose("cmbCausale", mainQuery(u"SELECT Descrizione FROM AnagraficaPianoConti WHERE "
                                       u"CodiceConto = '"_s +
                                       c.conto + u"'"_s));
    }
    tick({code});
    EXPECT_EQ(run(), (QStringList{opened(reports::sqlPianoContiClienti(c)),
                                  u"Execute(DELETE * FROM AnagraficaLocali_Tmp)"_s,
                                  opened(u"SELECT * FROM AnagraficaLocali_Tmp"_s),
                                  opened(u"SELECT * FROM AnagraficaLocali WHERE CodLocale='"_s +
                                         code + u"' AND Sospeso=0"_s),
                                  opened(reports::sqlRigheLocale(c, code)),
                                  opened(reports::sqlSaldiLocale(c, code))}));
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(openedFiles.size(), 1);
    EXPECT_EQ(fingerprint(), before);
    EXPECT_EQ(mainQuery(u"SELECT COUNT(*) FROM AnagraficaLocali_Tmp"_s), u"2"_s);
    const QString lines = work("SchedaLocale.mdb", u"SELECT COUNT(*) FROM NoteRighe"_s);
    EXPECT_GT(lines.toInt(), 0);
    EXPECT_EQ(work("SchedaLocale.mdb", u"SELECT COUNT(*) FROM NoteRighe WHERE codLocale <> '"_s +
                                           code + u"' OR CodConto NOT LIKE '03.%'"_s),
              u"0"_s);
    EXPECT_EQ(work("SchedaLocale.mdb", u"SELECT COUNT(*) FROM Saldi"_s), u"1"_s);
    if (GetParam().account) {
        EXPECT_EQ(work("SchedaLocale.mdb", u"SELECT COUNT(*) FROM AnagraficaPianoConti"_s), u"1"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(Schede, SchedaLocaleStatements,
                         ::testing::Values(CardRow{"NoCriteria", false, false},
                                           CardRow{"CollectorAndAccount", true, true}),
                         [](const ::testing::TestParamInfo<CardRow>& info) {
                             return std::string(info.param.name);
                         });

// "Tutti i locali" walks every venue in use, two statements each.
TEST_F(SchedaRun, AllVenuesAreWalkedAtTwoStatementsEach) {
    openScreen("StampaSchedaLocale");
    const QStringList statements = run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    const int venues =
        mainQuery(u"SELECT COUNT(*) FROM AnagraficaLocali WHERE Sospeso = 0"_s).toInt();
    EXPECT_EQ(statements.size(), 4 + 2 * venues);
    EXPECT_EQ(work("SchedaLocale.mdb", u"SELECT COUNT(DISTINCT CodLocale) FROM AnagraficaLocali"_s),
              QString::number(venues));
    EXPECT_EQ(work("SchedaLocale.mdb", u"SELECT Parametri FROM Parametri"_s),
              u"Parametri di ricerca: "_s);
}

// A line on the first day is in the lines and not in the balance.
TEST_F(SchedaRun, ALineOnTheFirstDayIsInTheLinesNotInTheBalance) {
    const QString code = venue();
    const QString account = accountOf(code);
    const QString where = u" FROM NoteRighe WHERE codLocale = '"_s + code +
                          u"' AND CodConto = '"_s + account + u"'"_s;
    const QString first = mainQuery(u"SELECT MIN(Data)"_s + where + u" AND Data > '2025-01-01'"_s);
    ASSERT_FALSE(first.isEmpty());
    openScreen("StampaSchedaLocale");
    control<QDateEdit>(screen, "txtDallaData")
        ->setDate(QDate::fromString(first.left(10), u"yyyy-MM-dd"_s));
    tick({code});
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(work("SchedaLocale.mdb",
                   u"SELECT COUNT(*) FROM NoteRighe WHERE Data = '"_s + first + u"'"_s),
              mainQuery(u"SELECT COUNT(*)"_s + where + u" AND Data = '"_s + first + u"'"_s));
    EXPECT_EQ(work("SchedaLocale.mdb",
                   u"SELECT printf('%.2f|%.2f|%.2f', dare, avere, saldo) FROM Saldi"_s),
              mainQuery(u"SELECT printf('%.2f|%.2f|%.2f', SUM(Dare), SUM(Avere), SUM(Dare) - "
                        u"SUM(Avere))"_s +
                        where + u" AND Data < '"_s + first + u"'"_s));
}

// Venues without lines in the period: a balance stays, a zero balance is
// cleaned away, nothing gives nothing; no lines give "Nessun dato da stampare".
TEST_F(SchedaRun, OnlyBalancesOtherThanZeroStayWithoutLines) {
    openScreen("StampaSchedaLocale");
    control<QCheckBox>(screen, "chkSospesi")->setChecked(true);
    tick({u"L9901"_s, u"L9902"_s, u"L9903"_s});
    run();
    EXPECT_EQ(messages, QStringList{u"Lorvane|64|Nessun dato da stampare"_s});
    EXPECT_EQ(work("SchedaLocale.mdb", u"SELECT COUNT(*) FROM NoteRighe"_s), u"0"_s);
    EXPECT_EQ(work("SchedaLocale.mdb", u"SELECT CodiceLocale || '|' || CodiceConto FROM Saldi"_s),
              u"L9901|03.901"_s);
}

struct FailureRow {
    const char* name;
    void (*input)(SchedaRun&);
    const char* shown;  // in the one message the user reads
};

class SchedaLocaleFailure : public SchedaRun, public ::testing::WithParamInterface<FailureRow> {
  public:
    void chooseCompany() {
        choose("CmbAzienda", mainQuery(u"SELECT CodiceAzienda FROM AnagraficaLocali WHERE "
                                       u"CodLocale = '"_s +
                                       venue() + u"'"_s));
        tick({venue()});
    }
    void noVenue() { tick({}); }
    void suspendedVenue() { tick({u"L9901"_s}); }
};

// The preparation has no handler: the first failure is the button's to show,
// with the database's or the runtime's own words, and the work file stays open.
// The company's statement is refused for its bracket too many.
TEST_P(SchedaLocaleFailure, EndsThePreparationWithItsOwnMessage) {
    const QString before = fingerprint();
    openScreen("StampaSchedaLocale");
    GetParam().input(*this);
    run();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains(QString::fromUtf8(GetParam().shown)))
        << messages[0].toStdString();
    EXPECT_TRUE(openedFiles.isEmpty());
    EXPECT_TRUE(workdb::ConnessioneTemporanea().IsOpen());
    EXPECT_EQ(fingerprint(), before);
}

constexpr char noRecord[] = "Il valore di BOF o EOF è True";

INSTANTIATE_TEST_SUITE_P(
    Schede, SchedaLocaleFailure,
    ::testing::Values(
        FailureRow{"CompanyAtTheFirstVenue",
                   [](SchedaRun& t) { static_cast<SchedaLocaleFailure&>(t).chooseCompany(); },
                   "Errore di sintassi nell'istruzione SQL"},
        FailureRow{"NoVenueTicked",
                   [](SchedaRun& t) { static_cast<SchedaLocaleFailure&>(t).noVenue(); }, noRecord},
        FailureRow{"SuspendedVenueTicked",
                   [](SchedaRun& t) { static_cast<SchedaLocaleFailure&>(t).suspendedVenue(); },
                   noRecord}),
    [](const ::testing::TestParamInfo<FailureRow>& info) { return std::string(info.param.name); });

// The company's failure comes at the first venue, after its lines.
TEST_F(SchedaRun, TheCompanyFailureComesAfterTheFirstVenuesLines) {
    openScreen("StampaSchedaLocale");
    choose("CmbAzienda",
           mainQuery(u"SELECT CodiceAzienda FROM AnagraficaLocali WHERE CodLocale = '"_s + venue() +
                     u"'"_s));
    tick({venue()});
    const QStringList statements = run();
    ASSERT_EQ(statements.size(), 6);
    EXPECT_TRUE(statements.last().contains(u"nt.odiceAzienda="_s));
    EXPECT_GT(work("SchedaLocale.mdb", u"SELECT COUNT(*) FROM NoteRighe"_s).toInt(), 0);
    EXPECT_EQ(work("SchedaLocale.mdb", u"SELECT COUNT(*) FROM Saldi"_s), u"0"_s);
}

TEST_F(SchedaRun, TheResetEmptiesTheTreeRootAndAll) {
    openScreen("StampaSchedaLocale");
    tick({venue()});
    choose("cmbCausale", control<QComboBox>(screen, "cmbCausale")->itemText(0));
    control<QPushButton>(screen, "CmdAzzera")->click();
    EXPECT_EQ(control<screens::KeyedTree>(screen, "Tree")->nodeCount(), 0);
    EXPECT_EQ(control<QComboBox>(screen, "cmbCausale")->currentIndex(), -1);
    EXPECT_EQ(control<QDateEdit>(screen, "txtDallaData")->date(), testing::fixedToday());
    EXPECT_TRUE(control<QCheckBox>(screen, "ChkTutti")->isChecked());
}

// The account card opens on the whole chart, "code - description" with the
// id as data, every causale ticked and no tree; the causali go to the
// statements in reverse order of the list, their codes read from the table.
TEST_F(SchedaRun, TheAccountCardOpensOnTheWholeChartWithAllCausali) {
    openScreen("StampaSchedaContab");
    auto* da = control<QComboBox>(screen, "cmbCodContoDa");
    auto* a = control<QComboBox>(screen, "cmbCodContoA");
    const QString accounts = mainQuery(u"SELECT COUNT(*) FROM AnagraficaPianoConti"_s);
    EXPECT_EQ(QString::number(da->count()), accounts);
    EXPECT_EQ(da->currentIndex(), 0);
    EXPECT_EQ(a->currentIndex(), a->count() - 1);
    EXPECT_EQ(da->currentText() + u'|' + da->currentData().toString(),
              mainQuery(u"SELECT CodiceConto || ' - ' || Descrizione || '|' || id FROM "
                        u"AnagraficaPianoConti ORDER BY CodiceConto LIMIT 1"_s));
    auto* causali = control<screens::CheckList>(screen, "ListCausali");
    EXPECT_EQ(causali->tickedCount(), causali->count());
    EXPECT_EQ(control<screens::KeyedTree>(screen, "Tree")->nodeCount(), 0);

    control<QPushButton>(screen, "cmdSelNone")->click();
    EXPECT_EQ(causali->tickedCount(), 0);
    causali->setTicked(0, true);
    causali->setTicked(1, true);
    const QString codes = mainQuery(
        u"SELECT group_concat(c, ', ') FROM (SELECT '''' || CodiceCausale || '''' AS c FROM "
        u"AnagraficaCausali ORDER BY Descrizione DESC) WHERE c IN (SELECT '''' || "
        u"CodiceCausale || '''' FROM (SELECT CodiceCausale FROM AnagraficaCausali ORDER BY "
        u"Descrizione LIMIT 2))"_s);
    EXPECT_EQ(static_cast<reports::FrmStampaSchedaContab*>(screen)->ElencoCausaliScelte(), codes);
    control<QPushButton>(screen, "cmdSelAll")->click();
    EXPECT_EQ(causali->tickedCount(), causali->count());
}

// Over the whole chart every account stands once in Saldi, of every level;
// only level 2 has a balance, lines of level 1 and 3 are listed, and the venue
// table is left empty.
TEST_F(SchedaRun, TheAccountCardCarriesEveryAccountOfTheRangeOnce) {
    openScreen("StampaSchedaContab");
    control<QDateEdit>(screen, "txtDallaData")->setDate(QDate(2025, 1, 1));
    tick({venue()});
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    const QString accounts = mainQuery(u"SELECT COUNT(*) FROM AnagraficaPianoConti"_s);
    EXPECT_EQ(work("SchedaContab.mdb",
                   u"SELECT COUNT(*) || '|' || COUNT(DISTINCT CodiceConto) || '|' || "
                   u"group_concat(DISTINCT LivelloConto) FROM (SELECT * FROM Saldi ORDER BY "
                   u"LivelloConto)"_s),
              accounts + u'|' + accounts + u"|1,2,3"_s);
    EXPECT_EQ(work("SchedaContab.mdb",
                   u"SELECT COUNT(*) FROM Saldi WHERE LivelloConto <> 2 AND saldo <> 0"_s),
              u"0"_s);
    // The capital's balance is the venue's opening, dated the day before.
    EXPECT_EQ(work("SchedaContab.mdb",
                   u"SELECT printf('%.2f', saldo) FROM Saldi WHERE CodiceConto = '07.001'"_s),
              mainQuery(u"SELECT printf('%.2f', SUM(Dare) - SUM(Avere)) FROM NoteRighe WHERE "
                        u"CodConto = '07.001' AND Data < '2025-01-01' AND codLocale = '"_s +
                        venue() + u"'"_s));
    EXPECT_EQ(
        work("SchedaContab.mdb", u"SELECT COUNT(*) FROM NoteRighe WHERE Data < '2025-01-01'"_s),
        u"0"_s);
    EXPECT_EQ(
        work("SchedaContab.mdb", u"SELECT COUNT(*) FROM NoteRighe WHERE CodEsattore IS NULL"_s),
        u"0"_s);
    EXPECT_EQ(mainQuery(u"SELECT COUNT(*) FROM AnagraficaLocali_Tmp"_s), u"0"_s);

    // "Tutti i locali": no venue clause, so the lines of no venue come too.
    control<QCheckBox>(screen, "ChkTutti")->setChecked(true);
    run();
    EXPECT_EQ(work("SchedaContab.mdb",
                   u"SELECT group_concat(CodConto) FROM (SELECT DISTINCT CodConto FROM NoteRighe "
                   u"WHERE CodConto IN ('01', '01.001.01') ORDER BY CodConto)"_s),
              u"01,01.001.01"_s);
}

struct ContabBadRow {
    const char* name;
    void (*input)(SchedaRun&, screens::FilterScreen*);
    const char* shown;     // the end of the one message
    const char* venueTmp;  // the rows AnagraficaLocali_Tmp keeps
};

class SchedaContabBadInput : public SchedaRun, public ::testing::WithParamInterface<ContabBadRow> {
  public:
    void tickVenue() { tick({venue()}); }
};

TEST_P(SchedaContabBadInput, ShowsOneMessageAndChangesOnlyTheVenueTable) {
    const QString before = fingerprint();
    openScreen("StampaSchedaContab");
    GetParam().input(*this, screen);
    run();
    ASSERT_EQ(messages.size(), 1) << messages.join(u'\n').toStdString();
    EXPECT_TRUE(messages[0].contains(QString::fromUtf8(GetParam().shown)))
        << messages[0].toStdString();
    EXPECT_EQ(mainQuery(u"SELECT COUNT(*) FROM AnagraficaLocali_Tmp"_s),
              QString::fromLatin1(GetParam().venueTmp));
    EXPECT_EQ(fingerprint(), before);
}

void reversedRange(SchedaRun&, screens::FilterScreen* screen) {
    auto* da = screen->findChild<QComboBox*>(u"cmbCodContoDa"_s);
    auto* a = screen->findChild<QComboBox*>(u"cmbCodContoA"_s);
    da->setCurrentIndex(da->count() - 1);
    a->setCurrentIndex(0);
}
void noCausale(SchedaRun&, screens::FilterScreen* screen) {
    screen->findChild<QPushButton*>(u"cmdSelNone"_s)->click();
}

INSTANTIATE_TEST_SUITE_P(
    Schede, SchedaContabBadInput,
    ::testing::Values(ContabBadRow{"ReversedRange", reversedRange, "Nessun dato da stampare", "0"},
                      ContabBadRow{"NoCausaleTicked",
                                   [](SchedaRun& t, screens::FilterScreen* s) {
                                       noCausale(t, s);
                                       static_cast<SchedaContabBadInput&>(t).tickVenue();
                                   },
                                   "nt.CodCausale IN ()", "1"}),
    [](const ::testing::TestParamInfo<ContabBadRow>& info) {
        return std::string(info.param.name);
    });

// A chart without accounts leaves the account combos empty, and the reset
// that ends the opening fails on their first entry: the screen is not shown.
TEST_F(SchedaRun, AnEmptyChartFailsTheOpeningWithAMessage) {
    const QString copy = mainDatabaseCopy();
    mainQuery(u"DELETE FROM AnagraficaPianoConti"_s, copy);
    useMainDatabase(copy);
    try {
        open(u"StampaSchedaContab"_s);
        ADD_FAILURE() << "the screen opened";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.message(), u"Valore della proprietà non valido."_s);
    }
}

// Apostrophes: a collector's is doubled and the card comes; an account's goes
// in as typed and the database refuses the chart's statement. Nothing but
// the venue table changes.
TEST_F(SchedaRun, ApostrophesInCodesAndNames) {
    const QString copy = mainDatabaseCopy();
    const QString code = venue();
    const QString collector = mainQuery(
        u"SELECT codEsattore FROM AnagraficaLocali WHERE CodLocale = '"_s + code + u"'"_s);
    for (const char* table :
         {"AnagraficaOperatori SET codiceOperatore", "NoteTeste SET CodEsattore"})
        mainQuery(u"UPDATE "_s + QLatin1String(table) + u" = 'ES''9' WHERE "_s +
                      QString::fromLatin1(table).section(u' ', -1) + u" = '"_s + collector + u"'"_s,
                  copy);
    mainQuery(
        u"UPDATE AnagraficaPianoConti SET CodiceConto = '03.''X' WHERE CodiceConto = '03.901'"_s,
        copy);
    useMainDatabase(copy);
    const QString before = fingerprint(copy);
    openScreen("StampaSchedaLocale");
    choose("cmbEsattore", u"ES'9"_s);
    tick({code, u"L9901"_s});
    control<QCheckBox>(screen, "chkSospesi")->setChecked(true);
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_GT(work("SchedaLocale.mdb", u"SELECT COUNT(*) FROM NoteRighe"_s).toInt(), 0);

    choose("cmbCausale", u"Caffè dell'Orologio"_s);
    run();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains(u"LIKE '03.'X'"_s)) << messages[0].toStdString();
    EXPECT_EQ(fingerprint(copy), before);
}

}  // namespace
}  // namespace lorvane
