// The open SQLite handle behind a Connection, shared with the recordsets made
// on it: prepared statements kept for reuse, and the write batch in which
// recordset writes travel until UpdateBatch or Close.
#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QString>

#include "db/access_sql.h"

struct sqlite3;
struct sqlite3_stmt;

namespace lorvane::db {

class Session {
  public:
    Session(sqlite3* db, QString path) : db_(db), path_(std::move(path)) {}
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    bool isOpen() const { return db_ != nullptr; }
    sqlite3* handle() const;
    const QString& path() const { return path_; }

    // The translation of an Access statement, kept per text.
    const TranslatedSql& translate(const QString& accessSql);
    // A prepared statement for SQLite text, kept per text and reset before it
    // is handed out. `accessSql` is quoted in errors. Throws RuntimeError.
    sqlite3_stmt* prepare(const QString& sqliteSql, const QString& accessSql);

    // Runs a prepared statement to its end; gives the rows changed.
    long run(sqlite3_stmt* statement, const QString& accessSql);

    // Recordset writes go into one transaction, committed by commitWrites().
    void beginWrites();
    void commitWrites();

    // Commits, finalizes every statement and closes the handle.
    void close();

    // The error for the last failure on this handle, in the user's words,
    // quoting `accessSql`.
    [[noreturn]] void throwLastError(const QString& accessSql) const;

    // SQLite's busy handler: a lock held by another connection is waited for
    // once, for at most LockWaitMs; once that wait has been given up, later
    // statements fail at once until a write goes through again, so that a run
    // of many statements does not wait that long on each.
    static int onBusy(void* session, int attempt);
    static constexpr qint64 LockWaitMs = 5000;

  private:
    struct LockWait {
        QElapsedTimer since;
        bool givenUp = false;
    };

    sqlite3* db_;
    QString path_;
    QHash<QString, TranslatedSql> translations_;
    QHash<QString, sqlite3_stmt*> statements_;
    // The statement handed out last, with its text: a loop that prepares the
    // same text object row after row finds it without hashing the text.
    QString lastText_;
    sqlite3_stmt* lastStatement_ = nullptr;
    bool writing_ = false;
    LockWait lockWait_;
};

}  // namespace lorvane::db
