// The cash report and the two receipts registers: the notes of a period with
// the causali ticked, cut by venue batches, and what the layouts need beside
// them. The cash screen repairs the loan variations of the suite on opening;
// the registers lay a calendar of whole months before their layouts.
#pragma once

#include "reports/accounting/registri_sql.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

// The shared part of the three screens: the criteria of a run, the venues
// ticked as a list, and the copy of the venues or machines the notes name.
class NotePeriodo : public screens::FilterScreen {
  public:
    // The criteria of a run as the controls stand now.
    RegistriCriteri criteriNote() const;

  protected:
    using FilterScreen::FilterScreen;

    // The venues ticked in the tree, each between quotes, joined by ", ";
    // "" with "Tutti i locali".
    QString elencoLocali() const;
    // The seven work tables emptied, each failure shown and passed.
    void svuotaTabelle();
    // Gathers the values of `forme.gruppo` on the work file and copies, for
    // each 100 of them and for the last ones, the rows they name into the
    // work table, skipping ids already there. `virgolette` puts each value
    // between single quotes. `passo` is told how far the walk has gone (0 to 1).
    void copiaCollegati(const FormeCollegate& forme, bool virgolette,
                        const std::function<void(double)>& passo);
    // The rows of `sql` on the main database into the work table `tabella`,
    // the columns `colonne`, all of them; gives how many there were. The work
    // table is opened on the first call with a null `aperta` and kept there
    // for the next batches, so that its rows are not read again each time.
    int copiaNote(const QString& sql, const QString& tabella, db::RecordsetPtr& aperta,
                  const char* colonne);
    // The company chosen, or all, into the work table, skipping ids already there.
    void copiaAziende(const QString& azienda);
    // Bar1 at `valore` out of 100.
    void barra(double valore);
};

class FrmStampaCassa final : public NotePeriodo {
  public:
    FrmStampaCassa();
    // The loan notes whose variation is still 0 or Null get dare − avere of
    // each of their lines on the loan account, the last line winning.
    void AggiornaVarPrestito();

  protected:
    qint16 PreparaDati() override;
    QString sqlRicerca() const override;
    void Form_Load_Proprio() override;
};

// The receipts register; the register with comodato is this one without
// venues or machines and with the comodato share of each note.
class FrmStampaRegistro : public NotePeriodo {
  public:
    FrmStampaRegistro();
    qint16 PreparaStampa() override;

  protected:
    // The ZPers statement the option RegistroCorrispettivi is read with.
    FrmStampaRegistro(screens::ScreenProfile profile, const char* opzione);
    qint16 PreparaDati() override;
    void RiempiListeProprie() override;
    // What comes after the notes: the venues, the companies, the machines.
    virtual void PreparaCollegati(const RegistriCriteri& criteri);

  private:
    void riempiCalendario();
    const char* opzione_;
};

class frmStampaRegistro2 final : public FrmStampaRegistro {
  public:
    frmStampaRegistro2();

  protected:
    void PreparaCollegati(const RegistriCriteri& criteri) override;

  private:
    void scriviComodato(const RegistriCriteri& criteri);
};

// The profiles of the three screens (accounting_screens.cpp).
screens::ScreenProfile cassaProfile();
screens::ScreenProfile registroProfile();
screens::ScreenProfile registro2Profile();

}  // namespace lorvane::reports
