#include "host/reference_host.h"

#include <QDir>
#include <QFileInfo>

#include "db/recordset.h"
#include "platform/runtime_error.h"

namespace lorvane::host {

using namespace Qt::StringLiterals;

namespace {

QString withSeparator(const QString& folder) {
    QString path = QDir(folder).absolutePath();
    if (!path.endsWith(u'/')) path += u'/';
    return path;
}

QString connectionText(const QString& file) {
    return u"Driver={Microsoft Access Driver (*.mdb)};Dbq="_s + file + u";Uid=Admin;Pwd=;"_s;
}

}  // namespace

ReferenceHost::ReferenceHost(const QString& folder)
    : percorso_(withSeparator(folder)),
      settings_(percorso_ + QLatin1String(InstallationFiles::Settings), QSettings::IniFormat) {
    const QString mainFile = percorso_ + QLatin1String(InstallationFiles::MainDatabase);
    if (!QFileInfo(mainFile).isFile()) {
        throw RuntimeError(
            u"La cartella '%1' non contiene un'installazione di Lorvane (manca %2)."_s.arg(
                percorso_, QLatin1String(InstallationFiles::MainDatabase)));
    }
    main_.Open(connectionText(mainFile));
    // Screens write their venue choice into the suite's database one venue at
    // a time: each write must not wait for the disk.
    main_.useWriteAheadLog();
}

void ReferenceHost::Execute(const QString& sql) { main_.Execute(sql); }

QString ReferenceHost::LeggiSettaggio(const QString& sezione, const QString& chiave,
                                      const QString& predefinito) {
    return settings_.value(sezione + u'/' + chiave, predefinito).toString();
}

void ReferenceHost::SalvaSettaggio(const QString& sezione, const QString& chiave, QString& valore) {
    settings_.setValue(sezione + u'/' + chiave, valore);
    settings_.sync();
}

QString ReferenceHost::NomeDitta() { return settings_.value(u"Ditta/Nome"_s).toString(); }

QString ReferenceHost::User() { return settings_.value(u"Utente/Nome"_s, u"admin"_s).toString(); }

bool ReferenceHost::Personalizzazione() {
    return settings_.value(u"Opzioni/Personalizzazione"_s, false).toBool();
}

db::RecordsetPtr ReferenceHost::OpenRecordset(const QString& sql) {
    return main_.OpenRecordset(sql);
}

db::RecordsetPtr ReferenceHost::read(db::Connection& connection, const char* file,
                                     const QString& sql) {
    if (!connection.IsOpen()) connection.Open(connectionText(percorso_ + QLatin1String(file)));
    return connection.OpenRecordset(sql);
}

db::RecordsetPtr ReferenceHost::OpenRecordSetMenu(const QString& sql) {
    return read(catalogue_, InstallationFiles::Catalogue, sql);
}

db::RecordsetPtr ReferenceHost::OpenRecordSetPersonalizzazioni(const QString& sql) {
    return read(personalCatalogue_, InstallationFiles::PersonalCatalogue, sql);
}

db::RecordsetPtr ReferenceHost::OpenRecordSetPreferenze(const QString& sql) {
    return read(preferences_, InstallationFiles::Preferences, sql);
}

}  // namespace lorvane::host
