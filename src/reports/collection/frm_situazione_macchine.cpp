// The last known state of the hoppers and of the change machines.
#include <QProgressBar>

#include "platform/error_handling.h"
#include "reports/collection/macchine_screens.h"
#include "screens/preparation.h"
#include "workdb/column_lists.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::ScreenProfile;
using screens::VenueCopy;
namespace columns = workdb::columns;

namespace {

ScreenProfile hopperProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa situazione hopper"_s);
    profile.dallaOnOpen = profile.allaOnOpen = DateRule::Missing;
    profile.dallaOnReset = profile.allaOnReset = DateRule::Missing;
    profile.searchForms = &hopperSearchForms();
    profile.venueCopy.barWhenAll = false;
    profile.emptiedBeforeRun = {"AnagraficaLocali", "MagSchede", "NoteIncassi", "Parametri"};
    return profile;
}

ScreenProfile cambiamoneteProfile() {
    ScreenProfile profile = hopperProfile();
    profile.titolo = u"Stampa situazione cambiamonete"_s;
    profile.treeOnReset = screens::TreeReset::EmptiedWithRoot;
    profile.searchForms = &cambiamoneteSearchForms();
    // The boards are joined with the venues, so each venue stands there once.
    profile.venueCopy = {true, VenueCopy::Tree::OnceWithBar};
    profile.extras = {{ExtraControl::DatePicker, "txtData", u"Alla Data"_s, ExtraControl::Criteria,
                       screens::dateBy(DateRule::Today), screens::dateBy(DateRule::Today)}};
    return profile;
}

}  // namespace

SituazioneMacchine::SituazioneMacchine(ScreenProfile profile, Statements statements)
    : FilterScreen(std::move(profile)), statements_(statements) {}

qint16 SituazioneMacchine::PreparaDati() {
    qint16 rows = 0;
    platform::showErrorAndLeave([&] {
        const MacchineCriteri criteri = criteriMacchine(*this);
        const db::RecordsetPtr venues = PreparaLocali();
        Bar1->setMaximum(venues->RecordCount() + 1);
        Bar1->setValue(0);
        QProgressBar* bar = statements_.copiaConBarra ? Bar1 : nullptr;
        screens::copiaDalPrincipale(statements_.schede(criteri), u"MagSchede"_s,
                                    statements_.colonneSchede, bar);
        rows = screens::copiaDalPrincipale(statements_.ultimeNote(criteri), u"NoteIncassi"_s,
                                           columns::NoteIncassi81Saldi, bar);
        screens::scriviParametri(parametriFiltroLocali(this->criteri()));
        workdb::ConnessioneTemporanea().Close();
    });
    return rows;
}

FrmStampaHopper::FrmStampaHopper()
    : SituazioneMacchine(hopperProfile(),
                         {sqlSchedeHopper, sqlUltimiHopper, columns::MagSchede63, false}) {}

FrmStampaCambiamonete::FrmStampaCambiamonete()
    : SituazioneMacchine(cambiamoneteProfile(), {sqlSchedeCambiamonete, sqlUltimiCambiamonete,
                                                 columns::MagSchede55Cambiamonete, true}) {}

}  // namespace lorvane::reports
