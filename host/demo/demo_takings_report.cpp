#include "host/demo/demo_takings_report.h"

#include <QStringList>
#include <vector>

#include "host/demo/main_schema.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

// The venue's sign and town, looked up per row: a venue listed twice in the
// work table must not count its notes twice.
QByteArray venueOf(const char* code) {
    return QByteArray("(SELECT al.Insegna FROM AnagraficaLocali al WHERE al.CodLocale = ") + code +
           ") AS Insegna, (SELECT al.Citta FROM AnagraficaLocali al WHERE al.CodLocale = " + code +
           ") AS Citta";
}

// One line per note: the grand totals are those of the notes copied, however
// many machines each note read.
QByteArray byVenueQuery() {
    return "SELECT nt.id, nt.CodLocale, nt.DataRegistrazione, nt.CodEsattore, nt.TotIntrodotto, "
           "nt.TotUscite, nt.TotPreu, nt.TotAAMS, nt.TotRETE, nt.UtileLocale, "
           "nt.UtileNoleggiatore, " +
           venueOf("nt.CodLocale") +
           ", (SELECT Parametri FROM Parametri) AS Periodo FROM NoteTeste nt "
           "ORDER BY Insegna, Citta, nt.CodLocale, nt.DataRegistrazione, nt.id";
}

// The readings of the notes copied, summed per concessionaire and venue.
QByteArray byConcessionaireQuery() {
    return "SELECT ni.CodConcessionario, nt.CodLocale, " + venueOf("nt.CodLocale") +
           ", Count(*) AS Letture, Sum(ni.ParzialeIn) AS SommaIn, Sum(ni.ParzialeOut) AS "
           "SommaOut, Sum(ni.Preu) AS SommaPreu, Sum(ni.AAms) AS SommaAAms, Sum(ni.Rete) AS "
           "SommaRete, (SELECT Parametri FROM Parametri) AS Periodo, (SELECT IIf(Nz(Descr3, '') "
           "= '', '', 'Concessionario: ' & Descr3) FROM Parametri) AS Filtro "
           "FROM NoteIncassi ni INNER JOIN NoteTeste nt ON nt.id = ni.IdTesta "
           "GROUP BY ni.CodConcessionario, nt.CodLocale "
           "ORDER BY ni.CodConcessionario, Insegna, Citta, nt.CodLocale";
}

// A4 landscape with 12 mm margins.
constexpr double Width = 273;

struct Column {
    const char* title;
    const char* field;
};

// The amount columns, side by side from `left` to the right margin, as items
// of `type` ("text" for the titles, "field", "sum"); `extra` goes into each.
QByteArray amountItems(const std::vector<Column>& columns, double left, const char* type, double y,
                       double height, const QByteArray& extra = {}) {
    const double width = (Width - left) / double(columns.size());
    QStringList items;
    for (size_t i = 0; i < columns.size(); ++i) {
        const QString what = QByteArrayView(type) == "text"
                                 ? u"\"text\": \"%1\""_s.arg(QString::fromUtf8(columns[i].title))
                                 : u"\"field\": \"%1\", \"format\": \"#.##0,00\""_s.arg(
                                       QString::fromLatin1(columns[i].field));
        items << u"{\"type\": \"%1\", %2, \"x\": %3, \"y\": %4, \"w\": %5, \"h\": %6, "
                 u"\"align\": \"right\"%7}"_s.arg(QString::fromLatin1(type), what)
                     .arg(left + double(i) * width)
                     .arg(y)
                     .arg(width)
                     .arg(height)
                     .arg(QString::fromUtf8(extra));
    }
    return items.join(u",\n    "_s).toUtf8();
}

// The parts the two layouts share around their own columns and groups.
QByteArray layout(const char* title, const QByteArray& query, const QByteArray& headerLine,
                  const QByteArray& pageHeader, const QByteArray& groups, const QByteArray& detail,
                  const QByteArray& totals) {
    return R"({
  "lorvaneLayout": 1,
  "title": ")" +
           QByteArray(title) + R"(",
  "data": {"workFile": "Introdotto.mdb", "query": ")" +
           query + R"("},
  "page": {"size": "A4", "orientation": "landscape", "margins": [12, 12, 12, 12]},
  "reportHeader": {"height": 22, "items": [
    {"type": "special", "value": "title", "x": 0, "y": 0, "w": 273, "h": 8, "font": {"size": 14, "bold": true}},
    {"type": "field", "field": "Periodo", "x": 0, "y": 9, "w": 273, "h": 6, "font": {"size": 10}})" +
           headerLine + R"(]},
  "pageHeader": {"height": 9, "items": [
    )" + pageHeader +
           R"(,
    {"type": "line", "x": 0, "y": 8, "x2": 273, "y2": 8, "width": 0.8}]},
  "groups": [)" +
           groups + R"(],
  "detail": {"height": 5.5, "items": [
    )" + detail +
           R"(]},
  "reportFooter": {"height": 12, "items": [
    {"type": "line", "x": 0, "y": 1, "x2": 273, "y2": 1, "width": 0.8},
    {"type": "text", "text": "Totale generale", "x": 0, "y": 3, "w": 80, "h": 6, "font": {"bold": true}},
    )" + totals +
           R"(]},
  "pageFooter": {"height": 7, "items": [
    {"type": "special", "value": "author", "x": 0, "y": 1, "w": 90, "h": 5, "font": {"size": 8}},
    {"type": "special", "value": "printDate", "x": 100, "y": 1, "w": 73, "h": 5, "align": "center", "font": {"size": 8}},
    {"type": "special", "value": "pageOfPages", "x": 183, "y": 1, "w": 90, "h": 5, "align": "right", "font": {"size": 8}}]}
}
)";
}

}  // namespace

QByteArray takingsTemplateSql() {
    return mainTablesSql({u"NoteTeste"_s, u"NoteRighe"_s, u"NoteIncassi"_s, u"AnagraficaLocali"_s,
                          u"AnagraficaAziende"_s, u"MagSchede"_s}) +
           R"sql(
CREATE TABLE Parametri (Parametri TEXT(255) COLLATE NOCASE, Descr1 TEXT(255) COLLATE NOCASE,
  Descr2 TEXT(255) COLLATE NOCASE, Descr3 TEXT(255) COLLATE NOCASE);
CREATE INDEX AnagraficaLocali_CodLocale ON AnagraficaLocali (CodLocale);
)sql";
}

QByteArray takingsByVenueLayout() {
    const std::vector<Column> amounts = {{"Introdotto", "TotIntrodotto"},
                                         {"Uscite", "TotUscite"},
                                         {"PREU", "TotPreu"},
                                         {"AAMS", "TotAAMS"},
                                         {"Rete", "TotRETE"},
                                         {"Utile locale", "UtileLocale"},
                                         {"Utile noleggiatore", "UtileNoleggiatore"}};
    constexpr double left = 49;
    const QByteArray bold = R"(, "font": {"bold": true})";
    return layout(
        "Introdotto per locale", byVenueQuery(), {},
        R"({"type": "text", "text": "Data", "x": 0, "y": 1, "w": 22, "h": 6, "font": {"bold": true}},
    {"type": "text", "text": "Esattore", "x": 22, "y": 1, "w": 25, "h": 6, "font": {"bold": true}},
    )" + amountItems(amounts, left, "text", 1, 6, bold),
        R"({"field": "CodLocale",
    "header": {"height": 8, "items": [
      {"type": "box", "x": 0, "y": 0, "w": 273, "h": 7, "border": 0, "fill": "#e8eef5"},
      {"type": "special", "value": "groupValue", "x": 1, "y": 0.5, "w": 20, "h": 6, "font": {"bold": true}},
      {"type": "field", "field": "Insegna", "x": 22, "y": 0.5, "w": 90, "h": 6, "font": {"bold": true}},
      {"type": "field", "field": "Citta", "x": 114, "y": 0.5, "w": 80, "h": 6}]},
    "footer": {"height": 9, "items": [
      {"type": "line", "x": )" +
            QByteArray::number(left) + R"(, "y": 0.5, "x2": 273, "y2": 0.5},
      {"type": "text", "text": "Totale locale", "x": 0, "y": 1.5, "w": 25, "h": 6, "font": {"italic": true}},
      {"type": "special", "value": "groupValue", "x": 25, "y": 1.5, "w": 22, "h": 6, "font": {"italic": true}},
      )" + amountItems(amounts, left, "sum", 1.5, 6) +
            "]}}",
        R"({"type": "field", "field": "DataRegistrazione", "format": "dd/MM/yyyy", "x": 0, "y": 0, "w": 22, "h": 5.5},
    {"type": "field", "field": "CodEsattore", "x": 22, "y": 0, "w": 25, "h": 5.5},
    )" + amountItems(amounts, left, "field", 0, 5.5),
        amountItems(amounts, left, "sum", 3, 6, R"(, "scope": "report")" + bold));
}

QByteArray takingsByConcessionaireLayout() {
    const std::vector<Column> amounts = {{"Introdotto", "SommaIn"},
                                         {"Uscite", "SommaOut"},
                                         {"PREU", "SommaPreu"},
                                         {"AAMS", "SommaAAms"},
                                         {"Rete", "SommaRete"}};
    constexpr double left = 148;
    const QByteArray bold = R"(, "font": {"bold": true})";
    return layout(
        "Introdotto per concessionario", byConcessionaireQuery(),
        R"(,
    {"type": "field", "field": "Filtro", "x": 0, "y": 15, "w": 273, "h": 6, "font": {"size": 10}})",
        R"({"type": "text", "text": "Locale", "x": 0, "y": 1, "w": 20, "h": 6, "font": {"bold": true}},
    {"type": "text", "text": "Insegna", "x": 20, "y": 1, "w": 70, "h": 6, "font": {"bold": true}},
    {"type": "text", "text": "Città", "x": 92, "y": 1, "w": 38, "h": 6, "font": {"bold": true}},
    {"type": "text", "text": "Letture", "x": 130, "y": 1, "w": 16, "h": 6, "align": "right", "font": {"bold": true}},
    )" + amountItems(amounts, left, "text", 1, 6, bold),
        R"({"field": "CodConcessionario",
    "header": {"height": 8, "items": [
      {"type": "box", "x": 0, "y": 0, "w": 273, "h": 7, "border": 0, "fill": "#e8eef5"},
      {"type": "text", "text": "Concessionario", "x": 1, "y": 0.5, "w": 30, "h": 6, "font": {"bold": true}},
      {"type": "special", "value": "groupValue", "x": 31, "y": 0.5, "w": 60, "h": 6, "font": {"bold": true}}]},
    "footer": {"height": 9, "items": [
      {"type": "line", "x": 130, "y": 0.5, "x2": 273, "y2": 0.5},
      {"type": "text", "text": "Totale concessionario", "x": 20, "y": 1.5, "w": 38, "h": 6, "font": {"italic": true}},
      {"type": "special", "value": "groupValue", "x": 58, "y": 1.5, "w": 60, "h": 6, "font": {"italic": true}},
      {"type": "sum", "field": "Letture", "format": "#.##0", "x": 130, "y": 1.5, "w": 16, "h": 6, "align": "right"},
      )" + amountItems(amounts, left, "sum", 1.5, 6) +
            "]}}",
        R"({"type": "field", "field": "CodLocale", "x": 0, "y": 0, "w": 20, "h": 5.5},
    {"type": "field", "field": "Insegna", "x": 20, "y": 0, "w": 70, "h": 5.5},
    {"type": "field", "field": "Citta", "x": 92, "y": 0, "w": 38, "h": 5.5},
    {"type": "field", "field": "Letture", "format": "#.##0", "x": 130, "y": 0, "w": 16, "h": 5.5, "align": "right"},
    )" + amountItems(amounts, left, "field", 0, 5.5),
        R"({"type": "sum", "field": "Letture", "format": "#.##0", "scope": "report", "x": 130, "y": 3, "w": 16, "h": 6, "align": "right", "font": {"bold": true}},
    )" + amountItems(amounts, left, "sum", 3, 6, R"(, "scope": "report")" + bold));
}

}  // namespace lorvane::demo
