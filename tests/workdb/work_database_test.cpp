// ApriTemporaneo: the template copied into the work folder, then the module's
// connection opened on the copy.
#include "workdb/work_database.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "db/database_fixture.h"
#include "platform/runtime_error.h"
#include "support/failing_disk.h"

namespace lorvane::workdb {
namespace {

using namespace Qt::StringLiterals;

class ApriTemporaneoTest : public ::testing::Test {
  protected:
    void SetUp() override {
        qputenv("LORVANE_TEMP1", work.path().toUtf8());
        QDir(templates.path()).mkpath(u"modelli"_s);
        makeTemplate(u"modelli/Bilancio.mdb"_s, "nuovo");
    }
    void TearDown() override {
        ConnessioneTemporanea().Close();
        qunsetenv("LORVANE_TEMP1");
    }

    void makeTemplate(const QString& name, const char* mark) {
        const QString path = templates.filePath(name);
        QFile::remove(path);
        db::testing::DatabaseFile file(
            (u"CREATE TABLE Parametri (Parametri TEXT); INSERT INTO Parametri VALUES ('"_s +
             QString::fromLatin1(mark) + u"');"_s)
                .toUtf8()
                .constData());
        ASSERT_TRUE(QFile::copy(file.path(), path));
    }
    // The Windows-form path the catalogue gives: Percorso, then the template's own path.
    QString templatePath(const QString& name) const { return templates.path() + u'/' + name; }
    QString workRows() {
        db::RecordsetPtr rows =
            ConnessioneTemporanea().OpenRecordset(u"SELECT Parametri FROM Parametri"_s);
        return db::testing::recordsetText(*rows);
    }

    QTemporaryDir work;
    QTemporaryDir templates;
};

TEST_F(ApriTemporaneoTest, CopiesTheTemplateOverTheWorkFileAndOpensIt) {
    makeTemplate(u"vecchio.mdb"_s, "vecchio");
    ASSERT_TRUE(
        QFile::copy(templates.filePath(u"vecchio.mdb"_s), work.filePath(u"Bilancio.mdb"_s)));
    ApriTemporaneo(templatePath(u"modelli\\Bilancio.mdb"_s));
    EXPECT_TRUE(ConnessioneTemporanea().IsOpen());
    EXPECT_EQ(QFileInfo(ConnessioneTemporanea().FilePath()).fileName(), u"Bilancio.mdb"_s);
    EXPECT_EQ(workRows(), u"nuovo"_s);
    ConnessioneTemporanea().Close();
    EXPECT_TRUE(QFile::exists(work.filePath(u"Bilancio.mdb"_s)))
        << "nothing is deleted after a run";
}

TEST_F(ApriTemporaneoTest, AWorkFileStillOpenFromABrokenRunIsKeptWithItsRows) {
    ApriTemporaneo(templatePath(u"modelli/Bilancio.mdb"_s));
    ConnessioneTemporanea().Execute(u"INSERT INTO Parametri VALUES ('di una corsa interrotta')"_s);
    makeTemplate(u"modelli/Bilancio.mdb"_s, "rifatto");
    ApriTemporaneo(templatePath(u"modelli/Bilancio.mdb"_s));
    EXPECT_EQ(workRows(), u"nuovo;di una corsa interrotta"_s);
    ConnessioneTemporanea().Close();
    ApriTemporaneo(templatePath(u"modelli/Bilancio.mdb"_s));
    EXPECT_EQ(workRows(), u"rifatto"_s) << "once closed, the next run gets a clean copy";
}

TEST_F(ApriTemporaneoTest, AMissingTemplateKeepsTheEarlierWorkFile) {
    ApriTemporaneo(templatePath(u"modelli/Bilancio.mdb"_s));
    ConnessioneTemporanea().Close();
    QFile::remove(templates.filePath(u"modelli/Bilancio.mdb"_s));
    ApriTemporaneo(templatePath(u"modelli/Bilancio.mdb"_s));
    EXPECT_EQ(workRows(), u"nuovo"_s);
}

TEST_F(ApriTemporaneoTest, WithoutTemplateOrWorkFileTheOpenFails) {
    const QString cases[] = {templatePath(u"modelli/Manca.mdb"_s), templatePath(QString()),
                             u"SenzaCartella.mdb"_s};
    for (const QString& path : cases) {
        EXPECT_THROW(ApriTemporaneo(path), RuntimeError) << path.toStdString();
        EXPECT_FALSE(ConnessioneTemporanea().IsOpen());
    }
}

// Why the work file is not there: the template is missing, or the work folder
// is missing or cannot be written; each named.
TEST_F(ApriTemporaneoTest, AMissingWorkFileIsToldWithItsCause) {
    const lorvane::testing::SmallTmpfs readOnly(64 * 1024, true);
    struct Case {
        const char* name;
        QString workFolder;
        QString templateName;
        QString cause;
    };
    const QString missingFolder = work.filePath(u"manca"_s);
    const QString missingTemplate = templatePath(u"modelli/Manca.mdb"_s);
    std::vector<Case> cases = {
        {"MissingTemplate", work.path(), u"modelli/Manca.mdb"_s,
         u"il modello '%1' non esiste"_s.arg(missingTemplate)},
        {"MissingWorkFolder", missingFolder, u"modelli/Bilancio.mdb"_s,
         u"la cartella di lavoro '%1' non esiste"_s.arg(missingFolder)},
    };
    if (readOnly.mounted()) {
        cases.push_back({"ReadOnlyWorkFolder", readOnly.path(), u"modelli/Bilancio.mdb"_s,
                         u"la cartella di lavoro '%1' è di sola lettura"_s.arg(readOnly.path())});
    }
    for (const Case& c : cases) {
        qputenv("LORVANE_TEMP1", c.workFolder.toUtf8());
        try {
            ApriTemporaneo(templatePath(c.templateName));
            ADD_FAILURE() << c.name << ": no error";
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().startsWith(u"Impossibile trovare il file di database"_s))
                << error.what();
            EXPECT_TRUE(error.message().contains(c.cause)) << c.name << ": " << error.what();
        }
    }
}

TEST_F(ApriTemporaneoTest, TheScreensSpellingsOfTheWorkFolderAllReachIt) {
    ApriTemporaneo(templatePath(u"modelli/Bilancio.mdb"_s), u"C:\\temp1\\"_s, u"C:\\temp1\\"_s);
    EXPECT_EQ(workRows(), u"nuovo"_s);
    EXPECT_TRUE(
        ConnessioneTemporanea().ConnectionString().contains(u"Dbq=C:\\temp1\\Bilancio.mdb;"_s));
}

TEST(TemplateFileName, IsWhatStandsAfterTheLastSeparator) {
    const std::pair<const char*, const char*> cases[] = {
        {"C:\\Lorvane\\Report\\Bil.mdb", "Bil.mdb"},
        {"/opt/lorvane/x\\y.mdb", "y.mdb"},
        {"/opt/lorvane/Bil.mdb", "Bil.mdb"},
        {"/opt/lorvane/", ""},
        {"Bil.mdb", ""},
        {"", ""}};
    for (const auto& [path, name] : cases) {
        EXPECT_EQ(templateFileName(QString::fromUtf8(path)), QString::fromUtf8(name)) << path;
    }
}

}  // namespace
}  // namespace lorvane::workdb
