#include "host/demo/demo_ledger_cases.h"

namespace lorvane::demo {

using namespace Qt::StringLiterals;

namespace {

void exec(Database& db, const QString& sql) { db.exec(sql.toUtf8().constData()); }

QString day(const QDate& date) { return date.toString(u"yyyy-MM-dd"_s) + u" 00:00:00"_s; }

// Three suspended venues of the cases, each with its customer account: the
// first will have a balance and no line in the period, the second a balance
// of zero, the third nothing.
void caseVenues(Database& db, const QString& since) {
    const struct {
        const char* code;
        const char* account;
        const char* insegna;
    } venues[] = {
        {"L9901", "03.901", "Caffè dell'Orologio"},
        {"L9902", "03.902", "Bar Saldo Zero"},
        {"L9903", "03.903", "Tabacchi Senza Movimenti"},
    };
    for (const auto& v : venues) {
        exec(db,
             u"INSERT INTO AnagraficaLocali (CodLocale, Insegna, Citta, Provincia, CodZona, "
             u"codEsattore, codAgente, codTitolare, CodiceAzienda, Sospeso, CodiceConto, idData) "
             u"SELECT "
             u"'%1', '%2', Citta, Provincia, CodZona, codEsattore, codAgente, codTitolare, "
             u"CodiceAzienda, "
             u"-1, '%3', '%4' FROM AnagraficaLocali WHERE id = (SELECT MIN(id) FROM "
             u"AnagraficaLocali)"_s.arg(QLatin1String(v.code),
                                        QString::fromUtf8(v.insegna).replace(u"'"_s, u"''"_s),
                                        QLatin1String(v.account), since));
        exec(db,
             u"INSERT INTO AnagraficaPianoConti (CodiceConto, Descrizione, Sistema, TipoConto, "
             u"LivelloConto, idData, idOperatore, Mastro) VALUES ('%1', '%2', 0, 0, 2, '%3', "
             u"1, '03')"_s.arg(QLatin1String(v.account),
                               QString::fromUtf8(v.insegna).replace(u"'"_s, u"''"_s), since));
    }
}

// A note of causale GIR of each venue given, on `date`, by the venue's collector.
void openingNotes(Database& db, const QString& date, const QString& venues) {
    exec(db,
         u"INSERT INTO NoteTeste (DataRegistrazione, CodLocale, CodEsattore, CodCausale, "
         u"Descrizione, CodiceAzienda, idData, IdOperatore) SELECT '%1', CodLocale, "
         u"codEsattore, 'GIR', 'Saldo di apertura', CodiceAzienda, '%1', 1 FROM "
         u"AnagraficaLocali WHERE %2"_s.arg(date, venues));
}

// Two lines of each opening note of `date`: the customer's account and the
// capital, of `amount` (an expression over al.id) on the customer's side `side`.
void openingLines(Database& db, const QString& date, const QString& venues, const QString& amount,
                  const QString& side, int firstLine) {
    const QString other = side == u"Dare"_s ? u"Avere"_s : u"Dare"_s;
    const QString from =
        u" FROM NoteTeste nt JOIN AnagraficaLocali al ON al.CodLocale = nt.CodLocale WHERE "
        u"nt.CodCausale = 'GIR' AND nt.DataRegistrazione = '%1' AND %2"_s.arg(date, venues);
    exec(db,
         u"INSERT INTO NoteRighe (IdTesta, Data, Descrizione, %1, %2, CodConto, codLocale, "
         u"idData, idOperatore, Riga) SELECT nt.id, nt.DataRegistrazione, 'Saldo di "
         u"apertura', %3, 0, al.CodiceConto, al.CodLocale, nt.idData, 1, %4"_s
                 .arg(side, other, amount)
                 .arg(firstLine) +
             from);
    exec(db,
         u"INSERT INTO NoteRighe (IdTesta, Data, Descrizione, %1, %2, CodConto, codLocale, "
         u"idData, idOperatore, Riga) SELECT nt.id, nt.DataRegistrazione, 'Saldo di "
         u"apertura', %3, 0, '07.001', al.CodLocale, nt.idData, 1, %4"_s.arg(other, side, amount)
                 .arg(firstLine + 1) +
             from);
}

}  // namespace

void writeLedgerCases(Database& db, const QDate& firstDay) {
    const QString since = day(firstDay);
    const QString before = day(firstDay.addDays(-1));
    caseVenues(db, since);

    // Every venue in use, and the first case, open with a balance: in Dare,
    // and in Avere for one in five; the second case opens and closes at once.
    const QString opening = u"(Sospeso = 0 OR Sospeso IS NULL OR CodLocale = 'L9901')"_s;
    openingNotes(db, before, opening);
    openingNotes(db, before, u"CodLocale = 'L9902'"_s);
    const QString amount = u"((al.id * 37) % 400 + 25)"_s;
    openingLines(db, before, u"al.id % 5 <> 0 AND al.CodLocale <> 'L9902'"_s, amount, u"Dare"_s, 1);
    openingLines(db, before, u"al.id % 5 = 0 AND al.CodLocale <> 'L9902'"_s, amount, u"Avere"_s, 1);
    openingLines(db, before, u"al.CodLocale = 'L9902'"_s, u"150"_s, u"Dare"_s, 1);
    openingLines(db, before, u"al.CodLocale = 'L9902'"_s, u"150"_s, u"Avere"_s, 3);

    // A fund of the head office, an account of level 3, moved against the
    // group of cash accounts (level 1) two weeks into the period.
    exec(db,
         u"INSERT INTO AnagraficaPianoConti (CodiceConto, Descrizione, Sistema, TipoConto, "
         u"LivelloConto, idData, idOperatore, Mastro) VALUES ('01.001.01', 'Cassa sede - "
         u"fondo spese', 0, 0, 3, '%1', 1, '01')"_s.arg(since));
    const QString fund = day(firstDay.addDays(14));
    exec(db,
         u"INSERT INTO NoteTeste (DataRegistrazione, CodEsattore, CodCausale, Descrizione, "
         u"CodiceAzienda, idData, IdOperatore) VALUES ('%1', 'ES01', 'GIR', 'Fondo spese "
         u"sede', 'AZ01', '%1', 1)"_s.arg(fund));
    exec(db,
         u"INSERT INTO NoteRighe (IdTesta, Data, Descrizione, Dare, Avere, CodConto, idData, "
         u"idOperatore, Riga) SELECT MAX(id), '%1', 'Fondo spese sede', 80, 0, '01.001.01', "
         u"'%1', 1, 1 FROM NoteTeste UNION ALL SELECT MAX(id), '%1', 'Fondo spese sede', 0, "
         u"80, '01', '%1', 1, 2 FROM NoteTeste"_s.arg(fund));
}

}  // namespace lorvane::demo
