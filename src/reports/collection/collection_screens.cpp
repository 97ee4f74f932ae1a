// The takings on slips and the PREU difference.
#include "reports/collection/collection_screens.h"

#include <QLineEdit>

#include "platform/message_box.h"
#include "reports/collection/macchine_sql.h"
#include "reports/collection/note_sql.h"
#include "screens/preparation.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::DateRule;
using screens::ExtraControl;
using screens::ScreenProfile;
namespace columns = workdb::columns;

namespace {

ScreenProfile distintaProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa introdotto su distinte"_s);
    profile.searchForms = &distintaSearchForms();
    profile.venueCopy.barWhenAll = false;
    profile.venueCopy.companyOnTree = true;
    profile.emptiedBeforeRun = {"AnagraficaLocali", "Parametri", "QuietanzaRighe"};
    return profile;
}

ScreenProfile differenzaPreuProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa Differenza Preu"_s);
    profile.dallaOnReset = DateRule::FirstOfYear;
    profile.searchForms = &preuSearchForms();
    profile.venueCopy.barWhenAll = false;
    profile.emptiedBeforeRun = {"AnagraficaLocali", "NoteIncassi", "NoteTeste", "Parametri"};
    profile.extras = {
        {ExtraControl::TextBox, "txtPreuRich", u"Preu richiesto"_s, ExtraControl::Criteria,
         screens::text(u"13.4"_s), screens::text(u"13.4"_s)},
        {ExtraControl::TextBox, "txtPreuNew", u"Nuovo valore Preu"_s, ExtraControl::Criteria,
         screens::text(u"12.6"_s), screens::text(u"12.6"_s)},
    };
    return profile;
}

NoteCriteri periodOf(const screens::FrameCriteria& frame) {
    NoteCriteri criteri;
    criteri.dallaData = frame.dallaData;
    criteri.allaData = frame.allaData;
    criteri.azienda = frame.azienda;
    return criteri;
}

}  // namespace

FrmStampaIntrodottoDistinta::FrmStampaIntrodottoDistinta() : FilterScreen(distintaProfile()) {}

// The heading looks at the criteria typed, not at the tree: venues picked in
// the grid alone give no " filtro su locali".
qint16 FrmStampaIntrodottoDistinta::PreparaDati() {
    PreparaLocali();
    const screens::FrameCriteria frame = criteri();
    const qint16 rows = screens::copiaDalPrincipale(sqlRigheDistinta(periodOf(frame)),
                                                    u"QuietanzaRighe"_s, columns::QuietanzaRighe45);
    screens::scriviParametri(parametriFiltroLocali(frame));
    workdb::ConnessioneTemporanea().Close();
    return rows;
}

FrmStampaDifferenzaPreu::FrmStampaDifferenzaPreu() : FilterScreen(differenzaPreuProfile()) {}

bool FrmStampaDifferenzaPreu::ControllaPreu() {
    const auto valid = [this](const char* name) {
        return preuValido(findChild<QLineEdit*>(QLatin1String(name))->text());
    };
    if (valid("txtPreuRich") && valid("txtPreuNew")) return true;
    platform::MsgBox(
        u"Inserire un valore numerico, sia per il Preu richiesto che per il nuovo valore Preu"_s);
    return false;
}

// The count is that of the lines: notes without a selected line count for
// nothing. The difference is read before anything is copied, so that a text
// the numeric test let through but that is no decimal ("1.2.3") ends the run
// with AnagraficaLocali_Tmp as it was. No handler of its own.
qint16 FrmStampaDifferenzaPreu::PreparaDati() {
    const db::Decimal differenza = differenzaPreu(findChild<QLineEdit*>(u"txtPreuRich"_s)->text(),
                                                  findChild<QLineEdit*>(u"txtPreuNew"_s)->text());
    PreparaLocali();
    const screens::FrameCriteria frame = criteri();
    const NoteCriteri note = periodOf(frame);
    screens::copiaDalPrincipale(sqlNotePreu(note), u"NoteTeste"_s, columns::NoteTeste57);
    const qint16 rows =
        screens::copiaDalPrincipale(sqlIncassiPreu(note), u"NoteIncassi"_s, columns::NoteIncassi82);
    db::RecordsetPtr parametri = workdb::ApriTabellaTemporanea(u"SELECT * FROM Parametri"_s);
    parametri->AddNew();
    parametri->Fields(u"Parametri"_s).SetValue(parametriFiltroLocali(frame));
    parametri->Fields(u"Differenza"_s).SetValue(differenza);
    parametri->Update();
    parametri->Close();
    workdb::ConnessioneTemporanea().Close();
    return rows;
}

}  // namespace lorvane::reports
