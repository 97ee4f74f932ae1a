// Measures the notes reports on a demo installation of 500 venues over a year.
//
//   note_bench [--venues N] [--repeat R] [--check]
//
// Targets, each against an anchor measured in the same run on the raw SQLite
// API, the two timed in turns: "Acconti" with every advance open and 2,000 of them to repair, the
// preparation (its walk sends one host statement and one Execute per note and
// shows each repair through the message seam, which answers it) at most 3x
// the same statements run alone; "DifferenzaPreu" and "IntrodottoDistinta"
// over the year, the preparation at most 3x its statements as INSERT ...
// SELECT into a fresh copy of the template, the main database attached.
#include <sqlite3.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>

#include "generated_table.h"
#include "platform/clock.h"
#include "platform/windows_paths.h"
#include "screen_runner.h"
#include "workdb/column_lists.h"

namespace {

using namespace lorvane;
using namespace lorvane::bench;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;
using host::ScreenAction;

const QDate LastDay(2025, 12, 31);
const QDate FirstDay(2025, 1, 1);
constexpr int ToRepair = 2000;
constexpr char Added[] = "Acconto da registrare";

QString columns(const char* list) { return QLatin1String(list); }
QString prefixed(const char* list, const QString& alias) {
    return alias + u'.' + columns(list).split(u',').join(u", "_s + alias + u'.');
}
QString period(const char* column) {
    return u"%1 >= '%2' AND %1 <= '%3 00:00:00'"_s.arg(QLatin1String(column),
                                                       FirstDay.toString(u"yyyy-MM-dd"_s),
                                                       LastDay.toString(u"yyyy-MM-dd"_s));
}

// Every advance open, the old ones' amounts stored, and `ToRepair` new ones
// on the venues in use with their amount on the cash account only.
void openEveryAdvance(const QString& installation) {
    sqlite3* db = openRaw(installation + u"/Lorvane.db"_s);
    const QString cash =
        u"(SELECT SUM(Avere) - SUM(Dare) FROM NoteRighe r WHERE r.IdTesta = NoteTeste.id AND "
        u"r.CodConto = (SELECT CassaAcconti FROM TabAssociazioneConti))"_s;
    exec(db, u"BEGIN"_s);
    exec(db, u"UPDATE NoteTeste SET Chiuso = 0 WHERE CodCausale = 'ACC'"_s);
    exec(db,
         u"UPDATE NoteTeste SET Acconto = %1 WHERE CodCausale = 'ACC' AND ifnull(Acconto, "
         u"0) = 0 AND %1 IS NOT NULL"_s.arg(cash));
    exec(db,
         u"WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < %1 - 1), v "
         u"AS (SELECT CodLocale, CodiceAzienda, ROW_NUMBER() OVER (ORDER BY CodLocale) - 1 AS k, "
         u"COUNT(*) OVER () AS c FROM AnagraficaLocali WHERE Sospeso = 0) INSERT INTO NoteTeste "
         u"(DataRegistrazione, CodLocale, CodCausale, Descrizione, CodiceAzienda, Chiuso, "
         u"Acconto) SELECT strftime('%Y-%m-%d 00:00:00', '%2', '+' || (i % 365) || ' days'), "
         u"v.CodLocale, 'ACC', '%3', v.CodiceAzienda, 0, 0 FROM n JOIN v ON v.k = n.i % v.c"_s
             .arg(ToRepair)
             .arg(FirstDay.toString(u"yyyy-MM-dd"_s), QLatin1String(Added)));
    exec(db,
         u"INSERT INTO NoteRighe (IdTesta, Data, Descrizione, Dare, Avere, CodConto, codLocale, "
         u"Riga) SELECT id, DataRegistrazione, Descrizione, 0, 100 + id % 400, (SELECT "
         u"CassaAcconti FROM TabAssociazioneConti), CodLocale, 1 FROM NoteTeste WHERE "
         u"Descrizione = '%1'"_s.arg(QLatin1String(Added)));
    exec(db, u"COMMIT"_s);
    sqlite3_close(db);
}

// The new advances back to no amount, for the next run.
void unrepair(const QString& installation) {
    sqlite3* db = openRaw(installation + u"/Lorvane.db"_s);
    exec(db,
         u"UPDATE NoteTeste SET Acconto = 0 WHERE Descrizione = '%1'"_s.arg(QLatin1String(Added)));
    sqlite3_close(db);
}

// A fresh copy of the template `name` with the main database attached as m,
// in a transaction; the venues of `venues` into m.AnagraficaLocali_Tmp and
// the work table.
sqlite3* anchorFile(const QString& installation, const QString& name, const QString& target,
                    const QString& venues) {
    QFile::remove(target);
    QFile::copy(installation + u"/Report/"_s + name, target);
    sqlite3* work = openRaw(target);
    exec(work, u"PRAGMA synchronous=OFF"_s);
    exec(work, u"PRAGMA journal_mode=MEMORY"_s);
    exec(work, u"ATTACH DATABASE '%1' AS m"_s.arg(installation + u"/Lorvane.db"_s));
    exec(work, u"BEGIN"_s);
    exec(work, u"DELETE FROM m.AnagraficaLocali_Tmp"_s);
    const QString list = columns(workdb::columns::AnagraficaLocali56);
    for (const char* table : {"m.AnagraficaLocali_Tmp", "AnagraficaLocali"})
        exec(work, u"INSERT INTO %1 (%2) SELECT %2 FROM m.AnagraficaLocali WHERE %3"_s.arg(
                       QLatin1String(table), list, venues));
    return work;
}

void finish(sqlite3* work, const QString& heading) {
    exec(work, u"INSERT INTO Parametri (Parametri) VALUES ('%1')"_s.arg(heading));
    exec(work, u"COMMIT"_s);
    sqlite3_close(work);
}

// The advances' run on the raw API: the venues, notes and lines as INSERT ...
// SELECT, then for each note without lines the sum of its cash lines and the
// UPDATE on the main database (each committed alone, as the host's Execute
// does), the work note's amount and its added line.
double anchorAcconti(const QString& installation, const QString& target, int& repaired) {
    const auto start = Clock::now();
    sqlite3* work = anchorFile(installation, u"Acconti.mdb"_s, target,
                               u"CodLocale IN (SELECT CodLocale FROM m.NoteTeste WHERE CodCausale "
                               u"= 'ACC') AND Sospeso = 0"_s);
    exec(work,
         u"INSERT INTO NoteTeste (%1) SELECT %1 FROM m.NoteTeste WHERE CodCausale = 'ACC' "
         u"AND CodLocale IN (SELECT CodLocale FROM m.AnagraficaLocali_Tmp) AND (Chiuso = 0 "
         u"OR Chiuso IS NULL)"_s.arg(columns(workdb::columns::NoteTeste56)));
    exec(work,
         u"INSERT INTO NoteIncassi (%1) SELECT %1 FROM m.NoteIncassi WHERE IdTesta IN "
         u"(SELECT id FROM NoteTeste) AND (Chiuso = 0 OR Chiuso IS NULL)"_s.arg(
             columns(workdb::columns::NoteIncassi81)));
    exec(work, u"COMMIT"_s);
    exec(work, u"DETACH DATABASE m"_s);
    sqlite3* main = openRaw(installation + u"/Lorvane.db"_s);
    exec(main, u"PRAGMA journal_mode=WAL"_s);
    exec(main, u"PRAGMA synchronous=NORMAL"_s);
    exec(work, u"BEGIN"_s);
    sqlite3_stmt* walk = nullptr;
    sqlite3_prepare_v2(work,
                       "SELECT nt.id, nt.Acconto, nt.DataRegistrazione, nt.Chiuso FROM NoteTeste "
                       "nt LEFT JOIN NoteIncassi ni ON ni.IdTesta = nt.id WHERE ni.IdTesta IS NULL",
                       -1, &walk, nullptr);
    repaired = 0;
    while (sqlite3_step(walk) == SQLITE_ROW) {
        const qint64 id = sqlite3_column_int64(walk, 0);
        double acconto = sqlite3_column_double(walk, 1);
        if (acconto == 0) {
            const qint64 amount =
                scalar(main,
                       u"SELECT SUM(nr.Avere) - SUM(nr.Dare) FROM (NoteTeste nt INNER "
                       u"JOIN NoteRighe nr ON nr.IdTesta = nt.id) INNER JOIN "
                       u"TabAssociazioneConti tac ON tac.CassaAcconti = nr.CodConto WHERE "
                       u"nt.id = %1 GROUP BY nt.id"_s.arg(id));
            if (amount > 0) {
                exec(main, u"UPDATE NoteTeste SET Acconto=%1 WHERE id=%2"_s.arg(amount).arg(id));
                exec(work, u"UPDATE NoteTeste SET Acconto=%1 WHERE id=%2"_s.arg(amount).arg(id));
                acconto = double(amount);
                ++repaired;
            }
        }
        exec(
            work,
            u"INSERT INTO NoteIncassi (IdTesta, DataIncasso, Descrizione, Acconti, "
            u"Chiuso) VALUES (%1, '%2', 'Acconto su locale', %3, %4)"_s.arg(id)
                .arg(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(walk, 2))))
                .arg(acconto)
                .arg(sqlite3_column_int(walk, 3)));
    }
    sqlite3_finalize(walk);
    sqlite3_close(main);
    finish(work, u"Parametri di ricerca: solo acconti aperti"_s);
    return seconds(start);
}

// The PREU difference over the year, every venue in use.
double anchorPreu(const QString& installation, const QString& target) {
    const auto start = Clock::now();
    sqlite3* work = anchorFile(installation, u"DifferenzaPreu.mdb"_s, target, u"Sospeso = 0"_s);
    const QString notes =
        u"SELECT id FROM m.NoteTeste WHERE %1 AND CodLocale IN (SELECT "
        u"CodLocale FROM m.AnagraficaLocali_Tmp)"_s.arg(period("DataRegistrazione"));
    exec(work,
         u"INSERT INTO NoteTeste (%1) SELECT %1 FROM m.NoteTeste WHERE id IN (%2) AND "
         u"CodCausale = 'INC6'"_s.arg(columns(workdb::columns::NoteTeste57), notes));
    exec(work,
         u"INSERT INTO NoteIncassi (%1) SELECT %1 FROM m.NoteIncassi WHERE IdTesta IN (%2) "
         u"AND (TipoCalcolo = 'Utile' OR (TipoCalcolo <> 'Utile' AND PercLocale >= 25))"_s.arg(
             columns(workdb::columns::NoteIncassi82), notes));
    exec(work, u"INSERT INTO Parametri (Differenza) VALUES (0.8)"_s);
    finish(work, u"Parametri di ricerca: "_s);
    return seconds(start);
}

// The slips' rows of the year, every venue in use.
double anchorDistinta(const QString& installation, const QString& target) {
    const auto start = Clock::now();
    sqlite3* work = anchorFile(installation, u"IntrodottoDistinta.mdb"_s, target, u"Sospeso = 0"_s);
    exec(work,
         u"INSERT INTO QuietanzaRighe (%1) SELECT %2 FROM m.QuietanzaRighe qr, "
         u"m.QuietanzaTesta qt WHERE qr.idTesta = qt.id AND qt.TipoDocumento = 1 AND %3 AND "
         u"qt.CodLocale IN (SELECT CodLocale FROM m.AnagraficaLocali_Tmp)"_s.arg(
             columns(workdb::columns::QuietanzaRighe45),
             prefixed(workdb::columns::QuietanzaRighe45, u"qr"_s), period("qr.aData")));
    finish(work, u"Parametri di ricerca: "_s);
    return seconds(start);
}

qint64 count(const QString& path, const char* sql) {
    sqlite3* db = openRaw(path);
    const qint64 value = scalar(db, QString::fromLatin1(sql));
    sqlite3_close(db);
    return value;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const bench::ScreenBenchOptions command = bench::readOptions(app.arguments());
    const int repeat = command.repeat;
    QTemporaryDir folder;
    useBenchFolder(folder.path(), LastDay);
    const QString year = writeInstallation(folder.filePath(u"anno"_s), command.venues, 12, LastDay);
    openEveryAdvance(year);
    const QString anchor = folder.filePath(u"anchor.mdb"_s);
    bool ok = true;

    // The advances, every one open, 2,000 to repair on each run.
    std::printf("\nAcconti, every advance open, %d to repair (best of %d)\n", ToRepair, repeat);
    int anchorRepaired = 0;
    ScreenRunner acconti(year);
    acconti.open(u"Acconti"_s);
    int shown = 0;
    qint64 anchorLines = 0;
    const auto [accontiAnchor, accontiRun] = bestInTurns(
        repeat,
        [&] {
            unrepair(year);
            const double took = anchorAcconti(year, anchor, anchorRepaired);
            anchorLines = count(anchor, "SELECT COUNT(*) FROM NoteIncassi");
            return took;
        },
        [&] {
            unrepair(year);
            const double took = acconti.prepare();
            shown = int(acconti.messages.size());
            return took;
        });
    const qint64 lines =
        count(platform::workFolder() + u"/Acconti.mdb"_s, "SELECT COUNT(*) FROM NoteIncassi");
    const bool sameRepairs = anchorRepaired == ToRepair && shown == ToRepair &&
                             acconti.failure.isEmpty() && lines == anchorLines;
    std::printf("repairs: anchor %d, report %d messages%s; lines anchor %lld, report %lld   %s\n",
                anchorRepaired, shown,
                acconti.failure.isEmpty() ? "" : qPrintable(u", failed: "_s + acconti.failure),
                anchorLines, lines, verdict(sameRepairs));
    std::printf("  anchor %7.3f s, PreparaStampa %7.3f s = %5.2f x anchor (<= 3)   %s\n",
                accontiAnchor, accontiRun, accontiRun / accontiAnchor,
                verdict(accontiRun / accontiAnchor <= 3));
    ok = sameRepairs && accontiRun / accontiAnchor <= 3;

    // The year of the PREU difference and of the slips, every venue.
    struct Yearly {
        const char* code;
        double (*anchor)(const QString&, const QString&);
        const char* workFile;
        const char* rows;
    };
    const Yearly yearly[] = {
        {"DifferenzaPreu", anchorPreu, "DifferenzaPreu.mdb", "SELECT COUNT(*) FROM NoteIncassi"},
        {"IntrodottoDistinta", anchorDistinta, "IntrodottoDistinta.mdb",
         "SELECT COUNT(*) FROM QuietanzaRighe"},
    };
    for (const Yearly& report : yearly) {
        const QString code = QLatin1String(report.code);
        ScreenRunner runs(year);
        runs.open(code);
        runs.act(ScreenAction::Kind::Set, u"txtDallaData"_s, FirstDay.toString(u"dd/MM/yyyy"_s));
        runs.act(ScreenAction::Kind::Set, u"txtAllaData"_s, LastDay.toString(u"dd/MM/yyyy"_s));
        const auto [anchorTime, took] = bestInTurns(
            repeat, [&] { return report.anchor(year, anchor); }, [&] { return runs.prepare(); });
        const qint64 expected = count(anchor, report.rows);
        const qint64 copied =
            count(platform::workFolder() + u'/' + QLatin1String(report.workFile), report.rows);
        // Over a year the rows pass the 16-bit count: the run stops at
        // "Overflow" once they are copied, as the report does.
        const bool sameRows = copied == expected;
        std::printf("\n%s over the year (best of %d)\nrows: anchor %lld, report %lld%s   %s\n",
                    report.code, repeat, expected, copied,
                    runs.failure.isEmpty() ? "" : qPrintable(u", stopped by "_s + runs.failure),
                    verdict(sameRows));
        std::printf("  anchor %7.3f s, PreparaStampa %7.3f s = %5.2f x anchor (<= 3)   %s\n",
                    anchorTime, took, took / anchorTime, verdict(took / anchorTime <= 3));
        ok = ok && sameRows && took / anchorTime <= 3;
    }

    std::printf("\n%s\n", ok ? "targets met" : "TARGET MISSED");
    return command.check && !ok ? 1 : 0;
}
