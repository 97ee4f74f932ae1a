// Takings for a period: the collection notes of the chosen venues with their
// lines, their machine readings, the companies and the boards, copied for the
// layout to sum. The reference screen of the frame.
#pragma once

#include "reports/collection/introdotto_sql.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

class FrmStampaIntrodotto final : public screens::FilterScreen {
  public:
    FrmStampaIntrodotto();

    IntrodottoCriteri criteriIntrodotto() const;

  protected:
    qint16 PreparaDati() override;

  private:
    void copiaSchede();
};

}  // namespace lorvane::reports
