// Writes a whole demo installation: the databases and the settings are made
// in a staging folder and moved into place only when all of them are written.
#include "host/demo/demo_data.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include "host/demo/demo_cash_cases.h"
#include "host/demo/demo_collections.h"
#include "host/demo/demo_document_cases.h"
#include "host/demo/demo_generator.h"
#include "host/demo/demo_label_cases.h"
#include "host/demo/demo_ledger_cases.h"
#include "host/demo/demo_machine_cases.h"
#include "host/demo/demo_note_cases.h"
#include "host/demo/demo_registry.h"
#include "host/demo/demo_reports.h"
#include "host/demo/main_schema.h"
#include "platform/runtime_error.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

// In the order they are moved into place: the reports' files, the
// catalogues and settings, the main database last, so that an installation
// without it is never mistaken for a complete one.
QStringList installedFiles() {
    return demoReportFiles() + QStringList{u"Stampe.db"_s, u"pers/StampePers.db"_s,
                                           u"Preferenze.db"_s, u"Lorvane.ini"_s, u"Lorvane.db"_s};
}

void checkOptions(const DemoOptions& options) {
    if (options.venues < 1 || options.venues > 9999) {
        throw RuntimeError(u"Numero di locali non valido: %1 (da 1 a 9999)."_s.arg(options.venues));
    }
    if (options.months < 1 || options.months > 120) {
        throw RuntimeError(u"Numero di mesi non valido: %1 (da 1 a 120)."_s.arg(options.months));
    }
}

void fillMainDatabase(const QString& path, const DemoOptions& options, const QDate& lastDay,
                      QString& firstCompany) {
    Database db(path);
    // The file is private to the staging folder until the end: a crash loses
    // nothing that the move would have published.
    db.exec("PRAGMA synchronous=OFF");
    db.exec("PRAGMA journal_mode=MEMORY");
    db.exec("BEGIN");
    Random random(options.seed);
    const QDate firstDay = lastDay.addMonths(-options.months).addDays(1);
    Registry registry = writeRegistry(db, random, options.venues, firstDay);
    writeCollections(db, random, registry, firstDay, lastDay);
    writeBoardState(db, registry);
    writeMachineCases(db, firstDay, lastDay);
    writeLedgerCases(db, firstDay);
    writeNoteCases(db, lastDay);
    writeDocumentCases(db, lastDay);
    writeLabelCases(db);
    writeCashCases(db);
    db.exec("COMMIT");
    // The statistics a database in use has: without them the planner drives
    // the last-note statements from the boards' readings into their unindexed
    // sub-select of maxima, and their time grows with the square of the notes.
    db.exec("ANALYZE");
    firstCompany = registry.firstCompanyName;
}

void writePreferences(const QString& path) {
    Database db(path);
    TableWriter views(db, "viste", "Utente, Modulo, Nome, Colonne, Predefinita");
    views.insert({"admin", "AnagLocali", "Predefinita",
                  "CodLocale,Insegna,Soprannome,Citta,Provincia,codEsattore,codAgente,CodZona,"
                  "CodiceAzienda,Sospeso",
                  Value::yesNo(true)});
}

void writeSettings(const QString& path, const QString& company) {
    QSettings settings(path, QSettings::IniFormat);
    settings.setValue(u"Ditta/Nome"_s, company);
    settings.setValue(u"Utente/Nome"_s, u"admin"_s);
    settings.setValue(u"Opzioni/Personalizzazione"_s, false);
    settings.sync();
    if (settings.status() != QSettings::NoError) {
        throw RuntimeError(u"Impossibile scrivere le impostazioni '%1'."_s.arg(path));
    }
}

// Moves the staged files below `folder`; on a failure puts back what was
// moved, so that the folder is as it was.
void publish(const QString& staging, const QString& folder) {
    QStringList moved;
    for (const QString& name : installedFiles()) {
        const QString target = folder + u'/' + name;
        QDir().mkpath(QFileInfo(target).absolutePath());
        if (!QFile::rename(staging + u'/' + name, target)) {
            for (const QString& done : moved)
                QFile::rename(folder + u'/' + done, staging + u'/' + done);
            throw RuntimeError(u"Impossibile spostare '%1' in '%2'."_s.arg(name, folder));
        }
        moved << name;
    }
}

}  // namespace

void writeDemoInstallation(const QString& folder, const DemoOptions& options) {
    checkOptions(options);
    const QDate lastDay = options.lastDay.isValid() ? options.lastDay : QDate::currentDate();
    const QFileInfo target(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()));
    const QString absolute = target.absoluteFilePath();
    if (target.exists() && !target.isDir()) {
        throw RuntimeError(u"'%1' non è una cartella."_s.arg(absolute));
    }
    for (const QString& file : installedFiles()) {
        if (QFileInfo::exists(absolute + u'/' + file)) {
            throw RuntimeError(
                u"La cartella '%1' contiene già un'installazione di Lorvane (%2): non viene "
                u"sovrascritta."_s.arg(absolute, file));
        }
    }
    const QString staging =
        target.absolutePath() + u"/."_s + target.fileName() + u".demo-in-corso"_s;
    QDir(staging).removeRecursively();
    if (!QDir().mkpath(staging + u"/pers"_s)) {
        throw RuntimeError(u"Impossibile creare la cartella '%1'."_s.arg(staging));
    }
    const bool created = !target.exists();
    try {
        createMainDatabase(staging + u"/Lorvane.db"_s);
        createCatalogueDatabase(staging + u"/Stampe.db"_s);
        createCatalogueDatabase(staging + u"/pers/StampePers.db"_s);
        createPreferencesDatabase(staging + u"/Preferenze.db"_s);
        QString company;
        fillMainDatabase(staging + u"/Lorvane.db"_s, options, lastDay, company);
        writePreferences(staging + u"/Preferenze.db"_s);
        writeSettings(staging + u"/Lorvane.ini"_s, company);
        writeDemoReports(staging);
        if (!QDir().mkpath(absolute)) {
            throw RuntimeError(u"Impossibile creare la cartella '%1'."_s.arg(absolute));
        }
        publish(staging, absolute);
    } catch (...) {
        QDir(staging).removeRecursively();
        if (created) QDir(absolute).removeRecursively();
        throw;
    }
    QDir(staging).removeRecursively();
}

}  // namespace lorvane::demo
