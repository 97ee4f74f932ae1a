// The takings report: its statements for the optional criteria, the boards
// asked for in batches, and the heading row.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFileInfo>
#include <QListWidget>
#include <QPointer>
#include <QTest>

#include "db/connection.h"
#include "db/database_fixture.h"
#include "reports/collection/introdotto_sql.h"
#include "support/screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;

struct ConditionRow {
    const char* name;
    const char* terminale;
    const char* azienda;
    const char* concessionario2;
    const char* tail;  // what follows the causale
};

TEST(IntrodottoStatements, TheCommonConditionTakesTheCriteriaSet) {
    const ConditionRow rows[] = {
        {"none", "", "", "", ""},
        {"company only", "", "AZ1", "", " AND ni.CodiceAzienda = 'AZ1'"},
        {"all", "T7", "AZ1", "SNAI",
         " AND nt.NumeroTerminale='T7' AND ni.CodiceAzienda = 'AZ1' AND "
         "ni.CodConcessionario='SNAI'"},
    };
    const QString head =
        u" WHERE nt.DataRegistrazione>=#01/31/2025# AND nt.DataRegistrazione<=#03/01/2025# AND "
        u"nt.CodCausale='INC6'"_s;
    for (const ConditionRow& row : rows) {
        const reports::IntrodottoCriteri criteri{
            QDate(2025, 1, 31), QDate(2025, 3, 1), QString::fromUtf8(row.azienda),
            QString::fromUtf8(row.terminale), QString::fromUtf8(row.concessionario2)};
        const QString condition = head + QString::fromUtf8(row.tail);
        EXPECT_EQ(reports::condizioneComune(criteri), condition) << row.name;
        EXPECT_EQ(reports::sqlNote(criteri),
                  u"SELECT DISTINCT nt.* FROM (NoteTeste nt INNER JOIN NoteIncassi ni ON "
                  u"ni.idTesta=nt.id) INNER JOIN AnagraficaLocali_Tmp al ON "
                  u"al.CodLocale=nt.CodLocale"_s +
                      condition)
            << row.name;
        EXPECT_EQ(reports::sqlRighe(criteri),
                  u"SELECT DISTINCT nr.* FROM ((NoteTeste nt INNER JOIN NoteIncassi ni ON "
                  u"ni.idTesta=nt.id) INNER JOIN NoteRighe nr ON nr.idTesta=nt.id) INNER JOIN "
                  u"AnagraficaLocali_Tmp al ON al.CodLocale=nt.CodLocale"_s +
                      condition)
            << row.name;
        EXPECT_EQ(reports::sqlLetture(criteri),
                  u"SELECT DISTINCT ni.* FROM (NoteTeste nt INNER JOIN NoteIncassi ni ON "
                  u"ni.idTesta=nt.id) INNER JOIN AnagraficaLocali_Tmp al ON "
                  u"al.CodLocale=nt.CodLocale"_s +
                      condition)
            << row.name;
        EXPECT_EQ(reports::sqlAziende(criteri),
                  u"SELECT AnagraficaAziende.* FROM AnagraficaAziende  "_s +
                      (*row.azienda ? u" WHERE CodiceAzienda = 'AZ1'"_s : QString()))
            << row.name;
    }
}

class Introdotto : public testing::ScreenTest {
  protected:
    // The takings of the whole demo period, with "Tutti i locali", exported.
    void run(const QString& mainDatabase = QString()) {
        if (!mainDatabase.isEmpty()) useMainDatabase(mainDatabase);
        open();
        control<QPushButton>(screen, "CmdPdf")->click();
    }
    void open() {
        screen = ScreenTest::open(u"StampaIntrodotto"_s);
        control<QDateEdit>(screen, "txtDallaData")->setDate(QDate(2025, 1, 1));
        control<QDateEdit>(screen, "txtAllaData")->setDate(QDate(2025, 3, 31));
        control<QListWidget>(screen, "List1")->setCurrentRow(0);
        if (before) before();
        takeCalls();
    }
    QString workQuery(const char* sql) const {
        return DatabaseFile::queryFile(work.filePath(u"Introdotto.mdb"_s), sql);
    }
    // A copy of the main database whose collection readings of the period
    // point in turn at boards 1 to `boards`.
    QString withBoards(int boards) {
        const QString copy = mainDatabaseCopy();
        const QString inPeriod =
            u"IdTesta IN (SELECT id FROM NoteTeste WHERE CodCausale = 'INC6' AND "
            u"DataRegistrazione >= '2025-01-01' AND DataRegistrazione <= '2025-03-31 00:00:00')"_s;
        DatabaseFile::queryFile(
            copy, (u"UPDATE NoteIncassi SET LinkScheda = 1 + (SELECT (r.n - 1) % %1 FROM "
                   u"(SELECT rowid AS rid, ROW_NUMBER() OVER (ORDER BY rowid) AS n FROM "
                   u"NoteIncassi WHERE %2) r WHERE r.rid = NoteIncassi.rowid) WHERE %2"_s)
                      .arg(boards)
                      .arg(inPeriod)
                      .toUtf8()
                      .constData());
        return copy;
    }

    screens::FilterScreen* screen = nullptr;
    std::function<void()> before;
};

TEST_F(Introdotto, CopiesTheNotesOfThePeriodAndCountsThem) {
    run();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(openedFiles.size(), 1);
    const QString notes = DatabaseFile::queryFile(
        folder() + u"/Lorvane.db"_s,
        "SELECT COUNT(*), printf('%.2f', SUM(TotIntrodotto)) FROM NoteTeste WHERE CodCausale = "
        "'INC6' AND DataRegistrazione >= '2025-01-01' AND DataRegistrazione <= '2025-03-31 "
        "00:00:00' AND CodLocale IN (SELECT CodLocale FROM AnagraficaLocali WHERE Sospeso = 0) "
        "AND id IN (SELECT IdTesta FROM NoteIncassi)");
    EXPECT_EQ(workQuery("SELECT COUNT(*), printf('%.2f', SUM(TotIntrodotto)) FROM NoteTeste"),
              notes);
    EXPECT_EQ(workQuery("SELECT Parametri, Descr1, Descr2, Descr3 FROM Parametri"),
              u" Dal 01/01/2025 al 31/03/2025|01/01/2025|31/03/2025|NULL"_s);
    EXPECT_EQ(host->settings.value(u"StampaIntrodotto/Causali"_s), u"'INC6'"_s);
}

// With no program for the type, the desktop would show nothing at all.
TEST_F(Introdotto, AFileNoProgramOpensIsShownWhereItWasWritten) {
    desktopOpensFiles = false;
    run();
    ASSERT_EQ(openedFiles.size(), 1);
    EXPECT_TRUE(QFileInfo::exists(openedFiles[0]));
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].startsWith(u"Lorvane|64|Il file è stato scritto in:\n"_s +
                                       openedFiles[0] + u'\n'))
        << messages[0].toStdString();
}

TEST_F(Introdotto, Descr3IsTheConcessionaireOfTheFirstPageOnly) {
    QString chosen;
    before = [&] { control<QComboBox>(screen, "cmbConcessionario")->setCurrentIndex(0); };
    run();
    EXPECT_EQ(workQuery("SELECT Descr3 FROM Parametri"), u"NULL"_s);

    before = [&] {
        auto* concessionario = control<QComboBox>(screen, "CmbConcessionario2");
        concessionario->setCurrentIndex(1);
        chosen = concessionario->currentText();
    };
    run();
    EXPECT_EQ(workQuery("SELECT Descr3 FROM Parametri"), chosen);
    EXPECT_TRUE(takeCalls()
                    .filter(u"OpenRecordset(SELECT DISTINCT nt.*"_s)
                    .value(0)
                    .endsWith(u" AND ni.CodConcessionario='"_s + chosen + u"')"_s));
}

// More notes than a 16-bit count holds: the conversion fails, its message is
// shown, the copy goes on, and the run is refused as empty.
TEST_F(Introdotto, MoreThan32767NotesAreRefusedAsEmpty) {
    const QString copy = mainDatabaseCopy();
    const auto columns = [&](const char* table) {
        return DatabaseFile::queryFile(
            copy, QByteArray("SELECT group_concat(name) FROM pragma_table_info('") + table +
                      "') WHERE name NOT IN ('id', 'IdTesta')");
    };
    const QString heads = columns("NoteTeste"), readings = columns("NoteIncassi");
    const char* first =
        "(SELECT MIN(id) FROM NoteTeste WHERE CodCausale = 'INC6' AND DataRegistrazione >= "
        "'2025-02-01' AND id IN (SELECT IdTesta FROM NoteIncassi))";
    const QString before = DatabaseFile::queryFile(copy, "SELECT MAX(id) FROM NoteTeste");
    const QString copies[] = {
        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32800) "
        u"INSERT INTO NoteTeste (%1) SELECT %1 FROM NoteTeste, n WHERE id = %2"_s.arg(heads, first),
        u"INSERT INTO NoteIncassi (IdTesta, %1) SELECT nt.id, %2 FROM NoteTeste nt, NoteIncassi "
        u"ni WHERE nt.id > %3 AND ni.id = (SELECT MIN(id) FROM NoteIncassi WHERE IdTesta = %4)"_s
            .arg(readings, u"ni."_s + readings.split(u',').join(u", ni."_s), before, first)};
    for (const QString& sql : copies)
        ASSERT_EQ(DatabaseFile::queryFile(copy, sql.toUtf8().constData()), QString());

    run(copy);
    EXPECT_EQ(messages, QStringList({u"|0|Overflow"_s, u"Lorvane|64|Nessun dato da stampare"_s}));
    EXPECT_TRUE(openedFiles.isEmpty());
    EXPECT_GT(workQuery("SELECT COUNT(*) FROM NoteTeste").toInt(), 32767);
    EXPECT_EQ(workQuery("SELECT Descr1 FROM Parametri"), u"01/01/2025"_s);
}

struct BoardsRow {
    int boards;
    int batches;
};

class BoardBatches : public Introdotto, public ::testing::WithParamInterface<BoardsRow> {};

TEST_P(BoardBatches, AHundredIdsAtATime) {
    before = [this] { control<QCheckBox>(screen, "chkSospesi")->setChecked(true); };
    run(withBoards(GetParam().boards));
    const QStringList batches =
        takeCalls().filter(u"SELECT MagSchede.* FROM MagSchede WHERE id IN ("_s);
    EXPECT_EQ(batches.size(), GetParam().batches);
    EXPECT_EQ(workQuery("SELECT COUNT(*) FROM (SELECT DISTINCT LinkScheda FROM NoteIncassi)"),
              QString::number(GetParam().boards));
    EXPECT_EQ(workQuery("SELECT COUNT(*) - COUNT(DISTINCT id) FROM MagSchede"), u"0"_s);
}

INSTANTIATE_TEST_SUITE_P(Introdotto, BoardBatches,
                         ::testing::Values(BoardsRow{100, 1}, BoardsRow{101, 2}),
                         [](const ::testing::TestParamInfo<BoardsRow>& info) {
                             return std::to_string(info.param.boards) + "Boards";
                         });

enum class Closer { CloseButton, HostRequest };

struct CloseRow {
    const char* name;
    const char* button;
    Closer closer;
    bool whilePreviewShown;  // else while the rows are copied
    int previews;
    int files;
};

class ClosedDuringTheRun : public Introdotto, public ::testing::WithParamInterface<CloseRow> {
  protected:
    // Asks for the close as the event loop would deliver it: queued.
    void askToClose() {
        if (GetParam().closer == Closer::CloseButton) {
            QMetaObject::invokeMethod(control<QPushButton>(screen, "CmdChiudi"), "click",
                                      Qt::QueuedConnection);
        } else {
            host->chiudiFinestre = true;
            QMetaObject::invokeMethod(screen, "Timer1_Timer", Qt::QueuedConnection);
        }
    }
};

// A close arriving while the click routine lets events through hides the
// screen; the routine ends as it would have, and only then is the screen
// deleted.
TEST_P(ClosedDuringTheRun, TheScreenOutlivesItsClickRoutine) {
    const CloseRow& row = GetParam();
    open();
    screen->show();
    QPointer<screens::FilterScreen> alive(screen);
    bool asked = false;
    bool deletedInTheRun = false;
    const auto closeAndLetEventsThrough = [&] {
        if (!std::exchange(asked, true)) askToClose();
        for (int pass = 0; pass < 2; ++pass) {
            QCoreApplication::processEvents();
            deletedInTheRun = deletedInTheRun || alive.isNull();
        }
    };
    if (row.whilePreviewShown) {
        onModal = [&](QWidget*) { closeAndLetEventsThrough(); };
    } else {
        platform::setEventPump(closeAndLetEventsThrough);
    }
    QTest::mouseClick(control<QPushButton>(screen, row.button), Qt::LeftButton);
    ASSERT_FALSE(deletedInTheRun);
    EXPECT_TRUE(asked);
    EXPECT_FALSE(alive->isVisible());
    EXPECT_EQ(modalWindows.size(), row.previews);
    EXPECT_EQ(openedFiles.size(), row.files);
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(alive.isNull());
}

INSTANTIATE_TEST_SUITE_P(
    Introdotto, ClosedDuringTheRun,
    ::testing::Values(
        CloseRow{"ChiudiDuringThePreviewsCopy", "CmdStampa", Closer::CloseButton, false, 1, 0},
        CloseRow{"ChiudiDuringTheExportsCopy", "CmdPdf", Closer::CloseButton, false, 0, 1},
        CloseRow{"HostRequestDuringTheExportsCopy", "CmdExportExcel", Closer::HostRequest, false, 0,
                 1},
        CloseRow{"HostRequestWhileThePreviewIsShown", "CmdStampa", Closer::HostRequest, true, 1,
                 0}),
    [](const ::testing::TestParamInfo<CloseRow>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lorvane
