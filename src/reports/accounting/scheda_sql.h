// The statements of the two ledger cards, the customer's (venue by venue, on
// the customer accounts) and the account's (one pass over a range of the
// chart), built from plain criteria with no widget in sight.
#pragma once

#include <QDate>
#include <QString>

#include "screens/venue_search.h"

namespace lorvane::reports {

struct SchedaCriteri {
    QDate dallaData;    // txtDallaData
    QDate allaData;     // txtAllaData
    QString azienda;    // CmbAzienda; "" when none is chosen
    QString esattore;   // cmbEsattore; "" when none is chosen
    bool tutti = true;  // ChkTutti
    // The customer card: the account code chosen in cmbCausale's hidden twin,
    // "" for every customer account.
    QString conto;
    // The account card: the ids of the first and last account of the range as
    // decimal text, and the causali as an SQL list ("'INC6', 'GIR'").
    QString idDa;
    QString idA;
    QString causali;
};

// The venue search of both cards: venues with lines in the period (of the
// collector, when one is chosen), then the criteria typed, in AND forms only.
QString sqlRicercaSchede(const screens::FrameCriteria& criteri, const QString& esattore);

// " LIKE '03.%'", or " LIKE '<code>'" for the chosen account: with no
// wildcard in it LIKE acts as equality. The code goes in as typed.
QString testConto(const SchedaCriteri& criteri);

// The customer accounts of the chart, level 2, with their Mastro.
QString sqlPianoContiClienti(const SchedaCriteri& criteri);

// A venue's lines of the period on the customer accounts.
QString sqlRigheLocale(const SchedaCriteri& criteri, const QString& codLocale);

// A venue's balance of each customer account from its lines strictly before
// the first day. With a company chosen the statement is one the database
// refuses (a misspelt column and a bracket too many): it is kept so.
QString sqlSaldiLocale(const SchedaCriteri& criteri, const QString& codLocale);

// On the work file: the zero balances of venues without lines in the period.
QString sqlPulisciSaldi();

// The account card: the chart of the range, every level.
QString sqlPianoContiIntervallo(const SchedaCriteri& criteri);

// The lines of the period of the causali chosen on the accounts of the range,
// with the collector of their note.
QString sqlRigheContab(const SchedaCriteri& criteri);

// The balance brought forward of each level-2 account of the range, under the
// same causali, venues and collector as the lines.
QString sqlSaldiContab(const SchedaCriteri& criteri);

// On the work file: a zero row for every account of the range's copy that has
// no balance yet.
QString sqlContiSenzaSaldo();

}  // namespace lorvane::reports
