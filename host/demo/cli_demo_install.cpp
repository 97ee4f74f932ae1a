// The "demo-install" command: options from the command line, the summary of
// what was written, read back from the new main database.
#include "host/demo/cli_demo_install.h"

#include <sqlite3.h>

#include <QElapsedTimer>
#include <QLocale>
#include <limits>

#include "host/demo/demo_data.h"
#include "platform/runtime_error.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

qint64 countRows(sqlite3* db, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    qint64 count = 0;
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW) {
        count = sqlite3_column_int64(statement, 0);
    }
    sqlite3_finalize(statement);
    return count;
}

// The value after an option, as a whole number in [minimum, maximum].
qint64 numberAfter(const QStringList& args, qsizetype& i, qint64 minimum, qint64 maximum) {
    const QString option = args[i];
    if (++i >= args.size()) throw RuntimeError(u"Manca il valore dopo %1."_s.arg(option));
    bool ok = false;
    const qint64 value = args[i].toLongLong(&ok);
    if (!ok || value < minimum || value > maximum) {
        throw RuntimeError(u"Valore non valido per %1: '%2' (da %3 a %4)."_s.arg(option, args[i])
                               .arg(minimum)
                               .arg(maximum));
    }
    return value;
}

DemoOptions parse(const QStringList& args, QString& folder) {
    DemoOptions options;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& word = args[i];
        if (word == u"--venues"_s) {
            options.venues = int(numberAfter(args, i, 1, 9999));
        } else if (word == u"--months"_s) {
            options.months = int(numberAfter(args, i, 1, 120));
        } else if (word == u"--seed"_s) {
            options.seed = quint64(numberAfter(args, i, 0, std::numeric_limits<qint64>::max()));
        } else if (word == u"--today"_s) {
            if (++i >= args.size()) throw RuntimeError(u"Manca la data dopo --today."_s);
            options.lastDay = QDate::fromString(args[i], u"dd/MM/yyyy"_s);
            if (!options.lastDay.isValid()) {
                throw RuntimeError(u"Data non valida: '%1' (gg/mm/aaaa)."_s.arg(args[i]));
            }
        } else if (word.startsWith(u"--"_s)) {
            throw RuntimeError(u"Opzione sconosciuta: %1."_s.arg(word));
        } else if (folder.isEmpty()) {
            folder = word;
        } else {
            throw RuntimeError(u"Una sola cartella, per favore: '%1' è di troppo."_s.arg(word));
        }
    }
    if (folder.isEmpty()) {
        throw RuntimeError(
            u"Uso: demo-install CARTELLA [--venues N] [--months M] [--seed S] [--today gg/mm/aaaa]"_s);
    }
    return options;
}

}  // namespace

int runDemoInstallCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    QString folder;
    try {
        const DemoOptions options = parse(args, folder);
        QElapsedTimer timer;
        timer.start();
        writeDemoInstallation(folder, options);
        const double seconds = double(timer.elapsed()) / 1000.0;

        sqlite3* db = nullptr;
        qint64 notes = 0;
        qint64 readings = 0;
        const QByteArray path = (folder + u"/Lorvane.db"_s).toUtf8();
        if (sqlite3_open_v2(path.constData(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
            notes = countRows(db, "SELECT COUNT(*) FROM NoteTeste");
            readings = countRows(db, "SELECT COUNT(*) FROM NoteIncassi");
        }
        sqlite3_close(db);
        const QLocale italian(QLocale::Italian, QLocale::Italy);
        out << u"Installazione dimostrativa creata in %1: %2 locali, %3 note, %4 letture, in %5 "
               u"secondi."_s.arg(folder, italian.toString(options.venues), italian.toString(notes),
                                 italian.toString(readings), italian.toString(seconds, 'f', 1))
            << Qt::endl;
        return 0;
    } catch (const RuntimeError& error) {
        err << error.message() << Qt::endl;
    } catch (const std::exception& error) {
        err << u"Installazione non riuscita: %1"_s.arg(QString::fromLocal8Bit(error.what()))
            << Qt::endl;
    }
    return 2;
}

}  // namespace lorvane::demo
