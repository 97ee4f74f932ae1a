// The screens of the accounting reports: cash, registers and ledgers. The
// trial balance, the cash report and the registers have units of their own.
#pragma once

#include "reports/accounting/registri_screens.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

class FrmStampaSchedaLocale final : public screens::FilterScreen {
  public:
    FrmStampaSchedaLocale();
};

class FrmStampaSchedaContab final : public screens::FilterScreen {
  public:
    FrmStampaSchedaContab();
};

}  // namespace lorvane::reports
