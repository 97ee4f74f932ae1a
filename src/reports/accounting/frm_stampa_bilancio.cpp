#include "reports/accounting/frm_stampa_bilancio.h"

#include <QCheckBox>

#include "output/catalogue.h"
#include "platform/error_handling.h"
#include "platform/runtime_error.h"
#include "screens/controls.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::ExtraControl;

namespace {

const std::vector<screens::ComboList> bilancioLists = {
    {"select * from anagraficaAziende", {{"CmbAzienda", "CodiceAzienda"}}},
    {"select * from anagraficaOperatori where mansione ='Agente'", {}},
    {"select * from anagraficazone", {}},
    {"select * from AnagraficaConcessionari", {}},
};

screens::ScreenProfile bilancioProfile() {
    screens::ScreenProfile profile = screens::standardProfile(u"Stampa Bilancio di Verifica"_s);
    profile.codiceStampa = "StampaBilancio";
    profile.dallaOnReset = screens::DateRule::Unchanged;
    profile.allaOnReset = screens::DateRule::Unchanged;
    profile.tree = screens::TreeHolds::Nothing;
    profile.tabs = false;
    profile.venueCriteria = false;
    profile.frame1Caption = u"Filtro di selezione"_s;
    profile.frame2Caption = u"Tipologia conti"_s;
    profile.lists = bilancioLists;
    profile.extras = {
        {ExtraControl::CheckBox, "chkContiEconomici", u"Economici"_s, ExtraControl::SecondBox,
         screens::text(u"1"_s), screens::text(u"0"_s)},
        {ExtraControl::CheckBox, "chkContiPatrimoniali", u"Patrimoniali"_s, ExtraControl::SecondBox,
         screens::text(u"1"_s), screens::text(u"0"_s)},
    };
    profile.countTest = false;
    return profile;
}

}  // namespace

FrmStampaBilancio::FrmStampaBilancio() : FilterScreen(bilancioProfile()) {}

QCheckBox* FrmStampaBilancio::chkContiPatrimoniali() const {
    return findChild<QCheckBox*>(u"chkContiPatrimoniali"_s);
}

QCheckBox* FrmStampaBilancio::chkContiEconomici() const {
    return findChild<QCheckBox*>(u"chkContiEconomici"_s);
}

BilancioCriteri FrmStampaBilancio::criteriBilancio() const {
    const screens::FrameCriteria frame = criteri();
    return {frame.azienda, frame.dallaData, frame.allaData, chkContiPatrimoniali()->isChecked(),
            chkContiEconomici()->isChecked()};
}

// The kinds are checked for the preview only: the exports go on without them.
bool FrmStampaBilancio::ControlloProprio(Output output) {
    if (output != Output::Preview || chkContiPatrimoniali()->isChecked() ||
        chkContiEconomici()->isChecked())
        return true;
    platform::MsgBox(u"Selezionare almeno una tipologia di conto prima di stampare!"_s);
    return false;
}

// Every step ignores its errors: what the tables hold when one fails is
// what the report shows. The screen makes no count test, so no count is made.
qint16 FrmStampaBilancio::PreparaStampa() {
    QString modello;
    platform::ignoreErrors([&] { modello = output::PercorsoTemporaneo(List1, List2, Pers); });
    platform::ignoreErrors([&] { ApriTemporaneo(modello); });
    for (const QString& statement : {u"Delete * from AnagraficaPianoConti"_s,
                                     u"Delete * from Saldi"_s, u"Delete * from Parametri"_s})
        platform::ignoreErrors([&] { workdb::ConnessioneTemporanea().Execute(statement); });
    platform::ignoreErrors([&] { PreparaDati(); });
    return 0;
}

// The first failing statement ends the preparation, leaving the work
// connection open; only closing it, at the end, ignores errors.
qint16 FrmStampaBilancio::PreparaDati() {
    const BilancioCriteri criteri = criteriBilancio();

    db::RecordsetPtr conti = host().OpenRecordset(sqlPianoConti(criteri));
    db::RecordsetPtr pianoConti =
        workdb::ApriTabellaTemporanea(u"SELECT * FROM AnagraficaPianoConti"_s);
    workdb::CopiaTabella(QLatin1String(workdb::columns::AnagraficaPianoConti9), *conti, *pianoConti,
                         0);

    db::RecordsetPtr movimenti = host().OpenRecordset(sqlMovimenti(criteri));
    db::RecordsetPtr saldi = workdb::ApriTabellaTemporanea(u"SELECT * FROM Saldi"_s);
    workdb::CopiaTabella(QLatin1String(workdb::columns::Saldi10), *movimenti, *saldi, 0);

    workdb::ConnessioneTemporanea().Execute(sqlContiSenzaMovimento());

    db::RecordsetPtr parametri = workdb::ApriTabellaTemporanea(u"SELECT * FROM Parametri"_s);
    parametri->AddNew();
    parametri->Fields(u"Parametri"_s).SetValue(titoloBilancio(criteri));
    parametri->Update();
    parametri->UpdateBatch();

    platform::ignoreErrors([&] { workdb::ConnessioneTemporanea().Close(); });
    return 0;
}

}  // namespace lorvane::reports
