// The tools the demo data are written with: a seeded random source that gives
// the same numbers everywhere, and prepared statements on a plain SQLite file.
#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <QDate>
#include <QString>
#include <cstddef>
#include <initializer_list>
#include <vector>

namespace lorvane::demo {

// xoshiro256** seeded through splitmix64: a fixed algorithm, so a seed gives
// the same sequence on every platform and with every standard library.
class Random {
  public:
    explicit Random(quint64 seed);

    quint64 next();
    int below(int n);             // [0, n), n > 0
    int between(int lo, int hi);  // [lo, hi]
    double unit();                // [0, 1)
    bool chance(double probability);

    template <typename T, std::size_t N>
    const T& pick(const T (&items)[N]) {
        return items[below(static_cast<int>(N))];
    }

  private:
    quint64 state_[4];
};

// Amounts are kept in cents so that totals add up exactly.
using Cents = qint64;

// `amount` times `percent` / 100, rounded to the cent, halves away from zero.
Cents percentOf(Cents amount, double percent);

// "yyyy-MM-dd HH:mm:ss", the form every date column of the suite holds.
QString dateText(const QDate& day, int hour = 0, int minute = 0);

// One value bound to a statement parameter, typed the way the suite's columns
// read it back: money as a real rounded to cents, Yes/No as -1/0, dates as text.
class Value {
  public:
    Value() = default;  // Null
    Value(std::nullptr_t) {}
    Value(int value) : kind_(Kind::Integer), integer_(value) {}
    Value(qint64 value) : kind_(Kind::Integer), integer_(value) {}
    Value(double value) : kind_(Kind::Real), real_(value) {}
    Value(const QString& text) : kind_(Kind::Text), text_(text.toUtf8()) {}
    Value(const char* text) : kind_(Kind::Text), text_(text) {}
    Value(bool) = delete;  // a flag must say whether it is Yes/No or a number

    static Value money(Cents cents);
    static Value date(const QDate& day, int hour = 0, int minute = 0);
    static Value yesNo(bool yes) { return Value(yes ? -1 : 0); }

    void bind(sqlite3_stmt* statement, int index) const;

  private:
    enum class Kind { Null, Integer, Real, Text };
    Kind kind_ = Kind::Null;
    qint64 integer_ = 0;
    double real_ = 0;
    QByteArray text_;
};

// A SQLite file opened for writing; closed by the destructor.
class Database {
  public:
    explicit Database(const QString& path);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void exec(const char* sql);
    sqlite3* handle() const { return db_; }
    QString path() const { return path_; }

  private:
    sqlite3* db_ = nullptr;
    QString path_;
};

using Values = std::initializer_list<Value>;

// A statement prepared once and run with a row of values each time.
class Statement {
  public:
    Statement(Database& db, const QString& sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    // Binds the values to the parameters in order, the groups one after the
    // other, and runs the statement. Throws RuntimeError when the count
    // differs or SQLite refuses the row.
    void run(Values first, Values second = {}, Values third = {}, Values fourth = {});

  private:
    Database& db_;
    sqlite3_stmt* statement_ = nullptr;
    int parameters_ = 0;
};

// INSERT INTO `table` (columns) VALUES (?...), the columns named once in a
// text separated by commas, as the suite writes its column lists.
class TableWriter {
  public:
    TableWriter(Database& db, const char* table, const char* columns);

    // Writes one row, values in the order of the columns; gives its rowid.
    qint64 insert(Values first, Values second = {}, Values third = {}, Values fourth = {});

  private:
    static QString insertSql(const char* table, const char* columns);
    Database& db_;
    Statement statement_;
};

}  // namespace lorvane::demo
