// The trial balance: its statements as the host receives them, what the work
// file holds after a run, and the check that stands on the preview alone.
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>

#include "db/database_fixture.h"
#include "reports/accounting/bilancio_sql.h"
#include "support/screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;
using testing::ScreenTest;

// The movement statement for a criterion and a company clause, piece by piece.
QString movements(const QString& criterion, const QString& company) {
    return u" SELECT apc.id, tmp.CodConto AS CodiceConto, apc.Descrizione, tmp.TotDare AS dare, "
           u"tmp.TotAvere AS avere, (tmp.TotDare - tmp.TotAvere) AS saldo, '' AS Mastro, "
           u"apc.TipoConto, '' AS CodiceLocale, apc.LivelloConto "_s +
           u" FROM "_s + u" AnagraficaPianoConti apc, "_s + u" ( "_s +
           u" SELECT CodConto, iif(SUM(Dare) IS NULL ; 0 ; SUM(Dare);) AS TotDare, "
           u"iif(SUM(Avere) IS NULL ; 0 ; SUM(Avere);) AS TotAvere "_s +
           u" FROM NoteRighe "_s + u" WHERE "_s +
           u" CodConto IN (SELECT CodiceConto FROM AnagraficaPianoConti WHERE "_s + criterion +
           u") "_s + u" AND "_s + u" Data >= #01/01/2025# "_s + u" AND "_s +
           u" Data <= #03/20/2025# "_s + company + u" GROUP BY CodConto "_s + u" ) tmp "_s +
           u" WHERE "_s + u" tmp.CodConto=apc.CodiceConto "_s;
}

QString chart(const QString& criterion) {
    return u"SELECT *, LEFT(CodiceConto, 2) AS Mastro FROM AnagraficaPianoConti WHERE "_s +
           criterion;
}

struct RunRow {
    const char* name;
    bool patrimoniali;
    bool economici;
    bool company;  // the first company of the list chosen
    const char* button;
    const char* criterion;
    const char* title;  // without the company; nullptr when no title is written
    const char* shown;  // the modal window, or "FILE" for an export opened
};

class TrialBalanceRun : public ScreenTest, public ::testing::WithParamInterface<RunRow> {
  protected:
    QString workFile() const { return work.filePath(u"Bilancio.mdb"_s); }
};

TEST_P(TrialBalanceRun, SendsItsStatementsAndFillsTheWorkFile) {
    const RunRow& row = GetParam();
    screens::FilterScreen* screen = open(u"StampaBilancio"_s);
    control<QListWidget>(screen, "List1")->setCurrentRow(0);
    control<QCheckBox>(screen, "chkContiPatrimoniali")->setChecked(row.patrimoniali);
    control<QCheckBox>(screen, "chkContiEconomici")->setChecked(row.economici);
    auto* azienda = control<QComboBox>(screen, "CmbAzienda");
    if (row.company) azienda->setCurrentIndex(0);
    const QString company = row.company ? azienda->currentText() : QString();
    takeCalls();

    control<QPushButton>(screen, row.button)->click();

    QStringList reads;
    for (const QString& call : takeCalls())
        if (call.startsWith(u"OpenRecordset("_s)) reads << call.mid(14).chopped(1);
    const QString criterion = QString::fromUtf8(row.criterion);
    QStringList expected{chart(criterion)};
    if (row.title) {
        expected << movements(criterion, row.company ? u" AND  IdTesta IN (SELECT id FROM "
                                                       u"NoteTeste WHERE CodiceAzienda='"_s +
                                                           company + u"') "_s
                                                     : QString());
    }
    EXPECT_EQ(reads, expected);
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    if (QByteArrayView(row.shown) == "FILE") {
        EXPECT_EQ(openedFiles.size(), 1);
    } else {
        EXPECT_EQ(modalWindows, QStringList{QString::fromUtf8(row.shown)});
    }

    const QString title = row.title
                              ? QString::fromUtf8(row.title) +
                                    (row.company ? u" - Per l'azienda "_s + company : QString())
                              : QString();
    EXPECT_EQ(DatabaseFile::queryFile(workFile(), "SELECT Parametri FROM Parametri"), title);
    if (!row.title) {
        EXPECT_EQ(DatabaseFile::queryFile(workFile(), "SELECT COUNT(*) FROM Saldi"), u"0"_s);
        return;
    }
    // One row per account of the chart's copy; "03" exactly where nothing moved.
    EXPECT_EQ(
        DatabaseFile::queryFile(workFile(),
                                "SELECT COUNT(*), COUNT(DISTINCT CodiceConto) FROM Saldi"),
        DatabaseFile::queryFile(workFile(), "SELECT COUNT(*), COUNT(*) FROM AnagraficaPianoConti"));
    EXPECT_EQ(DatabaseFile::queryFile(workFile(),
                                      "SELECT COUNT(*) FROM Saldi WHERE (Mastro = '03') <> "
                                      "(dare = 0 AND avere = 0 AND CodiceConto NOT IN (SELECT "
                                      "CodiceConto FROM Saldi WHERE Mastro = ''))"),
              u"0"_s);
    EXPECT_EQ(
        DatabaseFile::queryFile(
            workFile(), "SELECT COUNT(*) FROM Saldi WHERE ROUND(saldo - (dare - avere), 4) <> 0"),
        u"0"_s);
}

INSTANTIATE_TEST_SUITE_P(
    Bilancio, TrialBalanceRun,
    ::testing::Values(RunRow{"BothKindsToThePreview", true, true, false, "CmdStampa",
                             "( TipoConto=0 OR TipoConto=1)",
                             "Dal 01/01/2025 Al 20/03/2025 - Conti Patrimoniali ed Economici",
                             "FrmAnteprima"},
                      RunRow{"IncomeAccountsToPdf", false, true, false, "CmdPdf", "( TipoConto=1)",
                             "Dal 01/01/2025 Al 20/03/2025 - Conti Economici", "FILE"},
                      RunRow{"OneCompanyToExcel", true, false, true, "CmdExportExcel",
                             "( TipoConto=0)", "Dal 01/01/2025 Al 20/03/2025 - Conti Patrimoniali",
                             "FILE"},
                      RunRow{"BothClearExportsAnEmptyReportInSilence", false, false, false,
                             "CmdXls", "()", nullptr, "FILE"}),
    [](const ::testing::TestParamInfo<RunRow>& info) { return std::string(info.param.name); });

TEST_F(ScreenTest, ThePreviewWantsAKindOfAccount) {
    screens::FilterScreen* screen = open(u"StampaBilancio"_s);
    control<QPushButton>(screen, "CmdAzzera")->click();  // clears both kinds
    takeCalls();
    control<QPushButton>(screen, "CmdStampa")->click();
    EXPECT_EQ(messages, QStringList{u"|0|Selezionare almeno una tipologia di conto prima di "
                                    u"stampare!"_s});
    EXPECT_TRUE(modalWindows.isEmpty());
    EXPECT_FALSE(takeCalls().join(u'\n').contains(u"OpenRecordset"_s));
}

TEST_F(ScreenTest, TheBalanceAddsUpToTheLinesOfThePeriod) {
    screens::FilterScreen* screen = open(u"StampaBilancio"_s);
    control<QListWidget>(screen, "List1")->setCurrentRow(0);
    control<QPushButton>(screen, "CmdPdf")->click();
    const QString work = this->work.filePath(u"Bilancio.mdb"_s);
    const QString main = folder() + u"/Lorvane.db"_s;
    EXPECT_EQ(DatabaseFile::queryFile(
                  work, "SELECT printf('%.2f|%.2f', SUM(dare), SUM(avere)) FROM Saldi"),
              DatabaseFile::queryFile(
                  main,
                  "SELECT printf('%.2f|%.2f', SUM(Dare), SUM(Avere)) FROM NoteRighe WHERE "
                  "Data >= '2025-01-01' AND Data <= '2025-03-20 00:00:00' AND CodConto IN "
                  "(SELECT CodiceConto FROM AnagraficaPianoConti)"));
}

// The runs above write the other titles; with neither kind the chart's
// statement fails before any title is written.
TEST(BilancioTitle, SaysEconomiciWhenNeitherKindIsChosen) {
    const reports::BilancioCriteri criteri{QString(), QDate(2025, 1, 1), QDate(2025, 12, 31), false,
                                           false};
    EXPECT_EQ(reports::titoloBilancio(criteri),
              u"Dal 01/01/2025 Al 31/12/2025 - Conti Economici"_s);
}

}  // namespace
}  // namespace lorvane
