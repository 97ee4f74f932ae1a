#include "host/demo/demo_reports.h"

#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include "platform/runtime_error.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

// One row of a report catalogue. The layout it names comes from the resource
// reports/<code>/<the layout's file name>, its work file's template from
// reports/<code>/<the work file's base name>.sql: a new report needs its files
// under host/demo/reports and its rows here, nothing else. A template names the
// tables it shares with others by a line "-- include Comuni/<table>.sql".
struct CatalogueRow {
    bool personal;  // pers/StampePers.db rather than Stampe.db
    int id;
    const char* code;
    const char* description;
    const char* layout;    // below Percorso, as the suite writes it
    const char* workFile;  // likewise
    int order;
};

constexpr CatalogueRow catalogue[] = {
    {false, 1, "StampaBilancio", "Bilancio di verifica", "Report\\Bilancio.lrl",
     "Report\\Bilancio.mdb", 1},
    {false, 2, "StampaIntrodotto", "Introdotto per locale", "Report\\Introdotto.lrl",
     "Report\\Introdotto.mdb", 1},
    {false, 3, "StampaIntrodotto", "Introdotto per concessionario",
     "Report\\IntrodottoConcessionario.lrl", "Report\\Introdotto.mdb", 2},
    {false, 4, "PercPagamentoG", "Percentuali globali per locale", "Report\\PercGlobali.lrl",
     "Report\\PercGlobali.mdb", 1},
    {false, 5, "PercPagamentoP", "Percentuali parziali per locale", "Report\\PercParziali.lrl",
     "Report\\PercParziali.mdb", 1},
    {false, 6, "SaldiHopper", "Situazione hopper per locale", "Report\\SaldiHopper.lrl",
     "Report\\SaldiHopper.mdb", 1},
    {false, 7, "SaldiCambiamonete", "Situazione cambiamonete per locale",
     "Report\\SaldiCambiamonete.lrl", "Report\\SaldiCambiamonete.mdb", 1},
    {false, 8, "StampaSchedaLocale", "Scheda cliente per locale e conto",
     "Report\\SchedaLocale.lrl", "Report\\SchedaLocale.mdb", 1},
    {false, 9, "StampaSchedaContab", "Scheda contabile per conto", "Report\\SchedaContab.lrl",
     "Report\\SchedaContab.mdb", 1},
    {false, 10, "IntrodottoDistinta", "Introdotto su distinte per locale",
     "Report\\IntrodottoDistinta.lrl", "Report\\IntrodottoDistinta.mdb", 1},
    // Both codes of one screen read one work file, written from the first row's folder.
    {false, 11, "Acconti", "Acconti per locale", "Report\\Acconti.lrl", "Report\\Acconti.mdb", 1},
    {false, 12, "Refill", "Refill per locale", "Report\\Refill.lrl", "Report\\Acconti.mdb", 1},
    {false, 13, "DifferenzaPreu", "Differenza PREU per locale", "Report\\DifferenzaPreu.lrl",
     "Report\\DifferenzaPreu.mdb", 1},
    {false, 14, "SommeConsegnate", "Ricevuta somme consegnate al locale",
     "Report\\SommeConsegnate.lrl", "Report\\SommeConsegnate.mdb", 1},
    {false, 15, "Quietanza", "Quietanze per concessionario e locale", "Report\\Quietanza.lrl",
     "Report\\Quietanza.mdb", 1},
    {false, 16, "StampaAttoQuietanza", "Atto di quietanza", "Report\\AttoQuietanza.lrl",
     "Report\\AttoQuietanza.mdb", 1},
    {false, 17, "StampaEtichette", "Etichette schede 70 x 37 (3 x 8 per foglio)",
     "Report\\EtichetteSchede3x8.lrl", "Report\\Etichette.mdb", 1},
    {false, 18, "StampaEtichette", "Etichette schede 99 x 38 (2 x 7 per foglio)",
     "Report\\EtichetteSchede2x7.lrl", "Report\\Etichette.mdb", 2},
    {false, 19, "StampaEtichetteMob", "Etichette mobili 70 x 37 (3 x 8 per foglio)",
     "Report\\EtichetteMobili3x8.lrl", "Report\\EtichetteMobili.mdb", 1},
    {false, 20, "StampaEtichetteMob", "Etichette mobili 99 x 38 (2 x 7 per foglio)",
     "Report\\EtichetteMobili2x7.lrl", "Report\\EtichetteMobili.mdb", 2},
    {false, 21, "StampaCassa", "Cassa per giorno e locale", "Report\\Cassa.lrl",
     "Report\\Cassa.mdb", 1},
    {false, 22, "StampaRegistro", "Registro dei corrispettivi", "Report\\Registro.lrl",
     "Report\\Registro.mdb", 1},
    {false, 23, "StampaRegistro2", "Registro dei corrispettivi con comodato",
     "Report\\RegistroComodato.lrl", "Report\\RegistroComodato.mdb", 1},
    {true, 1, "StampaBilancio", "Bilancio di verifica per mastro", "pers\\BilancioPers.lrl",
     "Report\\Bilancio.mdb", 1},
    {true, 2, "StampaIntrodotto", "Introdotto per locale", "Report\\Introdotto.lrl",
     "Report\\Introdotto.mdb", 1},
    {true, 3, "PercPagamentoG", "Percentuali globali", "Report\\PercGlobali.lrl",
     "Report\\PercGlobali.mdb", 1},
    {true, 4, "PercPagamentoP", "Percentuali parziali", "Report\\PercParziali.lrl",
     "Report\\PercParziali.mdb", 1},
    {true, 5, "SaldiHopper", "Situazione hopper", "Report\\SaldiHopper.lrl",
     "Report\\SaldiHopper.mdb", 1},
    {true, 6, "SaldiCambiamonete", "Situazione cambiamonete", "Report\\SaldiCambiamonete.lrl",
     "Report\\SaldiCambiamonete.mdb", 1},
    {true, 7, "StampaSchedaLocale", "Scheda cliente", "Report\\SchedaLocale.lrl",
     "Report\\SchedaLocale.mdb", 1},
    {true, 8, "StampaSchedaContab", "Scheda contabile", "Report\\SchedaContab.lrl",
     "Report\\SchedaContab.mdb", 1},
    {true, 9, "IntrodottoDistinta", "Introdotto su distinte", "Report\\IntrodottoDistinta.lrl",
     "Report\\IntrodottoDistinta.mdb", 1},
    {true, 10, "Acconti", "Acconti", "Report\\Acconti.lrl", "Report\\Acconti.mdb", 1},
    {true, 11, "Refill", "Refill", "Report\\Refill.lrl", "Report\\Acconti.mdb", 1},
    {true, 12, "DifferenzaPreu", "Differenza PREU", "Report\\DifferenzaPreu.lrl",
     "Report\\DifferenzaPreu.mdb", 1},
    {true, 13, "SommeConsegnate", "Ricevuta somme consegnate", "Report\\SommeConsegnate.lrl",
     "Report\\SommeConsegnate.mdb", 1},
    {true, 14, "Quietanza", "Quietanze", "Report\\Quietanza.lrl", "Report\\Quietanza.mdb", 1},
    {true, 15, "StampaAttoQuietanza", "Atti di quietanza", "Report\\AttoQuietanza.lrl",
     "Report\\AttoQuietanza.mdb", 1},
    {true, 16, "StampaEtichette", "Etichette schede", "Report\\EtichetteSchede3x8.lrl",
     "Report\\Etichette.mdb", 1},
    {true, 17, "StampaEtichetteMob", "Etichette mobili", "Report\\EtichetteMobili3x8.lrl",
     "Report\\EtichetteMobili.mdb", 1},
    {true, 18, "StampaCassa", "Cassa per giorno", "Report\\Cassa.lrl", "Report\\Cassa.mdb", 1},
    {true, 19, "StampaRegistro", "Registro dei corrispettivi", "Report\\Registro.lrl",
     "Report\\Registro.mdb", 1},
    {true, 20, "StampaRegistro2", "Registro con comodato", "Report\\RegistroComodato.lrl",
     "Report\\RegistroComodato.mdb", 1},
};

QString localPath(const char* suitePath) {
    return QString::fromLatin1(suitePath).replace(u'\\', u'/');
}

QByteArray resource(const QString& path) {
    QFile source(u":/reports/"_s + path);
    if (!source.open(QIODevice::ReadOnly))
        throw RuntimeError(u"Manca il file '%1' del programma."_s.arg(source.fileName()));
    return source.readAll();
}

QByteArray resource(const char* code, const QString& file) {
    return resource(QString::fromLatin1(code) + u'/' + file);
}

// The template with each include line replaced by the file it names, itself
// expanded; an include nested deeper than a few levels is a loop.
QByteArray templateScript(const QString& path, int depth = 0) {
    static constexpr QByteArrayView includeLine = "-- include ";
    if (depth > 4) throw RuntimeError(u"Il modello '%1' include sé stesso."_s.arg(path));
    QByteArray script;
    for (const QByteArray& line : resource(path).split('\n')) {
        if (line.startsWith(includeLine))
            script += templateScript(QString::fromUtf8(line.mid(includeLine.size()).trimmed()),
                                     depth + 1);
        else
            script += line + '\n';
    }
    return script;
}

void runScript(const QString& path, const QByteArray& script) {
    sqlite3* db = nullptr;
    QString failure;
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &db,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) != SQLITE_OK) {
        failure = QString::fromUtf8(sqlite3_errmsg(db));
    } else {
        char* error = nullptr;
        if (sqlite3_exec(db, script.constData(), nullptr, nullptr, &error) != SQLITE_OK) {
            failure = QString::fromUtf8(error);
            sqlite3_free(error);
        }
    }
    sqlite3_close(db);
    if (!failure.isEmpty())
        throw RuntimeError(u"Impossibile scrivere '%1': %2"_s.arg(path, failure));
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        throw RuntimeError(u"Impossibile scrivere '%1'."_s.arg(path));
    }
}

QByteArray quoted(const char* text) { return '\'' + QByteArray(text).replace('\'', "''") + '\''; }

QByteArray insertRow(const CatalogueRow& row) {
    return "INSERT INTO stampe (id, codiceStampa, Descrizione, NomeReport, nomeTemporaneo, "
           "Ordine) VALUES (" +
           QByteArray::number(row.id) + ", " + quoted(row.code) + ", " + quoted(row.description) +
           ", " + quoted(row.layout) + ", " + quoted(row.workFile) + ", " +
           QByteArray::number(row.order) + ");\n";
}

}  // namespace

QStringList demoReportFiles() {
    QStringList files;
    for (const CatalogueRow& row : catalogue) {
        for (const char* file : {row.layout, row.workFile}) {
            const QString local = localPath(file);
            if (!files.contains(local)) files << local;
        }
    }
    return files;
}

void writeDemoReports(const QString& folder) {
    QSet<QString> written;
    QByteArray standard, personal;
    for (const CatalogueRow& row : catalogue) {
        const QString layout = localPath(row.layout);
        if (!written.contains(layout)) {
            QDir().mkpath(QFileInfo(folder + u'/' + layout).absolutePath());
            writeFile(folder + u'/' + layout, resource(row.code, QFileInfo(layout).fileName()));
            written.insert(layout);
        }
        const QString workFile = localPath(row.workFile);
        if (!written.contains(workFile)) {
            QDir().mkpath(QFileInfo(folder + u'/' + workFile).absolutePath());
            runScript(folder + u'/' + workFile,
                      templateScript(QString::fromLatin1(row.code) + u'/' +
                                     QFileInfo(workFile).completeBaseName() + u".sql"_s));
            written.insert(workFile);
        }
        (row.personal ? personal : standard) += insertRow(row);
    }
    runScript(folder + u"/Stampe.db"_s, standard);
    runScript(folder + u"/pers/StampePers.db"_s, personal);
}

}  // namespace lorvane::demo
