// The label screens of boards and cabinets.
#pragma once

#include <vector>

#include "reports/documents/etichette_sql.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

// The label screens: boards or cabinets instead of venues in the tree, found
// by their own search and grid, printed all at once or as ticked. The bar-code
// font is put in place before anything else on opening. A failure of the
// preparation is shown and ends it; there is no row count, so an empty
// selection opens an empty report.
class StampaEtichette : public screens::FilterScreen {
  public:
    // What sets boards and cabinets apart.
    struct Tipo {
        const char* campoCodice;  // txtAAMS or txtNomeMobile
        QString (*ricerca)(const EtichetteCriteri&);
        QString (*elenco)(bool senzaCodice);
        const char* colonnaId;  // the column of the id in the search's rows
        QString (*testoNodo)(db::Recordset&);
        GrigliaRicerca griglia;
    };

    // The criteria typed, as they stand now.
    EtichetteCriteri criteriEtichette() const;

  protected:
    StampaEtichette(screens::ScreenProfile profile, Tipo tipo);
    void Form_Load_Inizio() override;
    void CmdRicerca_Click() override;
    void CmdElenco_Click() override;
    qint16 PreparaDati() override;
    // The rows of "all" or of the ticked ids, into the open work tables.
    virtual void copiaTutte(bool senzaCodice) = 0;
    virtual void copiaUna(const QString& id) = 0;
    // Opens `sql` on the main database and copies its rows into the work
    // table `tabella` (its place in the profile's emptied tables), through
    // CopiaRecordset moving `barra` when one is given.
    void copia(const QString& sql, size_t tabella, const char* colonne,
               QProgressBar* barra = nullptr);

  private:
    // Adds the row's node under the root, ticked; throws when it is there.
    void aggiungiNodo(db::Recordset& riga);

    Tipo tipo_;
    std::vector<db::RecordsetPtr> tabelle_;  // the work tables, open during a run
};

class FrmStampaEtichette final : public StampaEtichette {
  public:
    FrmStampaEtichette();

  protected:
    void copiaTutte(bool senzaCodice) override;
    void copiaUna(const QString& id) override;
};

class FrmStampaEtichetteMobili final : public StampaEtichette {
  public:
    FrmStampaEtichetteMobili();

  protected:
    void copiaTutte(bool senzaCodice) override;
    void copiaUna(const QString& id) override;
};

}  // namespace lorvane::reports
