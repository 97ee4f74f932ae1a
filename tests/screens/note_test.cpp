// The notes reports (slips, advances and refills, PREU difference): their
// statements for all, some and none of the criteria, what the real screens
// send to the host and leave in the work file, the advances' repair, and the
// PREU rates typed wrong.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

#include "db/database_fixture.h"
#include "platform/runtime_error.h"
#include "reports/collection/note_sql.h"
#include "screens/controls.h"
#include "support/database_contents.h"
#include "support/process.h"
#include "support/report_screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;
using reports::NoteCriteri;

NoteCriteri note(const char* causale, bool periodo, const QString& azienda = {}) {
    NoteCriteri c;
    c.dallaData = QDate(2025, 1, 31);
    c.allaData = QDate(2025, 3, 1);
    c.causale = QString::fromLatin1(causale);
    c.periodo = periodo;
    c.azienda = azienda;
    return c;
}

struct StatementRow {
    const char* name;
    QString (*build)(const NoteCriteri&);
    NoteCriteri criteri;
    std::string sql;
};

class NoteStatements : public ::testing::TestWithParam<StatementRow> {};

TEST_P(NoteStatements, AreTheirPiecesInOrder) {
    EXPECT_EQ(GetParam().build(GetParam().criteri), QString::fromStdString(GetParam().sql));
}

constexpr char openNotes[] =
    " SELECT * FROM NoteTeste WHERE CodCausale = 'ACC' AND CodLocale IN (SELECT CodLocale FROM "
    "AnagraficaLocali_Tmp) AND (Chiuso=0 OR Chiuso IS NULL)";
constexpr char periodNotes[] =
    " SELECT * FROM NoteTeste WHERE CodCausale = 'REF' AND CodLocale IN (SELECT CodLocale FROM "
    "AnagraficaLocali_Tmp) AND DataRegistrazione>=#01/31/2025# AND "
    "DataRegistrazione<=#03/01/2025#";
constexpr char preuPeriod[] =
    " DataRegistrazione >= #01/31/2025#  AND  DataRegistrazione <= #03/01/2025# ";
std::string cat(std::initializer_list<const char*> parts) {
    std::string text;
    for (const char* part : parts)
        text += part;
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    Note, NoteStatements,
    ::testing::Values(
        StatementRow{"SlipRows", reports::sqlRigheDistinta, note("", true, u"AZ1"_s),
                     "SELECT qr.* FROM QuietanzaRighe qr, QuietanzaTesta qt WHERE  qr.idTesta = "
                     "qt.id  AND  qt.TipoDocumento = 1  AND  qr.aData >= #01/31/2025# AND  "
                     "qr.aData <= #03/01/2025# AND  qt.CodLocale IN (SELECT CodLocale FROM "
                     "AnagraficaLocali_Tmp) "},
        StatementRow{"AdvancesOpen", reports::sqlNoteAcconti, note("ACC", false), openNotes},
        StatementRow{"RefillsOfThePeriod", reports::sqlNoteAcconti, note("REF", true), periodNotes},
        StatementRow{"AdvanceLinesOpen", reports::sqlIncassiAcconti, note("ACC", false),
                     cat({" SELECT  *  FROM  NoteIncassi  WHERE  IdTesta IN (SELECT id FROM (",
                          openNotes, " )AS tmpTable)  AND  (Chiuso = 0 OR Chiuso IS NULL ) "})},
        StatementRow{"RefillLinesOfThePeriod", reports::sqlIncassiAcconti, note("REF", true),
                     cat({" SELECT  *  FROM  NoteIncassi  WHERE  IdTesta IN (SELECT id FROM (",
                          periodNotes, " )AS tmpTable) "})},
        StatementRow{"PreuNotes", reports::sqlNotePreu, note("", true),
                     cat({"SELECT * FROM NoteTeste WHERE ", preuPeriod,
                          " AND  CodCausale = 'INC6'  AND  CodLocale IN (SELECT CodLocale FROM "
                          "AnagraficaLocali_Tmp) "})},
        StatementRow{"PreuNotesOfACompany", reports::sqlNotePreu, note("", true, u"AZ1"_s),
                     cat({"SELECT * FROM NoteTeste WHERE ", preuPeriod,
                          " AND  CodCausale = 'INC6'  AND  CodLocale IN (SELECT CodLocale FROM "
                          "AnagraficaLocali_Tmp)  AND  CodiceAzienda='AZ1' "})},
        StatementRow{"PreuLines", reports::sqlIncassiPreu, note("", true),
                     cat({"SELECT * FROM NoteIncassi WHERE  IdTesta IN  ( SELECT id FROM "
                          "NoteTeste WHERE ",
                          preuPeriod,
                          " AND  CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp)  )  "
                          "AND  (TipoCalcolo = 'Utile' OR (TipoCalcolo<>'Utile' AND "
                          "PercLocale>=25)) "})},
        StatementRow{"PreuLinesOfACompany", reports::sqlIncassiPreu, note("", true, u"AZ1"_s),
                     cat({"SELECT * FROM NoteIncassi WHERE  IdTesta IN  ( SELECT id FROM "
                          "NoteTeste WHERE ",
                          preuPeriod,
                          " AND  CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp)  AND  "
                          "CodiceAzienda='AZ1'  )  AND  (TipoCalcolo = 'Utile' OR "
                          "(TipoCalcolo<>'Utile' AND PercLocale>=25)) "})}),
    [](const ::testing::TestParamInfo<StatementRow>& info) {
        return std::string(info.param.name);
    });

TEST(NoteTexts, TheAdvancesRepairAndHeading) {
    EXPECT_EQ(reports::causaleNote(u"acconti"_s), u"ACC"_s);
    EXPECT_EQ(reports::causaleNote(u"Refill"_s), u"REF"_s);
    EXPECT_EQ(reports::causaleNote(u"Altro"_s), u"REF"_s);
    EXPECT_EQ(reports::sqlNoteSenzaRighe(),
              u"SELECT nt.* FROM NoteTeste nt LEFT JOIN NoteIncassi ni ON ni.idTesta=nt.id WHERE "
              u"ni.idTesta IS NULL"_s);
    EXPECT_EQ(reports::sqlSommaCassaAcconti(u"42"_s),
              u"SELECT nt.id,SUM(nr.Avere) AS Avere,SUM(nr.Dare) AS Dare FROM (NoteTeste nt INNER "
              u"JOIN NoteRighe nr ON nr.idTesta=nt.id) INNER JOIN TabAssociazioneConti tac ON "
              u"tac.CassaAcconti=nr.CodConto WHERE nt.id=42 GROUP BY nt.id"_s);
    EXPECT_EQ(reports::sqlAggiornaAcconto(u"12,5"_s, u"42"_s),
              u"UPDATE NoteTeste SET Acconto=12,5 WHERE id=42"_s);

    const struct {
        const char* code;
        NoteCriteri criteri;
        bool filtro;
        const char* heading;
    } headings[] = {
        {"Acconti", note("ACC", false), false, "Parametri di ricerca: solo acconti aperti"},
        // The word follows the code, whatever the causale.
        {"Refill", note("ACC", false, u"AZ1"_s), true,
         "Parametri di ricerca: solo refill aperti, azienda: AZ1, filtro su locali"},
        {"Acconti", note("ACC", true), true,
         "Parametri di ricerca: dalla data 31/01/2025 alla data 01/03/2025, filtro su locali"},
    };
    for (const auto& row : headings)
        EXPECT_EQ(reports::parametriAcconti(row.criteri, QString::fromLatin1(row.code), row.filtro),
                  QString::fromUtf8(row.heading))
            << row.heading;
}

struct SearchRow {
    const char* name;
    bool sospesi;
    const char* nome;
    const char* zona;
    const char* azienda;
    QString (*build)(const screens::FrameCriteria&);
    std::string sql;
};

class NoteSearch : public ::testing::TestWithParam<SearchRow> {};

TEST_P(NoteSearch, WritesTheScreensOwnForms) {
    screens::FrameCriteria c;
    c.dallaData = QDate(2025, 1, 31);
    c.allaData = QDate(2025, 3, 1);
    c.sospesi = GetParam().sospesi;
    c.nomeLocale = QString::fromUtf8(GetParam().nome);
    c.zona = QString::fromUtf8(GetParam().zona);
    c.azienda = QString::fromUtf8(GetParam().azienda);
    EXPECT_EQ(GetParam().build(c), QString::fromStdString(GetParam().sql));
}

QString distinta(const screens::FrameCriteria& c) {
    return screens::sqlRicercaLocali(c, reports::distintaSearchForms());
}
QString preu(const screens::FrameCriteria& c) {
    return screens::sqlRicercaLocali(c, reports::preuSearchForms());
}
QString accontiAperti(const screens::FrameCriteria& c) {
    return reports::sqlRicercaAcconti(c, u"ACC"_s, false);
}
QString refillPeriodo(const screens::FrameCriteria& c) {
    return reports::sqlRicercaAcconti(c, u"REF"_s, true);
}

constexpr char collectedNote[] =
    " AND al.CodLocale IN  (SELECT CodLocale FROM NoteTeste WHERE  DataRegistrazione >= "
    "#01/31/2025#  AND  DataRegistrazione <= #03/01/2025#  AND  CodCausale = 'INC6' ";
constexpr char accontiHead[] =
    "SELECT al.CodLocale, al.Insegna, al.Citta FROM AnagraficaLocali al LEFT JOIN NoteTeste nt "
    "ON nt.CodLocale=al.CodLocale WHERE nt.CodCausale = '";
constexpr char groupBy[] = " GROUP BY al.CodLocale, al.Insegna, al.Citta";

INSTANTIATE_TEST_SUITE_P(
    Note, NoteSearch,
    ::testing::Values(
        SearchRow{"SlipsZoneFirst", true, "", "Z1", "", distinta,
                  "SELECT * FROM AnagraficaLocali al  WHERE al.codzona='Z1'  AND  al.CodLocale "
                  "IN (SELECT CodLocale FROM NoteIncassi WHERE DataIncasso>=#01/31/2025#  AND "
                  "DataIncasso<=#03/01/2025#)"},
        SearchRow{"SlipsZoneAfterName", false, "Bar", "Z1", "", distinta,
                  "SELECT * FROM AnagraficaLocali al  WHERE al.sospeso = 0  AND al.Insegna like "
                  "'%Bar%' AND al.Codzona='Z1'  AND  al.CodLocale IN (SELECT CodLocale FROM "
                  "NoteIncassi WHERE DataIncasso>=#01/31/2025#  AND DataIncasso<=#03/01/2025#)"},
        SearchRow{"PreuNothingTyped", true, "", "", "", preu,
                  cat({"SELECT * FROM AnagraficaLocali al  WHERE ", collectedNote + 5, ")"})},
        SearchRow{"PreuCompanyAndZone", true, "", "Z1", "AZ1", preu,
                  cat({"SELECT * FROM AnagraficaLocali al  WHERE al.codzona='Z1' ", collectedNote,
                       " AND  CodiceAzienda='AZ1')"})},
        SearchRow{"AdvancesOpenAllSuspended", true, "", "", "", accontiAperti,
                  cat({accontiHead, "ACC' AND (Chiuso = 0 OR Chiuso IS NULL )", groupBy})},
        SearchRow{"AdvancesOpenNameWithSuspended", true, "Bar", "", "", accontiAperti,
                  cat({accontiHead,
                       "ACC' AND (Chiuso = 0 OR Chiuso IS NULL ) AND al.Insegna "
                       "like '%Bar%'",
                       groupBy})},
        SearchRow{"RefillsOfThePeriodNotSuspendedZone", false, "", "Z1", "", refillPeriodo,
                  cat({accontiHead,
                       "REF' AND nt.DataRegistrazione >= #01/31/2025# AND nt.DataRegistrazione "
                       "<= #03/01/2025# AND al.sospeso = 0  AND al.Codzona='Z1' ",
                       groupBy})}),
    [](const ::testing::TestParamInfo<SearchRow>& info) { return std::string(info.param.name); });

TEST(NoteTexts, AdvancesTakeTheVenuesWithANoteOfTheirCausale) {
    const QString head =
        u"SELECT * FROM AnagraficaLocali WHERE CodLocale IN (SELECT CodLocale FROM NoteTeste "
        u"WHERE CodCausale = 'ACC') "_s;
    EXPECT_EQ(reports::sqlLocaliAcconti(u"ACC"_s, true, {}), head);
    EXPECT_EQ(reports::sqlLocaliAcconti(u"ACC"_s, false, u"AZ1"_s),
              head + u" AND Sospeso=0  AND CodiceAzienda='AZ1'"_s);
}

// The runtime's numeric test under Italian settings decides: "." groups
// thousands anywhere, "," is the one decimal mark, blanks, a sign and an
// exponent are allowed.
TEST(PreuRates, PassTheNumericTestOfTheRegionalSettings) {
    const struct {
        const char* text;
        bool numeric;
    } rows[] = {
        {"13.4", true}, {"13,4", true},    {"-2", true},      {" 12,6", true},
        {"1e3", true},  {"1.2.3", true},   {"", false},       {"abc", false},
        {"12a", false}, {"12,6,1", false}, {"12,6 1", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(reports::preuValido(QString::fromUtf8(row.text)), row.numeric) << row.text;
}

TEST(PreuRates, DifferInExactDecimals) {
    const struct {
        const char* richiesto;
        const char* nuovo;
        const char* differenza;
    } rows[] = {{"13.4", "12.6", "0,8"},  {"13,4", "12.6", "0,8"}, {"12.6", "13,4", "-0,8"},
                {"13.4", "13.4", "0"},    {"0.1", "0.3", "-0,2"},  {"1e1", "9,9", "0,1"},
                {" 13,45", "-1", "14,45"}};
    for (const auto& row : rows)
        EXPECT_EQ(
            reports::differenzaPreu(QString::fromUtf8(row.richiesto), QString::fromUtf8(row.nuovo))
                .toString(),
            QString::fromUtf8(row.differenza))
            << row.richiesto << " - " << row.nuovo;
    // The numeric test lets "1.2.3" through; read with "," it is no number.
    EXPECT_THROW(reports::differenzaPreu(u"1.2.3"_s, u"1"_s), RuntimeError);
}

// The real screens on the fixture's installation (today 20/03/2025, data
// of January to March 2025).
class NoteRun : public testing::ReportScreenTest {
  protected:
    void wholePeriod() {
        control<QDateEdit>(screen, "txtDallaData")->setDate(QDate(2025, 1, 1));
        control<QDateEdit>(screen, "txtAllaData")->setDate(QDate(2025, 3, 31));
    }
    // What the sqlite3 shell reads in the work file.
    QString work(const char* file, const char* sql) const {
        return testing::readerOutput(u"sqlite3"_s, {ScreenTest::work.filePath(QLatin1String(file)),
                                                    QString::fromUtf8(sql)})
            .trimmed();
    }
    QString mainQuery(const QString& sql) const {
        return DatabaseFile::queryFile(mainDatabase, sql.toUtf8().constData());
    }
    QString fingerprint() const {
        return testing::databaseContents(mainDatabase, {u"NoteTeste.Acconto"_s});
    }
    // "id:Acconto" of every note.
    QString advances() const {
        return mainQuery(
            u"SELECT group_concat(id || ':' || quote(Acconto), ';') FROM (SELECT id, Acconto FROM "
            u"NoteTeste ORDER BY id)"_s);
    }
    void useCopy() {
        mainDatabase = mainDatabaseCopy();
        useMainDatabase(mainDatabase);
    }
    static QString firstVenue() {
        return DatabaseFile::queryFile(
            folder() + u"/Lorvane.db"_s,
            "SELECT MIN(CodLocale) FROM QuietanzaTesta WHERE CodLocale IN (SELECT CodLocale FROM "
            "AnagraficaLocali WHERE Sospeso = 0) AND CodLocale IN (SELECT CodLocale FROM "
            "NoteTeste WHERE CodCausale = 'ACC')");
    }

    QString mainDatabase = folder() + u"/Lorvane.db"_s;
};

QString opened(const QString& sql) { return u"OpenRecordset("_s + sql + u")"_s; }

// PreparaLocali's statements with "Tutti i locali", or for one venue ticked.
QStringList venues(const QString& all) {
    return {u"Execute(DELETE * FROM AnagraficaLocali_Tmp)"_s,
            opened(u"SELECT * FROM AnagraficaLocali_Tmp"_s), opened(all)};
}
QString oneVenue(const QString& code) {
    return u"SELECT * FROM AnagraficaLocali WHERE CodLocale='"_s + code + u"' AND Sospeso=0"_s;
}

struct RunRow {
    const char* name;
    const char* code;
    bool company;
    bool ticked;
    bool periodo;
    // The statements the preparation sends, given the criteria and the venue.
    QStringList (*statements)(const NoteCriteri&, const QString& venue);
};

class NoteRunStatements : public NoteRun, public ::testing::WithParamInterface<RunRow> {};

TEST_P(NoteRunStatements, AreThoseOfItsCriteria) {
    const RunRow& row = GetParam();
    openScreen(row.code);
    const QString venue = firstVenue();
    NoteCriteri c = note(row.code[0] == 'A' ? "ACC" : "REF", row.periodo);
    c.dallaData = QDate(2025, 1, 1);
    c.allaData = QDate(2025, 3, 20);
    control<QDateEdit>(screen, "txtDallaData")->setDate(c.dallaData);
    if (row.company) {
        c.azienda = mainQuery(u"SELECT CodiceAzienda FROM AnagraficaLocali WHERE CodLocale='"_s +
                              venue + u"'"_s);
        chooseCompany(c.azienda);
    }
    if (row.ticked) tickOnly(venue);
    if (auto* periodo = screen->findChild<QRadioButton*>(u"optPeriodo"_s))
        periodo->setChecked(row.periodo);

    const QStringList expected = row.statements(c, venue);
    const QStringList sent = run();
    // Beyond the report's statements, only the advances' repair.
    ASSERT_GE(sent.size(), expected.size()) << sent.join(u'\n').toStdString();
    EXPECT_EQ(sent.mid(0, expected.size()), expected);
    for (const QString& more : sent.mid(expected.size()))
        EXPECT_TRUE(more.contains(u"TabAssociazioneConti"_s) ||
                    more.startsWith(u"Execute(UPDATE NoteTeste SET Acconto="_s))
            << more.toStdString();
    EXPECT_EQ(openedFiles.size(), 1) << messages.join(u'\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Note, NoteRunStatements,
    ::testing::Values(
        RunRow{"SlipsAll", "IntrodottoDistinta", true, false, true,
               [](const NoteCriteri& c, const QString&) {
                   // With every venue the company plays no part.
                   return venues(u"SELECT * FROM AnagraficaLocali WHERE Sospeso=0"_s)
                          << opened(reports::sqlRigheDistinta(c));
               }},
        RunRow{"SlipsCompanyTicked", "IntrodottoDistinta", true, true, true,
               [](const NoteCriteri& c, const QString& v) {
                   return venues(oneVenue(v) + u" AND  CodiceAzienda='"_s + c.azienda + u"' "_s)
                          << opened(reports::sqlRigheDistinta(c));
               }},
        RunRow{"AdvancesOpenAll", "Acconti", false, false, false,
               [](const NoteCriteri& c, const QString&) {
                   return venues(reports::sqlLocaliAcconti(u"ACC"_s, false, {}))
                          << opened(reports::sqlNoteAcconti(c))
                          << opened(reports::sqlIncassiAcconti(c));
               }},
        RunRow{"AdvancesOfThePeriodCompanyTicked", "Acconti", true, true, true,
               [](const NoteCriteri& c, const QString& v) {
                   return venues(oneVenue(v) + u" AND CodiceAzienda='"_s + c.azienda + u"'"_s)
                          << opened(reports::sqlNoteAcconti(c))
                          << opened(reports::sqlIncassiAcconti(c));
               }},
        RunRow{"RefillsOpenAll", "Refill", false, false, false,
               [](const NoteCriteri& c, const QString&) {
                   return venues(reports::sqlLocaliAcconti(u"REF"_s, false, {}))
                          << opened(reports::sqlNoteAcconti(c))
                          << opened(reports::sqlIncassiAcconti(c));
               }},
        RunRow{"RefillsOfThePeriodCompany", "Refill", true, false, true,
               [](const NoteCriteri& c, const QString&) {
                   return venues(reports::sqlLocaliAcconti(u"REF"_s, false, c.azienda))
                          << opened(reports::sqlNoteAcconti(c))
                          << opened(reports::sqlIncassiAcconti(c));
               }},
        RunRow{"PreuAll", "DifferenzaPreu", false, false, true,
               [](const NoteCriteri& c, const QString&) {
                   return venues(u"SELECT * FROM AnagraficaLocali WHERE Sospeso=0"_s)
                          << opened(reports::sqlNotePreu(c)) << opened(reports::sqlIncassiPreu(c));
               }},
        RunRow{"PreuCompanyTicked", "DifferenzaPreu", true, true, true,
               [](const NoteCriteri& c, const QString& v) {
                   return venues(oneVenue(v))
                          << opened(reports::sqlNotePreu(c)) << opened(reports::sqlIncassiPreu(c));
               }}),
    [](const ::testing::TestParamInfo<RunRow>& info) { return std::string(info.param.name); });

TEST_F(NoteRun, AdvancesAndRefillsTellTheirOptionsByTheCode) {
    for (const char* code : {"Acconti", "Refill"}) {
        openScreen(code);
        const bool acconti = code[0] == 'A';
        EXPECT_EQ(screen->Titolo(), acconti ? u"Stampa Acconti"_s : u"Stampa Refill"_s);
        auto* aperti = control<QRadioButton>(screen, "optSoloAperti");
        auto* periodo = control<QRadioButton>(screen, "optPeriodo");
        EXPECT_EQ(aperti->text(), acconti ? u"Solo acconti aperti"_s : u"Solo refill aperti"_s);
        EXPECT_TRUE(aperti->isChecked());
        // The dates and their labels go with optPeriodo, on opening and after a reset.
        const auto datesEnabled = [&] {
            const bool enabled = control<QDateEdit>(screen, "txtDallaData")->isEnabled();
            EXPECT_EQ(control<QDateEdit>(screen, "txtAllaData")->isEnabled(), enabled);
            EXPECT_EQ(control<QLabel>(screen, "lblDallaData")->isEnabled(), enabled);
            EXPECT_EQ(control<QLabel>(screen, "lblAllaData")->isEnabled(), enabled);
            return enabled;
        };
        EXPECT_FALSE(datesEnabled());
        periodo->setChecked(true);
        EXPECT_TRUE(datesEnabled());
        control<QPushButton>(screen, "CmdAzzera")->click();
        EXPECT_TRUE(aperti->isChecked());
        EXPECT_FALSE(datesEnabled());
    }
}

// Each screen searches with its own statement, and lists what it finds.
TEST_F(NoteRun, TheSearchIsTheScreensOwn) {
    const struct {
        const char* code;
        QString (*statement)(const screens::FrameCriteria&);
        const char* venues;  // the venues it should list, on the main database
    } rows[] = {
        {"IntrodottoDistinta", distinta,
         "SELECT COUNT(*) FROM AnagraficaLocali WHERE Sospeso = 0 AND CodLocale IN (SELECT "
         "CodLocale FROM NoteIncassi WHERE DataIncasso >= '2025-01-01' AND DataIncasso <= "
         "'2025-03-20 00:00:00')"},
        {"Acconti", accontiAperti,
         "SELECT COUNT(DISTINCT CodLocale) FROM NoteTeste WHERE CodCausale = 'ACC' AND (Chiuso "
         "= 0 OR Chiuso IS NULL) AND CodLocale IN (SELECT CodLocale FROM AnagraficaLocali WHERE "
         "Sospeso = 0)"},
        {"DifferenzaPreu", preu,
         "SELECT COUNT(*) FROM AnagraficaLocali WHERE Sospeso = 0 AND CodLocale IN (SELECT "
         "CodLocale FROM NoteTeste WHERE CodCausale = 'INC6' AND DataRegistrazione >= "
         "'2025-01-01' AND DataRegistrazione <= '2025-03-20 00:00:00')"},
    };
    for (const auto& row : rows) {
        openScreen(row.code);
        control<QDateEdit>(screen, "txtDallaData")->setDate(QDate(2025, 1, 1));
        takeCalls();
        control<QPushButton>(screen, "CmdRicerca")->click();
        screens::FrameCriteria c;
        c.dallaData = QDate(2025, 1, 1);
        c.allaData = testing::fixedToday();
        EXPECT_EQ(takeCalls().filter(u"OpenRecordset"_s), QStringList{opened(row.statement(c))})
            << row.code;
        const QString found = mainQuery(QString::fromLatin1(row.venues));
        ASSERT_GT(found.toInt(), 0) << row.code;
        EXPECT_EQ(control<screens::KeyedTree>(screen, "Tree")->allNodes().size() - 1, found.toInt())
            << row.code;
        EXPECT_FALSE(control<QCheckBox>(screen, "ChkTutti")->isChecked());
    }
}

TEST_F(NoteRun, SlipsTakeTheRowsOfTypeOneByTheirOwnDate) {
    openScreen("IntrodottoDistinta");
    wholePeriod();
    run();
    ASSERT_EQ(openedFiles.size(), 1) << messages.join(u'\n').toStdString();
    const QString rows =
        u"FROM QuietanzaRighe qr JOIN QuietanzaTesta qt ON qt.id = qr.idTesta WHERE qr.aData >= "
        u"'2025-01-01' AND qr.aData <= '2025-03-31 00:00:00' AND qt.CodLocale IN (SELECT "
        u"CodLocale FROM AnagraficaLocali WHERE Sospeso = 0)"_s;
    // The demo has both kinds, and rows dated before their slip's period.
    ASSERT_GT(mainQuery(u"SELECT COUNT(*) "_s + rows + u" AND qt.TipoDocumento <> 1"_s).toInt(), 0);
    ASSERT_GT(mainQuery(u"SELECT COUNT(*) "_s + rows + u" AND qr.aData < qt.DaData"_s).toInt(), 0);
    EXPECT_EQ(work("IntrodottoDistinta.mdb",
                   "SELECT COUNT(*) || '|' || total(Preu) || '|' || group_concat(idTesta) FROM "
                   "(SELECT * FROM QuietanzaRighe ORDER BY idTesta, Riga)"),
              mainQuery(u"SELECT COUNT(*) || '|' || total(Preu) || '|' || group_concat(idTesta) "
                        u"FROM (SELECT qr.* "_s +
                        rows + u" AND qt.TipoDocumento = 1 ORDER BY qr.idTesta, qr.Riga)"_s));
    EXPECT_EQ(work("IntrodottoDistinta.mdb", "SELECT Parametri FROM Parametri"),
              u"Parametri di ricerca:"_s);
}

// The heading looks at the criteria typed, not at the tree.
TEST_F(NoteRun, SlipsHeadingNamesAVenueFilterOnlyForCriteriaTyped) {
    openScreen("IntrodottoDistinta");
    wholePeriod();
    tickOnly(firstVenue());
    run();
    EXPECT_EQ(work("IntrodottoDistinta.mdb", "SELECT Parametri FROM Parametri"),
              u"Parametri di ricerca:"_s);
    EXPECT_EQ(
        work("IntrodottoDistinta.mdb", "SELECT COUNT(DISTINCT CodLocale) FROM QuietanzaRighe"),
        u"1"_s);
    control<QLineEdit>(screen, "txtLocalita")->setText(u"Zzz"_s);
    run();
    EXPECT_EQ(work("IntrodottoDistinta.mdb", "SELECT Parametri FROM Parametri"),
              u"Parametri di ricerca:  filtro su locali"_s);
}

TEST_F(NoteRun, RefillsWithoutMachineLinesHaveNoLine) {
    openScreen("Refill");
    control<QRadioButton>(screen, "optPeriodo")->setChecked(true);
    wholePeriod();
    run();
    ASSERT_EQ(openedFiles.size(), 1) << messages.join(u'\n').toStdString();
    EXPECT_GT(work("Acconti.mdb",
                   "SELECT COUNT(*) FROM NoteTeste WHERE Descrizione = 'Refill senza lettura'")
                  .toInt(),
              0);
    EXPECT_EQ(work("Acconti.mdb",
                   "SELECT COUNT(*) FROM NoteTeste nt WHERE NOT EXISTS (SELECT 1 FROM NoteIncassi "
                   "ni WHERE ni.IdTesta = nt.id) AND Descrizione <> 'Refill senza lettura'"),
              u"0"_s);
    EXPECT_EQ(work("Acconti.mdb",
                   "SELECT COUNT(*) FROM NoteIncassi WHERE Descrizione = 'Acconto su locale'"),
              u"0"_s);
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
}

// The advances' repair on a copy of the main database: the open advances
// without machine lines and without an amount take the balance of their lines
// on the advances' cash account; the user sees each statement; nothing else
// of the main database changes; a second run repairs nothing.
TEST_F(NoteRun, AdvancesRepairTheirAmountsOnceAndChangeNothingElse) {
    useCopy();
    // The open advances of the venues in use without an open machine line.
    const QString walked =
        u"FROM NoteTeste nt WHERE nt.CodCausale = 'ACC' AND (nt.Chiuso = 0 OR nt.Chiuso IS NULL) "
        u"AND nt.CodLocale IN (SELECT CodLocale FROM AnagraficaLocali WHERE Sospeso = 0) AND NOT "
        u"EXISTS (SELECT 1 FROM NoteIncassi ni WHERE ni.IdTesta = nt.id AND (ni.Chiuso = 0 OR "
        u"ni.Chiuso IS NULL))"_s;
    const QString onCash =
        u"EXISTS (SELECT 1 FROM NoteRighe nr WHERE nr.IdTesta = nt.id AND nr.CodConto = (SELECT "
        u"CassaAcconti FROM TabAssociazioneConti))"_s;
    const QString toRepair = walked + u" AND ifnull(nt.Acconto, 0) = 0 AND "_s + onCash;
    const QString repaired = mainQuery(
        u"SELECT group_concat(m, '#') FROM (SELECT '|0|UPDATE NoteTeste SET Acconto=' || "
        u"CAST((SELECT SUM(Avere) - SUM(Dare) FROM NoteRighe nr WHERE nr.IdTesta = nt.id AND "
        u"nr.CodConto = (SELECT CassaAcconti FROM TabAssociazioneConti)) AS INTEGER) || ' WHERE "
        u"id=' || nt.id AS m "_s +
        toRepair + u" ORDER BY nt.id)"_s);
    ASSERT_FALSE(repaired.isEmpty());
    // One advance has no line at all: no repair, an added line of 0.
    ASSERT_EQ(mainQuery(u"SELECT COUNT(*) "_s + walked + u" AND NOT "_s + onCash), u"1"_s);
    const QString walkedCount = mainQuery(u"SELECT COUNT(*) "_s + walked);
    const QString repairedIds =
        mainQuery(u"SELECT group_concat(nt.id, ',') "_s + toRepair).replace(u',', u'|');
    const QString before = fingerprint();
    const QString amountsBefore = advances();

    openScreen("Acconti");
    run();
    ASSERT_EQ(openedFiles.size(), 1);
    EXPECT_EQ(messages.join(u'#'), repaired);
    EXPECT_EQ(fingerprint(), before);
    // Only the notes repaired changed their amount.
    const QStringList was = amountsBefore.split(u';'), now = advances().split(u';');
    ASSERT_EQ(was.size(), now.size());
    QStringList changed;
    for (qsizetype i = 0; i < was.size(); ++i)
        if (was[i] != now[i]) changed << was[i].section(u':', 0, 0);
    EXPECT_EQ(changed.join(u'|'), repairedIds);
    // Each note without machine lines has its line, with the amount now stored.
    EXPECT_EQ(work("Acconti.mdb",
                   "SELECT COUNT(*) || '|' || SUM(ni.Acconti = nt.Acconto) || '|' || "
                   "SUM(ni.Acconti = 0) FROM NoteIncassi ni JOIN NoteTeste nt ON nt.id = "
                   "ni.IdTesta WHERE ni.Descrizione = 'Acconto su locale'"),
              walkedCount + u'|' + walkedCount + u"|1"_s);
    // The open notes come without their closed lines.
    EXPECT_GT(work("Acconti.mdb",
                   "SELECT COUNT(*) FROM NoteIncassi WHERE Descrizione = 'Acconto su apparecchio'")
                  .toInt(),
              0);
    EXPECT_EQ(work("Acconti.mdb", "SELECT COUNT(*) FROM NoteIncassi WHERE Chiuso <> 0"), u"0"_s);
    EXPECT_EQ(work("Acconti.mdb", "SELECT Parametri FROM Parametri"),
              u"Parametri di ricerca: solo acconti aperti"_s);

    messages.clear();
    openedFiles.clear();
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(openedFiles.size(), 1);
    EXPECT_EQ(fingerprint(), before);
}

// Over the whole period the closed notes come with their closed lines.
TEST_F(NoteRun, AdvancesOfAPeriodKeepTheirClosedLines) {
    useCopy();
    openScreen("Acconti");
    control<QRadioButton>(screen, "optPeriodo")->setChecked(true);
    wholePeriod();
    run();
    ASSERT_EQ(openedFiles.size(), 1) << messages.join(u'\n').toStdString();
    EXPECT_EQ(work("Acconti.mdb",
                   "SELECT COUNT(*) FROM NoteIncassi WHERE Descrizione = 'Acconto su apparecchio "
                   "(saldato)'"),
              mainQuery(u"SELECT COUNT(*) FROM NoteIncassi WHERE Descrizione = 'Acconto su "
                        u"apparecchio (saldato)' AND DataIncasso >= '2025-01-01' AND CodLocale IN "
                        u"(SELECT CodLocale FROM AnagraficaLocali WHERE Sospeso = 0)"_s));
    EXPECT_EQ(work("Acconti.mdb", "SELECT Parametri FROM Parametri"),
              u"Parametri di ricerca: dalla data 01/01/2025 alla data 31/03/2025"_s);
}

// An advance whose lines on the cash account have neither side fails the
// subtraction: the run ends with the type error and no file.
TEST_F(NoteRun, AnAdvanceWhoseLinesSumToNullFailsTheRun) {
    useCopy();
    ASSERT_EQ(mainQuery(u"SELECT COUNT(*) FROM NoteTeste WHERE Descrizione = 'Acconto da "
                        u"verificare'"_s),
              u"1"_s);
    const QString before = fingerprint();
    openScreen("Acconti");
    control<QCheckBox>(screen, "chkSospesi")->setChecked(true);
    run();
    EXPECT_TRUE(openedFiles.isEmpty());
    ASSERT_FALSE(messages.isEmpty());
    EXPECT_EQ(messages.last(), u"|16|Tipo non corrispondente"_s);
    EXPECT_EQ(fingerprint(), before);
}

TEST_F(NoteRun, PreuDifferenceIsExactAndTheLinesFollowTheirWayOfWorkingOut) {
    openScreen("DifferenzaPreu");
    wholePeriod();
    const struct {
        const char* richiesto;
        const char* nuovo;
        const char* differenza;
    } rates[] = {{"13.4", "12.6", "0.8"}, {"13,4", "12,6", "0.8"}, {"12.6", "13.4", "-0.8"}};
    for (const auto& rate : rates) {
        control<QLineEdit>(screen, "txtPreuRich")->setText(QString::fromLatin1(rate.richiesto));
        control<QLineEdit>(screen, "txtPreuNew")->setText(QString::fromLatin1(rate.nuovo));
        run();
        EXPECT_EQ(work("DifferenzaPreu.mdb", "SELECT Differenza FROM Parametri"),
                  QString::fromLatin1(rate.differenza))
            << rate.richiesto << " - " << rate.nuovo;
    }
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    const char* byWay =
        "SELECT ifnull(TipoCalcolo, 'Null') || ' ' || PercLocale || ' ' || COUNT(*) FROM "
        "NoteIncassi "
        "GROUP BY TipoCalcolo, PercLocale ORDER BY 1";
    const QStringList kept = work("DifferenzaPreu.mdb", byWay).split(u'\n');
    ASSERT_EQ(kept.size(), 2) << kept.join(u'\n').toStdString();
    EXPECT_TRUE(kept[0].startsWith(u"Fisso 25.0 "_s)) << kept[0].toStdString();
    EXPECT_TRUE(kept[1].startsWith(u"Utile 50.0 "_s)) << kept[1].toStdString();
    const QString lines =
        u"FROM NoteIncassi WHERE IdTesta IN (SELECT id FROM NoteTeste WHERE DataRegistrazione >= "
        u"'2025-01-01' AND DataRegistrazione <= '2025-03-31 00:00:00' AND CodLocale IN (SELECT "
        u"CodLocale FROM AnagraficaLocali WHERE Sospeso = 0))"_s;
    ASSERT_GT(mainQuery(u"SELECT COUNT(*) "_s + lines + u" AND TipoCalcolo IS NULL"_s).toInt(), 0);
    ASSERT_GT(mainQuery(u"SELECT COUNT(*) "_s + lines + u" AND PercLocale = 24.99"_s).toInt(), 0);
    EXPECT_EQ(work("DifferenzaPreu.mdb", "SELECT COUNT(*) FROM NoteIncassi"),
              mainQuery(u"SELECT COUNT(*) "_s + lines +
                        u" AND (TipoCalcolo = 'Utile' OR (TipoCalcolo IS NOT NULL AND PercLocale "
                        u">= 25))"_s));
}

// A rate the numeric test refuses stops every output before anything is
// done; one it lets through that is no decimal fails before the venues are
// touched.
TEST_F(NoteRun, PreuRatesTypedWrongStopTheRunBeforeAnything) {
    const QString refused =
        u"|0|Inserire un valore numerico, sia per il Preu richiesto che per il nuovo valore "
        u"Preu"_s;
    const struct {
        const char* field;
        const char* text;
        const char* message;
    } rows[] = {
        {"txtPreuRich", "abc", nullptr},
        {"txtPreuNew", "", nullptr},
        {"txtPreuNew", "12,6,1", nullptr},
        {"txtPreuRich", "1.2.3", "Tipo non corrispondente"},
    };
    openScreen("DifferenzaPreu");
    for (const auto& row : rows) {
        control<QPushButton>(screen, "CmdAzzera")->click();
        control<QLineEdit>(screen, row.field)->setText(QString::fromUtf8(row.text));
        for (const char* button : {"CmdStampa", "CmdPdf", "CmdXls", "CmdExportExcel"}) {
            messages.clear();
            const QStringList sent = run(button);
            EXPECT_TRUE(sent.isEmpty()) << row.text << " " << button;
            EXPECT_TRUE(openedFiles.isEmpty()) << row.text << " " << button;
            EXPECT_TRUE(modalWindows.isEmpty()) << row.text << " " << button;
            // The check's own box; past it, the output button's handler (its icon
            // differs between printing and exporting).
            ASSERT_EQ(messages.size(), 1) << row.text << " " << button;
            if (row.message) {
                EXPECT_EQ(messages[0].section(u'|', 2), QString::fromUtf8(row.message)) << button;
            } else {
                EXPECT_EQ(messages[0], refused) << row.text << " " << button;
            }
        }
    }
}

}  // namespace
}  // namespace lorvane
