// "lorvane sql" as a user runs it, on a file made with the sqlite3 shell.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "support/process.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;

using testing::ProcessResult;

ProcessResult run(const QString& program, const QStringList& args, const QByteArray& input = {}) {
    return testing::runProgram(program, args, input);
}

class LorvaneSql : public ::testing::Test {
  protected:
    void SetUp() override {
        database = folder.filePath(u"main.db"_s);
        const ProcessResult made = run(u"sqlite3"_s, {database}, R"sql(
CREATE TABLE NoteTeste (id INTEGER PRIMARY KEY, DataRegistrazione DATETIME, CodLocale TEXT,
  Chiuso BOOLEAN, TotIntrodotto CURRENCY, Descrizione TEXT);
INSERT INTO NoteTeste VALUES (1, '2024-01-10 00:00:00', 'L1', -1, 1234.5, 'Incasso, settimana 2'),
  (2, '2024-01-31 00:00:00', 'L1', 0, 10, NULL), (3, '2024-02-01 00:00:00', 'L2', NULL, 0.25, 'dice "ok"');
)sql");
        ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();
    }

    ProcessResult lorvane(const QString& statement) {
        return run(QString::fromUtf8(LORVANE_PROGRAM), {u"sql"_s, database, statement});
    }
    QString shell(const QString& sql) { return run(u"sqlite3"_s, {database, sql}).out.trimmed(); }

    QTemporaryDir folder;
    QString database;
};

TEST_F(LorvaneSql, PrintsTypedHeaderAndRowsAsCsv) {
    const ProcessResult result = lorvane(
        u"SELECT id, DataRegistrazione, Chiuso, TotIntrodotto, Descrizione "
        "FROM NoteTeste WHERE DataRegistrazione >= #01/01/2024# ORDER BY id"_s);
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out,
              u"id:3,DataRegistrazione:7,Chiuso:11,TotIntrodotto:6,Descrizione:202\n"
              "1,10/01/2024,Vero,\"1234,5\",\"Incasso, settimana 2\"\n"
              "2,31/01/2024,Falso,10,\n"
              "3,01/02/2024,,\"0,25\",\"dice \"\"ok\"\"\"\n"_s);
}

TEST_F(LorvaneSql, PrintsTheRowsAWriteChanged) {
    const ProcessResult result =
        lorvane(u"UPDATE NoteTeste SET Chiuso = True WHERE CodLocale = 'l1'"_s);
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out, u"2\n"_s);
    EXPECT_EQ(shell(u"SELECT group_concat(Chiuso) FROM NoteTeste WHERE CodLocale = 'L1'"_s),
              u"-1,-1"_s);
    EXPECT_EQ(lorvane(u"DELETE * FROM NoteTeste WHERE id = 3"_s).out, u"1\n"_s);
}

TEST_F(LorvaneSql, FailsWithStatusTwoAndTheErrorText) {
    const std::pair<QStringList, QString> cases[] = {
        {{u"sql"_s, database, u"SELECT * FROM Nessuna"_s}, u"Tabella 'Nessuna' inesistente"_s},
        {{u"sql"_s, database, u"DELETE * FROM NoteTeste; DELETE * FROM NoteTeste"_s},
         u"una sola istruzione"_s},
        {{u"sql"_s, folder.filePath(u"manca.db"_s), u"SELECT 1"_s}, u"manca.db"_s},
        {{u"sql"_s, database}, u"uso: lorvane sql"_s},
    };
    for (const auto& [args, message] : cases) {
        const ProcessResult result = run(QString::fromUtf8(LORVANE_PROGRAM), args);
        EXPECT_EQ(result.exitCode, 2) << args.join(u' ').toStdString();
        EXPECT_TRUE(result.err.contains(message)) << result.err.toStdString();
        EXPECT_TRUE(result.out.isEmpty());
    }
    EXPECT_EQ(shell(u"SELECT count(*) FROM NoteTeste"_s), u"3"_s);
}

}  // namespace
}  // namespace lorvane
