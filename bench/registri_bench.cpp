// Measures the cash report and the receipts register on a demo installation
// of 500 venues and 12 months.
//
//   registri_bench [--venues N] [--repeat R] [--check]
//
// Targets: "StampaRegistro" and "StampaCassa" over the year with every venue
// ticked (20 batches of 25), prepared in at most 3x an anchor measured in the
// same run: the same statements as INSERT ... SELECT on the raw SQLite API
// into a fresh copy of the template, the main database attached. Opening
// "StampaCassa" with 5,000 loan lines to repair: at most 3x the same UPDATEs
// run one by one through the raw API, without a transaction, and the window's
// events let through once per line.
#include <sqlite3.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>

#include "generated_table.h"
#include "host/demo/demo_data.h"
#include "platform/clock.h"
#include "platform/windows.h"
#include "platform/windows_paths.h"
#include "reports/accounting/registri_sql.h"
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
constexpr int LoanLines = 5000;

// "a, b" as "nt.a, nt.b".
QString prefixed(const char* columns, const char* alias) {
    return QLatin1String(alias) + u"."_s +
           QString::fromLatin1(columns).split(u',').join(u", "_s + QLatin1String(alias) + u"."_s);
}

// Seconds to copy the template `file` and fill it as the report does: for each
// batch of venues the heads (and for the register their lines and takings),
// then the venues, the companies and (for the register) the machines and the
// calendar, with the statements as INSERT ... SELECT on the main database.
double anchor(const QString& installation, const char* file, const QString& target,
              const QStringList& batches, const QString& causali, bool registro) {
    const auto start = Clock::now();
    QFile::remove(target);
    QFile::copy(installation + u"/Report/"_s + QLatin1String(file), target);
    sqlite3* work = openRaw(target);
    exec(work, u"ATTACH DATABASE '%1' AS m"_s.arg(installation + u"/Lorvane.db"_s));
    exec(work, u"BEGIN"_s);
    if (registro) {
        for (const QDate& day : reports::giorniCalendario(FirstDay, LastDay))
            exec(work, u"INSERT INTO Calendario (giorno) VALUES ('%1 00:00:00')"_s.arg(
                           day.toString(u"yyyy-MM-dd"_s)));
    }
    const QString heads = QLatin1String(workdb::columns::NoteTeste47);
    for (const QString& batch : batches) {
        const QString where =
            u" WHERE nt.DataRegistrazione BETWEEN '%1' AND '%2 00:00:00' AND nt.CodCausale IN "
            u"(%3) AND nt.CodLocale IN (%4)"_s.arg(FirstDay.toString(u"yyyy-MM-dd"_s),
                                                   LastDay.toString(u"yyyy-MM-dd"_s), causali,
                                                   batch);
        exec(work, u"INSERT INTO NoteTeste (%1) SELECT %2 FROM m.NoteTeste nt"_s.arg(
                       heads, prefixed(workdb::columns::NoteTeste47, "nt")) +
                       where);
        if (!registro) continue;
        exec(work,
             u"INSERT INTO NoteRighe (%1) SELECT %2 FROM m.NoteTeste nt, m.NoteRighe nr WHERE "
             u"nt.id = nr.IdTesta AND "_s.arg(QLatin1String(workdb::columns::NoteRighe10),
                                              prefixed(workdb::columns::NoteRighe10, "nr")) +
                 where.mid(7));
        exec(
            work,
            u"INSERT INTO NoteIncassi (%1) SELECT %2 FROM m.NoteTeste nt, m.NoteIncassi ni "
            u"WHERE nt.id = ni.IdTesta AND "_s.arg(QLatin1String(workdb::columns::NoteIncassi61),
                                                   prefixed(workdb::columns::NoteIncassi61, "ni")) +
                where.mid(7));
    }
    const QString venues = QLatin1String(workdb::columns::AnagraficaLocali57);
    exec(work,
         u"INSERT INTO AnagraficaLocali (%1) SELECT %1 FROM m.AnagraficaLocali WHERE "
         u"CodLocale IN (SELECT CodLocale FROM NoteTeste)"_s.arg(venues));
    exec(work, u"INSERT INTO AnagraficaAziende (%1) SELECT %1 FROM m.AnagraficaAziende"_s.arg(
                   QLatin1String(workdb::columns::AnagraficaAziende34)));
    if (registro) {
        exec(work,
             u"INSERT INTO MagSchede (%1) SELECT %1 FROM m.MagSchede WHERE id IN (SELECT "
             u"LinkScheda FROM NoteIncassi)"_s.arg(QLatin1String(workdb::columns::MagSchede55)));
    }
    exec(work, u"INSERT INTO Parametri (Parametri) VALUES (' Dal')"_s);
    exec(work, u"COMMIT"_s);
    sqlite3_close(work);
    return seconds(start);
}

// "heads/lines/takings/venues/machines/days" of a filled work file.
QString counts(const QString& path) {
    sqlite3* work = openRaw(path);
    QStringList each;
    for (const char* table :
         {"NoteTeste", "NoteRighe", "NoteIncassi", "AnagraficaLocali", "MagSchede", "Calendario"}) {
        const QString name = QLatin1String(table);
        each << (scalar(work,
                        u"SELECT COUNT(*) FROM sqlite_master WHERE name = '"_s + name + u"'"_s) > 0
                     ? QString::number(scalar(work, u"SELECT COUNT(*) FROM "_s + name))
                     : u"-"_s);
    }
    sqlite3_close(work);
    return each.join(u'/');
}

QString writeInstallation(const QString& folder, int venues) {
    demo::DemoOptions options;
    options.venues = venues;
    options.months = 12;
    options.lastDay = LastDay;
    const double took = timed([&] { demo::writeDemoInstallation(folder, options); });
    std::printf("demo installation: %d venues, 12 months to %s, written in %.1f s\n", venues,
                qPrintable(LastDay.toString(u"dd/MM/yyyy"_s)), took);
    return folder;
}

// The main database with `LoanLines` loan lines to repair: collection notes
// turned into loans still at 0, each with one line on the loan account.
void makeLoans(const QString& database) {
    sqlite3* db = openRaw(database);
    exec(db, u"UPDATE NoteTeste SET VarPrestito = 1 WHERE CodCausale = 'PRE'"_s);
    exec(db,
         u"UPDATE NoteTeste SET CodCausale = 'PRE', VarPrestito = 0 WHERE id IN (SELECT id "
         u"FROM NoteTeste WHERE CodCausale = 'INC6' ORDER BY id LIMIT %1)"_s.arg(LoanLines));
    exec(db,
         u"INSERT INTO NoteRighe (IdTesta, Data, Descrizione, Dare, Avere, CodConto) SELECT "
         u"id, DataRegistrazione, 'Prestito', 100 + id % 50, 0, (SELECT PrestitiALocale FROM "
         u"TabAssociazioneConti) FROM NoteTeste WHERE CodCausale = 'PRE' AND VarPrestito = 0"_s);
    sqlite3_close(db);
}

// Seconds of the repair's statements on the raw API: the lines read, then one
// UPDATE each, every one its own transaction.
double anchorLoans(const QString& database) {
    const auto start = Clock::now();
    sqlite3* db = openRaw(database);
    // As the suite's host opens its main database.
    exec(db, u"PRAGMA journal_mode=WAL"_s);
    exec(db, u"PRAGMA synchronous=NORMAL"_s);
    sqlite3_stmt* lines = nullptr;
    sqlite3_prepare_v2(db,
                       "SELECT nt.id, (nr.Dare-nr.Avere) FROM (NoteTeste nt INNER JOIN NoteRighe "
                       "nr ON nr.idtesta=nt.id) INNER JOIN TabAssociazioneConti tac ON "
                       "tac.PrestitiALocale=nr.CodConto WHERE CodCausale='PRE' AND "
                       "(nt.VarPrestito=0 OR nt.VarPrestito IS NULL)",
                       -1, &lines, nullptr);
    QList<std::pair<qint64, QString>> rows;
    while (sqlite3_step(lines) == SQLITE_ROW)
        rows.append(
            {sqlite3_column_int64(lines, 0),
             QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(lines, 1)))});
    sqlite3_finalize(lines);
    for (const auto& [id, somma] : rows)
        exec(db, reports::sqlAggiornaVarPrestito(somma, QString::number(id)));
    sqlite3_close(db);
    return seconds(start);
}

// A copy of the installation whose main database the next run may change;
// what the last run left (the journal of the main database too) goes first.
void restore(const QString& from, const QString& to) {
    QDir(to).removeRecursively();
    QDir().mkpath(to);
    for (const QString& name : QDir(from).entryList(QDir::Files)) {
        QFile::remove(to + u'/' + name);
        QFile::copy(from + u'/' + name, to + u'/' + name);
    }
    for (const QString& name : QDir(from).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        restore(from + u'/' + name, to + u'/' + name);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const ScreenBenchOptions command = readOptions(app.arguments());
    const int repeat = command.repeat;
    QTemporaryDir folder;
    useBenchFolder(folder.path(), LastDay);
    const QString year = writeInstallation(folder.filePath(u"anno"_s), command.venues);
    const QString anchorFile = folder.filePath(u"anchor.mdb"_s);
    bool ok = true;

    // Every venue ticked: the search of the register lists those collected
    // in the year, the cash screen's those with notes.
    struct Report {
        const char* code;
        const char* file;
        const char* causali;
        bool registro;
    };
    std::printf("\nevery venue ticked, %s to %s (best of %d)\n",
                qPrintable(FirstDay.toString(u"dd/MM/yyyy"_s)),
                qPrintable(LastDay.toString(u"dd/MM/yyyy"_s)), repeat);
    for (const Report& report :
         {Report{"StampaRegistro", "Registro.mdb", "'INC6', 'INC', 'FUR'", true},
          Report{"StampaCassa", "Cassa.mdb", "'INC6', 'INC'", false}}) {
        ScreenRunner runs(year);
        runs.open(QLatin1String(report.code));
        runs.act(ScreenAction::Kind::Set, u"txtDallaData"_s, FirstDay.toString(u"dd/MM/yyyy"_s));
        runs.act(ScreenAction::Kind::Set, u"txtAllaData"_s, LastDay.toString(u"dd/MM/yyyy"_s));
        // Every note of the causali, those without takings too.
        if (report.registro) {
            runs.act(ScreenAction::Kind::Set, u"chkEscludi"_s, u"0"_s);
            for (const QString& causale : QString::fromLatin1(report.causali).split(u", "_s))
                runs.act(ScreenAction::Kind::Tick, u"ListCausali"_s, causale.mid(1).chopped(1));
        }
        runs.act(ScreenAction::Kind::Click, u"CmdRicerca"_s);
        QStringList ticked = runs.tickedVenues();
        ticked.sort();
        const QStringList batches = reports::lottiLocali(reports::elencoQuotato(ticked));
        const double raw = best(repeat, [&] {
            return anchor(year, report.file, anchorFile, batches, QLatin1String(report.causali),
                          report.registro);
        });
        const QString expected = counts(anchorFile);
        const double took = best(repeat, [&] { return runs.prepare(); });
        const QString got = counts(platform::workFolder() + u'/' + QLatin1String(report.file));
        const bool rows = expected == got && runs.failure.isEmpty() && runs.messages.isEmpty();
        const bool met = took / raw <= 3;
        std::printf(
            "%-15s %d venues in %d batches; rows (heads/lines/takings/venues/machines/"
            "days) anchor %s, report %s   %s\n",
            report.code, int(ticked.size()), int(batches.size()), qPrintable(expected),
            qPrintable(got), verdict(rows));
        std::printf("  anchor %7.3f s, PreparaStampa %7.3f s = %5.2f x anchor (<= 3)   %s\n", raw,
                    took, took / raw, verdict(met));
        ok = ok && rows && met;
    }

    // The repair on opening, on a fresh copy of the main database each time.
    const QString loans = folder.filePath(u"prestiti"_s);
    const QString pristine = folder.filePath(u"prestiti-originale"_s);
    restore(year, pristine);
    makeLoans(pristine + u"/Lorvane.db"_s);
    int events = 0;
    platform::setEventPump([&] { ++events; });
    const double raw = best(repeat, [&] {
        restore(pristine, loans);
        return anchorLoans(loans + u"/Lorvane.db"_s);
    });
    int lastEvents = 0;
    const double took = best(repeat, [&] {
        restore(pristine, loans);
        ScreenRunner runs(loans);
        events = 0;
        const double seconds = timed([&] { runs.open(u"StampaCassa"_s); });
        lastEvents = events;
        return seconds;
    });
    platform::setEventPump(nullptr);
    sqlite3* repaired = openRaw(loans + u"/Lorvane.db"_s);
    const qint64 left = scalar(repaired,
                               u"SELECT COUNT(*) FROM NoteTeste WHERE CodCausale = "
                               u"'PRE' AND VarPrestito = 0"_s);
    sqlite3_close(repaired);
    const bool responsive = lastEvents >= LoanLines && left == 0;
    const bool met = took / raw <= 3;
    std::printf("\nStampaCassa opening, %d loan lines to repair (best of %d)\n", LoanLines, repeat);
    std::printf("  events let through %d, notes left at 0: %lld   %s\n", lastEvents,
                static_cast<long long>(left), verdict(responsive));
    std::printf("  anchor %7.3f s, opening %7.3f s = %5.2f x anchor (<= 3)   %s\n", raw, took,
                took / raw, verdict(met));
    ok = ok && responsive && met;

    std::printf("\n%s\n", ok ? "targets met" : "TARGET MISSED");
    return command.check && !ok ? 1 : 0;
}
