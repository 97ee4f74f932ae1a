// The logging host: one line a call, written before the call passes on, and
// on disk at once.
#include "host/logging_host.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "db/database_fixture.h"
#include "support/recording_host.h"

// Texts in failure messages as text, not as bytes.
static void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace lorvane::host {
namespace {

using namespace Qt::StringLiterals;

TEST(LoggingHost, WritesEveryCallOnALineOfItsOwnAndPassesItOn) {
    db::testing::DatabaseFile main("CREATE TABLE t (a INTEGER); INSERT INTO t VALUES (7);");
    auto inner =
        std::make_shared<testing::RecordingHost>(main.connectionText(), main.connectionText());
    inner->settings.insert(u"Stampe/Ultima"_s, u"Bilancio"_s);
    QTemporaryDir folder;
    const QString path = folder.filePath(u"host.log"_s);
    auto file = std::make_unique<QFile>(path);
    ASSERT_TRUE(file->open(QIODevice::WriteOnly));
    LoggingHost host(inner, std::move(file));
    // Read by another handle while the host is alive: each line is already there.
    const auto written = [&path] {
        QFile log(path);
        return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : u"?"_s;
    };

    EXPECT_EQ(host.User(), u"tester"_s);
    EXPECT_EQ(written(), u"User\t\n"_s);
    QString valore = u"riga uno\r\nriga due\nfine"_s;
    host.SalvaSettaggio(u"Stampe"_s, u"Nota"_s, valore);
    EXPECT_EQ(host.LeggiSettaggio(u"Stampe"_s, u"Ultima"_s, u""_s), u"Bilancio"_s);
    host.Execute(u"UPDATE t\r\nSET a = 8"_s);
    EXPECT_FALSE(host.OpenRecordset(u"SELECT a FROM t WHERE a = 8"_s)->Eof());
    host.OpenRecordSetMenu(u"SELECT a FROM t"_s);
    host.OpenRecordSetPersonalizzazioni(u"SELECT a\rFROM t"_s);
    host.OpenRecordSetPreferenze(u"SELECT a FROM t"_s);
    EXPECT_FALSE(host.ChiudiFinestre());
    EXPECT_EQ(host.NomeDitta(), u"Ditta di prova"_s);
    EXPECT_EQ(host.Percorso(), u"/installazione/"_s);
    EXPECT_FALSE(host.Personalizzazione());

    EXPECT_EQ(written(),
              u"User\t\n"
              u"SalvaSettaggio\tStampe\tNota\triga uno riga due fine\n"
              u"LeggiSettaggio\tStampe\tUltima\t\n"
              u"Execute\tUPDATE t SET a = 8\n"
              u"OpenRecordset\tSELECT a FROM t WHERE a = 8\n"
              u"OpenRecordSetMenu\tSELECT a FROM t\n"
              u"OpenRecordSetPersonalizzazioni\tSELECT a FROM t\n"
              u"OpenRecordSetPreferenze\tSELECT a FROM t\n"
              u"ChiudiFinestre\t\n"
              u"NomeDitta\t\n"
              u"Percorso\t\n"
              u"Personalizzazione\t\n"_s);
    EXPECT_EQ(inner->calls.size(), 12);
    EXPECT_EQ(inner->settings.value(u"Stampe/Nota"_s), valore) << "the value passes unchanged";
}

}  // namespace
}  // namespace lorvane::host
