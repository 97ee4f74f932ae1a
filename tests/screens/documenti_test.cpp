// The venue's documents: their statements for all, some and none of the
// criteria, what the work file holds after a run on the real screens, and the
// repair of the deeds, which writes nothing but the companies of the lines.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>

#include "db/database_fixture.h"
#include "host/demo/demo_document_cases.h"
#include "reports/documents/documenti_screens.h"
#include "reports/documents/documenti_sql.h"
#include "screens/controls.h"
#include "support/database_contents.h"
#include "support/report_screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;
using screens::FrameCriteria;

// The statement as its pieces are listed, joined.
std::string pieces(std::initializer_list<const char*> list) {
    std::string text;
    for (const char* piece : list)
        text += piece;
    return text;
}

FrameCriteria criteri(const QString& azienda = {}, bool tutti = true, bool sospesi = false) {
    FrameCriteria c;
    c.dallaData = QDate(2025, 1, 31);
    c.allaData = QDate(2025, 3, 1);
    c.azienda = azienda;
    c.tutti = tutti;
    c.sospesi = sospesi;
    return c;
}

struct StatementRow {
    const char* name;
    QString (*build)(const FrameCriteria&);
    FrameCriteria criteri;
    std::string sql;
};

class DocumentStatements : public ::testing::TestWithParam<StatementRow> {};

TEST_P(DocumentStatements, AreTheirPiecesInOrder) {
    EXPECT_EQ(GetParam().build(GetParam().criteri), QString::fromStdString(GetParam().sql));
}

const std::string localiConNote =
    pieces({" SELECT * FROM AnagraficaLocali ", " WHERE ", " CodLocale IN ", "(",
            " SELECT nt.CodLocale ", " FROM NoteTeste nt, AnagraficaLocali al ", " WHERE ",
            " nt.DataRegistrazione >= #", "01/31/2025", "#", " AND ", " nt.DataRegistrazione <= #",
            "03/01/2025", "#", " AND ", " nt.CodLocale = al.CodLocale "});
const std::string noteSomme = pieces(
    {" FROM NoteTeste nt INNER JOIN AnagraficaLocali_Tmp al ON al.CodLocale=nt.CodLocale", " WHERE",
     " nt.DataRegistrazione >= #", "01/31/2025", "#", " AND", " nt.DataRegistrazione <= #",
     "03/01/2025", "#", " AND", " nt.CodCausale IN ('INC6', 'INC')"});
const std::string teste =
    pieces({" Data >= #", "01/31/2025", "# ", " AND ", " Data <= #", "03/01/2025", "# ", " AND ",
            " CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) "});
const std::string atti =
    pieces({" SELECT *", " FROM DocTeste", " WHERE", " TipoDoc=8", " AND", " DataDoc >= #",
            "01/31/2025", "#", " AND", " DataDoc <= #", "03/01/2025", "#"});
const std::string righeAtti =
    pieces({" SELECT * ", " FROM DocRighe ", " WHERE ", " IdDoc IN ", " ( ", " SELECT id ",
            " FROM DocTeste ", " WHERE ", " DataDoc >= #", "01/31/2025", "# ", " AND ",
            " DataDoc <= #", "03/01/2025", "# "});

QString noteSenzaSconto(const FrameCriteria& c) { return reports::sqlNoteSomme(c, false); }
QString noteConSconto(const FrameCriteria& c) { return reports::sqlNoteSomme(c, true); }

INSTANTIATE_TEST_SUITE_P(
    Documenti, DocumentStatements,
    ::testing::Values(
        StatementRow{"LocaliConNote", reports::sqlLocaliConNote, criteri(),
                     localiConNote + ") AND Sospeso=0 "},
        StatementRow{"LocaliConNoteCompanySuspended", reports::sqlLocaliConNote,
                     criteri(u"AZ1"_s, true, true),
                     localiConNote + " AND  al.CodiceAzienda = 'AZ1' )"},
        StatementRow{"NoteSenzaSconto", noteSenzaSconto, criteri(), " SELECT nt.*" + noteSomme},
        StatementRow{
            "NoteConScontoECompany", noteConSconto, criteri(u"AZ1"_s),
            pieces(
                {" SELECT",
                 " nt.id, nt.DataRegistrazione, nt.CodLocale, nt.CodEsattore, nt.CodCausale, "
                 "nt.Descrizione, nt.Annotazioni, nt.idOnda, nt.Import, nt.CodAgente, "
                 "nt.PercAgente, nt.CodiceAzienda, nt.ContoPercAgente, nt.CodSubAgente, "
                 "nt.PercSubAgente, nt.ContoPercSubAgente, nt.Chiuso, nt.Fatturato, "
                 "nt.Bloccato, nt.idData, nt.IdOperatore, nt.TipologiaIncasso, "
                 "nt.GestioneDenaro, nt.IncassoGettoni, nt.IncassoTasse, nt.UtileNoleggiatore, "
                 "nt.VersatoALocale, nt.FurtoLocale, nt.FurtoNoleggiatore, nt.AmmancoLocale, "
                 "nt.AmmancoNoleggiatore, nt.StileIncasso, nt.TotIntrodotto, nt.TotUscite, "
                 "nt.TotPreu, nt.TotAAMS, nt.TotRETE, nt.TotDaDividere, nt.VarDebito, "
                 "nt.VarPrestito, nt.Riscosso, nt.Rimanenza, nt.Arrotondamenti, nt.Acconto, "
                 "nt.AnticipoLocale, nt.AttesaFatture,",
                 " (IIF(nt.UtileLocale IS NOT NULL ; nt.UtileLocale ; 0 ;) + "
                 "IIF(nt.Arrotondamenti IS NOT NULL; nt.Arrotondamenti ; 0 ;)) AS UtileLocale"}) +
                noteSomme + " AND al.CodiceAzienda = 'AZ1'"},
        StatementRow{"TesteQuietanza", reports::sqlTesteQuietanza, criteri(),
                     "SELECT * FROM QuietanzaTesta WHERE " + teste},
        StatementRow{"TesteQuietanzaCompany", reports::sqlTesteQuietanza, criteri(u"AZ1"_s),
                     "SELECT * FROM QuietanzaTesta WHERE " + teste + " AND  CodiceAzienda='AZ1' "},
        StatementRow{"RigheQuietanzaCompany", reports::sqlRigheQuietanza, criteri(u"AZ1"_s),
                     pieces({"SELECT * FROM QuietanzaRighe ", "WHERE ", " idTesta IN ", " ( ",
                             "SELECT id FROM QuietanzaTesta WHERE "}) +
                         teste + " AND  CodiceAzienda='AZ1'  ) "},
        StatementRow{"AziendeQuietanza", reports::sqlAziendeQuietanza, criteri(),
                     "SELECT * FROM AnagraficaAziende"},
        StatementRow{"AziendeQuietanzaCompany", reports::sqlAziendeQuietanza, criteri(u"AZ1"_s),
                     "SELECT * FROM AnagraficaAziende WHERE CodiceAzienda='AZ1' "},
        StatementRow{"TesteAtti", reports::sqlTesteAtti, criteri(u"AZ1"_s, true),
                     atti + " AND CodiceAzienda='AZ1'"},
        StatementRow{"TesteAttiTickedCompany", reports::sqlTesteAtti, criteri(u"AZ1"_s, false),
                     atti + " AND CodIntestazione IN (SELECT CodLocale FROM AnagraficaLocali_Tmp) "
                            "AND CodiceAzienda='AZ1'"},
        StatementRow{"RigheAttiAllCompany", reports::sqlRigheAtti, criteri(u"AZ1"_s),
                     righeAtti + " ) "},
        StatementRow{"RigheAttiTicked", reports::sqlRigheAtti, criteri({}, false),
                     righeAtti +
                         " AND  CodIntestazione IN (SELECT CodLocale FROM AnagraficaLocali_Tmp)  "
                         ") "}),
    [](const ::testing::TestParamInfo<StatementRow>& info) {
        return std::string(info.param.name);
    });

TEST(DocumentTexts, TheFixedStatementsAndTheHeadings) {
    const struct {
        QString built;
        const char* expected;
    } rows[] = {
        {reports::sqlOperatoriDeiLocali("Titolare", "CodTitolare"),
         " SELECT * FROM AnagraficaOperatori WHERE Mansione = 'Titolare' AND codiceOperatore IN "
         "( SELECT CodTitolare FROM AnagraficaLocali_Tmp )"},
        {reports::sqlOperatoriDeiLocali("Agente", "codAgente"),
         " SELECT * FROM AnagraficaOperatori WHERE Mansione = 'Agente' AND codiceOperatore IN "
         "( SELECT codAgente FROM AnagraficaLocali_Tmp )"},
        {reports::sqlAziendeDeiLocali(),
         " SELECT * FROM AnagraficaAziende WHERE CodiceAzienda IN ( SELECT CodiceAzienda FROM "
         "AnagraficaLocali_Tmp )"},
        {reports::sqlSommePerLocale(),
         " SELECT SUM(UtileLocale) AS sommaLocale, CodLocale FROM NoteTeste GROUP BY CodLocale"},
        {reports::parametriSomme(criteri()),
         "Parametri di ricerca:  incassi dal 31/01/2025 al 01/03/2025"},
        {reports::parametriSomme(criteri(u"AZ1"_s, false)),
         "Parametri di ricerca:  incassi dal 31/01/2025 al 01/03/2025 per l'azienda AZ1 con "
         "filtro sui locali"},
        {reports::sqlRigheDaRiparare(),
         "SELECT dt.CodSpettabile,dr.id,dr.CodiceAzienda FROM DocTeste dt INNER JOIN DocRighe dr "
         "ON dr.IdDoc=dt.id WHERE dt.TipoDoc=8 AND dr.CodiceAzienda IS NULL AND dt.CodSpettabile "
         "IS NOT NULL"},
        // The company goes in as it stands, quotes and all.
        {reports::sqlRiparaRiga(u"AZ'1"_s, u"17"_s),
         "UPDATE DocRighe SET CodiceAzienda='AZ'1' WHERE id=17"},
        {reports::sqlCaratteristicheLocale(u"L'01"_s),
         "SELECT * FROM AnagraficaLocaliCaratteristiche WHERE CodLocale='L''01'"},
        {reports::sqlTitolare(QString()),
         "SELECT * FROM AnagraficaOperatori WHERE Mansione='Titolare' AND codiceOperatore=''"},
        {reports::filtroOperatore(u"T'1"_s), "codiceOperatore='T''1'"},
        {reports::sqlAziendeAtti(), " SELECT *  FROM AnagraficaAziende "},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.built, QString::fromUtf8(row.expected));

    FrameCriteria c = criteri();
    EXPECT_EQ(reports::sqlConcessionariQuietanza(c), u"SELECT * FROM AnagraficaConcessionari"_s);
    c.concessionario = u"SNAI"_s;
    EXPECT_EQ(reports::sqlConcessionariQuietanza(c),
              u"SELECT * FROM AnagraficaConcessionari WHERE codiceConcessionario='SNAI' "_s);
}

struct SearchRow {
    const char* name;
    const screens::SearchForms& (*forms)();
    bool sospesi;
    const char* nome;
    const char* agente;
    const char* zona;
    const char* azienda;
    std::string sql;
};

class DocumentSearch : public ::testing::TestWithParam<SearchRow> {};

TEST_P(DocumentSearch, WritesTheScreensOwnForms) {
    FrameCriteria c = criteri(QString::fromUtf8(GetParam().azienda), true, GetParam().sospesi);
    c.nomeLocale = QString::fromUtf8(GetParam().nome);
    c.agente = QString::fromUtf8(GetParam().agente);
    c.zona = QString::fromUtf8(GetParam().zona);
    EXPECT_EQ(screens::sqlRicercaLocali(c, GetParam().forms()),
              QString::fromStdString(GetParam().sql));
}

const std::string notePeriodo =
    "codlocale IN (SELECT CodLocale FROM NoteTeste WHERE DataRegistrazione >= #01/31/2025# AND "
    "DataRegistrazione <= #03/01/2025#)";
const std::string quietanzePeriodo =
    " al.CodLocale IN (SELECT CodLocale FROM QuietanzaTesta WHERE Data>=#01/31/2025#  AND "
    "Data<=#03/01/2025#)";
const std::string attiPeriodo =
    "al.CodLocale IN  ( SELECT CodIntestazione FROM DocTeste WHERE TipoDoc=8 AND DataDoc >= "
    "#01/31/2025# AND DataDoc <= #03/01/2025#";

INSTANTIATE_TEST_SUITE_P(
    Documenti, DocumentSearch,
    ::testing::Values(
        SearchRow{"SommeNothingTyped", reports::sommeSearchForms, false, "", "", "", "",
                  "SELECT * FROM AnagraficaLocali  WHERE sospeso = 0  AND " + notePeriodo},
        SearchRow{"SommeNameFirstThenAgent", reports::sommeSearchForms, true, "Bar", "AG1", "", "",
                  "SELECT * FROM AnagraficaLocali  WHERE  Insegna like '%Bar%' AND codAgente "
                  "= 'AG1' AND " +
                      notePeriodo},
        SearchRow{"SommeZoneFirst", reports::sommeSearchForms, true, "", "", "Z1", "",
                  "SELECT * FROM AnagraficaLocali  WHERE  codzona='Z1'  AND " + notePeriodo},
        SearchRow{
            "QuietanzaZoneFirst", reports::quietanzaSearchForms, true, "", "", "Z1", "",
            "SELECT * FROM AnagraficaLocali al  WHERE al.codzona='Z1'  AND " + quietanzePeriodo},
        SearchRow{"QuietanzaNothingTyped", reports::quietanzaSearchForms, true, "", "", "", "",
                  "SELECT * FROM AnagraficaLocali al  WHERE " + quietanzePeriodo},
        SearchRow{"AttoAgentAfterSuspendedIsMisspelt", reports::attoQuietanzaSearchForms, false, "",
                  "AG1", "", "AZ1",
                  "SELECT * FROM AnagraficaLocali al  WHERE al.sospeso = 0  al.AND codAgente = "
                  "'AG1' AND " +
                      attiPeriodo + " AND CodiceAzienda='AZ1')"},
        SearchRow{"AttoNameFirst", reports::attoQuietanzaSearchForms, true, "Bar", "", "", "",
                  "SELECT * FROM AnagraficaLocali al  WHERE  al.Insegna like '%Bar%' AND " +
                      attiPeriodo + ")"}),
    [](const ::testing::TestParamInfo<SearchRow>& info) { return std::string(info.param.name); });

// The real screens on the fixture's installation (today 20/03/2025, the
// document cases on 01/03/2025).
class DocumentRun : public testing::ReportScreenTest {
  protected:
  public:
  protected:
    static QString companyOf(const QString& venue) {
        return mainQuery(u"SELECT CodiceAzienda FROM AnagraficaLocali WHERE CodLocale = '"_s +
                         venue + u"'"_s);
    }
};

QString opened(const QString& sql) { return u"OpenRecordset("_s + sql + u")"_s; }

const QString venue = QLatin1String(demo::DocumentCaseVenue);
const QString nullVenue = QLatin1String(demo::DocumentCaseNullVenue);

struct RunRow {
    const char* name;
    const char* code;
    bool ticked;  // the document venue ticked alone, its company chosen
    bool sconto;  // chkScontoRimborso
    // The statements sent, given the criteria of the screen and the venue ticked.
    QStringList (*statements)(const FrameCriteria&, const QString&);
};

class DocumentRunStatements : public DocumentRun, public ::testing::WithParamInterface<RunRow> {};

TEST_P(DocumentRunStatements, AreThoseOfItsCriteria) {
    const RunRow& row = GetParam();
    openScreen(row.code);
    // The quittances tick a venue with lines in the period, so that they print.
    const QString ticked =
        row.code == std::string("Quietanza")
            ? mainQuery(
                  u"SELECT MIN(qt.CodLocale) FROM QuietanzaTesta qt JOIN QuietanzaRighe qr "
                  u"ON qr.idTesta = qt.id WHERE qt.Data >= '2025-01-01' AND qt.Data <= "
                  u"'2025-03-20 00:00:00'"_s)
            : venue;
    if (row.ticked) {
        chooseCompany(companyOf(ticked));
        tickOnly(ticked);
    }
    if (row.sconto) control<QCheckBox>(screen, "chkScontoRimborso")->setChecked(true);
    const FrameCriteria c = screen->criteri();
    EXPECT_EQ(run(), row.statements(c, ticked));
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(openedFiles.size(), 1);
}

const QString emptyTmp = u"Execute(DELETE * FROM AnagraficaLocali_Tmp)"_s;
const QString openTmp = opened(u"SELECT * FROM AnagraficaLocali_Tmp"_s);

QStringList sommeAfter(const FrameCriteria& c, bool sconto) {
    return {opened(reports::sqlNoteSomme(c, sconto)),
            opened(reports::sqlOperatoriDeiLocali("Titolare", "CodTitolare")),
            opened(reports::sqlOperatoriDeiLocali("Agente", "codAgente")),
            opened(reports::sqlAziendeDeiLocali())};
}

QStringList quietanzaAfter(const FrameCriteria& c) {
    return {opened(reports::sqlTesteQuietanza(c)), opened(reports::sqlRigheQuietanza(c)),
            opened(reports::sqlAziendeQuietanza(c)), opened(reports::sqlConcessionariQuietanza(c))};
}

// The deeds' walk: per venue its codes and its owner.
QStringList attiAfter(const FrameCriteria& c, const QStringList& venues) {
    QStringList sent;
    for (const QString& code : venues) {
        const QString owner = DocumentRun::mainQuery(
            u"SELECT codTitolare FROM AnagraficaLocali WHERE CodLocale = '"_s + code + u"'"_s);
        sent << opened(reports::sqlCaratteristicheLocale(code))
             << opened(reports::sqlTitolare(owner));
    }
    return sent << opened(reports::sqlAziendeAtti()) << opened(reports::sqlTesteAtti(c))
                << opened(reports::sqlRigheAtti(c));
}

QStringList allVenuesNotSuspended() {
    return DocumentRun::mainQuery(
               u"SELECT group_concat(CodLocale, ',') FROM (SELECT CodLocale FROM "
               u"AnagraficaLocali WHERE Sospeso = 0 ORDER BY id)"_s)
        .split(u',');
}

QString tickedStatement(const QString& code, const QString& tail = {}) {
    return opened(u"SELECT * FROM AnagraficaLocali WHERE CodLocale='"_s + code +
                  u"' AND Sospeso=0"_s + tail);
}

INSTANTIATE_TEST_SUITE_P(
    Documenti, DocumentRunStatements,
    ::testing::Values(
        RunRow{"SommeAll", "SommeConsegnate", false, false,
               [](const FrameCriteria& c, const QString&) {
                   return QStringList{emptyTmp, openTmp, opened(reports::sqlLocaliConNote(c))}
                          << sommeAfter(c, false);
               }},
        RunRow{"SommeTickedCompanySconto", "SommeConsegnate", true, true,
               [](const FrameCriteria& c, const QString& v) {
                   return QStringList{emptyTmp, openTmp, tickedStatement(v)} << sommeAfter(c, true);
               }},
        RunRow{"QuietanzaAll", "Quietanza", false, false,
               [](const FrameCriteria& c, const QString&) {
                   return QStringList{emptyTmp, openTmp,
                                      opened(u"SELECT * FROM AnagraficaLocali WHERE Sospeso=0"_s)}
                          << quietanzaAfter(c);
               }},
        RunRow{"QuietanzaTickedCompany", "Quietanza", true, false,
               [](const FrameCriteria& c, const QString& v) {
                   return QStringList{emptyTmp, openTmp, tickedStatement(v)} << quietanzaAfter(c);
               }},
        RunRow{"AttoAll", "StampaAttoQuietanza", false, false,
               [](const FrameCriteria& c, const QString&) {
                   return QStringList{emptyTmp, openTmp,
                                      opened(u"SELECT * FROM AnagraficaLocali WHERE Sospeso=0"_s)}
                          << attiAfter(c, allVenuesNotSuspended());
               }},
        RunRow{"AttoTickedCompany", "StampaAttoQuietanza", true, false,
               [](const FrameCriteria& c, const QString& v) {
                   return QStringList{emptyTmp, openTmp,
                                      tickedStatement(
                                          venue, u" AND  CodiceAzienda='"_s + c.azienda + u"' "_s)}
                          << attiAfter(c, {v});
               }}),
    [](const ::testing::TestParamInfo<RunRow>& info) { return std::string(info.param.name); });

// The venue's sums in words: a negative sum, a Null share adding nothing, a
// Null sum reading "zero/00", and the rounding added with the option.
TEST_F(DocumentRun, TheSumsInWordsFollowTheOption) {
    const struct {
        bool sconto;
        const char* negative;
        const char* nullShares;
    } rows[] = {
        {false, "- milleduecentotrentaquattro/56", "zero/00"},
        {true, "- milleduecentotrentadue/06", "due/00"},
    };
    openScreen("SommeConsegnate");
    for (const auto& row : rows) {
        control<QCheckBox>(screen, "chkScontoRimborso")->setChecked(row.sconto);
        run();
        EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
        const auto words = [&](const QString& code) {
            return work(
                "SommeConsegnate.mdb",
                u"SELECT Descrizione FROM ImportoLettere WHERE CodLocale = '"_s + code + u"'"_s);
        };
        EXPECT_EQ(words(venue), QString::fromUtf8(row.negative));
        EXPECT_EQ(words(nullVenue), QString::fromUtf8(row.nullShares));
        // One row per venue with notes, and each owner and agent of the venues.
        EXPECT_EQ(
            work("SommeConsegnate.mdb", u"SELECT COUNT(*) FROM ImportoLettere"_s),
            work("SommeConsegnate.mdb", u"SELECT COUNT(DISTINCT CodLocale) FROM NoteTeste"_s));
        EXPECT_EQ(work("SommeConsegnate.mdb",
                       u"SELECT COUNT(*) FROM AnagraficaOperatori WHERE Mansione IN ('Titolare', "
                       u"'Agente')"_s),
                  work("SommeConsegnate.mdb", u"SELECT COUNT(*) FROM AnagraficaOperatori"_s));
        EXPECT_EQ(work("SommeConsegnate.mdb", u"SELECT Parametri FROM Parametri"_s),
                  u"Parametri di ricerca:  incassi dal 01/03/2025 al 20/03/2025"_s);
    }
    // The reset keeps the root the tree opened with.
    tickOnly(venue);
    control<QPushButton>(screen, "CmdAzzera")->click();
    EXPECT_EQ(control<screens::KeyedTree>(screen, "Tree")->nodeCount(), 1);
    EXPECT_EQ(control<QDateEdit>(screen, "txtDallaData")->date(), QDate(2025, 3, 1));
}

// "Tutti i locali" takes the venues with notes of any causale in the period:
// one with other causali only is among the venues but has no sum.
TEST_F(DocumentRun, AllVenuesAreThoseWithNotesOfAnyCausale) {
    const QString copy = mainDatabaseCopy();
    mainQuery(u"UPDATE NoteTeste SET CodCausale = 'FUR' WHERE CodLocale = '"_s + nullVenue + u"'"_s,
              copy);
    useMainDatabase(copy);
    openScreen("SommeConsegnate");
    run();
    QString inVenues =
        u"SELECT COUNT(*) FROM AnagraficaLocali WHERE CodLocale = '"_s + nullVenue + u"'"_s;
    EXPECT_EQ(work("SommeConsegnate.mdb", inVenues), u"1"_s);
    EXPECT_EQ(mainQuery(inVenues.replace(u"AnagraficaLocali"_s, u"AnagraficaLocali_Tmp"_s), copy),
              u"1"_s);
    EXPECT_EQ(
        work("SommeConsegnate.mdb",
             u"SELECT COUNT(*) FROM ImportoLettere WHERE CodLocale = '"_s + nullVenue + u"'"_s),
        u"0"_s);
}

TEST_F(DocumentRun, QuittanceHeadsWithoutLinesPrintNothing) {
    openScreen("Quietanza");
    chooseCompany(companyOf(venue));
    tickOnly(venue);
    run();
    EXPECT_EQ(messages, QStringList{u"Lorvane|64|Nessun dato da stampare"_s});
    EXPECT_EQ(work("Quietanza.mdb", u"SELECT COUNT(*), MAX(Periodo) FROM QuietanzaTesta"_s),
              u"1|Senza righe"_s);
    // Only the chosen company, and every concessionaire.
    EXPECT_EQ(work("Quietanza.mdb", u"SELECT COUNT(*) FROM AnagraficaAziende"_s), u"1"_s);
    EXPECT_EQ(work("Quietanza.mdb", u"SELECT COUNT(*) FROM AnagraficaConcessionari"_s),
              mainQuery(u"SELECT COUNT(*) FROM AnagraficaConcessionari"_s));
}

// A town left typed under "Tutti i locali" still names the venue filter, and
// with no company every company is copied.
TEST_F(DocumentRun, QuittancesOfThePeriodWithTheirLines) {
    openScreen("Quietanza");
    control<QDateEdit>(screen, "txtAllaData")->setDate(QDate(2025, 3, 31));
    control<QLineEdit>(screen, "txtLocalita")->setText(u"Nowhere"_s);
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(work("Quietanza.mdb", u"SELECT Parametri FROM Parametri"_s),
              u"Parametri di ricerca:  filtro su locali"_s);
    EXPECT_EQ(work("Quietanza.mdb", u"SELECT COUNT(*) FROM AnagraficaAziende"_s),
              mainQuery(u"SELECT COUNT(*) FROM AnagraficaAziende"_s));
    // Both ends of the period count: the heads on 31/03 are there.
    const QString inPeriod =
        u"SELECT COUNT(*) FROM QuietanzaRighe WHERE idTesta IN (SELECT id FROM QuietanzaTesta "
        u"WHERE Data >= '2025-01-01' AND Data <= '2025-03-31 00:00:00' AND CodLocale IN (SELECT "
        u"CodLocale FROM AnagraficaLocali WHERE Sospeso = 0))"_s;
    EXPECT_GT(mainQuery(u"SELECT COUNT(*) FROM QuietanzaTesta WHERE Data = '2025-03-31 00:00:00'"_s)
                  .toInt(),
              0);
    EXPECT_EQ(work("Quietanza.mdb", u"SELECT COUNT(*) FROM QuietanzaRighe"_s), mainQuery(inPeriod));
}

TEST_F(DocumentRun, TheRepairGivesDeedLinesTheirHeadsCompanyOnce) {
    const QString copy = mainDatabaseCopy();
    useMainDatabase(copy);
    const QString before = testing::databaseContents(copy, {u"DocRighe.CodiceAzienda"_s});
    const QString toRepair = mainQuery(
        u"SELECT group_concat(dr.id || '=' || dt.CodSpettabile) FROM DocRighe dr JOIN DocTeste dt "
        u"ON dt.id = dr.IdDoc WHERE dt.TipoDoc = 8 AND dr.CodiceAzienda IS NULL AND "
        u"dt.CodSpettabile IS NOT NULL"_s,
        copy);
    ASSERT_FALSE(toRepair.isEmpty());
    const QString untouched =
        u"SELECT COUNT(*) FROM DocRighe WHERE CodiceAzienda IS NULL AND IdDoc IN (SELECT id FROM "
        u"DocTeste WHERE CodSpettabile IS NULL)"_s;
    ASSERT_GT(mainQuery(untouched, copy).toInt(), 0);
    const QString nullBefore = mainQuery(untouched, copy);

    openScreen("StampaAttoQuietanza");
    takeCalls();
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(screen, &activate);
    EXPECT_EQ(messages, QStringList{u"|0|Aggiornamento struttura completato. E' possibile "
                                    u"proseguire con la stampa"_s});
    EXPECT_EQ(statements().size(), 1 + toRepair.count(u',') + 1);
    EXPECT_EQ(mainQuery(u"SELECT group_concat(id || '=' || CodiceAzienda) FROM DocRighe WHERE "
                        u"id IN ("_s +
                            QString(toRepair).replace(QRegularExpression(u"=[^,]*"_s), QString()) +
                            u")"_s,
                        copy),
              toRepair);
    EXPECT_EQ(mainQuery(untouched, copy), nullBefore);
    EXPECT_EQ(testing::databaseContents(copy, {u"DocRighe.CodiceAzienda"_s}), before);

    // Nothing left: the second activation asks once and says nothing.
    messages.clear();
    QCoreApplication::sendEvent(screen, &activate);
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(statements(), QStringList{opened(reports::sqlRigheDaRiparare())});
}

// A company with a quote goes into the repair as it stands: the statement
// fails, the user reads why, and that head's lines keep no company.
TEST_F(DocumentRun, ARepairThatFailsIsShownAndWritesNothingForItsLines) {
    const QString copy = mainDatabaseCopy();
    const QString head = mainQuery(
        u"SELECT MIN(dt.id) FROM DocTeste dt JOIN DocRighe dr ON dr.IdDoc = dt.id WHERE "
        u"dt.TipoDoc = 8 AND dr.CodiceAzienda IS NULL AND dt.CodSpettabile IS NOT NULL"_s,
        copy);
    mainQuery(u"UPDATE DocTeste SET CodSpettabile = 'AZ''9' WHERE id = "_s + head, copy);
    useMainDatabase(copy);
    const QString lines =
        u"SELECT COUNT(*) FROM DocRighe WHERE CodiceAzienda IS NULL AND IdDoc = "_s + head;
    const QString before = mainQuery(lines, copy);
    openScreen("StampaAttoQuietanza");
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(screen, &activate);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages.first().contains(u"AZ'9"_s)) << messages.first().toStdString();
    EXPECT_EQ(mainQuery(lines, copy), before);
}

// The deeds of the period, with the lines of every document of the period,
// each owner once, and the owner of a venue without one looked for as "".
TEST_F(DocumentRun, DeedsTakeTheLinesOfEveryDocumentAndEachOwnerOnce) {
    const QString copy = mainDatabaseCopy();
    mainQuery(u"UPDATE AnagraficaLocali SET codTitolare = NULL WHERE CodLocale = '"_s + nullVenue +
                  u"'"_s,
              copy);
    useMainDatabase(copy);
    openScreen("StampaAttoQuietanza");
    const QStringList sent = run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_TRUE(sent.contains(opened(reports::sqlTitolare(QString()))));
    const char* file = "AttoQuietanza.mdb";
    EXPECT_EQ(work(file, u"SELECT COUNT(*), MIN(TipoDoc), MAX(TipoDoc) FROM DocTeste"_s),
              u"1|8|8"_s);
    EXPECT_EQ(work(file, u"SELECT COUNT(*) FROM DocRighe"_s),
              mainQuery(u"SELECT COUNT(*) FROM DocRighe WHERE IdDoc IN (SELECT id FROM DocTeste "
                        u"WHERE DataDoc >= '2025-01-01' AND DataDoc <= '2025-03-20 00:00:00')"_s,
                        copy));
    EXPECT_EQ(work(file, u"SELECT COUNT(DISTINCT IdDoc) FROM DocRighe"_s), u"2"_s);
    EXPECT_EQ(work(file,
                   u"SELECT COUNT(*) - COUNT(DISTINCT codiceOperatore) FROM "
                   u"AnagraficaOperatori"_s),
              u"0"_s);
    EXPECT_EQ(work(file, u"SELECT COUNT(*) FROM AnagraficaLocaliCaratteristiche"_s),
              work(file, u"SELECT COUNT(*) FROM AnagraficaLocali"_s));
    EXPECT_EQ(work(file, u"SELECT COUNT(*) FROM AnagraficaAziende"_s),
              mainQuery(u"SELECT COUNT(*) FROM AnagraficaAziende"_s, copy));
}

}  // namespace
}  // namespace lorvane
