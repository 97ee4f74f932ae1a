// Opening connections, and the guards on what a statement may do.
#include "db/connection.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>

#include "database_fixture.h"
#include "platform/runtime_error.h"

namespace lorvane::db {
namespace {

using namespace Qt::StringLiterals;
using testing::DatabaseFile;

constexpr char schema[] = R"sql(
CREATE TABLE AnagraficaLocali (id INTEGER PRIMARY KEY, CodLocale TEXT COLLATE NOCASE,
  Insegna TEXT COLLATE NOCASE);
INSERT INTO AnagraficaLocali VALUES (1, 'L1', 'Bar Roma'), (2, 'L2', 'Caffè Sport');
CREATE TABLE AnagraficaLocali_Tmp (CodLocale TEXT COLLATE NOCASE, Insegna TEXT COLLATE NOCASE);
INSERT INTO AnagraficaLocali_Tmp VALUES ('L1', 'Bar Roma');
)sql";

TEST(ConnectionText, GivesTheFileOfDbq) {
    const std::pair<const char*, const char*> cases[] = {
        {"Driver={Microsoft Access Driver (*.mdb)};Dbq=c:\\temp1\\Bil.mdb;Uid=Admin;Pwd=;",
         "c:\\temp1\\Bil.mdb"},
        {"DRIVER={x;y};DBQ=/tmp/a b.db;", "/tmp/a b.db"},
        {"Provider=x;Data Source=\"/tmp/c.db\"", "/tmp/c.db"},
        {"Driver={Microsoft Access Driver (*.mdb)};Uid=Admin;", ""},
    };
    for (const auto& [text, file] : cases) {
        EXPECT_EQ(Connection::fileFromConnectionText(QString::fromUtf8(text)),
                  QString::fromUtf8(file))
            << text;
    }
}

class ConnectionTest : public ::testing::Test {
  protected:
    DatabaseFile file{schema};
    Connection connection;
};

TEST_F(ConnectionTest, OpensClosesAndClosingTwiceIsHarmless) {
    EXPECT_EQ(connection.State(), Connection::StateClosed);
    connection.Close();
    connection.Open(file.connectionText());
    EXPECT_EQ(connection.State(), Connection::StateOpen);
    EXPECT_EQ(connection.FilePath(), file.path());
    connection.Close();
    connection.Close();
    EXPECT_FALSE(connection.IsOpen());
    EXPECT_THROW(connection.Execute(u"DELETE * FROM AnagraficaLocali"_s), RuntimeError);
    connection.Open();  // the connection text is kept
    EXPECT_TRUE(connection.IsOpen());
}

TEST_F(ConnectionTest, WorkFolderPathsMapToTheWorkFolder) {
    qputenv("LORVANE_TEMP1", file.folder().toUtf8());
    connection.Open(
        u"Driver={Microsoft Access Driver (*.mdb)};Dbq=C:\\TEMP1\\test.db;Uid=Admin;Pwd=;"_s);
    qunsetenv("LORVANE_TEMP1");
    EXPECT_EQ(QDir::cleanPath(connection.FilePath()), QDir::cleanPath(file.path()));
    EXPECT_EQ(connection.Execute(u"DELETE * FROM AnagraficaLocali_Tmp"_s), 1);
}

TEST_F(ConnectionTest, MissingOrBrokenFilesAreNamedInTheError) {
    const QString missing = file.folder() + u"/nessuno.mdb"_s;
    const QString broken = file.folder() + u"/rotto.mdb"_s;
    QFile text(broken);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(4096, 'x'));
    text.close();
    const QString texts[] = {u"Dbq="_s + missing + u';', u"Dbq="_s + broken + u';',
                             u"Dbq="_s + file.folder()};
    for (const QString& connectionText : texts) {
        try {
            connection.Open(connectionText);
            ADD_FAILURE() << "opened " << connectionText.toStdString();
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(
                error.message().contains(Connection::fileFromConnectionText(connectionText)))
                << error.what();
        }
        EXPECT_FALSE(connection.IsOpen());
    }
    EXPECT_FALSE(QFile::exists(missing)) << "opening never creates a file";
    EXPECT_THROW(connection.Open(u"Driver={x};Uid=Admin;"_s), RuntimeError);
}

TEST_F(ConnectionTest, ASecondStatementNeverRuns) {
    connection.Open(file.connectionText());
    const char* statements[] = {
        "DELETE * FROM AnagraficaLocali_Tmp; DELETE * FROM AnagraficaLocali",
        "DELETE * FROM AnagraficaLocali_Tmp;DELETE * FROM AnagraficaLocali;",
        "UPDATE AnagraficaLocali_Tmp SET Insegna = 'x'; DROP TABLE AnagraficaLocali",
        "SELECT * FROM AnagraficaLocali_Tmp; DELETE * FROM AnagraficaLocali",
    };
    for (const char* sql : statements) {
        try {
            connection.Execute(QString::fromUtf8(sql));
            ADD_FAILURE() << sql << " accepted";
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(u"una sola istruzione"_s)) << error.what();
        }
        EXPECT_THROW(connection.OpenRecordset(QString::fromUtf8(sql)), RuntimeError) << sql;
    }
    EXPECT_EQ(file.query("SELECT count(*) FROM AnagraficaLocali_Tmp WHERE Insegna = 'Bar Roma'"),
              u"1"_s);
    EXPECT_EQ(file.query("SELECT count(*) FROM AnagraficaLocali"), u"2"_s);
}

TEST_F(ConnectionTest, TheReadPathRefusesStatementsThatWrite) {
    connection.Open(file.connectionText());
    const char* writes[] = {
        "DELETE * FROM AnagraficaLocali", "UPDATE AnagraficaLocali SET Insegna = 'x'",
        "INSERT INTO AnagraficaLocali_Tmp SELECT CodLocale, Insegna FROM AnagraficaLocali",
        "DROP TABLE AnagraficaLocali"};
    for (const char* sql : writes) {
        try {
            connection.OpenRecordset(QString::fromUtf8(sql));
            ADD_FAILURE() << sql << " accepted";
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(u"lettura"_s)) << error.what();
        }
    }
    EXPECT_EQ(file.query("SELECT count(*) FROM AnagraficaLocali WHERE Insegna <> 'x'"), u"2"_s);
    EXPECT_EQ(file.query("SELECT count(*) FROM AnagraficaLocali_Tmp"), u"1"_s);
}

TEST_F(ConnectionTest, AUsersApostropheCanBreakAStatementButNeverMakeItWrite) {
    connection.Open(file.connectionText());
    const char* typed[] = {
        "x'; DELETE * FROM AnagraficaLocali; SELECT '",
        "x' OR 1=1; DELETE * FROM AnagraficaLocali_Tmp WHERE '1'='1",
        "O'Brien",
        "x' UNION SELECT CodLocale, Insegna, 1 FROM AnagraficaLocali_Tmp WHERE 'a' LIKE '",
    };
    for (const char* text : typed) {
        const QString sql = u"SELECT * FROM AnagraficaLocali WHERE Insegna like '%"_s +
                            QString::fromUtf8(text) + u"%'"_s;
        try {
            RecordsetPtr recordset = connection.OpenRecordset(sql);
            recordset->Close();
        } catch (const RuntimeError&) {
            // a broken statement is the legacy behaviour
        }
        const QString update =
            u"UPDATE AnagraficaLocali_Tmp SET Insegna = '"_s + QString::fromUtf8(text) + u"'"_s;
        try {
            connection.Execute(update);
        } catch (const RuntimeError&) {
        }
    }
    EXPECT_EQ(file.query("SELECT count(*) FROM AnagraficaLocali"), u"2"_s);
    EXPECT_EQ(file.query("SELECT count(*) FROM AnagraficaLocali_Tmp"), u"1"_s);
}

TEST_F(ConnectionTest, ATableOpenedThroughTheReadPathStillTakesNewRows) {
    connection.Open(file.connectionText());
    RecordsetPtr recordset = connection.OpenRecordset(u"SELECT * FROM AnagraficaLocali_Tmp"_s);
    recordset->AddNew();
    recordset->Fields(u"CodLocale"_s) = u"L2"_s;
    recordset->Fields(u"Insegna"_s) = u"Caffè Sport"_s;
    recordset->Update();
    recordset->UpdateBatch(Recordset::AffectAll);
    EXPECT_EQ(file.query("SELECT CodLocale FROM AnagraficaLocali_Tmp ORDER BY CodLocale"),
              u"L1;L2"_s);
}

TEST_F(ConnectionTest, AnotherReaderSeesWritesOnceCommittedOrClosed) {
    connection.Open(file.connectionText());
    RecordsetPtr recordset = connection.OpenRecordset(u"SELECT * FROM AnagraficaLocali_Tmp"_s);
    recordset->AddNew();
    recordset->Fields(u"CodLocale"_s) = u"L3"_s;
    recordset->Update();
    connection.Close();
    EXPECT_EQ(file.query("SELECT count(*) FROM AnagraficaLocali_Tmp"), u"2"_s);
}

// Another program holds the file: the first statement waits a bounded time
// for it, then the message names the file and the lock; once the lock is gone
// statements run again.
TEST_F(ConnectionTest, ALockedDatabaseIsNamedInTheError) {
    static QStringList warnings;
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { warnings << text; });
    connection.Open(file.connectionText());
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(file.path().toUtf8().constData(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            connection.Execute(u"DELETE * FROM AnagraficaLocali_Tmp"_s);
            ADD_FAILURE() << "no error while locked";
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().startsWith(
                u"Il database '%1' è bloccato"_s.arg(QDir::toNativeSeparators(file.path()))))
                << error.what();
            EXPECT_TRUE(error.message().contains(u"DELETE * FROM AnagraficaLocali_Tmp"_s));
        }
    }
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    EXPECT_EQ(connection.Execute(u"DELETE * FROM AnagraficaLocali_Tmp"_s), 1);
    qInstallMessageHandler(previous);
    EXPECT_EQ(warnings, QStringList()) << "the message is built without a missing argument";
}

}  // namespace
}  // namespace lorvane::db
