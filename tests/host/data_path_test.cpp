// The data path of a run on the demo installation: the host's recordsets of
// the main database copied into a work file by every column list, with the
// host calls in their order.
#include <gtest/gtest.h>

#include <QDir>
#include <QProgressBar>
#include <QTemporaryDir>

#include "db/database_fixture.h"
#include "engine/renderer.h"
#include "engine/report.h"
#include "entry/configura.h"
#include "host/demo/demo_data.h"
#include "host/demo/main_schema.h"
#include "platform/message_box.h"
#include "support/recording_host.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
namespace columns = workdb::columns;

class DataPathTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        installation = new QTemporaryDir;
        demo::DemoOptions options;
        options.venues = 12;
        options.months = 2;
        options.seed = 3;
        options.lastDay = QDate(2025, 3, 31);
        demo::writeDemoInstallation(installation->filePath(u"demo"_s), options);
        QDir(installation->path()).mkpath(u"demo/Modelli"_s);
        demo::createMainDatabase(installation->filePath(u"demo/Modelli/Lavoro.mdb"_s));
    }
    static void TearDownTestSuite() { delete installation; }

    void SetUp() override {
        qputenv("LORVANE_TEMP1", work.path().toUtf8());
        platform::setMessageHandler([this](const platform::Message& message) {
            messages << message.prompt;
            return platform::MsgBoxResult::Ok;
        });
        host = std::make_shared<testing::RecordingHost>(
            u"Dbq="_s + installation->filePath(u"demo/Lorvane.db"_s));
        host->percorso = installation->filePath(u"demo"_s) + u'/';
        entry::Configura().SetApplicazione(host);
    }
    void TearDown() override {
        workdb::ConnessioneTemporanea().Close();
        platform::setMessageHandler(nullptr);
        qunsetenv("LORVANE_TEMP1");
    }

    // Copies what `sql` reads through the host into `table` of the work file.
    void copy(const QString& sql, const char* list, const QString& table, int controllo = 0) {
        db::RecordsetPtr origine = entry::moduleValues().host->OpenRecordset(sql);
        db::RecordsetPtr destinazione = workdb::ApriTabellaTemporanea(u"SELECT * FROM "_s + table);
        workdb::CopiaRecordset(&bar, QLatin1String(list), *origine, *destinazione,
                               db::Variant(controllo), db::Variant(u"id"_s));
    }

    static QTemporaryDir* installation;
    QTemporaryDir work;
    std::shared_ptr<testing::RecordingHost> host;
    QStringList messages;
    QProgressBar bar;
};

QTemporaryDir* DataPathTest::installation = nullptr;

TEST_F(DataPathTest, EveryColumnListTravelsFromTheMainDatabaseToItsWorkTable) {
    const std::tuple<const char*, const char*, const char*> lists[] = {
        {"NoteTeste", "NoteTeste", columns::NoteTeste47},
        {"NoteTeste", "NoteTeste", columns::NoteTeste48},
        {"NoteTeste", "NoteTeste", columns::NoteTeste56},
        {"NoteTeste", "NoteTeste", columns::NoteTeste57},
        {"NoteRighe", "NoteRighe", columns::NoteRighe10},
        {"NoteRighe nr INNER JOIN NoteTeste nt ON nt.id = nr.IdTesta", "NoteRighe",
         columns::NoteRighe11},
        {"NoteIncassi", "NoteIncassi", columns::NoteIncassi61},
        {"NoteIncassi", "NoteIncassi", columns::NoteIncassi62},
        {"NoteIncassi", "NoteIncassi", columns::NoteIncassi76},
        {"NoteIncassi", "NoteIncassi", columns::NoteIncassi81},
        {"NoteIncassi", "NoteIncassi", columns::NoteIncassi81Saldi},
        {"NoteIncassi", "NoteIncassi", columns::NoteIncassi82},
        {"AnagraficaLocali", "AnagraficaLocali", columns::AnagraficaLocali57},
        {"AnagraficaLocali", "AnagraficaLocali_Tmp", columns::AnagraficaLocali56},
        {"AnagraficaLocali", "AnagraficaLocali", columns::AnagraficaLocali61},
        {"AnagraficaLocaliCaratteristiche", "AnagraficaLocaliCaratteristiche",
         columns::AnagraficaLocaliCaratteristiche7},
        {"AnagraficaAziende", "AnagraficaAziende", columns::AnagraficaAziende34},
        {"AnagraficaAziende", "AnagraficaAziende", columns::AnagraficaAziende35},
        {"AnagraficaOperatori", "AnagraficaOperatori", columns::AnagraficaOperatori33},
        {"AnagraficaOperatori", "AnagraficaOperatori", columns::AnagraficaOperatori22},
        {"AnagraficaConcessionari", "AnagraficaConcessionari", columns::AnagraficaConcessionari25},
        {"AnagraficaPianoConti", "AnagraficaPianoConti", columns::AnagraficaPianoConti9},
        {"MagSchede", "MagSchede", columns::MagSchede55},
        {"MagSchede", "MagSchede", columns::MagSchede59},
        {"MagSchede", "MagSchede", columns::MagSchede63},
        {"MagSchede", "MagSchede", columns::MagSchede66},
        {"MagSchede", "MagSchede", columns::MagSchede55Cambiamonete},
        {"MagMobili", "MagMobili", columns::MagMobili51},
        {"DocTeste", "DocTeste", columns::DocTeste70},
        {"DocRighe", "DocRighe", columns::DocRighe62},
        {"QuietanzaTesta", "QuietanzaTesta", columns::QuietanzaTesta32},
        {"QuietanzaRighe", "QuietanzaRighe", columns::QuietanzaRighe45},
    };
    for (const auto& [source, target, list] : lists) {
        const QString fields =
            QString::fromLatin1(source).contains(u"JOIN"_s) ? u"nr.*, nt.CodEsattore"_s : u"*"_s;
        workdb::ApriTemporaneo(host->percorso + u"Modelli\\Lavoro.mdb"_s);
        if (fields != u"*"_s) {  // the ledger's template carries the collector on its lines
            workdb::ConnessioneTemporanea().Execute(
                u"ALTER TABLE NoteRighe ADD COLUMN CodEsattore TEXT(20)"_s);
        }
        copy(u"SELECT %1 FROM %2"_s.arg(fields, QString::fromLatin1(source)), list,
             QString::fromLatin1(target));
        workdb::ConnessioneTemporanea().Close();
        EXPECT_TRUE(messages.isEmpty())
            << target << ": " << messages.join(u'\n').left(300).toStdString();
        messages.clear();
        const QString count = u"SELECT count(*) FROM %1"_s.arg(QString::fromLatin1(target));
        EXPECT_NE(db::testing::DatabaseFile::queryFile(work.filePath(u"Lavoro.mdb"_s),
                                                       count.toUtf8().constData()),
                  u"0"_s)
            << target;
    }
}

TEST_F(DataPathTest, TheWorkFileHoldsTheSameFiguresAndTheHostSawEachCall) {
    workdb::ApriTemporaneo(host->percorso + u"Modelli\\Lavoro.mdb"_s);
    copy(u"SELECT * FROM NoteTeste WHERE CodCausale = 'INC6'"_s, columns::NoteTeste47,
         u"NoteTeste"_s);
    copy(
        u"SELECT al.* FROM AnagraficaLocali al INNER JOIN NoteTeste nt ON nt.CodLocale = al.CodLocale"_s,
        columns::AnagraficaLocali57, u"AnagraficaLocali"_s, 1);
    workdb::ConnessioneTemporanea().Close();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();

    const QString main = installation->filePath(u"demo/Lorvane.db"_s);
    const QString workFile = work.filePath(u"Lavoro.mdb"_s);
    const auto query = [](const QString& file, const char* sql) {
        return db::testing::DatabaseFile::queryFile(file, sql);
    };
    EXPECT_EQ(
        query(workFile, "SELECT count(*), sum(TotIntrodotto), sum(UtileLocale) FROM NoteTeste"),
        query(main,
              "SELECT count(*), sum(TotIntrodotto), sum(UtileLocale) FROM NoteTeste WHERE "
              "CodCausale = 'INC6'"));
    EXPECT_EQ(query(workFile, "SELECT count(*) FROM AnagraficaLocali"),
              query(main, "SELECT count(DISTINCT CodLocale) FROM NoteTeste"))
        << "the key check keeps each venue once";
    EXPECT_EQ(host->calls,
              (QStringList{
                  u"OpenRecordset(SELECT * FROM NoteTeste WHERE CodCausale = 'INC6')"_s,
                  u"OpenRecordset(SELECT al.* FROM AnagraficaLocali al INNER JOIN NoteTeste nt ON "
                  "nt.CodLocale = al.CodLocale)"_s}));
}

TEST_F(DataPathTest, TheTrialBalanceHasAStandardAndAPersonalLayoutWithTheirTemplate) {
    for (const auto& [open, description] :
         {std::pair{&testing::RecordingHost::OpenRecordSetMenu, u"Bilancio di verifica"_s},
          std::pair{&testing::RecordingHost::OpenRecordSetPersonalizzazioni,
                    u"Bilancio di verifica per mastro"_s}}) {
        const QString catalogue = open == &testing::RecordingHost::OpenRecordSetMenu
                                      ? u"demo/Stampe.db"_s
                                      : u"demo/pers/StampePers.db"_s;
        testing::RecordingHost menu(QString(), u"Dbq="_s + installation->filePath(catalogue));
        db::RecordsetPtr rows = (menu.*open)(u"SELECT * FROM stampe ORDER BY Ordine"_s);
        rows->SetFilter(u"codiceStampa='StampaBilancio'"_s);
        ASSERT_EQ(rows->RecordCount(), 1);
        EXPECT_EQ(rows->Fields(u"Descrizione"_s).Value().text(), description);

        // The template copied to the work folder is what the layout reads.
        workdb::ApriTemporaneo(host->percorso + rows->Fields(u"nomeTemporaneo"_s).Value().text());
        workdb::ConnessioneTemporanea().Execute(
            u"INSERT INTO Saldi (CodiceConto, Descrizione, dare, avere, saldo) "
            "VALUES ('03.001', 'Bar Roma', 10.5, 2, 8.5)"_s);
        workdb::ConnessioneTemporanea().Execute(
            u"INSERT INTO Parametri (Parametri) VALUES ('Dal 01/01/2025 Al 31/03/2025')"_s);
        workdb::ConnessioneTemporanea().Close();
        engine::ReportPtr report = engine::Application().OpenReport(
            host->percorso + rows->Fields(u"NomeReport"_s).Value().text(), 1);
        const engine::PageDocument& pages = report->Pages();
        ASSERT_EQ(pages.pages.size(), 1u);
        QStringList texts;
        for (const engine::PlacedBand& band : pages.pages[0].bands) {
            for (const engine::Primitive& item : band.items) {
                if (const auto* text = std::get_if<engine::TextItem>(&item)) texts << text->text;
            }
        }
        EXPECT_TRUE(texts.contains(u"Dal 01/01/2025 Al 31/03/2025"_s));
        EXPECT_EQ(texts.count(u"8,50"_s), 3) << "the line, its group and the report";
    }
}

}  // namespace
}  // namespace lorvane
