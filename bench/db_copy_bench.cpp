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
#include "generated_table.h"

namespace {

using namespace lorvane::db;
using namespace lorvane::bench;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

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

// Bytes of the data as text: every value in SQLite's text form, one separator each.
qint64 textSize(const QString& path) {
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
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

// Peak memory that opening the recordset adds, measured in a child process so
// that nothing before it counts.
long recordsetPeakKb(const QString& source) {
    Connection connection;
    RecordsetPtr recordset;
    return childPeakKb([&] { connection.Open(connectionText(source)); },
                       [&] { recordset = connection.OpenRecordset(u"SELECT * FROM T"_s); });
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
