// The work database of a run: a copy of the layout's template in the work
// folder, opened on the one module-wide connection and filled by the screen.
#pragma once

#include <QString>

#include "db/connection.h"

namespace lorvane::workdb {

// The work folder as the module writes it; the platform maps it to the real folder.
inline constexpr char WorkFolder[] = "c:\\temp1\\";

// The module-wide connection to the work file. It lives as long as the module;
// only its open or closed state changes.
db::Connection& ConnessioneTemporanea();

// Copies the template `percorso` into the work folder under its file name,
// overwriting the work file, then closes ConnessioneTemporanea and opens it on
// the work file. The copy and the close fail in silence (a work file still open
// from a broken run is kept, with its rows); the open fails loudly.
// `copyFolder` and `connectionFolder` are the work folder as each screen spells it.
void ApriTemporaneo(const QString& percorso, const QString& copyFolder = QLatin1String(WorkFolder),
                    const QString& connectionFolder = QLatin1String(WorkFolder));

// The file name of a template path: what stands after its last separator,
// "" when there is none.
QString templateFileName(const QString& percorso);

}  // namespace lorvane::workdb
