#include "workdb/work_database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/runtime_error.h"
#include "platform/windows_paths.h"

namespace lorvane::workdb {

using namespace Qt::StringLiterals;

db::Connection& ConnessioneTemporanea() {
    static db::Connection connection;
    return connection;
}

QString templateFileName(const QString& percorso) {
    // Walk back to the last separator: "\" as the module writes paths, "/" as
    // this platform writes them.
    for (qsizetype i = percorso.size() - 1; i >= 0; --i) {
        if (percorso[i] == u'\\' || percorso[i] == u'/') return percorso.mid(i + 1);
    }
    return {};
}

namespace {

// Copies with overwrite through a temporary name, so that a failed copy leaves
// the old work file whole. Failures are silent: the caller goes on regardless.
void copyOver(const QString& source, const QString& target) {
    if (!QFileInfo(source).isFile()) return;
    const QString partial = target + u".part"_s;
    QFile::remove(partial);
    if (!QFile::copy(source, partial)) return;
    QFile(partial).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                  QFile::ReadOther);
    if (std::rename(QFile::encodeName(partial).constData(),
                    QFile::encodeName(target).constData()) != 0) {
        QFile::remove(partial);
    }
}

// A work file that is not there after the copy: the error the connection
// would give, told with its cause, the template or the work folder.
[[noreturn]] void failMissingWorkFile(const QString& templateFile, const QString& target) {
    const QString folder = QDir::toNativeSeparators(QFileInfo(target).absolutePath());
    QString cause;
    if (!QFileInfo(templateFile).isFile()) {
        cause = u"il modello '%1' non esiste"_s.arg(QDir::toNativeSeparators(templateFile));
    } else if (!QFileInfo(folder).isDir()) {
        cause = u"la cartella di lavoro '%1' non esiste"_s.arg(folder);
    } else if (!QFileInfo(folder).isWritable()) {
        cause = u"la cartella di lavoro '%1' è di sola lettura"_s.arg(folder);
    } else {
        cause = u"il modello non si è potuto copiare nella cartella di lavoro '%1'"_s.arg(folder);
    }
    throw RuntimeError(u"Impossibile trovare il file di database '%1': %2."_s.arg(
        QDir::toNativeSeparators(target), cause));
}

bool openOn(const db::Connection& connection, const QString& file) {
    return connection.IsOpen() && QFileInfo(connection.FilePath()).absoluteFilePath() ==
                                      QFileInfo(file).absoluteFilePath();
}

}  // namespace

void ApriTemporaneo(const QString& percorso, const QString& copyFolder,
                    const QString& connectionFolder) {
    db::Connection& connection = ConnessioneTemporanea();
    const QString name = templateFileName(percorso);

    // The copy comes before the close: a work file that a broken run left open
    // is in use, so the copy is skipped and that file, with its rows, is used.
    const QString target = platform::toLocalPath(copyFolder + name);
    if (!name.isEmpty() && !openOn(connection, target)) {
        copyOver(platform::toLocalPath(percorso), target);
    }
    connection.Close();
    if (!name.isEmpty() && !QFileInfo(target).isFile()) {
        failMissingWorkFile(platform::toLocalPath(percorso), target);
    }
    connection.Open(u"Driver={Microsoft Access Driver (*.mdb)};Dbq="_s + connectionFolder + name +
                    u";Uid=Admin;Pwd=;"_s);
}

}  // namespace lorvane::workdb
