// The machine reports: the payout percentages of the boards, global and over
// the readings of a period, and the last known state of every hopper and
// change machine of the chosen venues.
#pragma once

#include "reports/collection/macchine_sql.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

// The criteria of a machine screen as its controls stand now.
MacchineCriteri criteriMacchine(const screens::FilterScreen& screen);

// Global percentages: the boards collected in the period, with their totals;
// the venue filter is applied on the work file after the copy.
class FrmPercPagamentoG final : public screens::FilterScreen {
  public:
    FrmPercPagamentoG();

  protected:
    qint16 PreparaDati() override;

  private:
    QString codiciLocaliScelti();
};

// Partial percentages: the collection readings of the period and their boards.
class FrmPercPagamentoP final : public screens::FilterScreen {
  public:
    FrmPercPagamentoP();

  protected:
    qint16 PreparaDati() override;
};

// The hopper and change-machine reports, built alike: the venues, the boards
// of those venues, the last note of each board, the heading row. A failure is
// shown and ends the preparation, with the count it had.
class SituazioneMacchine : public screens::FilterScreen {
  public:
    struct Statements {
        QString (*schede)(const MacchineCriteri&);
        QString (*ultimeNote)(const MacchineCriteri&);
        const char* colonneSchede;
        bool copiaConBarra;  // CopiaRecordset moving Bar1, rather than CopiaTabella
    };

  protected:
    SituazioneMacchine(screens::ScreenProfile profile, Statements statements);
    qint16 PreparaDati() override;

  private:
    Statements statements_;
};

class FrmStampaHopper final : public SituazioneMacchine {
  public:
    FrmStampaHopper();
};

class FrmStampaCambiamonete final : public SituazioneMacchine {
  public:
    FrmStampaCambiamonete();
};

}  // namespace lorvane::reports
