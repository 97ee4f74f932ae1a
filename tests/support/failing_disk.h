// Disks that fail under a writer, for the tests of what a failed write leaves:
// a real small tmpfs (full, or read-only) where the test may mount one, and a
// file-size limit on the process, which makes writes fail anywhere.
#pragma once

#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>

#include <QFile>
#include <QString>
#include <QTemporaryDir>

namespace lorvane::testing {

// A tmpfs of `sizeBytes` mounted on a temporary folder, read-only if asked.
// Mounting needs privileges that CI may lack: check mounted().
class SmallTmpfs {
  public:
    explicit SmallTmpfs(qint64 sizeBytes, bool readOnly = false) {
        const QByteArray options = "size=" + QByteArray::number(sizeBytes);
        mounted_ = folder_.isValid() &&
                   ::mount("tmpfs", QFile::encodeName(folder_.path()).constData(), "tmpfs",
                           readOnly ? MS_RDONLY : 0, options.constData()) == 0;
    }
    ~SmallTmpfs() {
        if (mounted_) ::umount2(QFile::encodeName(folder_.path()).constData(), MNT_DETACH);
    }
    SmallTmpfs(const SmallTmpfs&) = delete;
    SmallTmpfs& operator=(const SmallTmpfs&) = delete;

    bool mounted() const { return mounted_; }
    QString filePath(const QString& name) const { return folder_.filePath(name); }
    QString path() const { return folder_.path(); }

  private:
    QTemporaryDir folder_;
    bool mounted_ = false;
};

// While it lives, no file of this process grows beyond `bytes`: a write past
// it fails with EFBIG (the signal that would come with it is ignored).
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        oldSignal_ = ::signal(SIGXFSZ, SIG_IGN);
        rlimit lowered = old_;
        lowered.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &lowered);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        ::signal(SIGXFSZ, oldSignal_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit old_{};
    sighandler_t oldSignal_ = SIG_DFL;
};

}  // namespace lorvane::testing
