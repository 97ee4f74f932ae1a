// Measures the venue's documents.
//
//   documenti_bench [--venues N] [--repeat R] [--check]
//
// Targets: the amount in words over every whole amount from 0 to 10,000,000
// and 1,000,000 random amounts with cents, under 1 µs a call on average, with
// no allocation through operator new (the result's text aside, which Qt
// allocates itself); beside it the same amounts written "0.00" by
// QString::number, an anchor of the same run. The deeds of quittance
// ("StampaAttoQuietanza") with "Tutti i locali" on a demo installation of 500
// venues over a year, prepared in at most 3x the same statements through the
// raw SQLite API into a fresh copy of its template, the main database
// attached, two prepared statements per venue.
#include <sqlite3.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <new>

#include "generated_table.h"
#include "host/demo/demo_data.h"
#include "platform/clock.h"
#include "platform/windows_paths.h"
#include "reports/documents/importo_in_lettere.h"
#include "screen_runner.h"
#include "workdb/column_lists.h"

namespace {
std::atomic<long> allocations{0};
}

// Every operator new of the program is counted, to see that the amount in
// words makes none.
void* operator new(std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using namespace lorvane;
using namespace lorvane::bench;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

const QDate LastDay(2025, 12, 31);
const QDate FirstDay(2025, 1, 1);

// The amounts of the words benchmark: every whole amount, then random cents.
std::vector<double> amounts() {
    std::vector<double> list;
    list.reserve(11'000'001);
    for (int whole = 0; whole <= 10'000'000; ++whole)
        list.push_back(whole);
    QRandomGenerator random(15);
    for (int i = 0; i < 1'000'000; ++i)
        list.push_back(double(random.bounded(1'000'000'000)) / 100.0);
    return list;
}

// Seconds to write every amount with `write`; `length` sums the texts' lengths.
template <typename Write>
double writeAll(const std::vector<double>& list, qint64& length, Write write) {
    length = 0;
    const auto start = Clock::now();
    for (double amount : list)
        length += write(amount).size();
    return seconds(start);
}

bool wordsBenchmark(int repeat) {
    const std::vector<double> list = amounts();
    const double calls = double(list.size());
    qint64 wordsLength = 0, anchorLength = 0;
    long madeNew = 0;
    const double words = best(repeat, [&] {
        const long before = allocations.load();
        const double took = writeAll(list, wordsLength, [](double amount) {
            return reports::ModSommeConsegnate::ImportoInLettere(amount, u"/"_s);
        });
        madeNew = allocations.load() - before;
        return took;
    });
    const double anchor = best(repeat, [&] {
        return writeAll(list, anchorLength,
                        [](double amount) { return QString::number(amount, 'f', 2); });
    });
    const double perCall = words / calls * 1e9;
    const bool met = perCall < 1000 && madeNew == 0;
    std::printf("ImportoInLettere over %.0f amounts (best of %d)\n", calls, repeat);
    std::printf("  %7.3f s, %6.1f ns a call (< 1000), %ld operator new   %s\n", words, perCall,
                madeNew, verdict(met));
    std::printf(
        "  anchor QString::number \"0.00\": %7.3f s, %6.1f ns a call; words = %4.2f x "
        "anchor (%lld and %lld characters)\n",
        anchor, anchor / calls * 1e9, words / anchor, wordsLength, anchorLength);
    return met;
}

QString writeInstallation(const QString& folder, int venues, int months) {
    demo::DemoOptions options;
    options.venues = venues;
    options.months = months;
    options.lastDay = LastDay;
    const double took = timed([&] { demo::writeDemoInstallation(folder, options); });
    std::printf("demo installation: %d venues, %d months to %s, written in %.1f s\n", venues,
                months, qPrintable(LastDay.toString(u"dd/MM/yyyy"_s)), took);
    return folder;
}

// The copy of the columns `list` of `table` from the main database.
QString insertSelect(const char* table, const char* list, const QString& where) {
    return u"INSERT INTO %1 (%2) SELECT %2 FROM m.%1 %3"_s.arg(QLatin1String(table),
                                                               QLatin1String(list), where);
}

void step(sqlite3* db, sqlite3_stmt* statement, const QByteArray& value, int parameters) {
    for (int i = 1; i <= parameters; ++i)
        sqlite3_bind_text(statement, i, value.constData(), int(value.size()), SQLITE_TRANSIENT);
    if (sqlite3_step(statement) != SQLITE_DONE) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(db));
        std::exit(2);
    }
    sqlite3_reset(statement);
}

sqlite3_stmt* prepared(sqlite3* db, const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(db));
        std::exit(2);
    }
    return statement;
}

// Seconds to copy the template and fill it as the deeds' preparation does with
// every venue not suspended.
double anchorDeeds(const QString& installation, const QString& target) {
    namespace columns = workdb::columns;
    const auto start = Clock::now();
    QFile::remove(target);
    QFile::copy(installation + u"/Report/AttoQuietanza.mdb"_s, target);
    sqlite3* work = openRaw(target);
    exec(work, u"ATTACH DATABASE '%1' AS m"_s.arg(installation + u"/Lorvane.db"_s));
    exec(work, u"BEGIN"_s);
    exec(work, u"DELETE FROM m.AnagraficaLocali_Tmp"_s);
    exec(work,
         u"INSERT INTO m.AnagraficaLocali_Tmp (%1) SELECT %1 FROM m.AnagraficaLocali WHERE "
         u"Sospeso = 0"_s.arg(QLatin1String(columns::AnagraficaLocali56)));
    exec(work,
         insertSelect("AnagraficaLocali", columns::AnagraficaLocali56, u"WHERE Sospeso = 0"_s));
    sqlite3_stmt* codes = prepared(
        work, insertSelect("AnagraficaLocaliCaratteristiche",
                           columns::AnagraficaLocaliCaratteristiche7, u"WHERE CodLocale = ?"_s));
    sqlite3_stmt* owner =
        prepared(work, insertSelect("AnagraficaOperatori", columns::AnagraficaOperatori22,
                                    u"WHERE Mansione = 'Titolare' AND codiceOperatore = ? AND "
                                    u"NOT EXISTS (SELECT 1 FROM AnagraficaOperatori WHERE "
                                    u"codiceOperatore = ?)"_s));
    sqlite3_stmt* venues = prepared(work, u"SELECT CodLocale, codTitolare FROM AnagraficaLocali"_s);
    while (sqlite3_step(venues) == SQLITE_ROW) {
        const auto text = [&](int column) {
            const auto* value = sqlite3_column_text(venues, column);
            return QByteArray(value ? reinterpret_cast<const char*>(value) : "");
        };
        step(work, codes, text(0), 1);
        step(work, owner, text(1), 2);
    }
    sqlite3_finalize(venues);
    sqlite3_finalize(codes);
    sqlite3_finalize(owner);
    exec(work, insertSelect("AnagraficaAziende", columns::AnagraficaAziende34, QString()));
    const QString period = u"DataDoc >= '%1' AND DataDoc <= '%2 00:00:00'"_s.arg(
        FirstDay.toString(u"yyyy-MM-dd"_s), LastDay.toString(u"yyyy-MM-dd"_s));
    exec(work, insertSelect("DocTeste", columns::DocTeste70, u"WHERE TipoDoc = 8 AND "_s + period));
    exec(work,
         insertSelect("DocRighe", columns::DocRighe62,
                      u"WHERE IdDoc IN (SELECT id FROM m.DocTeste WHERE "_s + period + u")"_s));
    exec(work, u"COMMIT"_s);
    sqlite3_close(work);
    return seconds(start);
}

// "venues/codes/owners/heads/lines" of a filled deeds' work file.
QString deedCounts(const QString& path) {
    return rowCounts(path, {"AnagraficaLocali", "AnagraficaLocaliCaratteristiche",
                            "AnagraficaOperatori", "DocTeste", "DocRighe"});
}

bool deedsBenchmark(const QString& installation, int repeat) {
    const QString anchorFile = QFileInfo(installation).dir().filePath(u"anchor.mdb"_s);
    ScreenRunner runs(installation);
    runs.open(u"StampaAttoQuietanza"_s);
    runs.act(host::ScreenAction::Kind::Set, u"txtDallaData"_s, FirstDay.toString(u"dd/MM/yyyy"_s));
    runs.act(host::ScreenAction::Kind::Set, u"txtAllaData"_s, LastDay.toString(u"dd/MM/yyyy"_s));
    const double anchor = best(repeat, [&] { return anchorDeeds(installation, anchorFile); });
    const QString expected = deedCounts(anchorFile);
    const double report = best(repeat, [&] { return runs.prepare(); });
    const QString counts = deedCounts(platform::workFolder() + u"/AttoQuietanza.mdb"_s);
    const bool rows = counts == expected && runs.failure.isEmpty();
    const double factor = report / anchor;
    std::printf("\nStampaAttoQuietanza, all venues, %s to %s (best of %d)\n",
                qPrintable(FirstDay.toString(u"dd/MM/yyyy"_s)),
                qPrintable(LastDay.toString(u"dd/MM/yyyy"_s)), repeat);
    std::printf("  rows (venues/codes/owners/heads/lines) anchor %s, report %s%s   %s\n",
                qPrintable(expected), qPrintable(counts),
                runs.failure.isEmpty() ? "" : qPrintable(u", failed: "_s + runs.failure),
                verdict(rows));
    std::printf("  anchor %7.3f s, PreparaStampa %7.3f s = %5.2f x anchor (<= 3)   %s\n", anchor,
                report, factor, verdict(factor <= 3));
    return rows && factor <= 3;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const bench::ScreenBenchOptions command = bench::readOptions(app.arguments());
    QTemporaryDir folder;
    useBenchFolder(folder.path(), LastDay);

    bool ok = wordsBenchmark(command.repeat);
    const QString year = writeInstallation(folder.filePath(u"anno"_s), command.venues, 12);
    ok = deedsBenchmark(year, command.repeat) && ok;

    std::printf("\n%s\n", ok ? "targets met" : "TARGET MISSED");
    return command.check && !ok ? 1 : 0;
}
