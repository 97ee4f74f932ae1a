#include "host/demo/demo_cash_cases.h"

namespace lorvane::demo {

namespace {

// The first loan note still waiting for its variation that has a line on the
// loan account.
constexpr char firstOpenLoan[] =
    "(SELECT MIN(nt.id) FROM NoteTeste nt JOIN NoteRighe nr ON nr.IdTesta = nt.id "
    "WHERE nt.CodCausale = 'PRE' AND (nt.VarPrestito = 0 OR nt.VarPrestito IS NULL) "
    "AND nr.CodConto = (SELECT PrestitiALocale FROM TabAssociazioneConti))";

// A second loan of 50 euro on that note, after its first line, with its
// counterpart on cash: the note still balances, and the cash screen writes
// the second line's amount over the first.
void loanWithTwoLines(Database& db) {
    db.exec(
        (QByteArray("INSERT INTO NoteRighe (IdTesta, Data, Descrizione, Dare, Avere, CodConto, "
                    "codLocale, idData, idOperatore, Riga) SELECT IdTesta, Data, "
                    "'Integrazione prestito', 50, 0, CodConto, codLocale, idData, idOperatore, "
                    "Riga + 10 FROM NoteRighe WHERE IdTesta = ") +
         firstOpenLoan +
         " AND CodConto = (SELECT PrestitiALocale FROM TabAssociazioneConti) ORDER BY id LIMIT 1")
            .constData());
    db.exec(
        "INSERT INTO NoteRighe (IdTesta, Data, Descrizione, Dare, Avere, CodConto, codLocale, "
        "idData, idOperatore, Riga) SELECT IdTesta, Data, Descrizione, 0, 50, "
        "(SELECT ContoCassa FROM TabAssociazioneConti), codLocale, idData, idOperatore, "
        "Riga + 1 FROM NoteRighe WHERE id = (SELECT MAX(id) FROM NoteRighe)");
}

// A collector coded with an apostrophe, who made the various cash notes and
// the loans, and every tenth collection.
void collectorWithApostrophe(Database& db) {
    db.exec(
        "INSERT INTO AnagraficaOperatori (codiceOperatore, Mansione, nome, cognome) "
        "VALUES ('ES''07', 'Esattore', 'Nicola', 'D''Angelo')");
    db.exec(
        "UPDATE NoteTeste SET CodEsattore = 'ES''07' WHERE CodCausale IN ('INC', 'PRE') "
        "OR (CodCausale = 'INC6' AND id % 10 = 0)");
}

// Among the notes without takings, one whose five amounts are Null rather than 0.
void noteWithoutTakings(Database& db) {
    db.exec(
        "UPDATE NoteTeste SET UtileLocale = NULL, UtileNoleggiatore = NULL, TotPreu = NULL, "
        "TotAAMS = NULL, TotRETE = NULL WHERE id = (SELECT MIN(id) FROM NoteTeste WHERE "
        "CodCausale = 'INC')");
}

// A comodato at 5 % and one with no share given; the second reading of the
// first collection with a board on comodato goes on the 5 % contract, so that
// the note has takings on two comodato contracts, and one other reading on
// the contract without a share.
void comodatoContracts(Database& db) {
    db.exec(
        "INSERT INTO TipoContratto (Contratto, Descrizione, PercentualeComodato, idData, "
        "IdOperatore) SELECT 'CO5', 'Comodato d''uso al 5%', 5, idData, IdOperatore FROM "
        "TipoContratto WHERE Contratto = 'COM'");
    db.exec(
        "INSERT INTO TipoContratto (Contratto, Descrizione, PercentualeComodato, idData, "
        "IdOperatore) SELECT 'CPN', 'Comodato senza quota', NULL, idData, IdOperatore FROM "
        "TipoContratto WHERE Contratto = 'COM'");
    db.exec(
        "CREATE TEMP TABLE DueContratti AS SELECT MIN(c.IdTesta) AS nota FROM NoteIncassi "
        "c JOIN NoteTeste h ON h.id = c.IdTesta WHERE h.CodCausale = 'INC6' AND c.Contratto = "
        "'COM' AND (SELECT COUNT(*) FROM NoteIncassi o WHERE o.IdTesta = c.IdTesta) > 1");
    db.exec(
        "UPDATE NoteIncassi SET Contratto = 'CO5' WHERE id = (SELECT MIN(id) FROM NoteIncassi "
        "WHERE IdTesta = (SELECT nota FROM DueContratti) AND id <> (SELECT MIN(id) FROM "
        "NoteIncassi WHERE IdTesta = (SELECT nota FROM DueContratti) AND Contratto = 'COM'))");
    db.exec("DROP TABLE DueContratti");
    db.exec(
        "UPDATE NoteIncassi SET Contratto = 'CPN' WHERE id = (SELECT MAX(ni.id) FROM "
        "NoteIncassi ni JOIN NoteTeste nt ON nt.id = ni.IdTesta WHERE nt.CodCausale = 'INC6' "
        "AND ni.Contratto = 'NOL')");
}

}  // namespace

void writeCashCases(Database& db) {
    loanWithTwoLines(db);
    collectorWithApostrophe(db);
    noteWithoutTakings(db);
    comodatoContracts(db);
}

}  // namespace lorvane::demo
