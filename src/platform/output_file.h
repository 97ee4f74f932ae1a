// An output file written whole or not at all: the bytes go to a temporary
// name beside it, every write checked, then flushed, synced and renamed over
// the final name.
#pragma once

#include <QIODevice>
#include <QString>

namespace lorvane::platform {

// A write-only device on "<path>.<process id>.part". Writers that ignore
// their device's errors (QPdfWriter) may write on after a failure: the first
// error is kept and commit() reports it. Opening also removes the parts of
// this naming that processes no longer running left in the folder.
class OutputFile : public QIODevice {
  public:
    // Throws RuntimeError naming `path` when the temporary file cannot be made.
    explicit OutputFile(QString path);
    // Removes the temporary file unless commit() put it in place.
    ~OutputFile() override;

    // Flushes and syncs the temporary file and renames it over the final
    // name. Throws RuntimeError naming the final file and the cause of the
    // first failure; the temporary file is then gone and any earlier file of
    // that name is as it was.
    void commit();

    // The cause of the first failed write, in the user's words; "" while none.
    const QString& failure() const { return failure_; }

    bool isSequential() const override { return true; }

  protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

  private:
    [[noreturn]] void fail(const QString& cause);
    void discard();

    QString path_;
    QString partial_;
    int fd_ = -1;
    QString failure_;
};

// The user's words for a failed file operation's errno: "spazio esaurito sul
// disco", "cartella di sola lettura"...
QString fileErrorText(int error);

// What keeps files from being written in `folder`: "la cartella '…' non
// esiste", "… è di sola lettura", "… non esiste e non si può creare: '…' è di
// sola lettura"; "" when nothing does.
QString folderProblem(const QString& folder);

// The error for a file that could not be written: the file and the cause.
QString cannotWriteMessage(const QString& path, const QString& cause);

}  // namespace lorvane::platform
