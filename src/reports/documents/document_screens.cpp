#include "reports/documents/document_screens.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::ScreenProfile;
using screens::TreeReset;

namespace {

ScreenProfile sommeConsegnateProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa somme consegnate al locale"_s);
    profile.dallaOnOpen = profile.dallaOnReset = DateRule::FirstOfMonth;
    profile.treeOnReset = TreeReset::EmptiedWithRoot;
    profile.extras = {
        {ExtraControl::CheckBox, "chkScontoRimborso", u"Includi sconto / rimborso"_s}};
    return profile;
}

ScreenProfile attoQuietanzaProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa Atti di Quietanza"_s);
    profile.frame1Caption = u"Criteri per la generazione degli atti di quietanza "_s;
    return profile;
}

}  // namespace

FrmSommeConsegnate::FrmSommeConsegnate() : FilterScreen(sommeConsegnateProfile()) {}
FrmStampaQuietanza::FrmStampaQuietanza()
    : FilterScreen(screens::standardProfile(u"Stampa Quietanza"_s)) {}
FrmStampaAttoQuietanza::FrmStampaAttoQuietanza() : FilterScreen(attoQuietanzaProfile()) {}
}  // namespace lorvane::reports
