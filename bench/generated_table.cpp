#include "generated_table.h"

#include <sqlite3.h>

#include <sys/wait.h>
#include <unistd.h>
#include <QFile>
#include <QStringList>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace lorvane::bench {

using namespace Qt::StringLiterals;

namespace {

// Column i's declared type: a spread like the suite's tables (mostly text and money).
const char* columnType(int i) {
    static const char* types[] = {"TEXT(50)", "INTEGER", "CURRENCY",  "TEXT(30)", "DOUBLE",
                                  "DATETIME", "BOOLEAN", "TEXT(100)", "CURRENCY", "MEMO"};
    return types[i % 10];
}

using Clock = std::chrono::steady_clock;

// Deterministic rows, about a fifth of the cells Null.

}  // namespace

void exec(sqlite3* db, const QString& sql) {
    char* error = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        std::fprintf(stderr, "sqlite: %s: %s\n", error, qPrintable(sql.left(200)));
        std::exit(2);
    }
}

sqlite3* openRaw(const QString& path) {
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    return db;
}

qint64 scalar(sqlite3* db, const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "sqlite: %s: %s\n", sqlite3_errmsg(db), qPrintable(sql.left(200)));
        std::exit(2);
    }
    const qint64 value =
        sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : -1;
    sqlite3_finalize(statement);
    return value;
}

QString rowCounts(const QString& path, std::initializer_list<const char*> tables) {
    sqlite3* db = openRaw(path);
    QStringList counts;
    for (const char* table : tables)
        counts << QString::number(
            scalar(db, QStringLiteral("SELECT COUNT(*) FROM ") + QLatin1String(table)));
    sqlite3_close(db);
    return counts.join(u'/');
}

QString schema() {
    QStringList columns{u"id INTEGER PRIMARY KEY"_s};
    for (int i = 1; i < Columns; ++i) {
        QString type = QString::fromLatin1(columnType(i));
        if (type.startsWith(u"TEXT"_s) || type == u"MEMO"_s) type += u" COLLATE NOCASE"_s;
        columns << u"C%1 %2"_s.arg(i).arg(type);
    }
    return u"CREATE TABLE T ("_s + columns.join(u", "_s) + u")"_s;
}

void makeSource(const QString& path, int rows) {
    sqlite3* db = openRaw(path);
    exec(db, schema());
    exec(db, u"BEGIN"_s);
    QString placeholders = u"?"_s + u",?"_s.repeated(Columns - 1);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db, ("INSERT INTO T VALUES (" + placeholders.toStdString() + ")").c_str(),
                       -1, &insert, nullptr);
    quint64 seed = 12345;
    const auto next = [&seed] {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        return quint32(seed >> 33);
    };
    static const char* words[] = {"Bar",       "Caffè", "Roma",     "Milano",
                                  "Tabacchi",  "Sport", "Centrale", "Stazione",
                                  "del Corso", "Lucia", "Città",    "Ponte"};
    for (int row = 1; row <= rows; ++row) {
        sqlite3_bind_int(insert, 1, row);
        for (int i = 1; i < Columns; ++i) {
            const int index = i + 1;
            if (next() % 5 == 0) {
                sqlite3_bind_null(insert, index);
                continue;
            }
            const QString type = QString::fromLatin1(columnType(i));
            if (type.startsWith(u"TEXT"_s) || type == u"MEMO"_s) {
                QString text = QString::fromUtf8(words[next() % 12]) + u' ' +
                               QString::fromUtf8(words[next() % 12]) + u' ' +
                               QString::number(next() % 1000);
                const QByteArray utf8 = text.toUtf8();
                sqlite3_bind_text(insert, index, utf8.constData(), int(utf8.size()),
                                  SQLITE_TRANSIENT);
            } else if (type == u"INTEGER"_s) {
                sqlite3_bind_int(insert, index, int(next() % 100000));
            } else if (type == u"CURRENCY"_s) {
                sqlite3_bind_double(insert, index, double(next() % 10000000) / 100.0);
            } else if (type == u"DOUBLE"_s) {
                sqlite3_bind_double(insert, index, double(next() % 1000000) / 1000.0);
            } else if (type == u"DATETIME"_s) {
                const QByteArray date = QStringLiteral("2025-%1-%2 00:00:00")
                                            .arg(next() % 12 + 1, 2, 10, QChar(u'0'))
                                            .arg(next() % 28 + 1, 2, 10, QChar(u'0'))
                                            .toLatin1();
                sqlite3_bind_text(insert, index, date.constData(), int(date.size()),
                                  SQLITE_TRANSIENT);
            } else {
                sqlite3_bind_int(insert, index, next() % 2 ? -1 : 0);
            }
        }
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    exec(db, u"COMMIT"_s);
    sqlite3_close(db);
}

void makeEmpty(const QString& path) {
    QFile::remove(path);
    sqlite3* db = openRaw(path);
    exec(db, schema());
    sqlite3_close(db);
}

// The anchor: every row of the source through one prepared INSERT, in one transaction.
double rawCopy(const QString& source, const QString& target) {
    makeEmpty(target);
    const auto start = Clock::now();
    sqlite3* in = openRaw(source);
    sqlite3* out = openRaw(target);
    exec(out, u"PRAGMA synchronous=OFF"_s);
    exec(out, u"PRAGMA journal_mode=MEMORY"_s);
    sqlite3_stmt* select = nullptr;
    sqlite3_prepare_v2(in, "SELECT * FROM T", -1, &select, nullptr);
    sqlite3_stmt* insert = nullptr;
    QString placeholders = u"?"_s + u",?"_s.repeated(Columns - 1);
    sqlite3_prepare_v2(out, ("INSERT INTO T VALUES (" + placeholders.toStdString() + ")").c_str(),
                       -1, &insert, nullptr);
    exec(out, u"BEGIN"_s);
    while (sqlite3_step(select) == SQLITE_ROW) {
        for (int i = 0; i < Columns; ++i)
            sqlite3_bind_value(insert, i + 1, sqlite3_column_value(select, i));
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    exec(out, u"COMMIT"_s);
    sqlite3_finalize(select);
    sqlite3_finalize(insert);
    sqlite3_close(in);
    sqlite3_close(out);
    return seconds(start);
}

QString connectionText(const QString& path) {
    return u"Driver={Microsoft Access Driver (*.mdb)};Dbq="_s + path + u";Uid=Admin;Pwd=;"_s;
}

QString columnList() {
    QStringList names{u"id"_s};
    for (int i = 1; i < Columns; ++i)
        names << u"C%1"_s.arg(i);
    return names.join(u',');
}

double seconds(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double timed(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return seconds(start);
}

long statusKb(const char* key) {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(int(qstrlen(key)) + 1).trimmed().split(' ').front().toLong();
    }
    return -1;
}

long childPeakKb(const std::function<void()>& prepare, const std::function<void()>& work) {
    int pipeFds[2];
    if (pipe(pipeFds) != 0) return -1;
    const pid_t child = fork();
    if (child == 0) {
        close(pipeFds[0]);
        prepare();
        QFile clear(u"/proc/self/clear_refs"_s);  // "5" resets the peak to what is resident now
        if (clear.open(QIODevice::WriteOnly)) clear.write("5");
        clear.close();
        const long before = statusKb("VmRSS");
        work();
        const long peak = statusKb("VmHWM") - before;
        _exit(write(pipeFds[1], &peak, sizeof peak) == sizeof peak ? 0 : 1);
    }
    close(pipeFds[1]);
    long peak = -1;
    if (read(pipeFds[0], &peak, sizeof peak) != sizeof peak) peak = -1;
    close(pipeFds[0]);
    waitpid(child, nullptr, 0);
    return peak;
}

}  // namespace lorvane::bench
