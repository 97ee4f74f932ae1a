#include "reports/accounting/frm_stampa_scheda.h"

#include <QComboBox>
#include <QProgressBar>
#include <QPushButton>

#include "entry/module_values.h"
#include "platform/error_handling.h"
#include "reports/accounting/accounting_screens.h"
#include "reports/collection/macchine_sql.h"
#include "screens/controls.h"
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

// The lists both cards open; the last one is where they differ.
std::vector<screens::ComboList> schedaLists(const char* agenti, screens::ComboList conti) {
    return {
        {"SELECT * FROM AnagraficaAziende", {{"CmbAzienda", "CodiceAzienda"}}},
        {agenti, {{"ComboAgente", "CodiceOperatore"}}},
        {"SELECT * FROM AnagraficaOperatori WHERE Mansione ='Esattore' ORDER BY CodiceOperatore",
         {{"cmbEsattore", "CodiceOperatore"}}},
        {"SELECT * FROM AnagraficaZone", {{"CmbZona", "CodiceZona"}}},
        {"SELECT * FROM AnagraficaConcessionari", {{"cmbConcessionario", "CodiceConcessionario"}}},
        std::move(conti),
    };
}

constexpr char contiClienti[] =
    "SELECT * FROM AnagraficaPianoConti WHERE CodiceConto LIKE '03.%' AND LivelloConto=2";

// Both cards empty the same work tables; NoteTeste is never filled.
ScreenProfile schedaProfile(const QString& titolo) {
    ScreenProfile profile = screens::standardProfile(titolo);
    profile.emptiedBeforeRun = {
        "AnagraficaLocali", "AnagraficaPianoConti", "NoteRighe", "NoteTeste", "Parametri", "Saldi"};
    profile.venueCopy.barWhenAll = false;
    return profile;
}

ScreenProfile schedaLocaleProfile() {
    ScreenProfile profile = schedaProfile(u"Stampa scheda Cliente"_s);
    profile.lists = schedaLists(
        "SELECT * FROM AnagraficaOperatori WHERE mansione ='Agente' ORDER BY CodiceOperatore",
        {contiClienti, {{"cmbCausale", "Descrizione"}, {"cmbCausaleCodice", "CodiceConto"}}});
    profile.venueCopy.fromTree = VenueCopy::Tree::Twice;
    profile.extras = {
        esattore(u"Esattore che ha effettuato l'operazione"_s),
        {ExtraControl::ComboBox, "cmbCausale", u"Causale"_s, ExtraControl::Criteria,
         screens::keep(), screens::cleared()},
        {ExtraControl::HiddenComboBox, "cmbCausaleCodice"},
    };
    return profile;
}

// Every causale, with its id; no ticks kept between openings.
const screens::CausaliList schedaContabCausali = {
    "SELECT id, CodiceCausale, Descrizione FROM AnagraficaCausali ORDER BY Descrizione", nullptr,
    "", false, false};

ScreenProfile schedaContabProfile() {
    ScreenProfile profile = schedaProfile(u"Stampa scheda Contabile"_s);
    profile.dallaOnReset = DateRule::FirstOfYear;
    profile.loadCallsReset = true;
    // The customer accounts fill the first combo, which the whole chart then replaces.
    profile.lists = schedaLists(
        "SELECT * FROM AnagraficaOperatori WHERE Mansione ='Agente' ORDER BY CodiceOperatore",
        {contiClienti, {{"cmbCodContoDa", "Descrizione"}}});
    profile.causali = &schedaContabCausali;
    profile.venueCopy.fromTree = VenueCopy::Tree::Once;
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
        // The reset ticks every causale by pressing this button.
        {ExtraControl::Button, "cmdSelAll", u"Seleziona tutte"_s, ExtraControl::CausaliPage,
         screens::keep(), screens::text(u"1"_s)},
        {ExtraControl::Button, "cmdSelNone", u"Deseleziona tutte"_s, ExtraControl::CausaliPage},
    };
    return profile;
}

QString chosen(const QComboBox* combo) {
    return combo && combo->currentIndex() >= 0 ? combo->currentText() : QString();
}

QString chosenId(const QComboBox* combo) {
    return combo && combo->currentIndex() >= 0 ? combo->currentData().toString() : QString();
}

}  // namespace

SchedaCriteri SchedaScreen::criteriScheda() const {
    const screens::FrameCriteria frame = criteri();
    SchedaCriteri c;
    c.dallaData = frame.dallaData;
    c.allaData = frame.allaData;
    c.azienda = frame.azienda;
    c.tutti = frame.tutti;
    c.esattore = chosen(findChild<QComboBox*>(u"cmbEsattore"_s));
    // The account chosen by name is the code at the same place of the hidden twin.
    const auto* conto = findChild<QComboBox*>(u"cmbCausale"_s);
    const auto* codice = findChild<QComboBox*>(u"cmbCausaleCodice"_s);
    if (conto && codice && conto->currentIndex() >= 0)
        c.conto = codice->itemText(conto->currentIndex());
    c.idDa = chosenId(findChild<QComboBox*>(u"cmbCodContoDa"_s));
    c.idA = chosenId(findChild<QComboBox*>(u"cmbCodContoA"_s));
    return c;
}

QString SchedaScreen::sqlRicerca() const {
    return sqlRicercaSchede(criteri(), criteriScheda().esattore);
}

FrmStampaSchedaLocale::FrmStampaSchedaLocale() : SchedaScreen(schedaLocaleProfile()) {}

// The customer accounts, then each venue of the selection in turn with its
// lines and its balances; the venues without lines in the period lose their
// zero balances. The count is that of the lines.
qint16 FrmStampaSchedaLocale::PreparaDati() {
    const SchedaCriteri c = criteriScheda();
    screens::copiaDalPrincipale(sqlPianoContiClienti(c), u"AnagraficaPianoConti"_s,
                                columns::AnagraficaPianoConti9);
    const db::RecordsetPtr venues = PreparaLocali();
    Bar1->setMaximum(venues->RecordCount() + 1);
    Bar1->setValue(0);
    const db::RecordsetPtr righe = workdb::ApriTabellaTemporanea(u"SELECT * FROM NoteRighe"_s);
    const db::RecordsetPtr saldi = workdb::ApriTabellaTemporanea(u"SELECT * FROM Saldi"_s);
    qint16 rows = 0;
    // An empty list of venues fails here, at its first row.
    for (venues->MoveFirst(); !venues->Eof(); venues->MoveNext()) {
        Bar1->setValue(Bar1->value() + 1);
        const QString venue = venues->Fields(u"CodLocale"_s).Value().text();
        const db::RecordsetPtr lines = host().OpenRecordset(sqlRigheLocale(c, venue));
        workdb::CopiaTabella(QLatin1String(columns::NoteRighe10), *lines, *righe, 0);
        rows = screens::contoRighe(qint64(rows) + lines->RecordCount());
        const db::RecordsetPtr balances = host().OpenRecordset(sqlSaldiLocale(c, venue));
        workdb::CopiaTabella(QLatin1String(columns::Saldi10), *balances, *saldi, 0);
    }
    Bar1->setValue(0);
    workdb::ConnessioneTemporanea().Execute(sqlPulisciSaldi());
    screens::scriviParametri(parametriFiltroLocali(criteri()));
    platform::ignoreErrors([] { workdb::ConnessioneTemporanea().Close(); });
    return rows;
}

FrmStampaSchedaContab::FrmStampaSchedaContab() : SchedaScreen(schedaContabProfile()) {
    if (auto* all = findChild<QPushButton*>(u"cmdSelAll"_s))
        connect(all, &QPushButton::clicked, this, [this] { selezionaCausali(true); });
    if (auto* none = findChild<QPushButton*>(u"cmdSelNone"_s))
        connect(none, &QPushButton::clicked, this, [this] { selezionaCausali(false); });
}

// The whole chart in both account combos, "code - description", with each
// account's id as the entry's data; an empty chart leaves them as they are.
void FrmStampaSchedaContab::RiempiListeProprie() {
    const db::RecordsetPtr conti = host().OpenRecordset(
        u"SELECT id, CodiceConto, Descrizione FROM AnagraficaPianoConti ORDER BY CodiceConto"_s);
    if (conti->RecordCount() == 0) return;
    auto* da = findChild<QComboBox*>(u"cmbCodContoDa"_s);
    auto* a = findChild<QComboBox*>(u"cmbCodContoA"_s);
    da->clear();
    a->clear();
    for (conti->MoveFirst(); !conti->Eof(); conti->MoveNext()) {
        const QString text = conti->Fields(u"CodiceConto"_s).Value().text() + u" - "_s +
                             conti->Fields(u"Descrizione"_s).Value().text();
        const QString id = conti->Fields(u"id"_s).Value().text();
        da->addItem(text, id);
        a->addItem(text, id);
    }
}

void FrmStampaSchedaContab::selezionaCausali(bool ticked) {
    for (int row = ListCausali->count() - 1; row >= 0; --row)
        ListCausali->setTicked(row, ticked);
}

QString FrmStampaSchedaContab::ElencoCausaliScelte() {
    const db::RecordsetPtr causali =
        host().OpenRecordset(u"SELECT id, CodiceCausale FROM AnagraficaCausali"_s);
    QString list;
    for (int row = ListCausali->count() - 1; row >= 0; --row) {
        if (!ListCausali->isTicked(row)) continue;
        causali->SetFilter(u"id="_s + ListCausali->item(row)->data(Qt::UserRole).toString());
        if (causali->Eof()) continue;
        if (!list.isEmpty()) list += u", "_s;
        list += u"'"_s + causali->Fields(u"CodiceCausale"_s).Value().text() + u"'"_s;
    }
    return list;
}

// One pass: the chart of the range, the venues into AnagraficaLocali_Tmp, the
// lines (the count), the balances of level 2 and a zero row for every other
// account of the range. The venue table is left empty. With no causale the
// database refuses " IN ()" and the failure goes to the button's handler.
qint16 FrmStampaSchedaContab::PreparaDati() {
    SchedaCriteri c = criteriScheda();
    screens::copiaDalPrincipale(sqlPianoContiIntervallo(c), u"AnagraficaPianoConti"_s,
                                columns::AnagraficaPianoConti9);
    PreparaLocali();
    c.causali = ElencoCausaliScelte();
    const qint16 rows =
        screens::copiaDalPrincipale(sqlRigheContab(c), u"NoteRighe"_s, columns::NoteRighe11);
    screens::copiaDalPrincipale(sqlSaldiContab(c), u"Saldi"_s, columns::Saldi10);
    if (entry::moduleValues().codiceStampa.compare(u"StampaSchedaContab"_s, Qt::CaseInsensitive) ==
        0)
        workdb::ConnessioneTemporanea().Execute(sqlContiSenzaSaldo());
    screens::scriviParametri(parametriFiltroLocali(criteri()));
    host().Execute(u"DELETE * FROM AnagraficaLocali_Tmp"_s);
    platform::ignoreErrors([] { workdb::ConnessioneTemporanea().Close(); });
    return rows;
}

}  // namespace lorvane::reports
