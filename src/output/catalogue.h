// The report catalogue: the layouts of a report code, read from the host's
// standard and personalised `stampe` tables into the two lists of a filter
// screen, and the files of the layout chosen there.
#pragma once

#include <QString>

#include "db/connection.h"

class QListWidget;
class QTabWidget;

namespace lorvane::output {

// The module-wide catalogue recordsets, shared by every screen: each screen
// load replaces them, and they are never closed, since every lookup sets their
// Filter anew. Null until the first load.
db::RecordsetPtr& StampeMenu();
db::RecordsetPtr& StampePers();

// Fills List1 with the standard layouts of moduleValues().codiceStampa, in
// Ordine order, each entry's item data (Qt::UserRole) being the row's id; then,
// only when the host's Personalizzazione is True, List2 with the personalised
// ones. The lists are not cleared first. Host failures pass to the caller.
void CaricaElencoStampe(QListWidget* List1, QListWidget* List2);

// True when a layout is chosen in the list that Pers shows. On tab 1 List2
// must have a selection; on any other tab List1 with no selection gets its
// first entry selected. With nothing to choose the user reads "Selezionare una
// stampa dall'elenco" and the result is False; any failure also gives False.
bool VerificaSelezioneStampa(QListWidget* List1, QListWidget* List2, QTabWidget* Pers);

// The host's Percorso followed by NomeReport (or nomeTemporaneo) of the layout
// chosen in the list that Pers shows (List1 on tab 0, List2 otherwise; List1
// gets its first entry selected when none is), or "" with no choice. Leaves
// the looked-up recordset filtered by "ID=". A row no longer in the catalogue
// makes the read fail, to the caller.
QString PercorsoReport(QListWidget* List1, QListWidget* List2, QTabWidget* Pers);
QString PercorsoTemporaneo(QListWidget* List1, QListWidget* List2, QTabWidget* Pers);

// The text of the entry chosen in the list that Pers shows, by the same rule
// as PercorsoReport, or "" with no choice: the title of the report.
QString ListaAttiva(QListWidget* List1, QListWidget* List2, QTabWidget* Pers);

}  // namespace lorvane::output
