// The screens of the collection reports: what the machines took in and hold.
// The takings for a period have a unit of their own (frm_stampa_introdotto).
#pragma once

#include "screens/filter_screen.h"

namespace lorvane::reports {

class FrmStampaIntrodottoDistinta final : public screens::FilterScreen {
  public:
    FrmStampaIntrodottoDistinta();
};

class FrmPercPagamentoG final : public screens::FilterScreen {
  public:
    FrmPercPagamentoG();
};

class FrmPercPagamentoP final : public screens::FilterScreen {
  public:
    FrmPercPagamentoP();
};

class FrmStampaHopper final : public screens::FilterScreen {
  public:
    FrmStampaHopper();
};

class FrmStampaCambiamonete final : public screens::FilterScreen {
  public:
    FrmStampaCambiamonete();
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
