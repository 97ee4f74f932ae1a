// The screens of the collection reports: what the machines took in and hold.
// The takings for a period have a unit of their own (frm_stampa_introdotto),
// and so have the machine reports (macchine_screens); the notes reports here
// are the slips, the advances and refills, and the PREU difference.
#pragma once

#include "screens/filter_screen.h"

namespace lorvane::reports {

struct NoteCriteri;

// The takings as the quittance slips of document type 1 hold them, by the
// date of each row. No handler of its own: a failure goes to the output button's.
class FrmStampaIntrodottoDistinta final : public screens::FilterScreen {
  public:
    FrmStampaIntrodottoDistinta();

  protected:
    qint16 PreparaDati() override;
};

// One screen for two reports, told apart by the report code: the advances
// ("Acconti", causale 'ACC') and the refills (any other code, 'REF'), of a
// period or still open. For the advances a run also stores the amount of the
// notes that never had one, in the main database, and gives each note without
// machine lines a line of its own.
class FrmStampaAccontiRefill final : public screens::FilterScreen {
  public:
    FrmStampaAccontiRefill();

    const QString& CausaleNote() const { return causaleNote_; }

  protected:
    void Form_Load_Proprio() override;
    qint16 PreparaDati() override;
    QString sqlRicerca() const override;
    QString sqlTuttiLocali(bool sospesi) const override;
    QString sqlLocaleScelto(const QString& code, bool sospesi) const override;

  private:
    // The dates and their labels usable only with optPeriodo.
    void AggiornaPeriodo();
    bool periodo() const;
    NoteCriteri criteriNote() const;
    // The notes of the work file without machine lines: the advances' amounts
    // repaired and a line added for each.
    void completaAcconti();

    QString causaleNote_;
};

// The notes of the period and their lines, for the layout to apply the
// difference between the PREU rate asked for and a new one; the difference is
// the one number the screen computes. Both rates are checked before anything else.
class FrmStampaDifferenzaPreu final : public screens::FilterScreen {
  public:
    FrmStampaDifferenzaPreu();

    // Both rates pass the numeric test of the regional settings; else the
    // user is told, and nothing is done.
    bool ControllaPreu();

  protected:
    bool ControlloIniziale() override { return ControllaPreu(); }
    qint16 PreparaDati() override;
};

}  // namespace lorvane::reports
