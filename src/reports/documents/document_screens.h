// The screens of the documents and labels: papers for the venue and stickers
// for the stock.
#pragma once

#include "reports/documents/documenti_screens.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

class FrmStampaEtichette final : public screens::FilterScreen {
  public:
    FrmStampaEtichette();
};

class FrmStampaEtichetteMobili final : public screens::FilterScreen {
  public:
    FrmStampaEtichetteMobili();
};

}  // namespace lorvane::reports
