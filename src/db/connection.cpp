#include "db/connection.h"

#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include "db/access_functions.h"
#include "db/recordset.h"
#include "db/session.h"
#include "platform/runtime_error.h"
#include "platform/windows_paths.h"

namespace lorvane::db {

using namespace Qt::StringLiterals;

namespace {

constexpr int StatementCacheLimit = 200;

QString closedObjectMessage() { return u"Operazione non consentita se l'oggetto è chiuso."_s; }

// SQLite's message in the words of the office that reads it; `file` is the
// database the message is about.
QString describeSqliteError(const QString& message, const QString& file) {
    struct Pattern {
        const char* expression;
        const char* wording;
    };
    static const Pattern patterns[] = {
        {"^no such table: (.*)$", "Tabella '%1' inesistente"},
        {"^no such column: (.*)$", "Campo '%1' inesistente"},
        {"^no such function: (.*)$", "Funzione '%1' sconosciuta"},
        {"^wrong number of arguments to function (.*)\\(\\)$",
         "Numero di argomenti errato per la funzione %1"},
        {"^ambiguous column name: (.*)$",
         "Il campo '%1' appartiene a più tabelle: indicare la tabella"},
        {"^UNIQUE constraint failed: (.*)$", "Valore duplicato in %1"},
        {"^NOT NULL constraint failed: (.*)$", "Il campo %1 non può essere vuoto (Null)"},
        {"^table (.*) has no column named (.*)$", "La tabella '%1' non ha il campo '%2'"},
        {"^database is locked$",
         "Il database '%1' è bloccato da un altro programma o da un'altra operazione (atteso "
         "invano che si liberasse)"},
        {"^attempt to write a readonly database$",
         "Il database '%1' è in sola lettura: il file o la sua cartella non si possono scrivere"},
    };
    for (const Pattern& pattern : patterns) {
        const QRegularExpression expression(QString::fromLatin1(pattern.expression));
        const QRegularExpressionMatch match = expression.match(message);
        if (!match.hasMatch()) continue;
        QString text = QString::fromUtf8(pattern.wording);
        if (match.lastCapturedIndex() == 0) return text.arg(QDir::toNativeSeparators(file));
        for (int i = 1; i <= match.lastCapturedIndex(); ++i)
            text = text.arg(match.captured(i));
        return text;
    }
    return u"Errore del database: "_s + message;
}

void execPragma(sqlite3* db, const char* sql) {
    char* error = nullptr;
    if (sqlite3_exec(db, sql, nullptr, nullptr, &error) != SQLITE_OK) {
        const QString message = QString::fromUtf8(error ? error : "");
        sqlite3_free(error);
        throw RuntimeError(
            describeSqliteError(message, QString::fromUtf8(sqlite3_db_filename(db, "main"))));
    }
}

}  // namespace

// --- Session ------------------------------------------------------------------

Session::~Session() { close(); }

sqlite3* Session::handle() const {
    if (!db_) throw RuntimeError(closedObjectMessage());
    return db_;
}

const TranslatedSql& Session::translate(const QString& accessSql) {
    auto found = translations_.constFind(accessSql);
    if (found != translations_.constEnd()) return *found;
    if (translations_.size() >= StatementCacheLimit) translations_.clear();
    return *translations_.insert(accessSql, translateAccessSql(accessSql));
}

sqlite3_stmt* Session::prepare(const QString& sqliteSql, const QString& accessSql) {
    sqlite3* db = handle();
    const bool sameText = lastStatement_ && sqliteSql.constData() == lastText_.constData() &&
                          sqliteSql.size() == lastText_.size();
    if (sqlite3_stmt* found = sameText ? lastStatement_ : statements_.value(sqliteSql)) {
        sqlite3_reset(found);
        sqlite3_clear_bindings(found);
        lastText_ = sqliteSql;
        lastStatement_ = found;
        return found;
    }
    if (statements_.size() >= StatementCacheLimit) {
        for (sqlite3_stmt* statement : std::as_const(statements_))
            sqlite3_finalize(statement);
        statements_.clear();
        lastStatement_ = nullptr;
    }
    const QByteArray utf8 = sqliteSql.toUtf8();
    sqlite3_stmt* statement = nullptr;
    const char* tail = nullptr;
    if (sqlite3_prepare_v3(db, utf8.constData(), int(utf8.size()), SQLITE_PREPARE_PERSISTENT,
                           &statement, &tail) != SQLITE_OK) {
        throwLastError(accessSql);
    }
    if (!statement || !QByteArray(tail).trimmed().isEmpty()) {
        sqlite3_finalize(statement);
        throw RuntimeError(u"È ammessa una sola istruzione SQL alla volta: "_s + accessSql);
    }
    statements_.insert(sqliteSql, statement);
    lastText_ = sqliteSql;
    lastStatement_ = statement;
    return statement;
}

long Session::run(sqlite3_stmt* statement, const QString& accessSql) {
    int rc;
    while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
    }
    if (rc != SQLITE_DONE) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(db_));
        sqlite3_reset(statement);
        throw RuntimeError(describeSqliteError(message, path_) + u" nell'istruzione: "_s +
                           accessSql);
    }
    if (!sqlite3_stmt_readonly(statement)) lockWait_.givenUp = false;
    const long changed = sqlite3_stmt_readonly(statement) ? 0 : long(sqlite3_changes(db_));
    sqlite3_reset(statement);
    return changed;
}

void Session::beginWrites() {
    if (writing_) return;
    sqlite3* db = handle();
    if (sqlite3_get_autocommit(db)) execPragma(db, "BEGIN");
    writing_ = true;
}

void Session::commitWrites() {
    if (!writing_ || !db_) return;
    writing_ = false;
    if (!sqlite3_get_autocommit(db_)) execPragma(db_, "COMMIT");
}

void Session::close() {
    if (!db_) return;
    try {
        commitWrites();
    } catch (const RuntimeError&) {
        sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    for (sqlite3_stmt* statement : std::as_const(statements_))
        sqlite3_finalize(statement);
    statements_.clear();
    lastStatement_ = nullptr;
    translations_.clear();
    sqlite3_close_v2(db_);
    db_ = nullptr;
}

void Session::throwLastError(const QString& accessSql) const {
    const QString message = QString::fromUtf8(sqlite3_errmsg(db_));
    throw RuntimeError(describeSqliteError(message, path_) + u" nell'istruzione: "_s + accessSql);
}

int Session::onBusy(void* session, int attempt) {
    LockWait& wait = static_cast<Session*>(session)->lockWait_;
    if (wait.givenUp) return 0;
    if (attempt == 0) wait.since.start();
    if (wait.since.elapsed() >= LockWaitMs) {
        wait.givenUp = true;
        return 0;
    }
    sqlite3_sleep(20);
    return 1;
}

// --- Connection -----------------------------------------------------------------

Connection::Connection() = default;

Connection::~Connection() { Close(); }

QString Connection::fileFromConnectionText(const QString& text) {
    int depth = 0;
    QString part;
    QStringList parts;
    for (const QChar c : text) {
        if (c == u'{') ++depth;
        if (c == u'}') --depth;
        if (c == u';' && depth == 0) {
            parts << part;
            part.clear();
        } else {
            part += c;
        }
    }
    parts << part;
    for (const QString& entry : std::as_const(parts)) {
        const qsizetype equals = entry.indexOf(u'=');
        if (equals < 0) continue;
        const QString key = entry.left(equals).trimmed();
        if (key.compare(u"Dbq"_s, Qt::CaseInsensitive) != 0 &&
            key.compare(u"Data Source"_s, Qt::CaseInsensitive) != 0) {
            continue;
        }
        QString value = entry.mid(equals + 1).trimmed();
        if (value.size() >= 2 && ((value.front() == u'"' && value.back() == u'"') ||
                                  (value.front() == u'{' && value.back() == u'}'))) {
            value = value.mid(1, value.size() - 2);
        }
        return value;
    }
    return {};
}

void Connection::Open(const QString& connectionText) {
    if (!connectionText.isEmpty()) connectionString_ = connectionText;
    Close();
    const QString file = fileFromConnectionText(connectionString_);
    if (file.isEmpty()) {
        throw RuntimeError(u"La stringa di connessione non indica il database (Dbq=…): "_s +
                           connectionString_);
    }
    filePath_ = platform::toLocalPath(file);
    const QFileInfo info(filePath_);
    if (!info.isFile()) {
        throw RuntimeError(u"Impossibile trovare il file di database '%1'."_s.arg(filePath_));
    }

    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(filePath_.toUtf8().constData(), &db,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    auto session = std::make_shared<Session>(db, filePath_);  // closes db on any failure below
    if (rc != SQLITE_OK) {
        throw RuntimeError(u"Impossibile aprire il database '%1': %2"_s.arg(
            filePath_, QString::fromUtf8(sqlite3_errstr(rc))));
    }
    if (sqlite3_exec(db, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr) !=
        SQLITE_OK) {
        throw RuntimeError(u"Il file '%1' non è un database valido."_s.arg(filePath_));
    }
    // A double-quoted name is always a name: an unknown column must fail, not
    // quietly become a text.
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    registerAccessFunctions(db);
    sqlite3_busy_handler(db, &Session::onBusy, session.get());
    // The sorts and DISTINCTs of a report's statements are built in memory,
    // not in temporary files.
    execPragma(db, "PRAGMA temp_store=MEMORY");
    if (platform::isInWorkFolder(filePath_)) {
        // A work file is scratch: rebuilt by every run, read once by the report.
        execPragma(db, "PRAGMA synchronous=OFF");
        execPragma(db, "PRAGMA journal_mode=MEMORY");
    }
    session_ = std::move(session);
}

void Connection::Close() {
    if (!session_) return;
    session_->close();
    session_.reset();
}

void Connection::useWriteAheadLog() {
    sqlite3* db = session()->handle();
    execPragma(db, "PRAGMA journal_mode=WAL");
    execPragma(db, "PRAGMA synchronous=NORMAL");
}

int Connection::State() const { return session_ && session_->isOpen() ? StateOpen : StateClosed; }

std::shared_ptr<Session> Connection::session() const {
    if (!session_ || !session_->isOpen()) throw RuntimeError(closedObjectMessage());
    return session_;
}

namespace {

QString quotedName(QString name) { return u'"' + name.replace(u'"', u"\"\""_s) + u'"'; }

// Jet appends a SELECT without a column list by name: when every column of the
// SELECT names a different column of the table, the INSERT says so; otherwise
// it stays as written and goes by position.
QString insertByName(Session& session, const TranslatedSql& translated, const QString& accessSql) {
    QStringList names;
    {
        sqlite3_stmt* select = session.prepare(translated.insertSelect, accessSql);
        for (int i = 0; i < sqlite3_column_count(select); ++i) {
            names << QString::fromUtf8(sqlite3_column_name(select, i));
        }
    }  // read before the next prepare, which may evict it from the cache
    QSet<QString> targetColumns;
    sqlite3_stmt* info = session.prepare(
        u"PRAGMA table_info(%1)"_s.arg(quotedName(translated.insertTable)), accessSql);
    while (sqlite3_step(info) == SQLITE_ROW) {
        targetColumns.insert(
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(info, 1)))
                .toCaseFolded());
    }
    sqlite3_reset(info);
    QSet<QString> seen;
    QStringList columns;
    for (const QString& name : std::as_const(names)) {
        const QString key = name.toCaseFolded();
        if (!targetColumns.contains(key) || seen.contains(key)) return translated.sql;
        seen.insert(key);
        columns << quotedName(name);
    }
    return u"INSERT INTO %1 (%2) %3"_s.arg(quotedName(translated.insertTable),
                                           columns.join(u", "_s), translated.insertSelect);
}

}  // namespace

long Connection::Execute(const QString& accessSql) {
    const std::shared_ptr<Session> current = session();
    const TranslatedSql translated = current->translate(accessSql);
    const QString sqliteSql = translated.insertTable.isEmpty()
                                  ? translated.sql
                                  : insertByName(*current, translated, accessSql);
    sqlite3_stmt* statement = current->prepare(sqliteSql, accessSql);
    return current->run(statement, accessSql);
}

RecordsetPtr Connection::OpenRecordset(const QString& accessSql) {
    auto recordset = std::make_shared<Recordset>();
    recordset->Open(accessSql, *this);
    return recordset;
}

}  // namespace lorvane::db
