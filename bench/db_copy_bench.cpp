// Measures the record-set copy against a plain SQLite copy of the same rows,
// the keyed copy's time per row as the table grows, and the memory of a large
// recordset. Prints the figures and whether each target holds.
//
//   db_copy_bench [--rows N] [--repeat R] [--check]
//
// With --check the exit status is 1 when a target is missed.
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>
#include <functional>

#include "db/connection.h"
#include "db/recordset.h"

namespace {

using namespace lorvane::db;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

constexpr int Columns = 60;

// Column i's declared type: a spread like the suite's tables (mostly text and money).
const char* columnType(int i) {
    static const char* types[] = {"TEXT(50)", "INTEGER", "CURRENCY",  "TEXT(30)", "DOUBLE",
                                  "DATETIME", "BOOLEAN", "TEXT(100)", "CURRENCY", "MEMO"};
    return types[i % 10];
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

void exec(sqlite3* db, const QString& sql) {
    char* error = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        std::fprintf(stderr, "sqlite: %s\n", error);
        std::exit(2);
    }
}

sqlite3* openRaw(const QString& path) {
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    return db;
}

// Deterministic rows, about a fifth of the cells Null.
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

double seconds(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
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

// The copy loop of the module: column by name, a Boolean never Null, AddNew and
// Update per row, UpdateBatch before and after. With `keyed`, a row whose id
// is already in the target is skipped, looked up with Filter "id=…".
double recordsetCopy(Recordset& source, const QString& target, bool keyed, int* written = nullptr) {
    makeEmpty(target);
    Connection connection;
    connection.Open(connectionText(target));
    QStringList names{u"id"_s};
    for (int i = 1; i < Columns; ++i)
        names << u"C%1"_s.arg(i);
    RecordsetPtr destination = connection.OpenRecordset(u"SELECT * FROM T"_s);

    const auto start = Clock::now();
    destination->UpdateBatch(Recordset::AffectAll);
    for (source.MoveFirst(); !source.Eof(); source.MoveNext()) {
        if (keyed) {
            destination->SetFilter(u"id="_s + source.Fields(u"id"_s).Value().text());
            if (destination->RecordCount() != 0) continue;
        }
        destination->AddNew();
        for (const QString& name : names) {
            Field& field = destination->Fields(name);
            const Variant value = source.Fields(name).Value();
            field = field.Type() == 11 && value.isNull() ? Variant(0) : value;
        }
        destination->Update();
    }
    destination->UpdateBatch(Recordset::AffectAllChapters);
    const double elapsed = seconds(start);
    if (written) {
        destination->SetFilter(QString());
        *written = destination->RecordCount();
    }
    destination->Close();
    connection.Close();
    return elapsed;
}

template <typename F>
double best(int repeat, F run) {
    double result = 1e9;
    for (int i = 0; i < repeat; ++i)
        result = std::min(result, run());
    return result;
}

// Bytes of the data as text: every value in SQLite's text form, one separator each.
qint64 textSize(const QString& path) {
    sqlite3* db = openRaw(path);
    sqlite3_stmt* select = nullptr;
    sqlite3_prepare_v2(db, "SELECT * FROM T", -1, &select, nullptr);
    qint64 bytes = 0;
    while (sqlite3_step(select) == SQLITE_ROW) {
        for (int i = 0; i < Columns; ++i) {
            sqlite3_column_text(select, i);
            bytes += sqlite3_column_bytes(select, i) + 1;
        }
    }
    sqlite3_finalize(select);
    sqlite3_close(db);
    return bytes;
}

long currentRssKb() {
    FILE* status = std::fopen("/proc/self/status", "r");
    char line[256];
    long kb = 0;
    while (status && std::fgets(line, sizeof line, status)) {
        if (std::sscanf(line, "VmRSS: %ld kB", &kb) == 1) break;
    }
    if (status) std::fclose(status);
    return kb;
}

// Peak memory that opening the recordset adds, measured in a child process so
// that nothing before it counts.
long recordsetPeakKb(const QString& source) {
    int pipeFds[2];
    if (pipe(pipeFds) != 0) return -1;
    const pid_t child = fork();
    if (child == 0) {
        close(pipeFds[0]);
        Connection connection;
        connection.Open(connectionText(source));
        const long before = currentRssKb();
        RecordsetPtr recordset = connection.OpenRecordset(u"SELECT * FROM T"_s);
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        const long peak = usage.ru_maxrss - before;
        if (write(pipeFds[1], &peak, sizeof peak) != sizeof peak) _exit(1);
        _exit(recordset->RecordCount() > 0 ? 0 : 1);
    }
    close(pipeFds[1]);
    long peak = -1;
    if (read(pipeFds[0], &peak, sizeof peak) != sizeof peak) peak = -1;
    close(pipeFds[0]);
    waitpid(child, nullptr, 0);
    return peak;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    int rows = 100000;
    int repeat = 3;
    bool check = false;
    const QStringList args = app.arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == u"--rows"_s && i + 1 < args.size()) rows = args[++i].toInt();
        if (args[i] == u"--repeat"_s && i + 1 < args.size()) repeat = args[++i].toInt();
        if (args[i] == u"--check"_s) check = true;
    }

    QTemporaryDir folder;
    qputenv("LORVANE_TEMP1", folder.path().toUtf8());  // targets are work files, as in a run
    const QString source = folder.filePath(u"source.db"_s);
    const QString smallSource = folder.filePath(u"small.db"_s);
    const QString target = folder.filePath(u"target.db"_s);
    const int smallRows = rows / 10;
    makeSource(source, rows);
    makeSource(smallSource, smallRows);

    Connection connection;
    connection.Open(connectionText(source));
    auto start = Clock::now();
    RecordsetPtr recordset = connection.OpenRecordset(u"SELECT * FROM T"_s);
    const double openTime = seconds(start);

    const double anchor = best(repeat, [&] { return rawCopy(source, target); });
    int written = 0;
    const double copy =
        best(repeat, [&] { return recordsetCopy(*recordset, target, false, &written); });
    const double keyed = best(repeat, [&] { return recordsetCopy(*recordset, target, true); });
    Connection smallConnection;
    smallConnection.Open(connectionText(smallSource));
    RecordsetPtr small = smallConnection.OpenRecordset(u"SELECT * FROM T"_s);
    const double keyedSmall = best(repeat, [&] { return recordsetCopy(*small, target, true); });

    const double copyRatio = copy / anchor;
    const double perRowRatio = (keyed / rows) / (keyedSmall / smallRows);
    const qint64 text = textSize(source);
    const long peakKb = recordsetPeakKb(source);
    const double memoryRatio = double(peakKb) * 1024.0 / double(text);

    std::printf("rows %d x %d columns (best of %d)\n", rows, Columns, repeat);
    std::printf("open recordset                  %8.3f s\n", openTime);
    std::printf("anchor: raw prepared INSERT     %8.3f s\n", anchor);
    std::printf("AddNew/Update/UpdateBatch copy  %8.3f s  = %.2f x anchor (target <= 2)  rows %d\n",
                copy, copyRatio, written);
    std::printf("keyed copy, %6d rows         %8.3f s  %.2f us/row\n", smallRows, keyedSmall,
                keyedSmall / smallRows * 1e6);
    std::printf("keyed copy, %6d rows         %8.3f s  %.2f us/row = %.2f x (target <= 1.5)\n",
                rows, keyed, keyed / rows * 1e6, perRowRatio);
    std::printf(
        "recordset peak memory           %8.1f MB, data as text %.1f MB = %.2f x (target < 3)\n",
        peakKb / 1024.0, text / 1048576.0, memoryRatio);

    const bool ok = copyRatio <= 2.0 && perRowRatio <= 1.5 && memoryRatio < 3.0 && written == rows;
    std::printf("%s\n", ok ? "all targets met" : "TARGET MISSED");
    return check && !ok ? 1 : 0;
}
