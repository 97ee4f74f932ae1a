#include "reports/documents/installa_font.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QSaveFile>
#include <QSet>

#include "platform/runtime_error.h"
#include "platform/windows_paths.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;

namespace {

// Copies through a temporary file beside the target, renamed only when whole.
bool copiaIntera(const QString& origine, const QString& destinazione) {
    QFile source(origine);
    if (!QDir().mkpath(QFileInfo(destinazione).absolutePath())) return false;
    QSaveFile target(destinazione);
    if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly)) return false;
    if (target.write(source.readAll()) != source.size()) {
        target.cancelWriting();
        return false;
    }
    return target.commit();
}

// A font file is registered once per program, however many screens open.
void registra(const QString& file) {
    static QSet<QString> registered;
    if (registered.contains(file)) return;
    if (QFontDatabase::addApplicationFont(file) >= 0) registered.insert(file);
}

}  // namespace

bool FileExists(const QString& percorso) {
    return QFileInfo(platform::toLocalPath(percorso)).isFile();
}

QString cartellaFont() {
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty()) data = QDir::homePath() + u"/.local/share"_s;
    return data + u"/fonts/"_s;
}

void InstallaFont(const QString& percorso) {
    const QString origine = percorso + u"Bin\\"_s + QLatin1String(FontEtichette);
    const QString destinazione = cartellaFont() + QLatin1String(FontEtichette);
    const bool haOrigine = FileExists(origine);
    const bool haDestinazione = FileExists(destinazione);
    if (haOrigine && !haDestinazione &&
        !copiaIntera(platform::toLocalPath(origine), destinazione)) {
        throw RuntimeError(u"Impossibile copiare il font nella cartella "_s + cartellaFont() +
                           u": autorizzazione negata"_s);
    }
    if (haDestinazione || haOrigine) registra(destinazione);
}

}  // namespace lorvane::reports
