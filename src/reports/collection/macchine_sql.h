// The statements and heading texts of the machine reports: the payout
// percentages (global on the boards' totals, partial on the readings of a
// period) and the last hopper and change-machine notes of every board. Built
// from plain criteria, with no widget in sight.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include "screens/venue_search.h"

namespace lorvane::reports {

struct MacchineCriteri {
    QDate dallaData;      // txtDallaData, on the percentage screens
    QDate allaData;       // txtAllaData, on the percentage screens
    QDate data;           // txtData, on the change-machine screen
    QString azienda;      // "" when no company is chosen
    bool tutti = true;    // ChkTutti
    bool visMag = false;  // chkVisMag: boards in the warehouse too
};

// How the percentage screens, the hopper screen and the change-machine
// screen write their venue search.
const screens::SearchForms& percentualiSearchForms();
const screens::SearchForms& hopperSearchForms();
const screens::SearchForms& cambiamoneteSearchForms();

// The venue codes, each between single quotes with its own quotes doubled,
// joined by ",": the list the global report deletes the other venues by.
QString elencoCodici(const QStringList& codes);

// Global percentages: the boards in use, collected ('INC6') in the period,
// then the venue filter applied after the copy on the work file. Boards in
// the warehouse (no venue) are never deleted by it.
QString sqlSchedeGlobali(const MacchineCriteri& criteri);
QString sqlEliminaAltriLocali(const QString& codici);

// Partial percentages: the collection readings of the period and the boards
// in use that have a reading of any causale in the period.
QString sqlLettureParziali(const MacchineCriteri& criteri);
QString sqlSchedeParziali(const MacchineCriteri& criteri);

// "Parametri di ricerca:  incassi dal … al …", the company and the venue
// filter: the heading of both percentage reports.
QString parametriPercentuali(const MacchineCriteri& criteri);

// The boards of the chosen venues and each board's last hopper ('CH') note;
// the company is the venue's.
QString sqlSchedeHopper(const MacchineCriteri& criteri);
QString sqlUltimiHopper(const MacchineCriteri& criteri);

// The boards of the chosen venues and each board's last change-machine
// ('CAM') note, when that note is not after txtData.
QString sqlSchedeCambiamonete(const MacchineCriteri& criteri);
QString sqlUltimiCambiamonete(const MacchineCriteri& criteri);

// True when any venue criterion of the search page but the concessionaire is
// set: what the headings call a filter on the venues.
bool filtroSuLocali(const screens::FrameCriteria& criteri);

// "Parametri di ricerca: " and " filtro su locali" when filtroSuLocali: the
// heading of the hopper, change-machine, slips and PREU difference reports.
QString parametriFiltroLocali(const screens::FrameCriteria& criteri);

}  // namespace lorvane::reports
