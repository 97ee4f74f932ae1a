// The screens of the documents and labels: papers for the venue and stickers
// for the stock.
#pragma once

#include "reports/documents/etichette_screens.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

class FrmSommeConsegnate final : public screens::FilterScreen {
  public:
    FrmSommeConsegnate();
};

class FrmStampaQuietanza final : public screens::FilterScreen {
  public:
    FrmStampaQuietanza();
};

class FrmStampaAttoQuietanza final : public screens::FilterScreen {
  public:
    FrmStampaAttoQuietanza();
};

}  // namespace lorvane::reports
