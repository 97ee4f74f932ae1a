#include "reports/accounting/accounting_screens.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::ScreenProfile;
using screens::TreeReset;

namespace {

// The collector who made the operation, for the screens that filter by him.
ExtraControl esattore(const QString& caption) {
    ExtraControl control{ExtraControl::ComboBox, "cmbEsattore",   caption,
                         ExtraControl::Criteria, screens::keep(), screens::cleared()};
    control.deleteClears = true;
    return control;
}

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

// The lists of the two ledger cards: agents by code, the collectors, and the
// customer accounts of the chart.
const std::vector<screens::ComboList> schedaLists = {
    {"SELECT * FROM AnagraficaAziende", {{"CmbAzienda", "CodiceAzienda"}}},
    {"SELECT * FROM AnagraficaOperatori WHERE Mansione ='Agente' ORDER BY CodiceOperatore",
     {{"ComboAgente", "CodiceOperatore"}}},
    {"SELECT * FROM AnagraficaZone", {{"CmbZona", "CodiceZona"}}},
    {"SELECT * FROM AnagraficaConcessionari", {{"cmbConcessionario", "CodiceConcessionario"}}},
    {"SELECT * FROM AnagraficaOperatori WHERE Mansione ='Esattore' ORDER BY CodiceOperatore",
     {{"cmbEsattore", "CodiceOperatore"}}},
    {"select * from AnagraficaPianoConti WHERE CodiceConto LIKE '03.%' AND LivelloConto=2",
     {{"cmbCausale", "Descrizione"}, {"cmbCausaleCodice", "CodiceConto"}}},
};

const screens::CausaliList cassaCausali = {"SELECT * FROM AnagraficaCausali WHERE Cassa<>0 ",
                                           "StampaCassa", "'INC6','INC'", false, false};
const screens::CausaliList registroCausali = {
    "SELECT * FROM AnagraficaCausali WHERE RegistroCorrispettivi <>0 ", "StampaRegistro",
    "'INC6','INC','FUR'", false, true};
// The account card lists every causale and keeps no ticks.
const screens::CausaliList schedaContabCausali = {"SELECT * FROM AnagraficaCausali", nullptr, "",
                                                  true, false};

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

ScreenProfile schedaLocaleProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa scheda Cliente"_s);
    profile.lists = schedaLists;
    profile.extras = {
        esattore(u"Esattore che ha effettuato l'operazione"_s),
        {ExtraControl::ComboBox, "cmbCausale", u"Causale"_s, ExtraControl::Criteria,
         screens::keep(), screens::cleared()},
        {ExtraControl::HiddenComboBox, "cmbCausaleCodice"},
    };
    return profile;
}

ScreenProfile schedaContabProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa scheda Contabile"_s);
    profile.dallaOnReset = DateRule::FirstOfYear;
    profile.loadCallsReset = true;
    profile.lists = schedaLists;
    profile.causali = &schedaContabCausali;
    profile.pointerBackOnError = true;
    profile.extras = {
        esattore(u"Esattore che ha effettuato l'operazione"_s),
        {ExtraControl::ComboBox,
         "cmbCodContoDa",
         u"Da codice conto"_s,
         ExtraControl::Criteria,
         screens::keep(),
         {ExtraControl::Value::FirstRow, {}, DateRule::Missing}},
        {ExtraControl::ComboBox,
         "cmbCodContoA",
         u"A codice conto"_s,
         ExtraControl::Criteria,
         screens::keep(),
         {ExtraControl::Value::LastRow, {}, DateRule::Missing}},
        {ExtraControl::Button, "cmdSelAll", u"Seleziona tutte"_s, ExtraControl::CausaliPage},
        {ExtraControl::Button, "cmdSelNone", u"Deseleziona tutte"_s, ExtraControl::CausaliPage},
    };
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

FrmStampaSchedaLocale::FrmStampaSchedaLocale() : FilterScreen(schedaLocaleProfile()) {}
FrmStampaSchedaContab::FrmStampaSchedaContab() : FilterScreen(schedaContabProfile()) {}

}  // namespace lorvane::reports
