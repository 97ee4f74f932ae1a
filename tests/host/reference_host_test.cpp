// The reference host over an installation folder.
#include "host/reference_host.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "db/database_fixture.h"
#include "db/recordset.h"
#include "platform/runtime_error.h"

namespace lorvane::host {
namespace {

using namespace Qt::StringLiterals;

class ReferenceHostTest : public ::testing::Test {
  protected:
    void SetUp() override {
        place(u"Lorvane.db"_s,
              "CREATE TABLE AnagraficaLocali_Tmp (CodLocale TEXT COLLATE NOCASE);"
              "CREATE TABLE operatori (id INTEGER PRIMARY KEY, Utente TEXT);"
              "INSERT INTO operatori VALUES (1, 'admin');");
        place(u"Stampe.db"_s,
              "CREATE TABLE stampe (id INTEGER PRIMARY KEY, codiceStampa TEXT, Ordine INTEGER);"
              "INSERT INTO stampe VALUES (1, 'StampaBilancio', 2), (2, 'StampaCassa', 1);");
        QDir(folder.path()).mkpath(u"pers"_s);
        place(u"pers/StampePers.db"_s,
              "CREATE TABLE stampe (id INTEGER PRIMARY KEY, codiceStampa TEXT, Ordine INTEGER);");
        place(u"Preferenze.db"_s,
              "CREATE TABLE viste (id INTEGER PRIMARY KEY, Modulo TEXT);"
              "INSERT INTO viste VALUES (1, 'AnagLocali');");
        QFile ini(folder.filePath(u"Lorvane.ini"_s));
        ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
        ini.write(
            "[Ditta]\nNome=Giochi Adriatici "
            "S.r.l.\n[Utente]\nNome=mario\n[Opzioni]\nPersonalizzazione=true\n");
    }

    void place(const QString& name, const char* script) {
        db::testing::DatabaseFile file(script);
        ASSERT_TRUE(QFile::copy(file.path(), folder.filePath(name)));
    }

    QTemporaryDir folder;
};

TEST_F(ReferenceHostTest, AnswersFromTheInstallation) {
    ReferenceHost host(folder.path());
    EXPECT_EQ(host.Percorso(), folder.path() + u'/');
    EXPECT_EQ(host.NomeDitta(), u"Giochi Adriatici S.r.l."_s);
    EXPECT_EQ(host.User(), u"mario"_s);
    EXPECT_TRUE(host.Personalizzazione());
    EXPECT_FALSE(host.ChiudiFinestre());
    host.setChiudiFinestre(true);
    EXPECT_TRUE(host.ChiudiFinestre());

    db::RecordsetPtr menu = host.OpenRecordSetMenu(u"SELECT * FROM stampe ORDER BY Ordine"_s);
    EXPECT_EQ(db::testing::recordsetText(*menu), u"2|StampaCassa|1;1|StampaBilancio|2"_s);
    EXPECT_EQ(host.OpenRecordSetPersonalizzazioni(u"SELECT * FROM stampe ORDER BY Ordine"_s)
                  ->RecordCount(),
              0);
    EXPECT_EQ(host.OpenRecordSetPreferenze(u"select * from viste"_s)->RecordCount(), 1);
    EXPECT_EQ(host.OpenRecordset(u"select * from operatori"_s)->RecordCount(), 1);
}

TEST_F(ReferenceHostTest, WritesTheMainDatabaseThroughExecuteAndRecordsets) {
    ReferenceHost host(folder.path());
    db::RecordsetPtr venues = host.OpenRecordset(u"SELECT * FROM AnagraficaLocali_Tmp"_s);
    venues->AddNew();
    venues->Fields(u"CodLocale"_s) = db::Variant(u"L1"_s);
    venues->UpdateBatch(db::Recordset::AffectAllChapters);
    EXPECT_EQ(host.OpenRecordset(u"SELECT * FROM AnagraficaLocali_Tmp"_s)->RecordCount(), 1);
    host.Execute(u"DELETE * FROM AnagraficaLocali_Tmp"_s);
    EXPECT_EQ(host.OpenRecordset(u"SELECT * FROM AnagraficaLocali_Tmp"_s)->RecordCount(), 0);
}

TEST_F(ReferenceHostTest, SettingsGiveTheDefaultUntilSavedAndSurviveANewHost) {
    {
        ReferenceHost host(folder.path());
        EXPECT_EQ(host.LeggiSettaggio(u"StampaRegistro"_s, u"Causali"_s, u"'INC6','INC','FUR'"_s),
                  u"'INC6','INC','FUR'"_s);
        EXPECT_EQ(host.LeggiSettaggio(u"StampaCassa"_s, u"Causali"_s, QString()), QString());
        QString value = u"'INC6', 'PRE'"_s;
        host.SalvaSettaggio(u"StampaCassa"_s, u"Causali"_s, value);
    }
    ReferenceHost host(folder.path());
    EXPECT_EQ(host.LeggiSettaggio(u"StampaCassa"_s, u"Causali"_s, QString()), u"'INC6', 'PRE'"_s);
}

TEST_F(ReferenceHostTest, AFolderWithoutTheMainDatabaseIsRefused) {
    QTemporaryDir empty;
    try {
        ReferenceHost host(empty.path());
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.message().contains(u"Lorvane.db"_s)) << error.what();
    }
}

}  // namespace
}  // namespace lorvane::host
