// The venue side of the frame: the search by criteria, the suite's grid, and
// the venues of a run copied into AnagraficaLocali_Tmp and the work table.
#include <QCheckBox>
#include <QComboBox>
#include <QProgressBar>

#include "platform/component_registry.h"
#include "platform/error_handling.h"
#include "screens/controls.h"
#include "screens/filter_screen.h"
#include "screens/venue_search.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

namespace {

// The venue columns both copies of PreparaLocali take.
QString venueColumns(const VenueCopy& copy) {
    return QLatin1String(copy.columns ? copy.columns : workdb::columns::AnagraficaLocali56);
}

// The grid's venues: every venue with its codes at the concessionaires.
QString gridStatement(bool sospesi) {
    return u"SELECT AnagraficaLocali.*, AnagraficaLocaliCaratteristiche.CodCogetech, "
           u"AnagraficaLocaliCaratteristiche.CodLottomatica, "
           u"AnagraficaLocaliCaratteristiche.CodGamenet, "
           u"AnagraficaLocaliCaratteristiche.CodAtlantis, "
           u"AnagraficaLocaliCaratteristiche.CodGMatica"_s +
           u" FROM AnagraficaLocali INNER JOIN AnagraficaLocaliCaratteristiche ON "
           u"AnagraficaLocali.CodLocale = AnagraficaLocaliCaratteristiche.CodLocale "_s +
           (sospesi ? QString() : u" WHERE AnagraficaLocali.sospeso=0"_s);
}

}  // namespace

// The tree is filled anew with the venues that meet the criteria typed, all
// ticked, and "Tutti i locali" goes off so that the tree counts. A statement
// the database refuses leaves the root alone, to the click's handler.
void FilterScreen::CmdRicerca_Click() {
    if (!Tree) return;
    Tree->clearNodes();
    addTreeRoot();
    Tree->setTicked(Tree->node(QLatin1String(KeyedTree::RootKey)), true);
    db::RecordsetPtr venues = host().OpenRecordset(sqlRicerca());
    if (venues->RecordCount() > 0) {
        for (venues->MoveFirst(); !venues->Eof(); venues->MoveNext()) {
            if (profile_.searchSkipsRepeats) {
                platform::ignoreErrors([&] { addVenueNode(*Tree, *venues); });
            } else {
                addVenueNode(*Tree, *venues);
            }
        }
    }
    venues->Close();
    Tree->EspandiAlbero();
    ChkTutti->setChecked(false);
}

QString FilterScreen::sqlRicerca() const {
    return sqlRicercaLocali(criteri(),
                            profile_.searchForms ? *profile_.searchForms : referenceSearchForms());
}

QString FilterScreen::sqlTuttiLocali(bool sospesi) const {
    if (profile_.venueCopy.allStatement) return profile_.venueCopy.allStatement(criteri());
    return u"SELECT * FROM AnagraficaLocali "_s + (sospesi ? QString() : u"WHERE Sospeso=0"_s);
}

QString FilterScreen::sqlLocaleScelto(const QString& code, bool sospesi) const {
    QString sql = u"SELECT * FROM AnagraficaLocali WHERE CodLocale='"_s + code + u"' "_s +
                  (sospesi ? QString() : u"AND Sospeso=0"_s);
    const QString azienda = criteri().azienda;
    if (profile_.venueCopy.companyOnTree && !azienda.isEmpty())
        sql += u" AND "_s + u" CodiceAzienda='"_s + azienda + u"' "_s;
    return sql;
}

// The picks of the grid add to the tree; a venue already there stays once.
void FilterScreen::CmdElenco_Click() {
    const bool sospesi = chkSospesi && chkSospesi->isChecked();
    cercaInGriglia(
        {u"AnagLocali"_s, u"Anagrafica Locali"_s, u"codlocale"_s, u"codlocale"_s},
        [&] { return host().OpenRecordset(gridStatement(sospesi)); },
        [this](db::Recordset& venue) { addVenueNode(*Tree, venue); });
}

void FilterScreen::cercaInGriglia(const GrigliaRicerca& griglia,
                                  const std::function<db::RecordsetPtr()>& apri,
                                  const std::function<void(db::Recordset&)>& aggiungi) {
    db::RecordsetPtr rows;
    QString risposta;
    const bool answered = platform::showErrorAndLeave(
        [&] {
            db::RecordsetPtr viste = host().OpenRecordSetPreferenze(u"select * from viste"_s);
            db::RecordsetPtr operatori = host().OpenRecordset(u"select * from operatori"_s);
            rows = apri();
            auto grid = platform::createComponent<entry::SearchComponent>(
                QLatin1String(entry::SearchComponent::ProgId));
            grid->SetUser(host().User());
            grid->SetModulo(griglia.modulo);
            grid->SetCaption(griglia.caption);
            rows->SetFilter(QString());
            grid->SetRecordset(rows);
            grid->SetRecordsetOperatori(operatori);
            grid->SetRecordsetViste(viste);
            grid->SetCampoRicerca(griglia.campoRicerca);
            grid->SetPercorsoPers(host().Percorso() + u"pers\\"_s);
            grid->SetPercorso(host().Percorso());
            grid->Setselezionemultipla(true);
            grid->SetStatusBar(1);
            grid->SetToolbar(1);
            grid->SetFilterBar(1);
            grid->SetWindowsState(2);
            grid->Ricerca();
            risposta = grid->Risposta();
        },
        platform::MsgBoxStyle::Critical);
    if (!answered || risposta.isEmpty()) return;

    const QString root = QLatin1String(KeyedTree::RootKey);
    platform::ignoreErrors([&] { addTreeRoot(); });
    Tree->setTicked(Tree->node(root), true);
    // Each pick is followed by "|": the piece behind the last one is not a pick.
    const QStringList picks = risposta.split(u'|');
    for (qsizetype i = 0; i + 1 < picks.size(); ++i) {
        platform::ignoreErrors([&] {
            rows->SetFilter(griglia.campoFiltro + u"='"_s + picks[i] + u'\'');
            aggiungi(*rows);
        });
    }
    Tree->EspandiAlbero();
    ChkTutti->setChecked(false);
}

// With "Tutti i locali" every venue (not suspended, unless chkSospesi) is
// taken and the tree is not read; otherwise each ticked venue, one statement
// each, goes in as the profile says (most reports select DISTINCT, so twice
// does no harm). A screen without a work table here takes nothing at all with
// "Tutti i locali": its report branches on ChkTutti itself.
db::RecordsetPtr FilterScreen::PreparaLocali() {
    const bool sospesi = chkSospesi && chkSospesi->isChecked();
    const bool selectionOnly = profile_.venueCopy.fromTree == VenueCopy::Tree::SelectionOnly;
    const bool tutti = !ChkTutti || ChkTutti->isChecked();
    if (selectionOnly && tutti) return nullptr;
    host().Execute(u"DELETE * FROM AnagraficaLocali_Tmp"_s);
    db::RecordsetPtr workTable =
        selectionOnly ? nullptr
                      : workdb::ApriTabellaTemporanea(u"SELECT * FROM AnagraficaLocali"_s);
    db::RecordsetPtr selection = host().OpenRecordset(u"SELECT * FROM AnagraficaLocali_Tmp"_s);

    const QString columns = venueColumns(profile_.venueCopy);
    if (tutti) {
        db::RecordsetPtr venues = host().OpenRecordset(sqlTuttiLocali(sospesi));
        if (!profile_.venueCopy.allStatement || venues->RecordCount() > 0)
            workdb::CopiaTabella(columns, *venues, *workTable, 0);
        if (venues->RecordCount() > 0) {
            venues->MoveFirst();
            workdb::CopiaRecordset(profile_.venueCopy.barWhenAll ? Bar1 : nullptr, columns, *venues,
                                   *selection, 0);
        }
    } else {
        const QList<QTreeWidgetItem*> nodes = Tree->allNodes();
        Bar1->setMaximum(int(nodes.size()));
        int visited = 0;
        for (QTreeWidgetItem* node : nodes) {
            Bar1->setValue(++visited);
            const QString key = KeyedTree::keyOf(node);
            if (KeyedTree::isTicked(node) && key.size() > 1)
                copyTickedVenue(key.mid(1), sospesi, workTable.get(), *selection);
        }
    }
    if (selectionOnly) return selection;
    return workdb::ApriTabellaTemporanea(u"SELECT * FROM AnagraficaLocali"_s);
}

// A venue the statement does not find (suspended since the search) fails at
// the move to its first row, to the caller's handler, except where it is
// copied only when found.
void FilterScreen::copyTickedVenue(const QString& code, bool sospesi, db::Recordset* workTable,
                                   db::Recordset& selection) {
    db::RecordsetPtr venue = host().OpenRecordset(sqlLocaleScelto(code, sospesi));
    const QString columns = venueColumns(profile_.venueCopy);
    switch (profile_.venueCopy.fromTree) {
        case VenueCopy::Tree::SelectionOnly:
            workdb::CopiaTabella(columns, *venue, selection, 0);
            return;
        case VenueCopy::Tree::OnceWithBar:
            venue->MoveFirst();
            workdb::CopiaRecordset(Bar1, columns, *venue, *workTable, 0);
            venue->MoveFirst();
            workdb::CopiaRecordset(Bar1, columns, *venue, selection, 0);
            return;
        case VenueCopy::Tree::Once:
            // Only when found: a venue gone since the search is passed over.
            if (venue->RecordCount() == 0) return;
            workdb::CopiaTabella(columns, *venue, *workTable, 0);
            venue->MoveFirst();
            workdb::CopiaTabella(columns, *venue, selection, 0);
            return;
        case VenueCopy::Tree::Twice:
            break;
    }
    workdb::CopiaTabella(columns, *venue, *workTable, 0);
    venue->MoveFirst();
    workdb::CopiaTabella(columns, *venue, selection, 0);
    if (venue->RecordCount() > 0) {
        venue->MoveFirst();
        workdb::CopiaTabella(columns, *venue, selection, 0);
    }
}

}  // namespace lorvane::screens
