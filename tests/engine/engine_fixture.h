// A work file in a temporary work folder and a layout over it, for the
// engine's tests.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "db/database_fixture.h"
#include "engine/layout.h"
#include "engine/renderer.h"

namespace lorvane::engine::testing {

// Accounts of two groups ("03", "05"), amounts in cents to be exact.
inline QByteArray accountsScript(int rows) {
    QByteArray script =
        "CREATE TABLE Saldi (id INTEGER, CodiceConto TEXT(20), Descrizione TEXT(50), dare "
        "CURRENCY, "
        "avere CURRENCY, Mastro TEXT(2), Data DATETIME); BEGIN;";
    for (int i = 1; i <= rows; ++i) {
        const QByteArray mastro = i <= rows / 2 ? "03" : "05";
        script += "INSERT INTO Saldi VALUES (" + QByteArray::number(i) + ", '" + mastro + "." +
                  QByteArray::number(i).rightJustified(3, '0') + "', 'Conto numero " +
                  QByteArray::number(i) + "', " + QByteArray::number(i * 100 + 0.25, 'f', 2) +
                  ", " + QByteArray::number(i, 'f', 2) + ", '" + mastro +
                  "', '2024-02-29 00:00:00');";
    }
    return script + "COMMIT;";
}

constexpr char trialBalanceLayout[] = R"json({
  "lorvaneLayout": 1,
  "title": "Bilancio di prova",
  "data": {"workFile": "Prova.mdb", "query": "SELECT * FROM Saldi ORDER BY Mastro, CodiceConto"},
  "page": {"size": "A4", "orientation": "portrait", "margins": [15, 12, 15, 12]},
  "reportHeader": {"height": 12, "items": [
    {"type": "special", "value": "title", "x": 0, "y": 0, "w": 180, "h": 8, "font": {"size": 14, "bold": true}}]},
  "pageHeader": {"height": 8, "items": [
    {"type": "text", "text": "Conto", "x": 0, "y": 0, "w": 30, "h": 6, "font": {"bold": true}},
    {"type": "text", "text": "Descrizione", "x": 30, "y": 0, "w": 80, "h": 6, "font": {"bold": true}},
    {"type": "text", "text": "Dare", "x": 110, "y": 0, "w": 35, "h": 6, "align": "right", "font": {"bold": true}},
    {"type": "text", "text": "Avere", "x": 145, "y": 0, "w": 35, "h": 6, "align": "right", "font": {"bold": true}},
    {"type": "line", "x": 0, "y": 7, "x2": 180, "y2": 7}]},
  "groups": [{"field": "Mastro",
    "header": {"height": 7, "items": [
      {"type": "text", "text": "Mastro", "x": 0, "y": 0, "w": 20, "h": 6, "font": {"bold": true}},
      {"type": "special", "value": "groupValue", "x": 20, "y": 0, "w": 20, "h": 6, "font": {"bold": true}}]},
    "footer": {"height": 7, "items": [
      {"type": "count", "x": 0, "y": 0, "w": 30, "h": 6, "format": "0"},
      {"type": "sum", "field": "dare", "x": 110, "y": 0, "w": 35, "h": 6, "align": "right", "format": "#.##0,00"},
      {"type": "sum", "field": "avere", "x": 145, "y": 0, "w": 35, "h": 6, "align": "right", "format": "#.##0,00"}]}}],
  "detail": {"height": 6, "items": [
    {"type": "field", "field": "CodiceConto", "x": 0, "y": 0, "w": 30, "h": 6},
    {"type": "field", "field": "Descrizione", "x": 30, "y": 0, "w": 80, "h": 6},
    {"type": "field", "field": "dare", "x": 110, "y": 0, "w": 35, "h": 6, "align": "right", "format": "#.##0,00"},
    {"type": "field", "field": "avere", "x": 145, "y": 0, "w": 35, "h": 6, "align": "right", "format": "#.##0,00"}]},
  "reportFooter": {"height": 8, "items": [
    {"type": "text", "text": "Totale generale", "x": 0, "y": 0, "w": 60, "h": 6, "font": {"bold": true}},
    {"type": "sum", "field": "dare", "scope": "report", "x": 110, "y": 0, "w": 35, "h": 6, "align": "right", "format": "#.##0,00"},
    {"type": "sum", "field": "avere", "scope": "report", "x": 145, "y": 0, "w": 35, "h": 6, "align": "right", "format": "#.##0,00"}]},
  "pageFooter": {"height": 6, "items": [
    {"type": "special", "value": "pageOfPages", "x": 140, "y": 0, "w": 40, "h": 5, "align": "right"}]}
})json";

// A work folder holding Prova.mdb with `rows` accounts, and the layout over it.
class EngineFixture : public ::testing::Test {
  protected:
    void prepare(int rows, const QByteArray& layout = QByteArray(trialBalanceLayout)) {
        qputenv("LORVANE_TEMP1", work.path().toUtf8());
        db::testing::DatabaseFile file(accountsScript(rows).constData());
        QFile::remove(work.filePath(QStringLiteral("Prova.mdb")));
        ASSERT_TRUE(QFile::copy(file.path(), work.filePath(QStringLiteral("Prova.mdb"))));
        QFile out(layouts.filePath(QStringLiteral("prova.lrl")));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(layout);
    }
    void TearDown() override { qunsetenv("LORVANE_TEMP1"); }

    // The trial balance over `rows` accounts, rendered as a run titles it.
    PageDocument renderTrialBalance(int rows) {
        prepare(rows);
        return render(loadLayout(layoutPath()),
                      RenderInfo{QStringLiteral("Bilancio di verifica"), QStringLiteral("mario"),
                                 QDate(2024, 3, 1)});
    }
    QString layoutPath() const { return layouts.filePath(QStringLiteral("prova.lrl")); }

    QTemporaryDir work;
    QTemporaryDir layouts;
};

}  // namespace lorvane::engine::testing
