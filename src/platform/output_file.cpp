#include "platform/output_file.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>

#include "platform/runtime_error.h"

namespace lorvane::platform {

using namespace Qt::StringLiterals;

namespace {

// Parts ("<name>.<pid>.part") in the folder of `path` whose process has
// ended: a run killed mid-write left them, and nobody will ever finish them.
// Parts of running processes, and files of other naming, stay.
void removeStaleParts(const QString& path) {
    static const QRegularExpression ours(u"^.+\\.(\\d+)\\.part$"_s);
    const QDir folder = QFileInfo(path).absoluteDir();
    for (const QString& name : folder.entryList({u"*.part"_s}, QDir::Files | QDir::Hidden)) {
        const QRegularExpressionMatch match = ours.match(name);
        if (!match.hasMatch()) continue;
        bool ok = false;
        const qint64 pid = match.captured(1).toLongLong(&ok);
        if (!ok || pid <= 0 || pid > std::numeric_limits<pid_t>::max() || pid == ::getpid())
            continue;
        if (::kill(pid_t(pid), 0) != 0 && errno == ESRCH) QFile::remove(folder.filePath(name));
    }
}

}  // namespace

QString fileErrorText(int error) {
    switch (error) {
        case ENOSPC:
            return u"spazio esaurito sul disco"_s;
        case EDQUOT:
            return u"quota del disco esaurita"_s;
        case EFBIG:
            return u"il file supera la dimensione ammessa"_s;
        case EROFS:
            return u"la cartella è di sola lettura"_s;
        case EACCES:
        case EPERM:
            return u"permesso negato"_s;
        case ENOENT:
        case ENOTDIR:
            return u"la cartella non esiste"_s;
        case ENAMETOOLONG:
            return u"il nome del file è troppo lungo"_s;
        case EISDIR:
            return u"al suo posto c'è una cartella"_s;
        case EIO:
            return u"errore di lettura o scrittura sul disco"_s;
        default:
            return QString::fromLocal8Bit(std::strerror(error));
    }
}

QString folderProblem(const QString& folder) {
    const QString shown = QDir::toNativeSeparators(QDir::cleanPath(folder));
    QFileInfo existing(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()));
    if (existing.isDir()) {
        return existing.isWritable() ? QString()
                                     : u"la cartella '%1' è di sola lettura"_s.arg(shown);
    }
    if (existing.exists()) return u"'%1' è un file, non una cartella"_s.arg(shown);
    while (!existing.exists() && !existing.isRoot())
        existing = QFileInfo(existing.absolutePath());
    if (existing.isDir() && !existing.isWritable()) {
        return u"la cartella '%1' non esiste e non si può creare: '%2' è di sola lettura"_s.arg(
            shown, QDir::toNativeSeparators(existing.absoluteFilePath()));
    }
    return u"la cartella '%1' non esiste"_s.arg(shown);
}

QString cannotWriteMessage(const QString& path, const QString& cause) {
    return u"Impossibile scrivere il file '%1': %2."_s.arg(QDir::toNativeSeparators(path), cause);
}

OutputFile::OutputFile(QString path)
    : path_(std::move(path)), partial_(u"%1.%2.part"_s.arg(path_).arg(::getpid())) {
    removeStaleParts(path_);
    const QByteArray name = QFile::encodeName(partial_);
    ::unlink(name.constData());
    fd_ = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd_ < 0) {
        const int error = errno;
        QString cause = fileErrorText(error);
        if (error == ENOENT || error == ENOTDIR || error == EACCES || error == EROFS) {
            const QString problem = folderProblem(QFileInfo(path_).absolutePath());
            if (!problem.isEmpty()) cause = problem;
        }
        throw RuntimeError(cannotWriteMessage(path_, cause));
    }
    QIODevice::open(QIODevice::WriteOnly);
}

OutputFile::~OutputFile() { discard(); }

void OutputFile::discard() {
    if (fd_ >= 0) {
        ::close(fd_);
        fd_ = -1;
        QFile::remove(partial_);
    }
    QIODevice::close();
}

qint64 OutputFile::readData(char*, qint64) { return -1; }

qint64 OutputFile::writeData(const char* data, qint64 size) {
    if (!failure_.isEmpty()) return -1;
    qint64 written = 0;
    while (written < size) {
        const ssize_t n = ::write(fd_, data + written, size_t(size - written));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            failure_ = fileErrorText(n < 0 ? errno : ENOSPC);
            return -1;
        }
        written += n;
    }
    return written;
}

void OutputFile::fail(const QString& cause) {
    discard();
    throw RuntimeError(cannotWriteMessage(path_, cause));
}

void OutputFile::commit() {
    if (fd_ < 0) fail(failure_.isEmpty() ? u"il file è già stato chiuso"_s : failure_);
    if (!failure_.isEmpty()) fail(failure_);
    if (::fsync(fd_) != 0) fail(fileErrorText(errno));
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0) {
        const int error = errno;
        QFile::remove(partial_);
        fail(fileErrorText(error));
    }
    if (std::rename(QFile::encodeName(partial_).constData(),
                    QFile::encodeName(path_).constData()) != 0) {
        const int error = errno;
        QFile::remove(partial_);
        fail(fileErrorText(error));
    }
    QIODevice::close();
}

}  // namespace lorvane::platform
