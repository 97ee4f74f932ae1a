// The statements and heading texts of the venue's documents: the sums
// delivered to the venue, the quittance statements and the deeds of
// quittance. Built from plain criteria, with no widget in sight.
#pragma once

#include <QString>

#include "screens/venue_search.h"

namespace lorvane::reports {

// How the three screens write their venue search.
const screens::SearchForms& sommeSearchForms();
const screens::SearchForms& quietanzaSearchForms();
const screens::SearchForms& attoQuietanzaSearchForms();

// Sums delivered. "Tutti i locali": the venues with notes of any causale in
// the period (the company in the inner query), then the not suspended.
QString sqlLocaliConNote(const screens::FrameCriteria& c);
// The collection notes ('INC6', 'INC') of the chosen venues in the period;
// with `scontoRimborso` the venue's share takes the rounding too.
QString sqlNoteSomme(const screens::FrameCriteria& c, bool scontoRimborso);
// The operators of `mansione` named by the column `colonna` of the venues.
QString sqlOperatoriDeiLocali(const char* mansione, const char* colonna);
// The companies of the chosen venues.
QString sqlAziendeDeiLocali();
// On the work file: the venue's share summed per venue.
QString sqlSommePerLocale();
// "Parametri di ricerca:  incassi dal … al …", the company, the venue filter.
QString parametriSomme(const screens::FrameCriteria& c);

// Quittances: the heads of the period of the chosen venues, their lines, the
// companies and concessionaires (one when chosen, else all).
QString sqlTesteQuietanza(const screens::FrameCriteria& c);
QString sqlRigheQuietanza(const screens::FrameCriteria& c);
QString sqlAziendeQuietanza(const screens::FrameCriteria& c);
QString sqlConcessionariQuietanza(const screens::FrameCriteria& c);

// Deeds of quittance: the lines without company of the deeds whose head has
// one, and the repair of one such line (the company put in as it is).
QString sqlRigheDaRiparare();
QString sqlRiparaRiga(const QString& codSpettabile, const QString& id);
// The concession codes of one venue and its owner (quotes doubled here).
QString sqlCaratteristicheLocale(const QString& codLocale);
QString sqlTitolare(const QString& codTitolare);
QString filtroOperatore(const QString& codiceOperatore);
QString sqlAziendeAtti();
// The deeds (TipoDoc 8) of the period, and the lines of every document of
// the period: neither the kind nor the company narrows the lines.
QString sqlTesteAtti(const screens::FrameCriteria& c);
QString sqlRigheAtti(const screens::FrameCriteria& c);

}  // namespace lorvane::reports
