// The cash report and the receipts registers: the venue batches, their
// statements for all, some and none of the criteria, the calendar, the
// comodato share, and on the real screens the repair of the loan variations,
// the shared causali, what the work files hold and what the main database keeps.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QListWidget>

#include "db/database_fixture.h"
#include "platform/runtime_error.h"
#include "reports/accounting/registri_sql.h"
#include "screens/controls.h"
#include "support/database_contents.h"
#include "support/report_screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;
using reports::PartiNota;
using reports::RegistriCriteri;

// "'V01', 'V02', ..." for venues first..last.
QString venues(int first, int last) {
    QStringList codes;
    for (int i = first; i <= last; ++i)
        codes << u"V%1"_s.arg(i, 2, 10, QLatin1Char('0'));
    return reports::elencoQuotato(codes);
}

struct BatchRow {
    const char* name;
    int ticked;                                // venues V01..Vn; 0: "Tutti i locali"
    std::vector<std::pair<int, int>> batches;  // first and last venue of each batch
};

class VenueBatches : public ::testing::TestWithParam<BatchRow> {};

TEST_P(VenueBatches, TakeTheItemsTheRuleGives) {
    const BatchRow& row = GetParam();
    QStringList expected;
    for (const auto& [first, last] : row.batches)
        expected << (first ? venues(first, last) : QString());
    EXPECT_EQ(reports::lottiLocali(row.ticked ? venues(1, row.ticked) : QString()), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Registri, VenueBatches,
    ::testing::Values(BatchRow{"AllVenuesNoClause", 0, {{0, 0}}},
                      BatchRow{"OneVenueUnsplit", 1, {{1, 1}}}, BatchRow{"TwoVenues", 2, {{1, 2}}},
                      BatchRow{"TwentyFive", 25, {{1, 25}}},
                      BatchRow{"TwentySixDropsTheLast", 26, {{1, 25}}},
                      BatchRow{"TwentySeven", 27, {{1, 25}, {26, 27}}},
                      BatchRow{"Fifty", 50, {{1, 25}, {26, 50}}},
                      BatchRow{"FiftyOneDropsTheLast25", 51, {{1, 25}, {26, 26}}},
                      BatchRow{"FiftyTwo", 52, {{1, 25}, {26, 50}, {51, 52}}},
                      BatchRow{"SeventySixDropsTheLast25", 76, {{1, 25}, {26, 50}, {51, 51}}}),
    [](const ::testing::TestParamInfo<BatchRow>& info) { return std::string(info.param.name); });

RegistriCriteri criteri(const QString& azienda = {}, const QString& esattore = {},
                        bool escludi = false) {
    RegistriCriteri c;
    c.dallaData = QDate(2025, 1, 31);
    c.allaData = QDate(2025, 3, 1);
    c.azienda = azienda;
    c.esattore = esattore;
    c.causali = u"'INC6', 'INC'"_s;
    c.escludi = escludi;
    return c;
}

constexpr char escludi[] =
    " AND ( ((nt.UtileLocale <> 0) AND (nt.UtileLocale IS NOT NULL)) OR ((nt.UtileNoleggiatore "
    "<> 0) AND (nt.UtileNoleggiatore IS NOT NULL)) OR ((nt.TotPreu <> 0) AND (nt.TotPreu IS NOT "
    "NULL)) OR ((nt.TotAAMS <> 0) AND (nt.TotAAMS IS NOT NULL)) OR ((nt.TotRETE <> 0) AND "
    "(nt.TotRETE IS NOT NULL)) )";

struct NotesRow {
    const char* name;
    std::function<QString()> build;
    std::string sql;
};

class NotesStatements : public ::testing::TestWithParam<NotesRow> {};

TEST_P(NotesStatements, AreTheirPiecesInOrder) {
    EXPECT_EQ(GetParam().build(), QString::fromStdString(GetParam().sql));
}

constexpr char cassa[] =
    "SELECT NoteTeste.* FROM NoteTeste WHERE (DataRegistrazione BETWEEN #01/31/2025# AND "
    "#03/01/2025#)  AND NoteTeste.CodCausale IN ('INC6', 'INC') ";
constexpr char teste[] =
    "SELECT nt.* FROM NoteTeste nt WHERE (nt.DataRegistrazione BETWEEN #01/31/2025# AND "
    "#03/01/2025#)  AND nt.CodCausale IN ('INC6', 'INC') ";
constexpr char righe[] =
    "SELECT nr.* FROM NoteTeste nt, NoteRighe nr WHERE nt.id = nr.idTesta AND "
    "(nt.DataRegistrazione BETWEEN #01/31/2025# AND #03/01/2025#)  And nt.CodCausale IN ('INC6', "
    "'INC') ";
constexpr char incassi[] =
    "SELECT ni.* FROM NoteTeste nt, NoteIncassi ni WHERE nt.id = ni.idTesta AND "
    "(nt.DataRegistrazione BETWEEN #01/31/2025# AND #03/01/2025#)  And nt.CodCausale In ('INC6', "
    "'INC') ";

std::string join(std::initializer_list<const char*> pieces) {
    std::string text;
    for (const char* piece : pieces)
        text += piece;
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    Registri, NotesStatements,
    ::testing::Values(
        NotesRow{"CassaNone", [] { return reports::sqlNoteCassa(criteri(), {}); }, cassa},
        NotesRow{"CassaAllCompanyAsTypedCollectorDoubled",
                 [] { return reports::sqlNoteCassa(criteri(u"AZ'1"_s, u"ES'07"_s), u"'V1'"_s); },
                 join({cassa,
                       " AND CodiceAzienda = 'AZ'1' AND CodLocale IN ('V1') AND "
                       "CodEsattore='ES''07'"})},
        NotesRow{"HeadsNone",
                 [] { return reports::sqlNoteRegistro(PartiNota::Teste, criteri(), {}); }, teste},
        NotesRow{
            "HeadsAll",
            [] {
                return reports::sqlNoteRegistro(PartiNota::Teste, criteri(u"AZ01"_s, {}, true),
                                                u"'V1'"_s);
            },
            join({teste, " AND nt.CodiceAzienda = 'AZ01' AND nt.CodLocale IN ('V1')", escludi})},
        NotesRow{"LinesNone",
                 [] { return reports::sqlNoteRegistro(PartiNota::Righe, criteri(), {}); }, righe},
        NotesRow{
            "LinesAll",
            [] {
                return reports::sqlNoteRegistro(PartiNota::Righe, criteri(u"AZ01"_s, {}, true),
                                                u"'V1'"_s);
            },
            join({righe, " And nt.CodiceAzienda = 'AZ01' And nt.CodLocale IN ('V1')", escludi})},
        NotesRow{
            "TakingsExcludedOnly",
            [] { return reports::sqlNoteRegistro(PartiNota::Incassi, criteri({}, {}, true), {}); },
            join({incassi, escludi})},
        NotesRow{"TakingsAll",
                 [] {
                     return reports::sqlNoteRegistro(PartiNota::Incassi, criteri(u"AZ01"_s),
                                                     u"'V1', 'V2'"_s);
                 },
                 join({incassi,
                       " AND nt.CodiceAzienda = 'AZ01' AND nt.CodLocale IN ('V1', "
                       "'V2')"})},
        NotesRow{"CompaniesAll", [] { return reports::sqlAziende({}); },
                 "SELECT AnagraficaAziende.* FROM AnagraficaAziende  "},
        NotesRow{"CompanyChosen", [] { return reports::sqlAziende(u"AZ01"_s); },
                 "SELECT AnagraficaAziende.* FROM AnagraficaAziende   Where CodiceAzienda = "
                 "'AZ01'"},
        NotesRow{"LoanRepair",
                 [] { return reports::sqlAggiornaVarPrestito(u"-1234,5"_s, u"17"_s); },
                 "UPDATE NoteTeste SET VarPrestito=-1234.5 WHERE id=17"},
        NotesRow{"Comodato",
                 [] { return reports::sqlComodato(QDate(2025, 1, 31), QDate(2025, 3, 1)); },
                 "SELECT NoteIncassi.IdTesta, Sum(NoteIncassi.ParzialeIn) AS SommaDiParzialeIn, "
                 "NoteIncassi.Contratto, NoteTeste.CodCausale, "
                 "TipoContratto.PercentualeComodato, NoteTeste.DataRegistrazione FROM "
                 "(NoteIncassi INNER JOIN TipoContratto ON NoteIncassi.Contratto = "
                 "TipoContratto.Contratto) INNER JOIN NoteTeste ON NoteIncassi.IdTesta = "
                 "NoteTeste.id GROUP BY NoteIncassi.IdTesta, NoteIncassi.Contratto, "
                 "NoteTeste.CodCausale, TipoContratto.PercentualeComodato, "
                 "NoteTeste.DataRegistrazione HAVING (((NoteTeste.CodCausale)='INC6') AND "
                 "((TipoContratto.PercentualeComodato)>0) AND "
                 "((NoteTeste.DataRegistrazione)>=#01-31-2025#)) and "
                 "NoteTeste.DataRegistrazione<=#03-01-2025# "}),
    [](const ::testing::TestParamInfo<NotesRow>& info) { return std::string(info.param.name); });

struct SearchRow {
    const char* name;
    bool sospesi;
    const char* nome;
    const char* azienda;
    const char* esattore;
    std::string sql;
};

class CashSearch : public ::testing::TestWithParam<SearchRow> {};

screens::FrameCriteria searchCriteria(const SearchRow& row) {
    screens::FrameCriteria c;
    c.dallaData = QDate(2025, 1, 31);
    c.allaData = QDate(2025, 3, 1);
    c.sospesi = row.sospesi;
    c.nomeLocale = QString::fromUtf8(row.nome);
    c.azienda = QString::fromUtf8(row.azienda);
    c.causali = QStringList{u"INC6"_s, u"PRE"_s};
    return c;
}

TEST_P(CashSearch, JoinsTheNotesOfThePeriod) {
    EXPECT_EQ(reports::sqlRicercaCassa(searchCriteria(GetParam()),
                                       QString::fromUtf8(GetParam().esattore)),
              QString::fromStdString(GetParam().sql));
}

constexpr char cassaSearch[] =
    "SELECT al.* FROM AnagraficaLocali al INNER JOIN NoteTeste nt ON nt.CodLocale=al.CodLocale "
    "WHERE nt.CodCausale IN ('INC6', 'PRE') AND nt.DataRegistrazione>=#2025-01-31# AND "
    "nt.DataRegistrazione<=#2025-03-01#";

INSTANTIATE_TEST_SUITE_P(
    Registri, CashSearch,
    ::testing::Values(
        SearchRow{"Nothing", true, "", "", "", join({cassaSearch, " ORDER BY al.Insegna"})},
        SearchRow{"NotSuspendedNameCollectorCompany", false, "Bar", "AZ'1", "ES'07",
                  join({cassaSearch,
                        " AND al.sospeso=0 AND al.Insegna LIKE '%Bar%' AND "
                        "nt.CodEsattore='ES''07' AND nt.CodiceAzienda='AZ''1' ORDER BY "
                        "al.Insegna"})}),
    [](const ::testing::TestParamInfo<SearchRow>& info) { return std::string(info.param.name); });

class RegisterSearch : public ::testing::TestWithParam<SearchRow> {};

TEST_P(RegisterSearch, SwitchesWhereAndAnd) {
    EXPECT_EQ(screens::sqlRicercaLocali(searchCriteria(GetParam()), reports::registroSearchForms()),
              QString::fromStdString(GetParam().sql));
}

constexpr char period[] =
    " al.CodLocale IN (SELECT DISTINCT CodLocale FROM NoteIncassi WHERE "
    "DataIncasso>=#01/31/2025#  AND DataIncasso<=#03/01/2025#)";

INSTANTIATE_TEST_SUITE_P(
    Registri, RegisterSearch,
    ::testing::Values(
        SearchRow{"OnlyThePeriod", true, "", "", "",
                  join({"SELECT * FROM AnagraficaLocali al  WHERE ", period})},
        SearchRow{"CompanyOpensTheFilter", true, "", "AZ01", "",
                  join({"SELECT * FROM AnagraficaLocali al  WHERE al.CodiceAzienda='AZ01'  AND ",
                        period})},
        SearchRow{"NotSuspendedNameCompany", false, "Bar", "AZ01", "",
                  join({"SELECT * FROM AnagraficaLocali al  WHERE al.sospeso = 0  AND "
                        "al.Insegna like '%Bar%' AND al.CodiceAzienda='AZ01'  AND ",
                        period})}),
    [](const ::testing::TestParamInfo<SearchRow>& info) { return std::string(info.param.name); });

TEST(Comodato, TheShareIsRoundedToTheEvenCent) {
    const struct {
        double somma, percentuale, quota;
    } rows[] = {
        {1234.56, 5, 61.73},  // 61.728
        {12.5, 1, 0.12},      // 0.125: the tie goes to the even cent
        {37.5, 1, 0.38},      // 0.375
        {1000, 10, 100},     {-200, 7.5, -15},
    };
    for (const auto& row : rows)
        EXPECT_DOUBLE_EQ(reports::quotaComodato(row.somma, row.percentuale), row.quota)
            << row.somma << " x " << row.percentuale;
}

// The real screens on the fixture's installation (today 20/03/2025).
class RegistriRun : public testing::ReportScreenTest {
  protected:
    void period(const QDate& dalla, const QDate& alla) {
        control<QDateEdit>(screen, "txtDallaData")->setDate(dalla);
        control<QDateEdit>(screen, "txtAllaData")->setDate(alla);
    }
    QString main(const QString& sql) const {
        return DatabaseFile::queryFile(mainFile, sql.toUtf8().constData());
    }
    QString fingerprint() const {
        return testing::databaseContents(mainFile, {u"NoteTeste.VarPrestito"_s});
    }
    // A copy of the main database that the test may change, used from here on.
    void useCopy() {
        mainFile = mainDatabaseCopy();
        useMainDatabase(mainFile);
    }

    QString mainFile = folder() + u"/Lorvane.db"_s;
};

QString opened(const QString& sql) { return u"OpenRecordset("_s + sql + u")"_s; }

// The loan lines as the repair selects them, in the order delivered.
constexpr char loanLines[] =
    "SELECT nt.id, (nr.Dare-nr.Avere) FROM (NoteTeste nt INNER JOIN NoteRighe nr ON "
    "nr.idtesta=nt.id) INNER JOIN TabAssociazioneConti tac ON tac.PrestitiALocale=nr.CodConto "
    "WHERE CodCausale='PRE' AND (nt.VarPrestito=0 OR nt.VarPrestito IS NULL)";

TEST_F(RegistriRun, OpeningRepairsTheLoanVariationsLastLineWinning) {
    useCopy();
    // What each open loan note should get: the amount of its last line.
    QMap<QString, double> expected;
    int lines = 0;
    for (const QString& line : main(QString::fromLatin1(loanLines)).split(u';')) {
        const QStringList cells = line.split(u'|');
        expected[cells[0]] = cells[1].toDouble();
        ++lines;
    }
    ASSERT_GT(lines, int(expected.size())) << "a note with two lines on the loan account";
    const QString twoLines = main(
        u"SELECT nr.IdTesta FROM NoteRighe nr JOIN TabAssociazioneConti tac ON "
        u"tac.PrestitiALocale = nr.CodConto GROUP BY nr.IdTesta HAVING COUNT(*) > 1"_s);
    ASSERT_TRUE(expected.contains(twoLines));
    const QString touched = main(u"SELECT COUNT(*) FROM NoteTeste WHERE VarPrestito <> 0"_s);

    openScreen("StampaCassa");
    int updates = 0;
    for (const QString& call : takeCalls())
        updates += call.startsWith(u"Execute(UPDATE NoteTeste SET VarPrestito="_s);
    EXPECT_EQ(updates, lines);
    for (auto it = expected.cbegin(); it != expected.cend(); ++it)
        EXPECT_DOUBLE_EQ(
            main(u"SELECT VarPrestito FROM NoteTeste WHERE id = "_s + it.key()).toDouble(),
            it.value())
            << "note " << it.key().toStdString();
    EXPECT_DOUBLE_EQ(main(u"SELECT VarPrestito FROM NoteTeste WHERE id = "_s + twoLines).toDouble(),
                     50.0);
    // A loan given to the venue is positive.
    EXPECT_EQ(main(u"SELECT COUNT(*) FROM NoteTeste WHERE CodCausale = 'PRE' AND Descrizione = "
                   u"'Prestito al locale' AND VarPrestito < 0"_s),
              u"0"_s);

    // A second opening finds only the notes still at 0, and rewrites them.
    const QString zeros =
        main(u"SELECT COUNT(*) FROM ("_s + QString::fromLatin1(loanLines) + u")"_s);
    openScreen("StampaCassa");
    updates = 0;
    for (const QString& call : takeCalls())
        updates += call.startsWith(u"Execute(UPDATE NoteTeste SET VarPrestito=0 "_s);
    EXPECT_EQ(QString::number(updates), zeros);
    EXPECT_GT(main(u"SELECT COUNT(*) FROM NoteTeste WHERE VarPrestito <> 0"_s).toInt(),
              touched.toInt());
}

TEST_F(RegistriRun, WithoutTheAccountLinksTheOpeningFailsToTheHost) {
    useCopy();
    main(u"DROP TABLE TabAssociazioneConti"_s);
    EXPECT_THROW(openScreen("StampaCassa"), lorvane::RuntimeError);
}

struct ScreenRow {
    const char* name;
    const char* code;
    const char* workFile;
    bool company, collector, venues, escludi;
};

class RegistriStatements : public RegistriRun, public ::testing::WithParamInterface<ScreenRow> {};

// The statements of a run equal the builders' for the criteria set, the main
// database keeps every row but the loan variations, and the work file holds
// the notes the statements give.
TEST_P(RegistriStatements, AreThoseOfItsCriteriaAndWriteNothingElse) {
    const ScreenRow& row = GetParam();
    useCopy();
    const QString before = fingerprint();
    openScreen(row.code);
    const bool cassa = qstrcmp(row.code, "StampaCassa") == 0;
    const bool comodato = qstrcmp(row.code, "StampaRegistro2") == 0;
    period(QDate(2025, 2, 1), QDate(2025, 3, 20));
    RegistriCriteri c;
    c.dallaData = QDate(2025, 2, 1);
    c.allaData = QDate(2025, 3, 20);
    c.causali = cassa ? u"'INC6', 'INC'"_s : u"'INC6', 'INC', 'FUR'"_s;
    c.escludi = row.escludi;
    if (auto* box = screen->findChild<QCheckBox*>(u"chkEscludi"_s)) box->setChecked(row.escludi);
    const QStringList codes = main(
                                  u"SELECT CodLocale FROM AnagraficaLocali ORDER BY CodLocale "
                                  u"LIMIT 2"_s)
                                  .split(u';');
    if (row.company) {
        c.azienda = main(u"SELECT CodiceAzienda FROM AnagraficaLocali WHERE CodLocale = '"_s +
                         codes[0] + u"'"_s);
        choose("CmbAzienda", c.azienda);
    }
    if (row.collector) {
        c.esattore = u"ES'07"_s;
        choose("cmbEsattore", c.esattore);
    }
    const QString lotto = row.venues ? u"'"_s + codes.join(u"', '"_s) + u"'"_s : QString();
    if (row.venues) tick(codes);

    QStringList expected;
    if (cassa) {
        expected << opened(reports::sqlNoteCassa(c, lotto));
    } else {
        for (PartiNota parte : {PartiNota::Teste, PartiNota::Righe, PartiNota::Incassi})
            expected << opened(reports::sqlNoteRegistro(parte, c, lotto));
    }
    const QString noteLocali = work(row.workFile,
                                    u"SELECT group_concat(q, ', ') FROM (SELECT "
                                    u"DISTINCT '''' || CodLocale || '''' AS q FROM "
                                    u"NoteTeste ORDER BY CodLocale)"_s);
    const QStringList statements = run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    ASSERT_GE(statements.size(), expected.size());
    EXPECT_EQ(statements.mid(0, expected.size()), expected);
    if (!comodato) {
        const QString venuesOfNotes =
            work(row.workFile,
                 u"SELECT group_concat(q, ', ') FROM (SELECT DISTINCT '''' || "
                 u"CodLocale || '''' AS q FROM NoteTeste ORDER BY CodLocale)"_s);
        EXPECT_TRUE(
            statements.contains(opened(QLatin1String(cassa ? reports::localiCassa().origine
                                                           : reports::localiRegistro().origine) +
                                       venuesOfNotes + u")"_s)))
            << statements.join(u'\n').toStdString();
    }
    EXPECT_TRUE(statements.contains(opened(reports::sqlAziende(c.azienda))));

    // The heads in the work file are those the statement gives on the main database.
    const QString where =
        u" FROM NoteTeste nt WHERE nt.DataRegistrazione BETWEEN '2025-02-01' "
        u"AND '2025-03-20 00:00:00' AND nt.CodCausale IN ("_s +
        c.causali + u")"_s +
        (c.azienda.isEmpty() ? QString() : u" AND nt.CodiceAzienda = '"_s + c.azienda + u"'"_s) +
        (lotto.isEmpty() ? QString() : u" AND nt.CodLocale IN ("_s + lotto + u")"_s) +
        (c.esattore.isEmpty() ? QString() : u" AND nt.CodEsattore = 'ES''07'"_s) +
        (c.escludi ? u" AND (Nz(nt.UtileLocale,0) <> 0 OR "
                     u"Nz(nt.UtileNoleggiatore,0) <> 0 OR Nz(nt.TotPreu,0) <> 0 "
                     u"OR Nz(nt.TotAAMS,0) <> 0 OR Nz(nt.TotRETE,0) <> 0)"_s
                   : QString());
    QString sql =
        u"SELECT COUNT(*), group_concat(id) FROM (SELECT nt.id"_s + where + u" ORDER BY nt.id)"_s;
    sql.replace(u"Nz("_s, u"ifnull("_s);
    EXPECT_EQ(
        work(row.workFile,
             u"SELECT COUNT(*), group_concat(id) FROM (SELECT id FROM NoteTeste ORDER BY id)"_s),
        main(sql));
    EXPECT_NE(main(sql).left(2), u"0|"_s) << "the case has notes";
    // Lines and takings are those of the heads copied, and only those.
    const QString ids = work(row.workFile, u"SELECT group_concat(id) FROM NoteTeste"_s);
    for (const char* table : {"NoteRighe", "NoteIncassi"}) {
        const QString count = u"SELECT COUNT(*) FROM "_s + QLatin1String(table);
        EXPECT_EQ(work(row.workFile, count),
                  cassa ? u"0"_s : main(count + u" WHERE IdTesta IN ("_s + ids + u")"_s))
            << table;
    }
    EXPECT_EQ(work(row.workFile, u"SELECT Parametri, Descr1 FROM Parametri"_s),
              u" Dal 01/02/2025 al 20/03/2025"_s +
                  (row.collector ? u" - Esattore: ES'07"_s : QString()) +
                  (cassa ? u"|Ditta di prova"_s : u"|NULL"_s));
    EXPECT_EQ(fingerprint(), before);
}

INSTANTIATE_TEST_SUITE_P(
    Registri, RegistriStatements,
    ::testing::Values(
        ScreenRow{"CassaNone", "StampaCassa", "Cassa.mdb", false, false, false, false},
        ScreenRow{"CassaCompanyVenues", "StampaCassa", "Cassa.mdb", true, false, true, false},
        ScreenRow{"CassaCollector", "StampaCassa", "Cassa.mdb", false, true, false, false},
        ScreenRow{"RegistroNone", "StampaRegistro", "Registro.mdb", false, false, false, false},
        ScreenRow{"RegistroAll", "StampaRegistro", "Registro.mdb", true, false, true, true},
        ScreenRow{"RegistroComodatoNone", "StampaRegistro2", "RegistroComodato.mdb", false, false,
                  false, false},
        ScreenRow{"RegistroComodatoVenuesEscludi", "StampaRegistro2", "RegistroComodato.mdb", false,
                  false, true, true}),
    [](const ::testing::TestParamInfo<ScreenRow>& info) { return std::string(info.param.name); });

// The calendar covers whole months whatever the notes: with no note in the
// period the report is not shown, yet the days are there.
TEST_F(RegistriRun, TheCalendarHasEveryDayOfTheMonthsCovered) {
    const struct {
        const char* name;
        QDate dalla, alla;
        int days;
        const char* first;
        const char* last;
        bool notes;
    } rows[] = {
        {"WithinAMonth", {2025, 3, 15}, {2025, 3, 20}, 31, "2025-03-01", "2025-03-31", true},
        {"LeapFebruary", {2024, 2, 10}, {2024, 2, 20}, 29, "2024-02-01", "2024-02-29", false},
        {"DecemberToJanuary", {2024, 12, 10}, {2025, 1, 5}, 62, "2024-12-01", "2025-01-31", true},
        {"EndInDecember", {2024, 11, 30}, {2024, 12, 1}, 61, "2024-11-01", "2024-12-31", false},
        // The notes' bounds are taken in either order, the calendar's are not.
        {"StartAfterEnd", {2025, 3, 1}, {2025, 1, 31}, 0, "", "", true},
    };
    openScreen("StampaRegistro");
    for (const auto& row : rows) {
        messages.clear();
        period(row.dalla, row.alla);
        run();
        EXPECT_EQ(
            work("Registro.mdb",
                 u"SELECT COUNT(*), COUNT(DISTINCT giorno), ifnull(substr(MIN(giorno), 1, "
                 u"10), ''), ifnull(substr(MAX(giorno), 1, 10), '') FROM Calendario"_s),
            u"%1|%1|%2|%3"_s.arg(row.days).arg(QLatin1String(row.first), QLatin1String(row.last)))
            << row.name;
        EXPECT_EQ(messages.isEmpty(), row.notes) << row.name;
    }
}

struct ComodatoRow {
    const char* name;
    // Makes the case in the copy of the main database; gives the note.
    QString (*prepare)(RegistriRun& test);
    double quota;  // what percAgente of the note gets; < 0: the main database's value
};

class ComodatoRun : public RegistriRun, public ::testing::WithParamInterface<ComodatoRow> {
  public:
    using RegistriRun::main;
};

// The note whose takings stand on two comodato contracts.
QString twoContracts(RegistriRun& test) {
    return static_cast<ComodatoRun&>(test).main(
        u"SELECT IdTesta FROM NoteIncassi WHERE Contratto = 'CO5'"_s);
}

TEST_P(ComodatoRun, WritesTheShareOverPercAgente) {
    useCopy();
    const QString note = GetParam().prepare(*this);
    ASSERT_FALSE(note.isEmpty());
    const QString before = main(u"SELECT PercAgente FROM NoteTeste WHERE id = "_s + note);
    openScreen("StampaRegistro2");
    period(QDate(2025, 1, 1), QDate(2025, 3, 31));
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    const QString after =
        work("RegistroComodato.mdb", u"SELECT percAgente FROM NoteTeste WHERE id = "_s + note);
    if (GetParam().quota < 0) {
        EXPECT_EQ(after, before);
    } else {
        EXPECT_DOUBLE_EQ(after.toDouble(), GetParam().quota);
    }
    // No venue and no machine reaches this report.
    EXPECT_EQ(work("RegistroComodato.mdb",
                   u"SELECT (SELECT COUNT(*) FROM AnagraficaLocali) + (SELECT COUNT(*) FROM "
                   u"MagSchede)"_s),
              u"0"_s);
}

INSTANTIATE_TEST_SUITE_P(
    Registri, ComodatoRun,
    ::testing::Values(
        // The 10 % contract comes after the 5 % one, and overwrites it.
        ComodatoRow{"TwoContractsTheLaterWins",
                    [](RegistriRun& test) {
                        const QString note = twoContracts(test);
                        auto& run = static_cast<ComodatoRun&>(test);
                        run.main(
                            u"UPDATE NoteIncassi SET ParzialeIn = iif(id = (SELECT MIN(id) "
                            u"FROM NoteIncassi WHERE IdTesta = %1 AND Contratto = 'COM'), "
                            u"300, 0) WHERE IdTesta = %1 AND Contratto = 'COM'"_s.arg(note));
                        run.main(u"UPDATE NoteIncassi SET ParzialeIn = 1000 WHERE IdTesta = "_s +
                                 note + u" AND Contratto = 'CO5'"_s);
                        return note;
                    },
                    30},
        ComodatoRow{"RoundedToTheCent",
                    [](RegistriRun& test) {
                        const QString note = twoContracts(test);
                        auto& run = static_cast<ComodatoRun&>(test);
                        run.main(u"UPDATE NoteIncassi SET Contratto = 'NOL' WHERE IdTesta = "_s +
                                 note + u" AND Contratto = 'COM'"_s);
                        run.main(u"UPDATE NoteIncassi SET ParzialeIn = 1234.56 WHERE IdTesta = "_s +
                                 note + u" AND Contratto = 'CO5'"_s);
                        return note;
                    },
                    61.73},
        ComodatoRow{"ANullShareNeverEnters",
                    [](RegistriRun& test) {
                        const QString note = twoContracts(test);
                        static_cast<ComodatoRun&>(test).main(
                            u"UPDATE NoteIncassi SET Contratto = 'CPN' WHERE IdTesta = "_s + note);
                        return note;
                    },
                    -1}),
    [](const ::testing::TestParamInfo<ComodatoRow>& info) { return std::string(info.param.name); });

// The two registers keep one selection of causali.
TEST_F(RegistriRun, TheRegistersShareTheirCausali) {
    openScreen("StampaRegistro");
    auto* causali = control<screens::CheckList>(screen, "ListCausali");
    for (int row = 0; row < causali->count(); ++row)
        causali->setTicked(row, causali->item(row)->text().startsWith(u"FUR "_s));
    run();
    EXPECT_EQ(host->settings.value(u"StampaRegistro/Causali"_s), u"'FUR'"_s);
    openScreen("StampaRegistro2");
    causali = control<screens::CheckList>(screen, "ListCausali");
    QStringList ticked;
    for (int row = 0; row < causali->count(); ++row)
        if (causali->isTicked(row)) ticked << causali->item(row)->text().section(u" -"_s, 0, 0);
    EXPECT_EQ(ticked, QStringList{u"FUR"_s});
}

struct OptionRow {
    const char* name;
    const char* code;
    const char* change;  // on the copy of the main database before opening
    bool shown;          // chkEscludi visible and ticked
};

class ExclusionOption : public RegistriRun, public ::testing::WithParamInterface<OptionRow> {};

// A test that fails with an error counts as passed.
TEST_P(ExclusionOption, ShowsAndTicksTheBox) {
    useCopy();
    if (*GetParam().change) main(QString::fromLatin1(GetParam().change));
    openScreen(GetParam().code);
    auto* box = control<QCheckBox>(screen, "chkEscludi");
    EXPECT_EQ(!box->isHidden(), GetParam().shown);
    EXPECT_EQ(box->isChecked(), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Registri, ExclusionOption,
    ::testing::Values(
        OptionRow{"On", "StampaRegistro", "", true},
        OptionRow{"Off", "StampaRegistro2", "UPDATE ZPers SET RegistroCorrispettivi = 0", false},
        OptionRow{"Null", "StampaRegistro", "UPDATE ZPers SET RegistroCorrispettivi = NULL", false},
        OptionRow{"NoRow", "StampaRegistro2", "DELETE FROM ZPers", false},
        OptionRow{"NoTable", "StampaRegistro", "DROP TABLE ZPers", true},
        OptionRow{"NoColumnRegistro", "StampaRegistro",
                  "ALTER TABLE ZPers DROP COLUMN RegistroCorrispettivi", true},
        OptionRow{"NoColumnComodato", "StampaRegistro2",
                  "ALTER TABLE ZPers DROP COLUMN RegistroCorrispettivi", true}),
    [](const ::testing::TestParamInfo<OptionRow>& info) { return std::string(info.param.name); });

struct QuotedCompanyRow {
    const char* name;
    const char* code;
    int failures;  // the database's messages before "Nessun dato da stampare"
};

class QuotedCompany : public RegistriRun, public ::testing::WithParamInterface<QuotedCompanyRow> {};

// A company code with an apostrophe breaks the statements that take it as
// typed: each failure is shown, the run goes on, and nothing is lost.
TEST_P(QuotedCompany, BreaksOnlyTheStatementsThatTakeItAsTyped) {
    useCopy();
    main(u"INSERT INTO AnagraficaAziende (CodiceAzienda) VALUES ('AZ''9')"_s);
    const QString before = fingerprint();
    openScreen(GetParam().code);
    choose("CmbAzienda", u"AZ'9"_s);
    run();
    ASSERT_EQ(messages.size(), GetParam().failures + 1) << messages.join(u'\n').toStdString();
    for (int i = 0; i < GetParam().failures; ++i)
        EXPECT_TRUE(messages[i].startsWith(u"|0|"_s) && messages[i].size() > 4)
            << messages[i].toStdString();
    EXPECT_EQ(messages.last(), u"Lorvane|64|Nessun dato da stampare"_s);
    EXPECT_EQ(fingerprint(), before);
}

INSTANTIATE_TEST_SUITE_P(Registri, QuotedCompany,
                         ::testing::Values(QuotedCompanyRow{"Cassa", "StampaCassa", 2},
                                           QuotedCompanyRow{"Registro", "StampaRegistro", 4},
                                           QuotedCompanyRow{"Comodato", "StampaRegistro2", 4}),
                         [](const ::testing::TestParamInfo<QuotedCompanyRow>& info) {
                             return std::string(info.param.name);
                         });

// The cash search doubles the company's and the collector's apostrophes, and
// a venue with several notes stands once in the tree.
TEST_F(RegistriRun, TheCashSearchTakesEachVenueOnce) {
    useCopy();
    main(u"UPDATE AnagraficaAziende SET CodiceAzienda = 'AZ''1' WHERE CodiceAzienda = 'AZ01'"_s);
    main(u"UPDATE NoteTeste SET CodiceAzienda = 'AZ''1' WHERE CodiceAzienda = 'AZ01'"_s);
    openScreen("StampaCassa");
    period(QDate(2025, 1, 1), QDate(2025, 3, 31));
    choose("CmbAzienda", u"AZ'1"_s);
    choose("cmbEsattore", u"ES'07"_s);
    control<QPushButton>(screen, "CmdRicerca")->click();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    const QString venues = main(
        u"SELECT COUNT(DISTINCT al.CodLocale), COUNT(*) FROM AnagraficaLocali al JOIN NoteTeste "
        u"nt ON nt.CodLocale = al.CodLocale WHERE nt.CodCausale IN ('INC6', 'INC') AND "
        u"nt.DataRegistrazione BETWEEN '2025-01-01' AND '2025-03-31' AND al.Sospeso = 0 AND "
        u"nt.CodEsattore = 'ES''07' AND nt.CodiceAzienda = 'AZ''1'"_s);
    ASSERT_GT(venues.section(u'|', 1).toInt(), venues.section(u'|', 0, 0).toInt())
        << "a venue with several notes";
    EXPECT_EQ(control<screens::KeyedTree>(screen, "Tree")->nodeCount() - 1,
              venues.section(u'|', 0, 0).toInt());
}

}  // namespace
}  // namespace lorvane
