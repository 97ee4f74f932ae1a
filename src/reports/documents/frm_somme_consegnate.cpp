// The sums delivered to the venue: the collection notes of the period, the
// venue's share summed per venue and written in words for the receipt.
#include <QCheckBox>

#include "reports/documents/documenti_screens.h"
#include "reports/documents/documenti_sql.h"
#include "reports/documents/importo_in_lettere.h"
#include "screens/preparation.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::ScreenProfile;
using screens::VenueCopy;
namespace columns = workdb::columns;

namespace {

// No causali: nothing checked before a run, nothing saved after. "Tutti i
// locali" takes the venues with notes in the period; a ticked venue goes in
// once, when it is found, with the screen's own list of columns.
ScreenProfile sommeProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa somme consegnate al locale"_s);
    profile.dallaOnOpen = profile.dallaOnReset = DateRule::FirstOfMonth;
    profile.treeOnReset = screens::TreeReset::EmptiedWithRoot;
    profile.extras = {
        {ExtraControl::CheckBox, "chkScontoRimborso", u"Includi sconto / rimborso"_s}};
    profile.searchForms = &sommeSearchForms();
    profile.venueCopy.fromTree = VenueCopy::Tree::Once;
    profile.venueCopy.allStatement = sqlLocaliConNote;
    profile.venueCopy.columns = columns::AnagraficaLocali61;
    profile.emptiedBeforeRun = {"AnagraficaAziende", "AnagraficaLocali", "AnagraficaOperatori",
                                "ImportoLettere",    "NoteTeste",        "Parametri"};
    return profile;
}

}  // namespace

FrmSommeConsegnate::FrmSommeConsegnate() : FilterScreen(sommeProfile()) {}

// Only the notes count: owners and companies may be there with no note. No
// handler of its own: a failure goes to the output button's.
qint16 FrmSommeConsegnate::PreparaDati() {
    const screens::FrameCriteria c = criteri();
    const bool scontoRimborso = findChild<QCheckBox*>(u"chkScontoRimborso"_s)->isChecked();
    PreparaLocali();
    const qint16 rows = screens::copiaDalPrincipale(sqlNoteSomme(c, scontoRimborso), u"NoteTeste"_s,
                                                    columns::NoteTeste47);
    // Owners, then agents behind them: an operator may stand twice.
    screens::copiaDalPrincipale(sqlOperatoriDeiLocali("Titolare", "CodTitolare"),
                                u"AnagraficaOperatori"_s, columns::AnagraficaOperatori33);
    screens::copiaDalPrincipale(sqlOperatoriDeiLocali("Agente", "codAgente"),
                                u"AnagraficaOperatori"_s, columns::AnagraficaOperatori33);
    screens::copiaDalPrincipale(sqlAziendeDeiLocali(), u"AnagraficaAziende"_s,
                                columns::AnagraficaAziende34);
    scriviImporti();
    screens::scriviParametri(parametriSomme(c));
    workdb::ConnessioneTemporanea().Close();
    return rows;
}

// One row per venue with notes: its share summed on the work file, in words;
// a Null sum reads "zero/00".
void FrmSommeConsegnate::scriviImporti() {
    db::RecordsetPtr somme = workdb::ApriTabellaTemporanea(sqlSommePerLocale());
    db::RecordsetPtr importi = workdb::ApriTabellaTemporanea(u"SELECT * FROM ImportoLettere"_s);
    for (; !somme->Eof(); somme->MoveNext()) {
        double importo = db::NoNullZero(somme->Fields(u"sommaLocale"_s).Value()).toDouble();
        importi->AddNew();
        importi->Fields(u"CodLocale"_s).SetValue(somme->Fields(u"CodLocale"_s).Value());
        importi->Fields(u"Descrizione"_s)
            .SetValue(ModSommeConsegnate::ImportoInLettere(importo, u"/"_s));
        importi->Update();
    }
    importi->Close();
    somme->Close();
}

}  // namespace lorvane::reports
