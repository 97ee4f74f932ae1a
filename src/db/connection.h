// A connection to one SQLite file, opened from a connection text of the legacy
// driver ("Driver={…};Dbq=path;Uid=…;Pwd=…;"), that runs statements of the
// Access dialect. Recordsets are opened on it with Recordset::Open.
#pragma once

#include <QString>
#include <memory>

namespace lorvane::db {

class Session;
class Recordset;
using RecordsetPtr = std::shared_ptr<Recordset>;

class Connection {
  public:
    static constexpr int StateClosed = 0;
    static constexpr int StateOpen = 1;

    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    QString ConnectionString() const { return connectionString_; }
    void SetConnectionString(const QString& text) { connectionString_ = text; }

    // Opens the file named by Dbq (a Windows-form path is mapped, see
    // platform/windows_paths.h). The file must exist and be a database. Files
    // in the work folder are scratch files: no sync, journal in memory.
    // Throws RuntimeError naming the file. An open connection is closed first.
    void Open(const QString& connectionText = QString());
    // Finalizes every statement and closes the file, so another reader can
    // open it at once. Closing a closed connection does nothing.
    void Close();
    // Writes the open file through a write-ahead log, synced only when the
    // log is folded back: a commit then costs no disk flush, and a crash may
    // lose the last commits but never damages the file. The mode stays with
    // the file; readers in other processes go on working.
    void useWriteAheadLog();
    int State() const;
    bool IsOpen() const { return State() == StateOpen; }
    // The file of the open connection, or of the last one opened.
    QString FilePath() const { return filePath_; }

    // Runs one statement and gives the number of rows it changed. A second
    // statement after ";" is refused before anything runs.
    long Execute(const QString& accessSql);

    // Opens a recordset on one reading statement (see Recordset::Open).
    RecordsetPtr OpenRecordset(const QString& accessSql);

    // The open session; throws "Operazione non consentita se l'oggetto è chiuso." when closed.
    std::shared_ptr<Session> session() const;

    // The file named by Dbq (or Data Source) in a connection text, as written.
    static QString fileFromConnectionText(const QString& text);

  private:
    QString connectionString_;
    QString filePath_;
    std::shared_ptr<Session> session_;
};

}  // namespace lorvane::db
