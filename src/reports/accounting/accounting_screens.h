// The screens of the accounting reports: cash, registers and ledgers. The
// trial balance and the ledger cards have units of their own
// (frm_stampa_bilancio, frm_stampa_scheda).
#pragma once

#include "reports/accounting/frm_stampa_scheda.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

// The collector who made the operation, for the screens that filter by him:
// cmbEsattore with its label, cleared by the reset and by Delete.
screens::ExtraControl esattore(const QString& caption);

class FrmStampaCassa final : public screens::FilterScreen {
  public:
    FrmStampaCassa();
};

class FrmStampaRegistro final : public screens::FilterScreen {
  public:
    FrmStampaRegistro();
};

class frmStampaRegistro2 final : public screens::FilterScreen {
  public:
    frmStampaRegistro2();
};

}  // namespace lorvane::reports
