// The screens of the accounting reports: cash, registers and ledgers. The
// trial balance has a unit of its own (frm_stampa_bilancio).
#pragma once

#include "screens/filter_screen.h"

namespace lorvane::reports {

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

class FrmStampaSchedaLocale final : public screens::FilterScreen {
  public:
    FrmStampaSchedaLocale();
};

class FrmStampaSchedaContab final : public screens::FilterScreen {
  public:
    FrmStampaSchedaContab();
};

}  // namespace lorvane::reports
