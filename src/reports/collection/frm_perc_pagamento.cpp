// The payout percentages: the screens hand over boards and readings, and the
// layout computes the percentages from the copied columns.
#include <QCheckBox>
#include <QProgressBar>

#include "reports/collection/macchine_screens.h"
#include "screens/controls.h"
#include "screens/preparation.h"
#include "workdb/column_lists.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::ExtraControl;
using screens::ScreenProfile;
using screens::VenueCopy;
namespace columns = workdb::columns;

namespace {

// Both screens search venues collected in the period, and put the ticked ones
// once into AnagraficaLocali_Tmp only; with "Tutti i locali" they take none.
ScreenProfile percentualiProfile(const QString& titolo) {
    ScreenProfile profile = screens::standardProfile(titolo);
    profile.searchForms = &percentualiSearchForms();
    profile.venueCopy.fromTree = VenueCopy::Tree::SelectionOnly;
    return profile;
}

ScreenProfile globaliProfile() {
    ScreenProfile profile = percentualiProfile(u"Stampa percentuali di pagamento Globali"_s);
    profile.extras = {{ExtraControl::CheckBox, "chkVisMag",
                       u"Visualizza anche apparecchi a magazzino"_s, ExtraControl::Criteria,
                       screens::keep(), screens::text(u"1"_s)}};
    profile.emptiedBeforeRun = {"MagSchede", "Parametri"};
    return profile;
}

ScreenProfile parzialiProfile() {
    ScreenProfile profile = percentualiProfile(u"Stampa percentuali di pagamento Parziali"_s);
    profile.emptiedBeforeRun = {"MagSchede", "NoteIncassi", "Parametri"};
    return profile;
}

}  // namespace

MacchineCriteri criteriMacchine(const screens::FilterScreen& screen) {
    const screens::FrameCriteria frame = screen.criteri();
    MacchineCriteri criteri;
    criteri.dallaData = frame.dallaData;
    criteri.allaData = frame.allaData;
    criteri.azienda = frame.azienda;
    criteri.tutti = frame.tutti;
    if (auto* data = screen.findChild<screens::DatePicker*>(u"txtData"_s))
        criteri.data = data->date();
    if (auto* visMag = screen.findChild<QCheckBox*>(u"chkVisMag"_s))
        criteri.visMag = visMag->isChecked();
    return criteri;
}

FrmPercPagamentoG::FrmPercPagamentoG() : FilterScreen(globaliProfile()) {}

// The boards are copied first and the venues not chosen deleted after, so the
// count is that of the copy even when the filter leaves nothing. No handler
// of its own: a failure goes to the output button's.
qint16 FrmPercPagamentoG::PreparaDati() {
    const MacchineCriteri criteri = criteriMacchine(*this);
    const QString codici = criteri.tutti ? QString() : codiciLocaliScelti();
    const qint16 rows = screens::copiaDalPrincipale(sqlSchedeGlobali(criteri), u"MagSchede"_s,
                                                    columns::MagSchede59);
    if (!codici.isEmpty()) workdb::ConnessioneTemporanea().Execute(sqlEliminaAltriLocali(codici));
    screens::scriviParametri(parametriPercentuali(criteri));
    workdb::ConnessioneTemporanea().Close();
    return rows;
}

// The ticked venues, put into AnagraficaLocali_Tmp and read back as a list of
// quoted codes; "" when none was found.
QString FrmPercPagamentoG::codiciLocaliScelti() {
    PreparaLocali();
    db::RecordsetPtr venues = host().OpenRecordset(u"SELECT * FROM AnagraficaLocali_Tmp"_s);
    QStringList codes;
    if (venues->RecordCount() > 0) {
        Bar1->setMaximum(venues->RecordCount());
        Bar1->setValue(0);
        for (venues->MoveFirst(); !venues->Eof(); venues->MoveNext()) {
            codes << venues->Fields(u"CodLocale"_s).Value().text();
            Bar1->setValue(Bar1->value() + 1);
        }
        Bar1->setValue(0);
    }
    return elencoCodici(codes);
}

FrmPercPagamentoP::FrmPercPagamentoP() : FilterScreen(parzialiProfile()) {}

// The readings of the period ('INC6') give the count; the boards are those
// read in the period under any causale. No handler of its own.
qint16 FrmPercPagamentoP::PreparaDati() {
    const MacchineCriteri criteri = criteriMacchine(*this);
    if (!criteri.tutti) PreparaLocali();
    const qint16 rows = screens::copiaDalPrincipale(sqlLettureParziali(criteri), u"NoteIncassi"_s,
                                                    columns::NoteIncassi76);
    screens::copiaDalPrincipale(sqlSchedeParziali(criteri), u"MagSchede"_s, columns::MagSchede59);
    screens::scriviParametri(parametriPercentuali(criteri));
    workdb::ConnessioneTemporanea().Close();
    return rows;
}

}  // namespace lorvane::reports
