// The trial balance: debit, credit and balance of every account of the chosen
// kinds over a period, optionally for one company. The only screen without venues.
#pragma once

#include "reports/accounting/bilancio_sql.h"
#include "screens/filter_screen.h"

class QCheckBox;

namespace lorvane::reports {

class FrmStampaBilancio final : public screens::FilterScreen {
  public:
    FrmStampaBilancio();

    BilancioCriteri criteriBilancio() const;

  protected:
    bool ControlloProprio(Output output) override;
    qint16 PreparaStampa() override;
    qint16 PreparaDati() override;

  private:
    QCheckBox* chkContiPatrimoniali() const;
    QCheckBox* chkContiEconomici() const;
};

}  // namespace lorvane::reports
