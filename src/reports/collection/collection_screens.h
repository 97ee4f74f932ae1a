// The screens of the collection reports: what the machines took in and hold.
// The takings for a period have a unit of their own (frm_stampa_introdotto),
// and so have the machine reports (macchine_screens).
#pragma once

#include "screens/filter_screen.h"

namespace lorvane::reports {

class FrmStampaIntrodottoDistinta final : public screens::FilterScreen {
  public:
    FrmStampaIntrodottoDistinta();
};

// One screen for two reports: its title follows the module's report code.
class FrmStampaAccontiRefill final : public screens::FilterScreen {
  public:
    FrmStampaAccontiRefill();
};

class FrmStampaDifferenzaPreu final : public screens::FilterScreen {
  public:
    FrmStampaDifferenzaPreu();
};

}  // namespace lorvane::reports
