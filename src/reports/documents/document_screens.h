// The screens of the documents for the venue and the labels for the stock.
#pragma once

#include "screens/filter_screen.h"

namespace lorvane::reports {

class FrmSommeConsegnate final : public screens::FilterScreen {
  public:
    FrmSommeConsegnate() : FilterScreen(QStringLiteral("Stampa somme consegnate al locale")) {}
};

class FrmStampaQuietanza final : public screens::FilterScreen {
  public:
    FrmStampaQuietanza() : FilterScreen(QStringLiteral("Stampa Quietanza")) {}
};

class FrmStampaAttoQuietanza final : public screens::FilterScreen {
  public:
    FrmStampaAttoQuietanza() : FilterScreen(QStringLiteral("Stampa Atti di Quietanza")) {}
};

class FrmStampaEtichette final : public screens::FilterScreen {
  public:
    FrmStampaEtichette() : FilterScreen(QStringLiteral("Stampa Etichette")) {}
};

class FrmStampaEtichetteMobili final : public screens::FilterScreen {
  public:
    FrmStampaEtichetteMobili() : FilterScreen(QStringLiteral("Stampa Etichette")) {}
};

}  // namespace lorvane::reports
