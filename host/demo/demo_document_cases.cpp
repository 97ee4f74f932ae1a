#include "host/demo/demo_document_cases.h"

#include <tuple>

#include "platform/runtime_error.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

QString scalar(Database& db, const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db.handle(), sql.toUtf8().constData(), -1, &statement, nullptr) !=
        SQLITE_OK)
        throw RuntimeError(QString::fromUtf8(sqlite3_errmsg(db.handle())));
    QString value;
    if (sqlite3_step(statement) == SQLITE_ROW)
        value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    return value;
}

void exec(Database& db, const QString& sql) { db.exec(sql.toUtf8().constData()); }

// The columns of `table` but those listed (quoted, comma separated).
QString columnsBut(Database& db, const char* table, const char* skipped) {
    return scalar(db,
                  u"SELECT group_concat(name, ', ') FROM pragma_table_info('%1') WHERE name "
                  u"NOT IN (%2)"_s.arg(QLatin1String(table), QLatin1String(skipped)));
}

// A copy of the venue `model` (owner, agent, company and codes alike) under
// the code `code` and the sign `insegna`.
void copyVenue(Database& db, const QString& model, const QString& code, const QString& insegna) {
    const QString venue = columnsBut(db, "AnagraficaLocali", "'id', 'CodLocale', 'Insegna'");
    exec(db,
         u"INSERT INTO AnagraficaLocali (CodLocale, Insegna, %1) SELECT '%2', '%3', %1 FROM "
         u"AnagraficaLocali WHERE CodLocale = '%4'"_s.arg(venue, code, insegna, model));
    const QString codes = columnsBut(db, "AnagraficaLocaliCaratteristiche", "'id', 'CodLocale'");
    exec(db,
         u"INSERT INTO AnagraficaLocaliCaratteristiche (CodLocale, %1) SELECT '%2', %1 FROM "
         u"AnagraficaLocaliCaratteristiche WHERE CodLocale = '%3'"_s.arg(codes, code, model));
}

// A collection note of the venue's company on `day`, with the share and the
// rounding given (NULL for none).
void addNote(Database& db, const QString& code, const QString& day, const char* utile,
             const char* arrotondamenti) {
    exec(db,
         u"INSERT INTO NoteTeste (DataRegistrazione, CodLocale, CodCausale, Descrizione, "
         u"CodiceAzienda, CodAgente, UtileLocale, Arrotondamenti, TotIntrodotto, TotUscite, "
         u"Chiuso) SELECT '%2 00:00:00', CodLocale, 'INC', 'Incasso a mano', CodiceAzienda, "
         u"codAgente, %3, %4, 0, 0, 0 FROM AnagraficaLocali WHERE CodLocale = '%1'"_s.arg(
             code, day, QLatin1String(utile), QLatin1String(arrotondamenti)));
    // Its accounting, as every note of the round has: cash against takings.
    const QString note = scalar(db, u"SELECT last_insert_rowid()"_s);
    for (const auto& [riga, conto, dare, avere] :
         {std::tuple{1, "01.001", 25, 0}, std::tuple{2, "05.002", 0, 25}}) {
        exec(db,
             u"INSERT INTO NoteRighe (IdTesta, Data, Descrizione, Dare, Avere, CodConto, "
             u"codLocale, idData, idOperatore, Riga) VALUES (%1, '%2 00:00:00', 'Incasso a "
             u"mano', %3, %4, '%5', '%6', '%2 18:00:00', 1, %7)"_s.arg(note, day)
                 .arg(dare)
                 .arg(avere)
                 .arg(QLatin1String(conto), code)
                 .arg(riga));
    }
}

// A document of `kind` for the venue on `day`, naming `company` as the party
// (NULL for none), with `lines` lines that name no company.
void addDocument(Database& db, const QString& code, const QString& day, int kind,
                 const char* company, int number, int lines) {
    exec(db,
         u"INSERT INTO DocTeste (DataDoc, TipoDoc, NumDoc, DataReg, TipoIntestazione, "
         u"CodIntestazione, TipoSpettabile, CodSpettabile, TotDoc, Annotazioni, CodiceAzienda) "
         u"SELECT '%2 00:00:00', %3, %4, '%2 00:00:00', 1, CodLocale, 2, %5, 100, '%6', "
         u"CodiceAzienda FROM AnagraficaLocali WHERE CodLocale = '%1'"_s.arg(code, day)
             .arg(kind)
             .arg(number)
             .arg(QLatin1String(company),
                  kind == 8 ? u"Atto di quietanza senza azienda"_s : u"Fattura"_s));
    const QString head = scalar(db, u"SELECT last_insert_rowid()"_s);
    for (int line = 1; line <= lines; ++line) {
        exec(db,
             u"INSERT INTO DocRighe (NumDoc, IdDoc, NrRiga, TipoRiga, Descrizione, Qta, "
             u"Totale) VALUES (%1, %2, %3, 1, 'Riga %3 del documento %1', 1, 50)"_s.arg(number)
                 .arg(head)
                 .arg(line));
    }
}

}  // namespace

void writeDocumentCases(Database& db, const QDate& lastDay) {
    const QString model =
        scalar(db,
               u"SELECT MIN(CodLocale) FROM AnagraficaLocali WHERE Sospeso = 0 AND "
               u"codTitolare IS NOT NULL AND codAgente IS NOT NULL"_s);
    if (model.isEmpty()) return;
    const QString venue = QLatin1String(DocumentCaseVenue);
    const QString nullVenue = QLatin1String(DocumentCaseNullVenue);
    copyVenue(db, model, venue, u"Circolo Aurora"_s);
    copyVenue(db, model, nullVenue, u"Tabaccheria del Sole"_s);

    const QString day = QDate(lastDay.year(), lastDay.month(), 1).toString(u"yyyy-MM-dd"_s);
    // -1234.56 + Null: the share alone; with the rounding -1234.56 + 0.5 + 2.
    addNote(db, venue, day, "-1234.56", "0.5");
    addNote(db, venue, day, "NULL", "2");
    addNote(db, nullVenue, day, "NULL", "2");
    addNote(db, nullVenue, day, "NULL", "NULL");

    // A quittance head of the period with no line.
    exec(db,
         u"INSERT INTO QuietanzaTesta (Codice, CodiceAzienda, CodLocale, CodConcessionario, "
         u"DaData, Data, NumeroDoc, Periodo, TipoDocumento, preu, aams, rete, Aggio, Bollo, "
         u"ImportoBollo, TotaleDocumento) SELECT 'QV/1', CodiceAzienda, CodLocale, (SELECT "
         u"MIN(CodiceConcessionario) FROM AnagraficaConcessionari), '%2 00:00:00', '%2 "
         u"00:00:00', 1, 'Senza righe', 1, 0, 0, 0, 0, 0, 0, 0 FROM AnagraficaLocali WHERE "
         u"CodLocale = '%1'"_s.arg(venue, day));

    // A deed whose head names no company, and an invoice of the same day.
    addDocument(db, venue, day, 8, "NULL", 9001, 2);
    addDocument(db, venue, day, 1, "NULL", 9002, 3);
}

}  // namespace lorvane::demo
