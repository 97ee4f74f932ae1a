#include "reports/documents/document_screens.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::ScreenProfile;
using screens::TreeReset;

namespace {

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

FrmStampaEtichette::FrmStampaEtichette()
    : FilterScreen(labelProfile(screens::TreeHolds::Boards, "txtAAMS", u"Codice AAMS"_s,
                                u"Visualizza anche schede senza codice a barre"_s)) {}
FrmStampaEtichetteMobili::FrmStampaEtichetteMobili()
    : FilterScreen(labelProfile(screens::TreeHolds::Cabinets, "txtNomeMobile", u"Nome mobile"_s,
                                u"Visualizza anche mobili senza codice a barre"_s)) {}

}  // namespace lorvane::reports
