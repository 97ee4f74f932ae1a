#include "host/demo/demo_machine_reports.h"

#include <QStringList>
#include <vector>

#include "host/demo/main_schema.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr char parametriTable[] = R"sql(
CREATE TABLE Parametri (Parametri TEXT(255) COLLATE NOCASE, Descr1 TEXT(255) COLLATE NOCASE,
  Descr2 TEXT(255) COLLATE NOCASE, Descr3 TEXT(255) COLLATE NOCASE);
)sql";

// The payout of a set of boards in percent: what went out over what went in,
// each counter times its multiplier; Null when nothing went in.
QByteArray payout(const char* in, const char* out) {
    return QByteArray("IIf(Nz(Sum(") + in + "), 0) = 0, Null, 100 * Sum(" + out + ") / Sum(" + in +
           "))";
}

constexpr char boardIn[] = "m.CnTotIN * m.MoltiplicatoreIN";
constexpr char boardOut[] = "m.CnTotOut * m.MoltiplicatoreOut";

// One board a line with its payout; the venue's and the report's payout from
// the same boards, looked up per row. The warehouse (no venue) is a group.
QByteArray globalQuery() {
    return "SELECT Nz(ms.CodLocale, 'Magazzino') AS Locale, ms.id, ms.CodiceInterno, ms.NomeGioco, "
           "ms.CodiceAAMS, ms.UltimoIncasso, ms.CnTotIN * ms.MoltiplicatoreIN AS Entrate, "
           "ms.CnTotOut * ms.MoltiplicatoreOut AS Uscite, IIf(Nz(ms.CnTotIN * "
           "ms.MoltiplicatoreIN, 0) = 0, Null, 100 * (ms.CnTotOut * ms.MoltiplicatoreOut) / "
           "(ms.CnTotIN * ms.MoltiplicatoreIN)) AS Percentuale, (SELECT " +
           payout(boardIn, boardOut) +
           " FROM MagSchede m WHERE Nz(m.CodLocale, 'Magazzino') = Nz(ms.CodLocale, "
           "'Magazzino')) AS PercLocale, (SELECT " +
           payout(boardIn, boardOut) +
           " FROM MagSchede m) AS PercTotale, (SELECT Parametri FROM Parametri) AS Periodo "
           "FROM MagSchede ms ORDER BY Nz(ms.CodLocale, 'Magazzino'), ms.CodiceInterno, ms.id";
}

// The readings summed per board, with the venue's and the report's payout. A
// board out of use has readings but no row of its own: it goes by its number.
QByteArray partialQuery() {
    return "SELECT ni.CodLocale AS Locale, ni.LinkScheda, (SELECT ms.CodiceInterno FROM MagSchede "
           "ms WHERE ms.id = ni.LinkScheda) AS CodiceInterno, Nz((SELECT ms.NomeGioco FROM "
           "MagSchede ms WHERE ms.id = ni.LinkScheda), 'Scheda ' & ni.LinkScheda) AS NomeGioco, "
           "Count(*) AS Letture, Sum(ni.ParzialeIn) "
           "AS Entrate, Sum(ni.ParzialeOut) AS Uscite, " +
           payout("ni.ParzialeIn", "ni.ParzialeOut") + " AS Percentuale, (SELECT " +
           payout("r.ParzialeIn", "r.ParzialeOut") +
           " FROM NoteIncassi r WHERE r.CodLocale = ni.CodLocale) AS PercLocale, (SELECT " +
           payout("r.ParzialeIn", "r.ParzialeOut") +
           " FROM NoteIncassi r) AS PercTotale, (SELECT Parametri FROM Parametri) AS Periodo "
           "FROM NoteIncassi ni GROUP BY ni.CodLocale, ni.LinkScheda "
           "ORDER BY ni.CodLocale, CodiceInterno, ni.LinkScheda";
}

// The last note of each board with its levels and their sum; the venue's
// sign looked up per row, as a venue may stand twice in the work table.
QByteArray levelsQuery() {
    return "SELECT ms.CodLocale AS Locale, (SELECT Max(al.Insegna) FROM AnagraficaLocali al "
           "WHERE al.CodLocale = ms.CodLocale) AS Insegna, ms.CodiceInterno, ms.NomeGioco, "
           "ni.DataIncasso, ni.LivelloH1, ni.LivelloH2, ni.Livelloh3, Nz(ni.LivelloH1, 0) + "
           "Nz(ni.LivelloH2, 0) + Nz(ni.Livelloh3, 0) AS Saldo, (SELECT Parametri FROM "
           "Parametri) AS Periodo FROM NoteIncassi ni INNER JOIN MagSchede ms ON ms.id = "
           "ni.LinkScheda ORDER BY ms.CodLocale, ms.CodiceInterno, ni.DataIncasso";
}

// A4 portrait with 12 mm margins: 186 mm of width.
constexpr double Width = 186;

struct Column {
    const char* title;
    const char* field;
    const char* format;  // "" for none
    double width;        // mm
    bool right;
};

// An item of `type` per column from the left margin on: the titles
// ("text"), the fields, or the sums of the columns given in `summed`.
QByteArray columnItems(const std::vector<Column>& columns, const char* type, double y, double h,
                       const QStringList& summed = {}, const char* extra = "") {
    QStringList items;
    double x = 0;
    for (const Column& c : columns) {
        const QString field = QString::fromLatin1(c.field);
        const bool text = QByteArrayView(type) == "text";
        QString what;
        if (text) {
            what = u"\"type\": \"text\", \"text\": \"%1\""_s.arg(QString::fromUtf8(c.title));
        } else if (QByteArrayView(type) == "field" || summed.contains(field)) {
            what = u"\"type\": \"%1\", \"field\": \"%2\""_s.arg(QLatin1String(type), field);
            if (*c.format) what += u", \"format\": \"%1\""_s.arg(QLatin1String(c.format));
        }
        if (!what.isEmpty()) {
            items << u"{%1, \"x\": %2, \"y\": %3, \"w\": %4, \"h\": %5%6%7}"_s.arg(what)
                         .arg(x)
                         .arg(y)
                         .arg(c.width)
                         .arg(h)
                         .arg(c.right ? u", \"align\": \"right\""_s : QString())
                         .arg(QLatin1String(extra));
        }
        x += c.width;
    }
    return items.join(u",\n    "_s).toUtf8();
}

struct Layout {
    const char* title;
    const char* workFile;
    QByteArray query;
    std::vector<Column> columns;
    QStringList summed;       // the columns summed per venue and in all
    QByteArray venueHeader;   // items after the venue's code
    QByteArray venueFooter;   // items after the sums of the venue
    QByteArray reportFooter;  // items after the sums of the report
};

QByteArray render(const Layout& l) {
    const QByteArray bold = R"(, "font": {"bold": true})";
    return R"({
  "lorvaneLayout": 1,
  "title": ")" +
           QByteArray(l.title) + R"(",
  "data": {"workFile": ")" +
           l.workFile + R"(", "query": ")" + l.query + R"("},
  "page": {"size": "A4", "orientation": "portrait", "margins": [12, 12, 12, 12]},
  "reportHeader": {"height": 17, "items": [
    {"type": "special", "value": "title", "x": 0, "y": 0, "w": 186, "h": 8, "font": {"size": 14, "bold": true}},
    {"type": "field", "field": "Periodo", "x": 0, "y": 9, "w": 186, "h": 6, "font": {"size": 9}}]},
  "pageHeader": {"height": 9, "items": [
    )" + columnItems(l.columns, "text", 1, 6, {}, bold) +
           R"(,
    {"type": "line", "x": 0, "y": 8, "x2": 186, "y2": 8, "width": 0.8}]},
  "groups": [{"field": "Locale",
    "header": {"height": 8, "items": [
      {"type": "box", "x": 0, "y": 0, "w": 186, "h": 7, "border": 0, "fill": "#e8eef5"},
      {"type": "text", "text": "Locale", "x": 1, "y": 0.5, "w": 16, "h": 6, "font": {"bold": true}},
      {"type": "special", "value": "groupValue", "x": 17, "y": 0.5, "w": 30, "h": 6, "font": {"bold": true}})" +
           l.venueHeader + R"(]},
    "footer": {"height": 9, "items": [
      {"type": "line", "x": 0, "y": 0.5, "x2": 186, "y2": 0.5},
      {"type": "text", "text": "Totale locale", "x": 0, "y": 1.5, "w": 40, "h": 6, "font": {"italic": true}},
      )" + columnItems(l.columns, "sum", 1.5, 6, l.summed) +
           l.venueFooter + R"(]}}],
  "detail": {"height": 5.5, "items": [
    )" + columnItems(l.columns, "field", 0, 5.5) +
           R"(]},
  "reportFooter": {"height": 12, "items": [
    {"type": "line", "x": 0, "y": 1, "x2": 186, "y2": 1, "width": 0.8},
    {"type": "text", "text": "Totale generale", "x": 0, "y": 3, "w": 40, "h": 6, "font": {"bold": true}},
    )" +
           columnItems(l.columns, "sum", 3, 6, l.summed,
                       R"(, "scope": "report", "font": {"bold": true})") +
           l.reportFooter + R"(]},
  "pageFooter": {"height": 7, "items": [
    {"type": "special", "value": "author", "x": 0, "y": 1, "w": 60, "h": 5, "font": {"size": 8}},
    {"type": "special", "value": "printDate", "x": 70, "y": 1, "w": 46, "h": 5, "align": "center", "font": {"size": 8}},
    {"type": "special", "value": "pageOfPages", "x": 136, "y": 1, "w": 50, "h": 5, "align": "right", "font": {"size": 8}}]}
}
)";
}

// The payout of the venue and of the whole report under the percentage column.
QByteArray percentageAt(const char* field, double x, double y, const char* extra) {
    return QByteArray(R"(,
      {"type": "field", "field": ")") +
           field + R"(", "format": "0,00", "x": )" + QByteArray::number(x) + R"(, "y": )" +
           QByteArray::number(y) + R"(, "w": 20, "h": 6, "align": "right")" + extra + "}";
}

Layout levelsLayout(const char* title) {
    return {title,
            "SaldiMacchine.mdb",
            levelsQuery(),
            {{"Codice", "CodiceInterno", "", 20, false},
             {"Apparecchio", "NomeGioco", "", 50, false},
             {"Data nota", "DataIncasso", "dd/MM/yyyy", 24, false},
             {"Hopper 1", "LivelloH1", "#.##0,00", 23, true},
             {"Hopper 2", "LivelloH2", "#.##0,00", 23, true},
             {"Hopper 3", "Livelloh3", "#.##0,00", 23, true},
             {"Saldo", "Saldo", "#.##0,00", 23, true}},
            {u"LivelloH1"_s, u"LivelloH2"_s, u"Livelloh3"_s, u"Saldo"_s},
            R"(,
      {"type": "field", "field": "Insegna", "x": 48, "y": 0.5, "w": 120, "h": 6})",
            {},
            {}};
}

}  // namespace

QByteArray percentagesTemplateSql() {
    return mainTablesSql({u"MagSchede"_s, u"NoteIncassi"_s}) + parametriTable;
}

QByteArray machineStateTemplateSql() {
    return mainTablesSql({u"AnagraficaLocali"_s, u"MagSchede"_s, u"NoteIncassi"_s}) +
           parametriTable +
           "CREATE INDEX AnagraficaLocali_CodLocale ON AnagraficaLocali (CodLocale);\n";
}

QByteArray globalPercentagesLayout() {
    const double percentX = 166;
    return render({"Percentuali di pagamento globali",
                   "Percentuali.mdb",
                   globalQuery(),
                   {{"Codice", "CodiceInterno", "", 18, false},
                    {"Apparecchio", "NomeGioco", "", 44, false},
                    {"Ultimo incasso", "UltimoIncasso", "dd/MM/yyyy", 24, false},
                    {"Entrate", "Entrate", "#.##0,00", 40, true},
                    {"Uscite", "Uscite", "#.##0,00", 40, true},
                    {"% pag.", "Percentuale", "0,00", 20, true}},
                   {u"Entrate"_s, u"Uscite"_s},
                   {},
                   percentageAt("PercLocale", percentX, 1.5, R"(, "font": {"italic": true})"),
                   percentageAt("PercTotale", percentX, 3, R"(, "font": {"bold": true})")});
}

QByteArray partialPercentagesLayout() {
    const double percentX = 166;
    return render({"Percentuali di pagamento parziali",
                   "Percentuali.mdb",
                   partialQuery(),
                   {{"Codice", "CodiceInterno", "", 18, false},
                    {"Apparecchio", "NomeGioco", "", 52, false},
                    {"Letture", "Letture", "#.##0", 16, true},
                    {"Entrate", "Entrate", "#.##0,00", 40, true},
                    {"Uscite", "Uscite", "#.##0,00", 40, true},
                    {"% pag.", "Percentuale", "0,00", 20, true}},
                   {u"Letture"_s, u"Entrate"_s, u"Uscite"_s},
                   {},
                   percentageAt("PercLocale", percentX, 1.5, R"(, "font": {"italic": true})"),
                   percentageAt("PercTotale", percentX, 3, R"(, "font": {"bold": true})")});
}

QByteArray hopperLayout() { return render(levelsLayout("Situazione hopper")); }

QByteArray changeMachineLayout() { return render(levelsLayout("Situazione cambiamonete")); }

}  // namespace lorvane::demo
