#include "reports/accounting/accounting_screens.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::ScreenProfile;
using screens::TreeReset;

ExtraControl esattore(const QString& caption) {
    ExtraControl control{ExtraControl::ComboBox, "cmbEsattore",   caption,
                         ExtraControl::Criteria, screens::keep(), screens::cleared()};
    control.deleteClears = true;
    return control;
}

namespace {

// The cash screen opens only the columns it fills, in its own order.
const std::vector<screens::ComboList> cassaLists = {
    {"SELECT CodiceAzienda FROM AnagraficaAziende", {{"CmbAzienda", "CodiceAzienda"}}},
    {"SELECT CodiceOperatore FROM AnagraficaOperatori WHERE mansione='Agente' ORDER BY "
     "CodiceOperatore",
     {{"ComboAgente", "CodiceOperatore"}}},
    {"SELECT CodiceOperatore FROM AnagraficaOperatori WHERE mansione='Esattore' ORDER BY "
     "CodiceOperatore",
     {{"cmbEsattore", "CodiceOperatore"}}},
    {"SELECT CodiceZona FROM AnagraficaZone ORDER BY CodiceZona", {{"CmbZona", "CodiceZona"}}},
    {"SELECT CodiceConcessionario FROM AnagraficaConcessionari ORDER BY CodiceConcessionario",
     {{"cmbConcessionario", "CodiceConcessionario"}}},
};

const std::vector<screens::ComboList> registroLists = {
    {"SELECT * FROM AnagraficaAziende", {{"CmbAzienda", "CodiceAzienda"}}},
    {"SELECT * FROM AnagraficaOperatori WHERE mansione ='Agente'",
     {{"ComboAgente", "CodiceOperatore"}}},
    {"SELECT * FROM AnagraficaZone", {{"CmbZona", "CodiceZona"}}},
    {"SELECT * FROM AnagraficaConcessionari", {{"cmbConcessionario", "CodiceConcessionario"}}},
};

const screens::CausaliList cassaCausali = {"SELECT * FROM AnagraficaCausali WHERE Cassa<>0 ",
                                           "StampaCassa", "'INC6','INC'", false, false};
const screens::CausaliList registroCausali = {
    "SELECT * FROM AnagraficaCausali WHERE RegistroCorrispettivi <>0 ", "StampaRegistro",
    "'INC6','INC','FUR'", false, true};

// The screens whose causali are checked before a run; they keep the tree
// when "Tutti i locali" goes on, and show no hourglass.
ScreenProfile withCausali(ScreenProfile profile, const screens::CausaliList& causali) {
    profile.causali = &causali;
    profile.controllaCausali = true;
    profile.chkTuttiKeepsTree = true;
    profile.treeOnReset = TreeReset::Untouched;
    profile.hourglass = false;
    return profile;
}

// The registers share one setting of causali and one search.
ScreenProfile registroComune(const QString& titolo) {
    ScreenProfile profile = withCausali(screens::standardProfile(titolo), registroCausali);
    profile.lists = registroLists;
    profile.searchForms = &registroSearchForms();
    profile.extras = {
        {ExtraControl::CheckBox, "chkEscludi", u"Escludi registrazioni senza corrispettivo"_s}};
    return profile;
}

}  // namespace

// The search finds a venue once per note of the period.
ScreenProfile cassaProfile() {
    ScreenProfile profile =
        withCausali(screens::standardProfile(u"Stampa cassa per periodo"_s), cassaCausali);
    profile.dallaOnOpen = DateRule::Today;
    profile.lists = cassaLists;
    profile.searchSkipsRepeats = true;
    profile.extras = {esattore(u"Esattore che ha effettuato l'incasso"_s)};
    profile.workFolderConnection = u"C:\\temp1\\"_s;
    return profile;
}

ScreenProfile registroProfile() { return registroComune(u"Stampa registro corrispettivi"_s); }

ScreenProfile registro2Profile() {
    ScreenProfile profile = registroComune(u"Stampa registro corrispettivi con Comodato"_s);
    profile.frame1Caption = u"Criteri stampa registro con comodato."_s;
    return profile;
}

}  // namespace lorvane::reports
