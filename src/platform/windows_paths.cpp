#include "platform/windows_paths.h"

#include <QDir>
#include <QFileInfo>

namespace lorvane::platform {

namespace {

QString withTrailingSlash(QString path) {
    if (!path.endsWith(u'/')) path += u'/';
    return path;
}

}  // namespace

QString workFolder() {
    const QString configured = qEnvironmentVariable("LORVANE_TEMP1");
    if (!configured.isEmpty()) return withTrailingSlash(configured);
    QString cache = qEnvironmentVariable("XDG_CACHE_HOME");
    if (cache.isEmpty()) cache = QDir::homePath() + QStringLiteral("/.cache");
    return withTrailingSlash(cache) + QStringLiteral("lorvane/temp1/");
}

QString toLocalPath(const QString& windowsPath) {
    QString path = windowsPath;
    path.replace(u'\\', u'/');
    static const QString workPrefix = QStringLiteral("c:/temp1/");
    if (path.startsWith(workPrefix, Qt::CaseInsensitive)) {
        return workFolder() + path.mid(workPrefix.size());
    }
    return path;
}

bool isInWorkFolder(const QString& localPath) {
    const QString folder = QFileInfo(workFolder()).absoluteFilePath();
    const QString file = QFileInfo(localPath).absoluteFilePath();
    return file.startsWith(withTrailingSlash(folder));
}

}  // namespace lorvane::platform
