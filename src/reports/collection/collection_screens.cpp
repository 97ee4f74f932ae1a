#include "reports/collection/collection_screens.h"

#include "entry/module_values.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::ScreenProfile;
using screens::TreeReset;

namespace {

ScreenProfile percPagamentoGProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa percentuali di pagamento Globali"_s);
    profile.extras = {{ExtraControl::CheckBox, "chkVisMag",
                       u"Visualizza anche apparecchi a magazzino"_s, ExtraControl::Criteria,
                       screens::keep(), screens::text(u"1"_s)}};
    return profile;
}

ScreenProfile hopperProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa situazione hopper"_s);
    profile.dallaOnOpen = profile.allaOnOpen = DateRule::Missing;
    profile.dallaOnReset = profile.allaOnReset = DateRule::Missing;
    return profile;
}

ScreenProfile cambiamoneteProfile() {
    ScreenProfile profile = hopperProfile();
    profile.titolo = u"Stampa situazione cambiamonete"_s;
    profile.treeOnReset = TreeReset::EmptiedWithRoot;
    profile.extras = {{ExtraControl::DatePicker, "txtData", u"Alla Data"_s, ExtraControl::Criteria,
                       screens::dateBy(DateRule::Today), screens::dateBy(DateRule::Today)}};
    return profile;
}

ScreenProfile accontiRefillProfile() {
    const bool refill =
        entry::moduleValues().codiceStampa.compare(u"Refill"_s, Qt::CaseInsensitive) == 0;
    ScreenProfile profile =
        screens::standardProfile(refill ? u"Stampa Refill"_s : u"Stampa Acconti"_s);
    profile.dallaOnReset = DateRule::FirstOfYear;
    profile.loadCallsReset = true;
    profile.extras = {
        {ExtraControl::Option, "optSoloAperti", u"Solo acconti aperti"_s, ExtraControl::Criteria,
         screens::text(u"1"_s), screens::text(u"1"_s)},
        {ExtraControl::Option, "optPeriodo", u"Filtra per periodo"_s},
    };
    return profile;
}

ScreenProfile differenzaPreuProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa Differenza Preu"_s);
    profile.dallaOnReset = DateRule::FirstOfYear;
    profile.extras = {
        {ExtraControl::TextBox, "txtPreuRich", u"Preu richiesto"_s, ExtraControl::Criteria,
         screens::text(u"13.4"_s), screens::text(u"13.4"_s)},
        {ExtraControl::TextBox, "txtPreuNew", u"Nuovo valore Preu"_s, ExtraControl::Criteria,
         screens::text(u"12.6"_s), screens::text(u"12.6"_s)},
    };
    return profile;
}

}  // namespace

FrmStampaIntrodottoDistinta::FrmStampaIntrodottoDistinta()
    : FilterScreen(screens::standardProfile(u"Stampa introdotto su distinte"_s)) {}
FrmPercPagamentoG::FrmPercPagamentoG() : FilterScreen(percPagamentoGProfile()) {}
FrmPercPagamentoP::FrmPercPagamentoP()
    : FilterScreen(screens::standardProfile(u"Stampa percentuali di pagamento Parziali"_s)) {}
FrmStampaHopper::FrmStampaHopper() : FilterScreen(hopperProfile()) {}
FrmStampaCambiamonete::FrmStampaCambiamonete() : FilterScreen(cambiamoneteProfile()) {}
FrmStampaAccontiRefill::FrmStampaAccontiRefill() : FilterScreen(accontiRefillProfile()) {}
FrmStampaDifferenzaPreu::FrmStampaDifferenzaPreu() : FilterScreen(differenzaPreuProfile()) {}

}  // namespace lorvane::reports
