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

// A text box of the label screens: it narrows the search of the tree.
ExtraControl labelSearchField(const char* name, const QString& caption) {
    ExtraControl control{
        ExtraControl::TextBox,   name, caption, ExtraControl::Criteria, screens::keep(),
        screens::text(QString())};
    control.searchField = true;
    return control;
}

// The label screens: boards or cabinets instead of venues, no company, no
// dates, one page, and the preview opens even when empty.
ScreenProfile labelProfile(screens::TreeHolds holds, const char* secondField,
                           const QString& secondCaption, const QString& barcodeCaption) {
    ScreenProfile profile = screens::standardProfile(u"Stampa Etichette"_s);
    profile.dallaOnOpen = profile.allaOnOpen = DateRule::Missing;
    profile.dallaOnReset = profile.allaOnReset = DateRule::Missing;
    profile.tree = holds;
    profile.venueCriteria = false;
    profile.company = false;
    profile.lists = {};
    profile.countTest = false;
    profile.extras = {
        labelSearchField("txtCodInt", u"Codice Interno"_s),
        labelSearchField(secondField, secondCaption),
        {ExtraControl::CheckBox, "chkCodiceABarre", barcodeCaption, ExtraControl::Criteria,
         screens::keep(), screens::text(u"0"_s)},
    };
    return profile;
}

}  // namespace

FrmSommeConsegnate::FrmSommeConsegnate() : FilterScreen(sommeConsegnateProfile()) {}
FrmStampaQuietanza::FrmStampaQuietanza()
    : FilterScreen(screens::standardProfile(u"Stampa Quietanza"_s)) {}
FrmStampaAttoQuietanza::FrmStampaAttoQuietanza() : FilterScreen(attoQuietanzaProfile()) {}
FrmStampaEtichette::FrmStampaEtichette()
    : FilterScreen(labelProfile(screens::TreeHolds::Boards, "txtAAMS", u"Codice AAMS"_s,
                                u"Visualizza anche schede senza codice a barre"_s)) {}
FrmStampaEtichetteMobili::FrmStampaEtichetteMobili()
    : FilterScreen(labelProfile(screens::TreeHolds::Cabinets, "txtNomeMobile", u"Nome mobile"_s,
                                u"Visualizza anche mobili senza codice a barre"_s)) {}

}  // namespace lorvane::reports
