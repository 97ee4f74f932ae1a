#include "reports/collection/collection_screens.h"

#include "entry/module_values.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::ScreenProfile;

namespace {

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
FrmStampaAccontiRefill::FrmStampaAccontiRefill() : FilterScreen(accontiRefillProfile()) {}
FrmStampaDifferenzaPreu::FrmStampaDifferenzaPreu() : FilterScreen(differenzaPreuProfile()) {}

}  // namespace lorvane::reports
