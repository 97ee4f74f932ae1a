// The label screens: the tree of boards or cabinets, their search and grid,
// and the rows of a run.
#include <QCheckBox>
#include <QLineEdit>
#include <QProgressBar>

#include "platform/error_handling.h"
#include "reports/documents/etichette_screens.h"
#include "reports/documents/installa_font.h"
#include "screens/controls.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::KeyedTree;
using screens::ScreenProfile;
namespace columns = workdb::columns;

namespace {

// A text box of the label screens: it narrows the search of the tree.
ExtraControl campoRicerca(const char* name, const QString& caption) {
    ExtraControl control{
        ExtraControl::TextBox,   name, caption, ExtraControl::Criteria, screens::keep(),
        screens::text(QString())};
    control.searchField = true;
    return control;
}

// Boards or cabinets instead of venues, no company, no dates, one page, and
// the preview opens even when empty.
ScreenProfile profiloEtichette(screens::TreeHolds holds, const char* secondField,
                               const QString& secondCaption, const QString& barcodeCaption,
                               std::vector<const char*> tabelle) {
    ScreenProfile profile = screens::standardProfile(u"Stampa Etichette"_s);
    profile.dallaOnOpen = profile.allaOnOpen = DateRule::Missing;
    profile.dallaOnReset = profile.allaOnReset = DateRule::Missing;
    profile.tree = holds;
    profile.venueCriteria = false;
    profile.company = false;
    profile.lists = {};
    profile.countTest = false;
    profile.emptiedBeforeRun = std::move(tabelle);
    profile.extras = {
        campoRicerca("txtCodInt", u"Codice Interno"_s),
        campoRicerca(secondField, secondCaption),
        {ExtraControl::CheckBox, "chkCodiceABarre", barcodeCaption, ExtraControl::Criteria,
         screens::keep(), screens::text(u"0"_s)},
    };
    return profile;
}

QString testo(db::Recordset& riga, const QString& colonna) {
    return riga.Fields(colonna).Value().toString();
}

QString nodoScheda(db::Recordset& riga) {
    return testoNodoScheda(testo(riga, u"NomeGioco"_s), testo(riga, u"CodiceAAMS"_s),
                           testo(riga, u"CodiceInterno"_s));
}

QString nodoMobile(db::Recordset& riga) {
    return testoNodoMobile(testo(riga, u"NomeMobile"_s), testo(riga, u"CodiceInterno"_s));
}

}  // namespace

StampaEtichette::StampaEtichette(ScreenProfile profile, Tipo tipo)
    : FilterScreen(std::move(profile)), tipo_(std::move(tipo)) {}

EtichetteCriteri StampaEtichette::criteriEtichette() const {
    EtichetteCriteri criteri;
    criteri.codice = findChild<QLineEdit*>(QLatin1String(tipo_.campoCodice))->text();
    criteri.codiceInterno = findChild<QLineEdit*>(u"txtCodInt"_s)->text();
    criteri.senzaCodice = findChild<QCheckBox*>(u"chkCodiceABarre"_s)->isChecked();
    return criteri;
}

void StampaEtichette::Form_Load_Inizio() { InstallaFont(host().Percorso()); }

void StampaEtichette::aggiungiNodo(db::Recordset& riga) {
    const QString key =
        QLatin1String(KeyedTree::RootKey) + testo(riga, QLatin1String(tipo_.colonnaId));
    Tree->setTicked(Tree->addNode(QLatin1String(KeyedTree::RootKey), key, tipo_.testoNodo(riga),
                                  KeyedTree::NodeImage),
                    true);
}

// Searches add up: the tree is not emptied, and a row already there keeps its
// one node. Every failure is passed over.
void StampaEtichette::CmdRicerca_Click() {
    const EtichetteCriteri criteri = criteriEtichette();
    if (Tree->nodeCount() == 0) {
        platform::ignoreErrors([&] {
            addTreeRoot();
            Tree->setTicked(Tree->node(QLatin1String(KeyedTree::RootKey)), true);
        });
    }
    db::RecordsetPtr righe;
    platform::ignoreErrors([&] { righe = host().OpenRecordset(tipo_.ricerca(criteri)); });
    if (righe && righe->RecordCount() > 0) {
        for (righe->MoveFirst(); !righe->Eof(); righe->MoveNext())
            platform::ignoreErrors([&] { aggiungiNodo(*righe); });
    }
    Tree->EspandiAlbero();
    ChkTutti->setChecked(false);
}

void StampaEtichette::CmdElenco_Click() {
    const bool senzaCodice = criteriEtichette().senzaCodice;
    cercaInGriglia(
        tipo_.griglia, [&] { return host().OpenRecordset(tipo_.elenco(senzaCodice)); },
        [this](db::Recordset& riga) { aggiungiNodo(riga); });
}

void StampaEtichette::copia(const QString& sql, size_t tabella, const char* colonne,
                            QProgressBar* barra) {
    db::RecordsetPtr origine = host().OpenRecordset(sql);
    if (barra) {
        workdb::CopiaRecordset(barra, QLatin1String(colonne), *origine, *tabelle_.at(tabella), 0);
    } else {
        workdb::CopiaTabella(QLatin1String(colonne), *origine, *tabelle_.at(tabella), 0);
    }
}

qint16 StampaEtichette::PreparaDati() {
    platform::showErrorAndLeave([&] {
        tabelle_.clear();
        for (const char* tabella : profile().emptiedBeforeRun)
            tabelle_.push_back(
                workdb::ApriTabellaTemporanea(u"SELECT * FROM "_s + QLatin1String(tabella)));
        if (ChkTutti->isChecked()) {
            copiaTutte(criteriEtichette().senzaCodice);
        } else {
            const QList<QTreeWidgetItem*> nodes = Tree->allNodes();
            Bar1->setMaximum(int(nodes.size()));
            int visited = 0;
            for (QTreeWidgetItem* node : nodes) {
                Bar1->setValue(++visited);
                const QString key = KeyedTree::keyOf(node);
                if (KeyedTree::isTicked(node) && key.size() > 1) copiaUna(key.mid(1));
            }
        }
        tabelle_.clear();
        workdb::ConnessioneTemporanea().Close();
    });
    return 0;
}

FrmStampaEtichette::FrmStampaEtichette()
    : StampaEtichette(
          profiloEtichette(screens::TreeHolds::Boards, "txtAAMS", u"Codice AAMS"_s,
                           u"Visualizza anche schede senza codice a barre"_s,
                           {"MagSchede", "SchedaCateg"}),
          {"txtAAMS",
           sqlRicercaSchede,
           sqlElencoSchede,
           "id_Scheda",
           nodoScheda,
           {u"ProdottoFinito"_s, u"Anagrafica Apparecchi"_s, u"id_Scheda"_s, u"id_Scheda"_s}}) {}

void FrmStampaEtichette::copiaTutte(bool senzaCodice) {
    copia(sqlTutteLeSchede(senzaCodice), 0, columns::MagSchede66, Bar1);
    copia(sqlCategorieTutte(), 1, "idScheda,Categoria", Bar1);
}

void FrmStampaEtichette::copiaUna(const QString& id) {
    copia(sqlScheda(id), 0, columns::MagSchede66);
    copia(sqlCategoriaScheda(id), 1, "idScheda,Categoria");
}

FrmStampaEtichetteMobili::FrmStampaEtichetteMobili()
    : StampaEtichette(
          profiloEtichette(screens::TreeHolds::Cabinets, "txtNomeMobile", u"Nome mobile"_s,
                           u"Visualizza anche mobili senza codice a barre"_s, {"MagMobili"}),
          {"txtNomeMobile",
           sqlRicercaMobili,
           sqlElencoMobili,
           "id",
           nodoMobile,
           {u"AnagMobili"_s, u"Anagrafica Mobili"_s, u"id"_s, u"id"_s}}) {}

void FrmStampaEtichetteMobili::copiaTutte(bool senzaCodice) {
    copia(sqlTuttiIMobili(senzaCodice), 0, columns::MagMobili51);
}

void FrmStampaEtichetteMobili::copiaUna(const QString& id) {
    copia(sqlMobile(id), 0, columns::MagMobili51);
}

}  // namespace lorvane::reports
