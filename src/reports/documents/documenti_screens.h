// The venue's documents: the receipt of the sums delivered with the amount in
// words, the periodic quittance statements of the concessionaires, and the
// deeds of quittance drawn from the suite's documents.
#pragma once

#include "screens/filter_screen.h"

namespace lorvane::reports {

// Sums delivered: the collection notes of the chosen venues, the venue's share
// summed per venue and written in words, the owners, agents and companies.
class FrmSommeConsegnate final : public screens::FilterScreen {
  public:
    FrmSommeConsegnate();

  protected:
    qint16 PreparaDati() override;

  private:
    void scriviImporti();
};

// Quittances: heads and lines of the period as the main program stored them,
// the companies and concessionaires; the layout does the figures.
class FrmStampaQuietanza final : public screens::FilterScreen {
  public:
    FrmStampaQuietanza();

  protected:
    qint16 PreparaDati() override;
};

// Deeds of quittance: documents of kind 8, walked venue by venue for the
// concession codes and the owner. Each activation first gives the deed lines
// without a company the company of their head.
class FrmStampaAttoQuietanza final : public screens::FilterScreen {
  public:
    FrmStampaAttoQuietanza();

    void Form_Activate();

  protected:
    qint16 PreparaDati() override;
    bool event(QEvent* event) override;

  private:
    void copiaCaratteristicheETitolari();
};

}  // namespace lorvane::reports
