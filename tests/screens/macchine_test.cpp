// The machine reports: their statements for all, some and none of the
// optional criteria, what the work file holds after a run on the real
// screens, and bad input.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>

#include "db/database_fixture.h"
#include "reports/collection/macchine_sql.h"
#include "screens/controls.h"
#include "support/database_contents.h"
#include "support/report_screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;
using reports::MacchineCriteri;

MacchineCriteri criteri(const QString& azienda = {}, bool tutti = true, bool visMag = false) {
    MacchineCriteri c;
    c.dallaData = QDate(2025, 1, 31);
    c.allaData = QDate(2025, 3, 1);
    c.data = QDate(2025, 2, 14);
    c.azienda = azienda;
    c.tutti = tutti;
    c.visMag = visMag;
    return c;
}

struct StatementRow {
    const char* name;
    QString (*build)(const MacchineCriteri&);
    MacchineCriteri criteri;
    std::string sql;
};

class MachineStatements : public ::testing::TestWithParam<StatementRow> {};

TEST_P(MachineStatements, AreTheirPiecesInOrder) {
    EXPECT_EQ(GetParam().build(GetParam().criteri), QString::fromStdString(GetParam().sql));
}

constexpr char globali[] =
    "SELECT * FROM MagSchede WHERE Obsoleto=0 AND Venduto=0 AND Dismesso=0 AND "
    "TipologiaIncasso=6 AND UltimoIncasso >= #01/31/2025# AND UltimoIncasso <= #03/01/2025#";
constexpr char letture[] =
    " SELECT *  FROM NoteIncassi INNER JOIN NoteTeste ON NoteIncassi.IdTesta = NoteTeste.id "
    "WHERE  NoteIncassi.DataIncasso >= #01/31/2025# AND  NoteIncassi.DataIncasso <= "
    "#03/01/2025#";
constexpr char schede[] =
    " SELECT *  FROM MagSchede  WHERE  Obsoleto=0  AND  Venduto=0  AND  Dismesso=0  AND  "
    "TipologiaIncasso=6 ";
constexpr char ultimiHopper[] =
    "SELECT ni.* FROM NoteIncassi ni, NoteTeste nt, ( SELECT MAX(DataIncasso) AS maxData, "
    "LinkScheda FROM NoteIncassi INNER JOIN NoteTeste ON NoteTeste.id=NoteIncassi.IdTesta WHERE "
    "NoteTeste.CodCausale = 'CH' GROUP BY LinkScheda ) tmp WHERE nt.id = ni.IdTesta AND "
    "tmp.LinkScheda=ni.LinkScheda AND tmp.maxData=ni.DataIncasso AND ni.LinkScheda IN ( SELECT "
    "id FROM MagSchede WHERE CodLocale IN ( SELECT CodLocale FROM AnagraficaLocali_Tmp";
constexpr char ultimiCambiamonete[] =
    "SELECT ni.* FROM ( ( (NoteIncassi ni INNER JOIN NoteTeste nt ON ni.IdTesta=nt.id) INNER "
    "JOIN ( SELECT MAX(DataIncasso) AS maxData, LinkScheda FROM NoteIncassi, NoteTeste WHERE "
    "NoteTeste.id=NoteIncassi.IdTesta AND NoteTeste.CodCausale = 'CAM' GROUP BY LinkScheda ) "
    "tmp ON tmp.LinkScheda=ni.LinkScheda ) INNER JOIN MagSchede ms ON ms.id=ni.LinkScheda ) "
    "INNER JOIN AnagraficaLocali_Tmp al ON al.CodLocale=ms.CodLocale WHERE "
    "tmp.maxData=ni.DataIncasso AND ni.DataIncasso<=#02/14/2025#";

std::string join(const char* a, const char* b) { return std::string(a) + b; }

INSTANTIATE_TEST_SUITE_P(
    Macchine, MachineStatements,
    ::testing::Values(
        StatementRow{"GlobaliNone", reports::sqlSchedeGlobali, criteri(),
                     join(globali, " AND CodLocale IS NOT NULL")},
        StatementRow{"GlobaliWarehouseAndCompany", reports::sqlSchedeGlobali,
                     criteri(u"AZ1"_s, false, true), join(globali, " AND CodiceAzienda='AZ1'")},
        StatementRow{"LettureAll", reports::sqlLettureParziali, criteri(u"AZ1"_s),
                     join(letture, " and NoteTeste.codCausale='INC6' ")},
        StatementRow{"LettureTicked", reports::sqlLettureParziali, criteri({}, false),
                     join(letture,
                          " AND  NoteIncassi.CodLocale IN (SELECT CodLocale FROM "
                          "AnagraficaLocali_Tmp)  and NoteTeste.codCausale='INC6' ")},
        StatementRow{"SchedeAll", reports::sqlSchedeParziali, criteri(),
                     join(schede,
                          " AND  id IN  (  SELECT LinkScheda  FROM NoteIncassi  "
                          "WHERE  DataIncasso >= #01/31/2025# AND  DataIncasso <= "
                          "#03/01/2025# ) ")},
        StatementRow{"SchedeCompanyTicked", reports::sqlSchedeParziali, criteri(u"AZ1"_s, false),
                     join(schede,
                          " AND  CodiceAzienda='AZ1'  AND  id IN  (  SELECT "
                          "LinkScheda  FROM NoteIncassi  WHERE  DataIncasso >= "
                          "#01/31/2025# AND  DataIncasso <= #03/01/2025# AND  "
                          "CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp)  ) ")},
        StatementRow{"SchedeHopper", reports::sqlSchedeHopper, criteri(),
                     "SELECT * FROM MagSchede WHERE CodLocale IN ( SELECT CodLocale FROM "
                     "AnagraficaLocali_Tmp )"},
        StatementRow{"SchedeHopperCompany", reports::sqlSchedeHopper, criteri(u"AZ1"_s),
                     "SELECT * FROM MagSchede WHERE CodLocale IN ( SELECT CodLocale FROM "
                     "AnagraficaLocali_Tmp WHERE CodiceAzienda = 'AZ1' )"},
        StatementRow{"UltimiHopper", reports::sqlUltimiHopper, criteri(),
                     join(ultimiHopper, " ) ) AND nt.CodCausale = 'CH'")},
        StatementRow{"UltimiHopperCompany", reports::sqlUltimiHopper, criteri(u"AZ1"_s),
                     join(ultimiHopper,
                          " WHERE CodiceAzienda = 'AZ1' ) ) AND nt.CodCausale = "
                          "'CH'")},
        StatementRow{"SchedeCambiamonete", reports::sqlSchedeCambiamonete, criteri(),
                     "SELECT ms.* FROM MagSchede ms INNER JOIN AnagraficaLocali_Tmp al ON "
                     "al.CodLocale=ms.CodLocale"},
        StatementRow{"SchedeCambiamoneteCompany", reports::sqlSchedeCambiamonete, criteri(u"AZ1"_s),
                     "SELECT ms.* FROM MagSchede ms INNER JOIN AnagraficaLocali_Tmp al ON "
                     "al.CodLocale=ms.CodLocale WHERE al.CodiceAzienda='AZ1'"},
        StatementRow{"UltimiCambiamonete", reports::sqlUltimiCambiamonete, criteri(),
                     join(ultimiCambiamonete, " AND nt.CodCausale = 'CAM'")},
        StatementRow{
            "UltimiCambiamoneteCompany", reports::sqlUltimiCambiamonete, criteri(u"AZ1"_s),
            join(ultimiCambiamonete, " AND al.CodiceAzienda = 'AZ1' AND nt.CodCausale = 'CAM'")}),
    [](const ::testing::TestParamInfo<StatementRow>& info) {
        return std::string(info.param.name);
    });

TEST(MachineTexts, TheVenueFilterAndTheHeadings) {
    const QString codes = reports::elencoCodici({u"L0001"_s, u"L'02"_s});
    EXPECT_EQ(codes, u"'L0001','L''02'"_s);
    EXPECT_EQ(reports::elencoCodici({}), QString());
    EXPECT_EQ(reports::sqlEliminaAltriLocali(codes),
              u"DELETE * FROM MagSchede WHERE (CodLocale NOT IN ('L0001','L''02')) AND CodLocale "
              u"IS NOT NULL"_s);

    const struct {
        MacchineCriteri criteri;
        const char* heading;
    } headings[] = {
        {criteri(), "Parametri di ricerca:  incassi dal 31/01/2025 al 01/03/2025"},
        {criteri(u"AZ1"_s, false),
         "Parametri di ricerca:  incassi dal 31/01/2025 al 01/03/2025 per l'azienda AZ1 con "
         "filtro sui locali"},
    };
    for (const auto& row : headings)
        EXPECT_EQ(reports::parametriPercentuali(row.criteri), QString::fromUtf8(row.heading));

    screens::FrameCriteria frame;
    EXPECT_EQ(reports::parametriFiltroLocali(frame), u"Parametri di ricerca: "_s);
    frame.concessionario = u"SNAI"_s;  // acts on the venues, but is not looked at
    EXPECT_EQ(reports::parametriFiltroLocali(frame), u"Parametri di ricerca: "_s);
    frame.zona = u"Z1"_s;
    EXPECT_EQ(reports::parametriFiltroLocali(frame), u"Parametri di ricerca:  filtro su locali"_s);
}

struct SearchRow {
    const char* name;
    const screens::SearchForms& (*forms)();
    bool sospesi;
    const char* nome;
    const char* concessionario;
    std::string sql;
};

class MachineSearch : public ::testing::TestWithParam<SearchRow> {};

TEST_P(MachineSearch, WritesTheScreensOwnForms) {
    screens::FrameCriteria c;
    c.dallaData = QDate(2025, 1, 31);
    c.allaData = QDate(2025, 3, 1);
    c.sospesi = GetParam().sospesi;
    c.nomeLocale = QString::fromUtf8(GetParam().nome);
    c.concessionario = QString::fromUtf8(GetParam().concessionario);
    EXPECT_EQ(screens::sqlRicercaLocali(c, GetParam().forms()),
              QString::fromStdString(GetParam().sql));
}

constexpr char collected[] =
    "al.CodLocale IN ( SELECT NoteIncassi.CodLocale FROM NoteIncassi INNER JOIN NoteTeste ON "
    "NoteIncassi.IdTesta = NoteTeste.id WHERE NoteIncassi.DataIncasso >= #01/31/2025# AND  "
    "NoteIncassi.DataIncasso <= #03/01/2025# and NoteTeste.codCausale='INC6')";

INSTANTIATE_TEST_SUITE_P(
    Macchine, MachineSearch,
    ::testing::Values(
        SearchRow{"PercentualiNothingTyped", reports::percentualiSearchForms, false, "", "",
                  std::string("select * from anagraficalocali al  WHERE al.sospeso = 0  AND ") +
                      collected},
        SearchRow{"PercentualiConcessionaireFirst", reports::percentualiSearchForms, true, "",
                  "SNAI",
                  std::string("select * from anagraficalocali al  WHERE codLocale al.IN (SELECT "
                              "codlocale FROM magschede WHERE CodConcessionario = 'SNAI')  AND ") +
                      collected},
        SearchRow{"PercentualiNameFirst", reports::percentualiSearchForms, true, "Bar", "SNAI",
                  std::string("select * from anagraficalocali al  WHERE  al.Insegna like '%Bar%' "
                              "AND al.codlocale IN (SELECT codLocale FROM MagSchede WHERE "
                              "CodConcessionario = 'SNAI')  AND ") +
                      collected},
        SearchRow{"HopperWithoutPeriod", reports::hopperSearchForms, true, "", "SNAI",
                  "SELECT * FROM AnagraficaLocali al  WHERE al.codLocale IN (SELECT codLocale "
                  "FROM MagSchede WHERE CodConcessionario = 'SNAI') "},
        SearchRow{"HopperNothingTyped", reports::hopperSearchForms, true, "", "",
                  "SELECT * FROM AnagraficaLocali al "},
        SearchRow{"CambiamoneteHoldingABoard", reports::cambiamoneteSearchForms, false, "Bar", "",
                  "SELECT * FROM AnagraficaLocali al  WHERE al.sospeso = 0  AND al.Insegna like "
                  "'%Bar%' AND al.CodLocale IN ( SELECT DISTINCT CodLocale FROM MagSchede)"}),
    [](const ::testing::TestParamInfo<SearchRow>& info) { return std::string(info.param.name); });

// The real screens on the fixture's installation (today 20/03/2025).
class MachineRun : public testing::ReportScreenTest {
  protected:
  public:
  protected:
    // The rows of every table of the main database but AnagraficaLocali_Tmp.
    static QString fingerprint(const QString& database = {}) {
        return testing::databaseContents(database.isEmpty() ? folder() + u"/Lorvane.db"_s
                                                            : database);
    }
    // The first venue in use with boards, and its company.
    static QString venue() {
        return mainQuery(
            u"SELECT MIN(CodLocale) FROM MagSchede WHERE CodLocale IN (SELECT CodLocale FROM "
            u"AnagraficaLocali WHERE Sospeso = 0)"_s);
    }
    static QString companyOf(const QString& code) {
        return mainQuery(u"SELECT CodiceAzienda FROM AnagraficaLocali WHERE CodLocale = '"_s +
                         code + u"'"_s);
    }
};

struct RunRow {
    const char* name;
    const char* code;
    bool company;  // the venue's company chosen
    bool ticked;   // the venue ticked alone, "Tutti i locali" off
    bool visMag;
    // The statements sent, given the criteria and the venue.
    QStringList (*statements)(const MacchineCriteri&, const QString& venue);
};

class MachineRunStatements : public MachineRun, public ::testing::WithParamInterface<RunRow> {};

QString open(const QString& sql) { return u"OpenRecordset("_s + sql + u")"_s; }

// PreparaLocali's statements for one venue ticked.
QStringList venueTicked(const QString& venue) {
    return {
        u"Execute(DELETE * FROM AnagraficaLocali_Tmp)"_s,
        open(u"SELECT * FROM AnagraficaLocali_Tmp"_s),
        open(u"SELECT * FROM AnagraficaLocali WHERE CodLocale='"_s + venue + u"' AND Sospeso=0"_s)};
}

// PreparaLocali's statements for every venue not suspended.
const QStringList allVenues = {u"Execute(DELETE * FROM AnagraficaLocali_Tmp)"_s,
                               open(u"SELECT * FROM AnagraficaLocali_Tmp"_s),
                               open(u"SELECT * FROM AnagraficaLocali WHERE Sospeso=0"_s)};

TEST_P(MachineRunStatements, AreThoseOfItsCriteriaAndWriteOnlyTheVenueTable) {
    const RunRow& row = GetParam();
    const QString before = fingerprint();
    openScreen(row.code);
    const QString code = venue();
    MacchineCriteri c;
    c.dallaData = QDate(2025, 1, 1);
    c.allaData = c.data = testing::fixedToday();
    c.tutti = !row.ticked;
    c.visMag = row.visMag;
    if (row.company) {
        c.azienda = companyOf(code);
        chooseCompany(c.azienda);
    }
    if (row.ticked) tickOnly(code);
    if (row.visMag) control<QCheckBox>(screen, "chkVisMag")->setChecked(true);

    EXPECT_EQ(run(), row.statements(c, code));
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(openedFiles.size(), 1);
    EXPECT_EQ(fingerprint(), before);
}

INSTANTIATE_TEST_SUITE_P(
    Macchine, MachineRunStatements,
    ::testing::Values(RunRow{"GlobaliAll", "PercPagamentoG", false, false, false,
                             [](const MacchineCriteri& c, const QString&) {
                                 return QStringList{open(reports::sqlSchedeGlobali(c))};
                             }},
                      RunRow{"GlobaliCompanyTickedWarehouse", "PercPagamentoG", true, true, true,
                             [](const MacchineCriteri& c, const QString& v) {
                                 return venueTicked(v)
                                        << open(u"SELECT * FROM AnagraficaLocali_Tmp"_s)
                                        << open(reports::sqlSchedeGlobali(c));
                             }},
                      RunRow{"ParzialiAll", "PercPagamentoP", false, false, false,
                             [](const MacchineCriteri& c, const QString&) {
                                 return QStringList{open(reports::sqlLettureParziali(c)),
                                                    open(reports::sqlSchedeParziali(c))};
                             }},
                      RunRow{"ParzialiCompanyTicked", "PercPagamentoP", true, true, false,
                             [](const MacchineCriteri& c, const QString& v) {
                                 return venueTicked(v) << open(reports::sqlLettureParziali(c))
                                                       << open(reports::sqlSchedeParziali(c));
                             }},
                      RunRow{"HopperAll", "SaldiHopper", false, false, false,
                             [](const MacchineCriteri& c, const QString&) {
                                 return QStringList(allVenues) << open(reports::sqlSchedeHopper(c))
                                                               << open(reports::sqlUltimiHopper(c));
                             }},
                      RunRow{"HopperCompanyTicked", "SaldiHopper", true, true, false,
                             [](const MacchineCriteri& c, const QString& v) {
                                 return venueTicked(v) << open(reports::sqlSchedeHopper(c))
                                                       << open(reports::sqlUltimiHopper(c));
                             }},
                      RunRow{"CambiamoneteAll", "SaldiCambiamonete", false, false, false,
                             [](const MacchineCriteri& c, const QString&) {
                                 return QStringList(allVenues)
                                        << open(reports::sqlSchedeCambiamonete(c))
                                        << open(reports::sqlUltimiCambiamonete(c));
                             }},
                      RunRow{"CambiamoneteCompanyTicked", "SaldiCambiamonete", true, true, false,
                             [](const MacchineCriteri& c, const QString& v) {
                                 return venueTicked(v) << open(reports::sqlSchedeCambiamonete(c))
                                                       << open(reports::sqlUltimiCambiamonete(c));
                             }}),
    [](const ::testing::TestParamInfo<RunRow>& info) { return std::string(info.param.name); });

// The boards of the period in use, as the global report selects them.
constexpr char boardsInPeriod[] =
    "SELECT COUNT(*) FROM MagSchede WHERE Obsoleto = 0 AND Venduto = 0 AND Dismesso = 0 AND "
    "TipologiaIncasso = 6 AND UltimoIncasso >= '2025-01-01' AND UltimoIncasso <= '2025-03-31 "
    "00:00:00'";

TEST_F(MachineRun, GlobalDeletesTheOtherVenuesAfterTheCopyAndKeepsTheWarehouse) {
    const QString code = venue();
    openScreen("PercPagamentoG");
    control<QDateEdit>(screen, "txtAllaData")->setDate(QDate(2025, 3, 31));
    tickOnly(code);
    control<QCheckBox>(screen, "chkVisMag")->setChecked(true);
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    const QString kept = mainQuery(QString::fromLatin1(boardsInPeriod) +
                                   u" AND (CodLocale IS NULL OR CodLocale = '"_s + code + u"')"_s);
    EXPECT_GT(mainQuery(QString::fromLatin1(boardsInPeriod) + u" AND CodLocale IS NULL"_s).toInt(),
              0);
    EXPECT_EQ(work("PercGlobali.mdb",
                   "SELECT COUNT(*), SUM(CodLocale IS NULL) > 0 FROM MagSchede WHERE CodLocale IS "
                   "NULL OR CodLocale = (SELECT MIN(CodLocale) FROM MagSchede)"),
              kept + u"|1"_s);
    EXPECT_EQ(work("PercGlobali.mdb", "SELECT COUNT(DISTINCT CodLocale) FROM MagSchede"), u"1"_s);
    EXPECT_EQ(work("PercGlobali.mdb", "SELECT Parametri FROM Parametri"),
              u"Parametri di ricerca:  incassi dal 01/01/2025 al 31/03/2025 con filtro sui "
              u"locali"_s);

    // Another company's boards only: the filter leaves nothing, yet the count
    // of the copy opens the report.
    const QString other = mainQuery(
        u"SELECT MIN(CodiceAzienda) FROM MagSchede WHERE CodLocale IS NOT NULL AND "
        u"CodiceAzienda <> '"_s +
        companyOf(code) + u"'"_s);
    ASSERT_FALSE(other.isEmpty());
    control<QCheckBox>(screen, "chkVisMag")->setChecked(false);
    chooseCompany(other);
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(openedFiles.size(), 2);
    EXPECT_EQ(work("PercGlobali.mdb", "SELECT COUNT(*) FROM MagSchede"), u"0"_s);
}

// A board read in the period under another causale only: its readings stay
// out, the board comes in.
TEST_F(MachineRun, PartialBoardsComeByReadingsOfAnyCausale) {
    const QString copy = mainDatabaseCopy();
    const QString board = mainQuery(
        u"SELECT MIN(LinkScheda) FROM NoteIncassi WHERE IdTesta IN (SELECT id FROM NoteTeste "
        u"WHERE CodCausale = 'CH') AND LinkScheda IN (SELECT id FROM MagSchede WHERE "
        u"TipologiaIncasso = 6 AND Obsoleto = 0)"_s,
        copy);
    mainQuery(u"DELETE FROM NoteIncassi WHERE LinkScheda = "_s + board +
                  u" AND IdTesta IN (SELECT id FROM NoteTeste WHERE CodCausale = 'INC6')"_s,
              copy);
    useMainDatabase(copy);
    openScreen("PercPagamentoP");
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    const QByteArray which = board.toLatin1();
    EXPECT_EQ(work("PercParziali.mdb", "SELECT COUNT(*) FROM MagSchede WHERE id = " + which),
              u"1"_s);
    EXPECT_EQ(
        work("PercParziali.mdb", "SELECT COUNT(*) FROM NoteIncassi WHERE LinkScheda = " + which),
        u"0"_s);
    EXPECT_GT(work("PercParziali.mdb", "SELECT COUNT(*) FROM NoteIncassi").toInt(), 0);
}

TEST_F(MachineRun, TwoHopperChecksOnTheLastDayGiveTwoRows) {
    openScreen("SaldiHopper");
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(work("SaldiHopper.mdb",
                   "SELECT COUNT(*), COUNT(DISTINCT DataIncasso) FROM NoteIncassi WHERE "
                   "LinkScheda IN (SELECT LinkScheda FROM NoteIncassi GROUP BY LinkScheda HAVING "
                   "COUNT(*) > 1)"),
              u"2|1"_s);
    EXPECT_EQ(work("SaldiHopper.mdb", "SELECT Parametri FROM Parametri"),
              u"Parametri di ricerca: "_s);
}

// A machine whose last change note is after txtData drops out, rather than
// showing the note before.
TEST_F(MachineRun, ChangeMachinesWhoseLastNoteIsLaterDropOut) {
    const QString lastNotes =
        u"SELECT ni.LinkScheda, MAX(ni.DataIncasso) AS last FROM NoteIncassi ni JOIN NoteTeste nt "
        u"ON nt.id = ni.IdTesta WHERE nt.CodCausale = 'CAM' AND ni.LinkScheda IN (SELECT id FROM "
        u"MagSchede WHERE CodLocale IN (SELECT CodLocale FROM AnagraficaLocali WHERE Sospeso = "
        u"0)) GROUP BY ni.LinkScheda"_s;
    const QDate earliest = QDate::fromString(
        mainQuery(u"SELECT MIN(last) FROM ("_s + lastNotes + u")"_s).left(10), u"yyyy-MM-dd"_s);
    ASSERT_TRUE(earliest.isValid());
    const QString kept =
        mainQuery(u"SELECT COUNT(*) FROM ("_s + lastNotes + u") WHERE last <= '"_s +
                  earliest.toString(u"yyyy-MM-dd"_s) + u" 00:00:00'"_s);
    ASSERT_GT(kept.toInt(), 0);
    openScreen("SaldiCambiamonete");
    control<QDateEdit>(screen, "txtData")->setDate(earliest);
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(work("SaldiCambiamonete.mdb", "SELECT COUNT(*) FROM NoteIncassi"), kept);

    control<QDateEdit>(screen, "txtData")->setDate(earliest.addDays(-1));
    run();
    EXPECT_EQ(messages, QStringList{u"Lorvane|64|Nessun dato da stampare"_s});
}

struct BadRow {
    const char* name;
    const char* code;
    const char* workFile;
    void (*input)(MachineRun&, screens::FilterScreen*);
    int messages;         // shown in all
    const char* last;     // the end of the last one
    const char* heading;  // Parametri afterwards; nullptr: not looked at
};

class MachineBadInput : public MachineRun, public ::testing::WithParamInterface<BadRow> {};

TEST_P(MachineBadInput, BehavesAsTheReportSaysAndWritesNoMore) {
    const BadRow& row = GetParam();
    const QString copy = mainDatabaseCopy();
    mainQuery(u"INSERT INTO AnagraficaAziende (CodiceAzienda) VALUES ('AZ''9')"_s, copy);
    useMainDatabase(copy);
    const QString before = fingerprint(copy);
    openScreen(row.code);
    row.input(*this, screen);
    run();
    ASSERT_EQ(messages.size(), row.messages) << messages.join(u'\n').toStdString();
    if (row.messages > 0) {
        EXPECT_TRUE(messages.last().endsWith(QString::fromUtf8(row.last)))
            << messages.join(u'\n').toStdString();
    }
    if (row.heading) {
        EXPECT_EQ(work(row.workFile, "SELECT Parametri FROM Parametri"),
                  QString::fromUtf8(row.heading));
    }
    EXPECT_EQ(fingerprint(copy), before);
}

void endBeforeStart(MachineRun&, screens::FilterScreen* screen) {
    screen->findChild<QDateEdit*>(u"txtDallaData"_s)->setDate(QDate(2025, 3, 20));
    screen->findChild<QDateEdit*>(u"txtAllaData"_s)->setDate(QDate(2025, 1, 1));
}
void quotedCompany(MachineRun& test, screens::FilterScreen*) { test.chooseCompany(u"AZ'9"_s); }
void emptyTree(MachineRun& test, screens::FilterScreen*) { test.tickOnly(QString()); }

constexpr char noData[] = "|64|Nessun dato da stampare";

INSTANTIATE_TEST_SUITE_P(
    Macchine, MachineBadInput,
    ::testing::Values(
        BadRow{"GlobaliEndBeforeStart", "PercPagamentoG", "PercGlobali.mdb", endBeforeStart, 1,
               noData, "Parametri di ricerca:  incassi dal 20/03/2025 al 01/01/2025"},
        BadRow{"ParzialiEndBeforeStart", "PercPagamentoP", "PercParziali.mdb", endBeforeStart, 1,
               noData, nullptr},
        BadRow{"GlobaliQuotedCompany", "PercPagamentoG", "", quotedCompany, 1,
               "CodiceAzienda='AZ'9'", nullptr},
        BadRow{"HopperQuotedCompany", "SaldiHopper", "SaldiHopper.mdb", quotedCompany, 2, noData,
               ""},
        BadRow{"CambiamoneteQuotedCompany", "SaldiCambiamonete", "SaldiCambiamonete.mdb",
               quotedCompany, 2, noData, ""},
        BadRow{"GlobaliEmptyTree", "PercPagamentoG", "PercGlobali.mdb", emptyTree, 0, "",
               "Parametri di ricerca:  incassi dal 01/01/2025 al 20/03/2025 con filtro sui "
               "locali"},
        BadRow{"ParzialiEmptyTree", "PercPagamentoP", "PercParziali.mdb", emptyTree, 1, noData,
               nullptr},
        BadRow{"HopperEmptyTree", "SaldiHopper", "SaldiHopper.mdb", emptyTree, 1, noData,
               "Parametri di ricerca: "}),
    [](const ::testing::TestParamInfo<BadRow>& info) { return std::string(info.param.name); });

TEST_F(MachineRun, AnApostropheInTheVenueNameBreaksTheSearch) {
    openScreen("PercPagamentoG");
    control<QLineEdit>(screen, "TxtNomeLocale")->setText(u"Bar d'Italia"_s);
    control<QPushButton>(screen, "CmdRicerca")->click();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(control<screens::KeyedTree>(screen, "Tree")->nodeCount(), 1);
}

// "Tutti i locali" goes on before the tree is reset, so the root it adds stays.
TEST_F(MachineRun, TheChangeMachineResetLeavesTheRoot) {
    openScreen("SaldiCambiamonete");
    tickOnly(venue());
    control<QPushButton>(screen, "CmdAzzera")->click();
    EXPECT_EQ(control<screens::KeyedTree>(screen, "Tree")->nodeCount(), 1);
    EXPECT_TRUE(control<QCheckBox>(screen, "ChkTutti")->isChecked());
}

}  // namespace
}  // namespace lorvane
