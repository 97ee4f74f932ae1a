// The seeded random source and the prepared statements of the demo writer.
#include "host/demo/demo_generator.h"

#include <QStringList>
#include <cmath>

#include "platform/runtime_error.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

quint64 splitMix(quint64& x) {
    quint64 z = (x += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

quint64 rotl(quint64 x, int k) { return (x << k) | (x >> (64 - k)); }

QString sqliteError(sqlite3* db) { return QString::fromUtf8(sqlite3_errmsg(db)); }

}  // namespace

Random::Random(quint64 seed) {
    quint64 x = seed;
    for (quint64& word : state_)
        word = splitMix(x);
}

quint64 Random::next() {
    const quint64 result = rotl(state_[1] * 5, 7) * 9;
    const quint64 t = state_[1] << 17;
    state_[2] ^= state_[0];
    state_[3] ^= state_[1];
    state_[1] ^= state_[2];
    state_[0] ^= state_[3];
    state_[2] ^= t;
    state_[3] = rotl(state_[3], 45);
    return result;
}

int Random::below(int n) { return n <= 1 ? 0 : static_cast<int>(next() % quint64(n)); }

int Random::between(int lo, int hi) { return lo + below(hi - lo + 1); }

double Random::unit() { return double(next() >> 11) * 0x1.0p-53; }

bool Random::chance(double probability) { return unit() < probability; }

Cents percentOf(Cents amount, double percent) {
    return static_cast<Cents>(std::llround(double(amount) * percent / 100.0));
}

QString dateText(const QDate& day, int hour, int minute) {
    return u"%1 %2:%3:00"_s.arg(day.toString(u"yyyy-MM-dd"_s))
        .arg(hour, 2, 10, QLatin1Char('0'))
        .arg(minute, 2, 10, QLatin1Char('0'));
}

Value Value::money(Cents cents) { return Value(double(cents) / 100.0); }

Value Value::date(const QDate& day, int hour, int minute) {
    return day.isValid() ? Value(dateText(day, hour, minute)) : Value();
}

void Value::bind(sqlite3_stmt* statement, int index) const {
    switch (kind_) {
        case Kind::Null:
            sqlite3_bind_null(statement, index);
            break;
        case Kind::Integer:
            sqlite3_bind_int64(statement, index, integer_);
            break;
        case Kind::Real:
            sqlite3_bind_double(statement, index, real_);
            break;
        case Kind::Text:
            sqlite3_bind_text(statement, index, text_.constData(), int(text_.size()),
                              SQLITE_TRANSIENT);
            break;
    }
}

Database::Database(const QString& path) : path_(path) {
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db_, SQLITE_OPEN_READWRITE, nullptr);
    if (rc != SQLITE_OK) {
        const QString reason = db_ ? sqliteError(db_) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_close(db_);
        db_ = nullptr;
        throw RuntimeError(u"Impossibile aprire il database '%1': %2"_s.arg(path, reason));
    }
}

Database::~Database() { sqlite3_close(db_); }

void Database::exec(const char* sql) {
    char* error = nullptr;
    if (sqlite3_exec(db_, sql, nullptr, nullptr, &error) != SQLITE_OK) {
        const QString reason = QString::fromUtf8(error ? error : "?");
        sqlite3_free(error);
        throw RuntimeError(u"Errore di scrittura in '%1': %2"_s.arg(path_, reason));
    }
}

Statement::Statement(Database& db, const QString& sql) : db_(db) {
    if (sqlite3_prepare_v2(db.handle(), sql.toUtf8().constData(), -1, &statement_, nullptr) !=
        SQLITE_OK) {
        throw RuntimeError(u"Istruzione non valida (%1): %2"_s.arg(sql, sqliteError(db.handle())));
    }
    parameters_ = sqlite3_bind_parameter_count(statement_);
}

Statement::~Statement() { sqlite3_finalize(statement_); }

void Statement::run(Values first, Values second, Values third, Values fourth) {
    const qsizetype count = first.size() + second.size() + third.size() + fourth.size();
    if (count != parameters_) {
        throw RuntimeError(
            u"Istruzione con %1 parametri eseguita con %2 valori: %3"_s.arg(parameters_)
                .arg(count)
                .arg(QString::fromUtf8(sqlite3_sql(statement_))));
    }
    int index = 1;
    for (Values group : {first, second, third, fourth}) {
        for (const Value& value : group)
            value.bind(statement_, index++);
    }
    const int rc = sqlite3_step(statement_);
    const QString reason = rc == SQLITE_DONE ? QString() : sqliteError(db_.handle());
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
    if (rc != SQLITE_DONE) {
        throw RuntimeError(u"Errore di scrittura in '%1': %2"_s.arg(db_.path(), reason));
    }
}

TableWriter::TableWriter(Database& db, const char* table, const char* columns)
    : db_(db), statement_(db, insertSql(table, columns)) {}

qint64 TableWriter::insert(Values first, Values second, Values third, Values fourth) {
    statement_.run(first, second, third, fourth);
    return sqlite3_last_insert_rowid(db_.handle());
}

QString TableWriter::insertSql(const char* table, const char* columns) {
    QStringList names = QString::fromLatin1(columns).split(u',');
    for (QString& name : names)
        name = name.trimmed();
    const QStringList marks(names.size(), u"?"_s);
    return u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(QString::fromLatin1(table), names.join(u','),
                                                    marks.join(u','));
}

}  // namespace lorvane::demo
