// The two ledger cards: the customer card, venue by venue on the customer
// accounts ("03." at level 2), and the account card over a range of the
// chart. Each gives the lines of a period and the balances brought forward;
// the layouts make the running balance.
#pragma once

#include "reports/accounting/scheda_sql.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

// What both cards share: the venue search limited to venues with lines in
// the period, and their criteria read from the controls.
class SchedaScreen : public screens::FilterScreen {
  public:
    // The criteria as the controls stand now; the account card's causali are
    // left empty (they are read from the database during the run).
    SchedaCriteri criteriScheda() const;

  protected:
    using FilterScreen::FilterScreen;
    QString sqlRicerca() const override;
};

// The customer card. No handler of its own in the preparation: its first
// failure (the company's statement, an empty list of venues) goes to the
// output button's, and the work connection stays open.
class FrmStampaSchedaLocale final : public SchedaScreen {
  public:
    FrmStampaSchedaLocale();

  protected:
    qint16 PreparaDati() override;
};

// The account card: the accounts of a range, every causale listed and all
// ticked on opening and reset, in one pass for the venues chosen.
class FrmStampaSchedaContab final : public SchedaScreen {
  public:
    FrmStampaSchedaContab();

    // The ticked causali as an SQL list, their codes read from the table by
    // the rows' ids, from the last row to the first.
    QString ElencoCausaliScelte();

  protected:
    void RiempiListeProprie() override;
    qint16 PreparaDati() override;

  private:
    void selezionaCausali(bool ticked);
};

}  // namespace lorvane::reports
