// The screens of the accounting reports: cash, registers and ledgers. The
// trial balance, the ledger cards, the cash report and the registers have
// units of their own.
#pragma once

#include "reports/accounting/frm_stampa_scheda.h"
#include "reports/accounting/registri_screens.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

// The collector who made the operation, for the screens that filter by him:
// cmbEsattore with its label, cleared by the reset and by Delete.
screens::ExtraControl esattore(const QString& caption);

}  // namespace lorvane::reports
