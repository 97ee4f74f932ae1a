// The statements and texts of the cash report and of the two receipts
// registers: the venue search, the venue batches, the notes of a period with
// their lines, takings, venues, companies and machines, the repair of the loan
// variations and the comodato shares. Built from plain criteria, with no
// widget in sight.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include "screens/venue_search.h"

namespace lorvane::reports {

struct RegistriCriteri {
    QDate dallaData;
    QDate allaData;
    QString azienda;       // CmbAzienda, "" with no selection; goes in as typed
    QString esattore;      // cmbEsattore, "" with no selection
    QString causali;       // the causali ticked, as elencoQuotato gives them
    bool escludi = false;  // chkEscludi: notes without any takings left out
};

// The codes, each between single quotes as they stand, joined by ", ": the
// text of the causali and of the venues ticked.
QString elencoQuotato(const QStringList& codes);

// The venue list cut into the batches of one statement each: 25 items a
// batch, with the count of the last batch taken as (n - 1) mod 25 + 1 (25 when
// that is 1 and n is 26), so that the last items of a list of 25k + 1 venues
// are left out. An empty list is one batch with no venue clause ("").
QStringList lottiLocali(const QString& elenco);

// The cash report's search: the venues of the notes of the period with the
// causali ticked, once per note, by venue name.
QString sqlRicercaCassa(const screens::FrameCriteria& criteri, const QString& esattore);

// The registers' search, with the company among the criteria.
const screens::SearchForms& registroSearchForms();

// The seven work tables both reports empty before a run, as statements.
QStringList svuotaNote();

// The heads of the notes of the cash report for one batch of venues.
QString sqlNoteCassa(const RegistriCriteri& criteri, const QString& lotto);

// The register's heads, lines and takings for one batch; each in its own
// letter case, with the exclusion clause of chkEscludi at the end.
enum class PartiNota { Teste, Righe, Incassi };
QString sqlNoteRegistro(PartiNota parte, const RegistriCriteri& criteri, const QString& lotto);

// How a report names the venues and machines of the notes copied, in its own
// letter case: the grouping on the work file, the statement of the main
// database up to its list, the work table opened and the columns copied.
struct FormeCollegate {
    const char* gruppo;
    const char* origine;
    const char* destinazione;
    const char* colonne;
};
const FormeCollegate& localiCassa();
const FormeCollegate& schedeCassa();
const FormeCollegate& localiRegistro();
const FormeCollegate& schedeRegistro();

// The companies: all of them, or the one chosen (as typed).
QString sqlAziende(const QString& azienda);

// The heading of the cash report: the period in short dates and the collector.
QString parametriCassa(const RegistriCriteri& criteri);
// The heading of the registers: the period in short dates.
QString parametriRegistro(const RegistriCriteri& criteri);

// The lines of the loan notes on the loan account whose head has no
// variation yet, and the repair of one head to the line's dare − avere.
QString sqlPrestitiDaAggiornare();
QString sqlAggiornaVarPrestito(const QString& somma, const QString& id);

// The days of the register: the first of the start's month to the last of the
// end's month; none when the start comes after the end.
QList<QDate> giorniCalendario(const QDate& dalla, const QDate& alla);

// The comodato takings of the period: one row per note and contract with a
// share above 0, whatever the other criteria.
QString sqlComodato(const QDate& dalla, const QDate& alla);

// The comodato share of a note: the takings times the percentage, over 100,
// to the cent with ties to the even cent.
double quotaComodato(double sommaParzialeIn, double percentuale);

}  // namespace lorvane::reports
