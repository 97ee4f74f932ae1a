#include "host/demo/demo_reports.h"

#include <sqlite3.h>

#include <QDir>
#include <QFile>

#include "host/demo/demo_machine_reports.h"
#include "host/demo/demo_takings_report.h"
#include "platform/runtime_error.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

// The tables the trial balance fills and its layouts read.
constexpr char trialBalanceTemplate[] = R"sql(
CREATE TABLE AnagraficaPianoConti (id INTEGER, CodiceConto TEXT(20) COLLATE NOCASE,
  Descrizione TEXT(100) COLLATE NOCASE, Sistema BOOLEAN, TipoConto SMALLINT, LivelloConto SMALLINT,
  idData DATETIME, idOperatore INTEGER, Mastro TEXT(10) COLLATE NOCASE);
CREATE TABLE Saldi (id INTEGER, CodiceConto TEXT(20) COLLATE NOCASE, Descrizione TEXT(100) COLLATE NOCASE,
  dare CURRENCY, avere CURRENCY, saldo CURRENCY, Mastro TEXT(10) COLLATE NOCASE, TipoConto SMALLINT,
  CodiceLocale TEXT(20) COLLATE NOCASE, LivelloConto SMALLINT);
CREATE TABLE Parametri (Parametri TEXT(255) COLLATE NOCASE, Descr1 TEXT(255) COLLATE NOCASE,
  Descr2 TEXT(255) COLLATE NOCASE, Descr3 TEXT(255) COLLATE NOCASE);
)sql";

// The balance per account, grouped by the account's group (Mastro) of the
// chart: the Mastro of Saldi cannot be relied on.
constexpr char trialBalanceQuery[] =
    "SELECT s.CodiceConto, s.Descrizione, s.dare, s.avere, s.saldo, p.Mastro AS MastroConto, "
    "(SELECT m.Descrizione FROM AnagraficaPianoConti m WHERE m.CodiceConto = p.Mastro) AS "
    "DescrizioneMastro, (SELECT Parametri FROM Parametri) AS Periodo "
    "FROM Saldi s LEFT JOIN AnagraficaPianoConti p ON p.CodiceConto = s.CodiceConto "
    "ORDER BY p.Mastro, s.CodiceConto";

QByteArray trialBalanceLayout(bool personal) {
    const QByteArray title = personal ? "Bilancio di verifica per mastro" : "Bilancio di verifica";
    const QByteArray groupHeader =
        personal
            ? R"({"type": "box", "x": 0, "y": 0, "w": 186, "h": 7, "border": 0, "fill": "#e8eef5"},
      {"type": "text", "text": "Mastro", "x": 1, "y": 0.5, "w": 20, "h": 6, "font": {"bold": true}},
      {"type": "special", "value": "groupValue", "x": 21, "y": 0.5, "w": 12, "h": 6, "font": {"bold": true}},
      {"type": "field", "field": "DescrizioneMastro", "x": 33, "y": 0.5, "w": 120, "h": 6, "font": {"bold": true}})"
            : R"({"type": "text", "text": "Mastro", "x": 0, "y": 0.5, "w": 20, "h": 6, "font": {"bold": true}},
      {"type": "special", "value": "groupValue", "x": 20, "y": 0.5, "w": 12, "h": 6, "font": {"bold": true}},
      {"type": "field", "field": "DescrizioneMastro", "x": 32, "y": 0.5, "w": 120, "h": 6, "font": {"bold": true}})";
    return R"({
  "lorvaneLayout": 1,
  "title": ")" +
           title + R"(",
  "data": {"workFile": "Bilancio.mdb", "query": ")" +
           QByteArray(trialBalanceQuery) + R"("},
  "page": {"size": "A4", "orientation": "portrait", "margins": [12, 12, 12, 12]},
  "reportHeader": {"height": 18, "items": [
    {"type": "special", "value": "title", "x": 0, "y": 0, "w": 186, "h": 8, "font": {"size": 14, "bold": true}},
    {"type": "field", "field": "Periodo", "x": 0, "y": 9, "w": 186, "h": 6, "font": {"size": 10}}]},
  "pageHeader": {"height": 9, "items": [
    {"type": "text", "text": "Conto", "x": 0, "y": 1, "w": 25, "h": 6, "font": {"bold": true}},
    {"type": "text", "text": "Descrizione", "x": 25, "y": 1, "w": 66, "h": 6, "font": {"bold": true}},
    {"type": "text", "text": "Dare", "x": 91, "y": 1, "w": 31, "h": 6, "align": "right", "font": {"bold": true}},
    {"type": "text", "text": "Avere", "x": 123, "y": 1, "w": 31, "h": 6, "align": "right", "font": {"bold": true}},
    {"type": "text", "text": "Saldo", "x": 155, "y": 1, "w": 31, "h": 6, "align": "right", "font": {"bold": true}},
    {"type": "line", "x": 0, "y": 8, "x2": 186, "y2": 8, "width": 0.8}]},
  "groups": [{"field": "MastroConto",
    "header": {"height": 8, "items": [)" +
           groupHeader + R"(]},
    "footer": {"height": 9, "items": [
      {"type": "line", "x": 91, "y": 0.5, "x2": 186, "y2": 0.5},
      {"type": "text", "text": "Totale mastro", "x": 25, "y": 1.5, "w": 60, "h": 6, "font": {"italic": true}},
      {"type": "sum", "field": "dare", "x": 91, "y": 1.5, "w": 31, "h": 6, "align": "right", "format": "#.##0,00"},
      {"type": "sum", "field": "avere", "x": 123, "y": 1.5, "w": 31, "h": 6, "align": "right", "format": "#.##0,00"},
      {"type": "sum", "field": "saldo", "x": 155, "y": 1.5, "w": 31, "h": 6, "align": "right", "format": "#.##0,00"}]}}],
  "detail": {"height": 5.5, "items": [
    {"type": "field", "field": "CodiceConto", "x": 0, "y": 0, "w": 25, "h": 5.5},
    {"type": "field", "field": "Descrizione", "x": 25, "y": 0, "w": 66, "h": 5.5},
    {"type": "field", "field": "dare", "x": 91, "y": 0, "w": 31, "h": 5.5, "align": "right", "format": "#.##0,00"},
    {"type": "field", "field": "avere", "x": 123, "y": 0, "w": 31, "h": 5.5, "align": "right", "format": "#.##0,00"},
    {"type": "field", "field": "saldo", "x": 155, "y": 0, "w": 31, "h": 5.5, "align": "right", "format": "#.##0,00"}]},
  "reportFooter": {"height": 12, "items": [
    {"type": "line", "x": 0, "y": 1, "x2": 186, "y2": 1, "width": 0.8},
    {"type": "text", "text": "Totale generale", "x": 0, "y": 3, "w": 80, "h": 6, "font": {"bold": true}},
    {"type": "sum", "field": "dare", "scope": "report", "x": 91, "y": 3, "w": 31, "h": 6, "align": "right", "format": "#.##0,00", "font": {"bold": true}},
    {"type": "sum", "field": "avere", "scope": "report", "x": 123, "y": 3, "w": 31, "h": 6, "align": "right", "format": "#.##0,00", "font": {"bold": true}},
    {"type": "sum", "field": "saldo", "scope": "report", "x": 155, "y": 3, "w": 31, "h": 6, "align": "right", "format": "#.##0,00", "font": {"bold": true}}]},
  "pageFooter": {"height": 7, "items": [
    {"type": "special", "value": "author", "x": 0, "y": 1, "w": 60, "h": 5, "font": {"size": 8}},
    {"type": "special", "value": "printDate", "x": 70, "y": 1, "w": 46, "h": 5, "align": "center", "font": {"size": 8}},
    {"type": "special", "value": "pageOfPages", "x": 136, "y": 1, "w": 50, "h": 5, "align": "right", "font": {"size": 8}}]}
}
)";
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

}  // namespace

void writeDemoReports(const QString& folder) {
    QDir().mkpath(folder + u"/Report"_s);
    QDir().mkpath(folder + u"/pers"_s);
    runScript(folder + u"/Report/Bilancio.mdb"_s, trialBalanceTemplate);
    writeFile(folder + u"/Report/Bilancio.lrl"_s, trialBalanceLayout(false));
    writeFile(folder + u"/pers/BilancioPers.lrl"_s, trialBalanceLayout(true));
    runScript(folder + u"/Report/Introdotto.mdb"_s, takingsTemplateSql());
    writeFile(folder + u"/Report/Introdotto.lrl"_s, takingsByVenueLayout());
    writeFile(folder + u"/Report/IntrodottoConcessionario.lrl"_s, takingsByConcessionaireLayout());
    runScript(folder + u"/Report/Percentuali.mdb"_s, percentagesTemplateSql());
    writeFile(folder + u"/Report/PercGlobali.lrl"_s, globalPercentagesLayout());
    writeFile(folder + u"/Report/PercParziali.lrl"_s, partialPercentagesLayout());
    runScript(folder + u"/Report/SaldiMacchine.mdb"_s, machineStateTemplateSql());
    writeFile(folder + u"/Report/SaldiHopper.lrl"_s, hopperLayout());
    writeFile(folder + u"/Report/SaldiCambiamonete.lrl"_s, changeMachineLayout());
    // The catalogue names files below Percorso the way the suite writes them.
    runScript(folder + u"/Stampe.db"_s,
              "INSERT INTO stampe (id, codiceStampa, Descrizione, NomeReport, nomeTemporaneo, "
              "Ordine) VALUES "
              "(1, 'StampaBilancio', 'Bilancio di verifica', 'Report\\Bilancio.lrl', "
              "'Report\\Bilancio.mdb', 1), "
              "(2, 'StampaIntrodotto', 'Introdotto per locale', 'Report\\Introdotto.lrl', "
              "'Report\\Introdotto.mdb', 1), "
              "(3, 'StampaIntrodotto', 'Introdotto per concessionario', "
              "'Report\\IntrodottoConcessionario.lrl', 'Report\\Introdotto.mdb', 2), "
              "(4, 'PercPagamentoG', 'Percentuali globali per locale', 'Report\\PercGlobali.lrl', "
              "'Report\\Percentuali.mdb', 1), "
              "(5, 'PercPagamentoP', 'Percentuali parziali per locale', "
              "'Report\\PercParziali.lrl', 'Report\\Percentuali.mdb', 1), "
              "(6, 'SaldiHopper', 'Situazione hopper per locale', 'Report\\SaldiHopper.lrl', "
              "'Report\\SaldiMacchine.mdb', 1), "
              "(7, 'SaldiCambiamonete', 'Situazione cambiamonete per locale', "
              "'Report\\SaldiCambiamonete.lrl', 'Report\\SaldiMacchine.mdb', 1);");
    runScript(folder + u"/pers/StampePers.db"_s,
              "INSERT INTO stampe (id, codiceStampa, Descrizione, NomeReport, nomeTemporaneo, "
              "Ordine) VALUES "
              "(1, 'StampaBilancio', 'Bilancio di verifica per mastro', 'pers\\BilancioPers.lrl', "
              "'Report\\Bilancio.mdb', 1), "
              "(2, 'StampaIntrodotto', 'Introdotto per locale', 'Report\\Introdotto.lrl', "
              "'Report\\Introdotto.mdb', 1), "
              "(3, 'PercPagamentoG', 'Percentuali globali', 'Report\\PercGlobali.lrl', "
              "'Report\\Percentuali.mdb', 1), "
              "(4, 'PercPagamentoP', 'Percentuali parziali', 'Report\\PercParziali.lrl', "
              "'Report\\Percentuali.mdb', 1), "
              "(5, 'SaldiHopper', 'Situazione hopper', 'Report\\SaldiHopper.lrl', "
              "'Report\\SaldiMacchine.mdb', 1), "
              "(6, 'SaldiCambiamonete', 'Situazione cambiamonete', "
              "'Report\\SaldiCambiamonete.lrl', 'Report\\SaldiMacchine.mdb', 1);");
}

}  // namespace lorvane::demo
