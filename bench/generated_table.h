// A generated table like the suite's largest (60 columns of text, numbers,
// money, dates and Yes/No, a fifth of the cells Null) and the anchor every
// copy benchmark is measured against: a raw prepared-INSERT loop in one
// transaction over the same rows.
#pragma once

#include <QString>
#include <algorithm>
#include <chrono>
#include <functional>
#include <initializer_list>
#include <utility>

struct sqlite3;

namespace lorvane::bench {

inline constexpr int Columns = 60;

// The raw SQLite API, for anchors and checks: a failed statement ends the
// benchmark with SQLite's message.
sqlite3* openRaw(const QString& path);
void exec(sqlite3* db, const QString& sql);
qint64 scalar(sqlite3* db, const QString& sql);  // the first column of the first row, -1 if none
// The rows of each table of the file at `path`, joined by "/".
QString rowCounts(const QString& path, std::initializer_list<const char*> tables);

// "CREATE TABLE T (id INTEGER PRIMARY KEY, C1 ..., C59 ...)".
QString schema();
// The names "id,C1,...,C59", as a copy routine's column list.
QString columnList();
// A new file holding table T with `rows` deterministic rows.
void makeSource(const QString& path, int rows);
// A new file holding table T, empty.
void makeEmpty(const QString& path);
// Seconds to copy every row of T from `source` into a new `target` with the raw API.
double rawCopy(const QString& source, const QString& target);
QString connectionText(const QString& path);

// Seconds since `start`, and seconds that `work` takes.
double seconds(std::chrono::steady_clock::time_point start);
double timed(const std::function<void()>& work);

// The fastest of `repeat` runs, each giving its seconds.
template <typename Run>
double best(int repeat, Run run) {
    double result = 1e9;
    for (int i = 0; i < repeat; ++i)
        result = std::min(result, run());
    return result;
}
// The fastest of `repeat` runs of an anchor and of what is measured against
// it, taken in turns, so that a machine busier at one moment than at another
// weighs on both alike.
template <typename Anchor, typename Run>
std::pair<double, double> bestInTurns(int repeat, Anchor anchor, Run run) {
    std::pair<double, double> result{1e9, 1e9};
    for (int i = 0; i < repeat; ++i) {
        result.first = std::min(result.first, anchor());
        result.second = std::min(result.second, run());
    }
    return result;
}
// A value of /proc/self/status in kB ("VmRSS", "VmHWM"), -1 when unreadable.
long statusKb(const char* key);

// The peak memory in kB that `work` adds, measured in a child process whose
// peak is reset first, so that nothing the parent did counts; -1 on failure.
// `prepare` runs in the child before the measure starts.
long childPeakKb(const std::function<void()>& prepare, const std::function<void()>& work);

}  // namespace lorvane::bench
