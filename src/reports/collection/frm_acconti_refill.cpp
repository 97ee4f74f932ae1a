// The advances and refills of the venues, of a period or still open.
#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>

#include "platform/message_box.h"
#include "platform/windows.h"
#include "reports/collection/collection_screens.h"
#include "reports/collection/macchine_sql.h"
#include "reports/collection/note_sql.h"
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

bool advances() { return causaleNote(entry::moduleValues().codiceStampa) == u"ACC"_s; }

ScreenProfile accontiRefillProfile() {
    ScreenProfile profile =
        screens::standardProfile(advances() ? u"Stampa Acconti"_s : u"Stampa Refill"_s);
    profile.dallaOnReset = DateRule::FirstOfYear;
    profile.loadCallsReset = true;
    profile.venueCopy.fromTree = VenueCopy::Tree::Once;
    profile.emptiedBeforeRun = {"AnagraficaLocali", "NoteIncassi", "NoteTeste", "Parametri"};
    profile.extras = {
        {ExtraControl::Option, "optSoloAperti",
         advances() ? u"Solo acconti aperti"_s : u"Solo refill aperti"_s, ExtraControl::Criteria,
         screens::text(u"1"_s), screens::text(u"1"_s)},
        {ExtraControl::Option, "optPeriodo", u"Filtra per periodo"_s},
    };
    return profile;
}

}  // namespace

FrmStampaAccontiRefill::FrmStampaAccontiRefill() : FilterScreen(accontiRefillProfile()) {}

void FrmStampaAccontiRefill::Form_Load_Proprio() {
    causaleNote_ = causaleNote(entry::moduleValues().codiceStampa);
    for (const char* name : {"optPeriodo", "optSoloAperti"})
        connect(findChild<QRadioButton*>(QLatin1String(name)), &QRadioButton::toggled, this,
                [this] { AggiornaPeriodo(); });
    AggiornaPeriodo();
}

void FrmStampaAccontiRefill::AggiornaPeriodo() {
    const bool enabled = periodo();
    for (const char* name : {"lblDallaData", "lblAllaData"})
        findChild<QLabel*>(QLatin1String(name))->setEnabled(enabled);
    txtDallaData->setEnabled(enabled);
    txtAllaData->setEnabled(enabled);
}

bool FrmStampaAccontiRefill::periodo() const {
    return findChild<QRadioButton*>(u"optPeriodo"_s)->isChecked();
}

NoteCriteri FrmStampaAccontiRefill::criteriNote() const {
    const screens::FrameCriteria frame = criteri();
    NoteCriteri criteri;
    criteri.dallaData = frame.dallaData;
    criteri.allaData = frame.allaData;
    criteri.azienda = frame.azienda;
    criteri.causale = causaleNote_;
    criteri.periodo = periodo();
    return criteri;
}

QString FrmStampaAccontiRefill::sqlRicerca() const {
    return sqlRicercaAcconti(criteri(), causaleNote_, periodo());
}

QString FrmStampaAccontiRefill::sqlTuttiLocali(bool sospesi) const {
    return sqlLocaliAcconti(causaleNote_, sospesi, criteri().azienda);
}

QString FrmStampaAccontiRefill::sqlLocaleScelto(const QString& code, bool sospesi) const {
    QString sql = FilterScreen::sqlLocaleScelto(code, sospesi);
    const QString azienda = criteri().azienda;
    if (!azienda.isEmpty()) sql += u" AND CodiceAzienda='"_s + azienda + u"'"_s;
    return sql;
}

// The count is that of the notes; the lines and the advances' repair follow
// whatever it is. No handler of its own: a failed statement ends the run, to
// the output button's handler.
qint16 FrmStampaAccontiRefill::PreparaDati() {
    PreparaLocali();
    const NoteCriteri note = criteriNote();
    const qint16 rows =
        screens::copiaDalPrincipale(sqlNoteAcconti(note), u"NoteTeste"_s, columns::NoteTeste56);
    screens::copiaDalPrincipale(sqlIncassiAcconti(note), u"NoteIncassi"_s, columns::NoteIncassi81);
    if (causaleNote_.compare(u"ACC"_s, Qt::CaseInsensitive) == 0) completaAcconti();
    screens::scriviParametri(
        parametriAcconti(note, entry::moduleValues().codiceStampa, filtroSuLocali(criteri())));
    workdb::ConnessioneTemporanea().Close();
    return rows;
}

// An advance whose amount is 0 or Null takes the balance of its lines on the
// advances' cash account, stored in the main database (the user is shown the
// statement); each note then gets a line "Acconto su locale" with its amount.
// A Null sum fails the subtraction with a type error, as the runtime's would.
void FrmStampaAccontiRefill::completaAcconti() {
    db::RecordsetPtr senzaRighe = workdb::ApriTabellaTemporanea(sqlNoteSenzaRighe());
    if (senzaRighe->RecordCount() == 0) return;
    db::RecordsetPtr righe =
        workdb::ApriTabellaTemporanea(u"SELECT * FROM NoteIncassi WHERE idTesta=-1"_s);
    Bar1->setMaximum(senzaRighe->RecordCount());
    for (senzaRighe->MoveFirst(); !senzaRighe->Eof(); senzaRighe->MoveNext()) {
        const QString id = senzaRighe->Fields(u"id"_s).Value().toString();
        db::Variant acconto = senzaRighe->Fields(u"Acconto"_s).Value();
        if (db::compare(db::NoNullZero(acconto), db::Variant(qint16(0))) ==
            std::strong_ordering::equal) {
            db::RecordsetPtr somma = host().OpenRecordset(sqlSommaCassaAcconti(id));
            if (somma->RecordCount() > 0) {
                acconto = db::NoNull(somma->Fields(u"Avere"_s).Value()) -
                          db::NoNull(somma->Fields(u"Dare"_s).Value());
                const QString aggiorna = sqlAggiornaAcconto(acconto.toString(), id);
                host().Execute(aggiorna);
                platform::MsgBox(aggiorna);
                // The walk reads a join, which cannot be written: the work
                // note takes the same statement.
                workdb::ConnessioneTemporanea().Execute(aggiorna);
            }
            somma->Close();
        }
        righe->AddNew();
        righe->Fields(u"idtesta"_s).SetValue(senzaRighe->Fields(u"id"_s).Value());
        righe->Fields(u"DataIncasso"_s)
            .SetValue(senzaRighe->Fields(u"DataRegistrazione"_s).Value());
        righe->Fields(u"Descrizione"_s).SetValue(u"Acconto su locale"_s);
        righe->Fields(u"Acconti"_s).SetValue(acconto);
        righe->Fields(u"Chiuso"_s).SetValue(senzaRighe->Fields(u"Chiuso"_s).Value());
        righe->Update();
        Bar1->setValue(Bar1->value() + 1);
        platform::letEventsThrough();
    }
}

}  // namespace lorvane::reports
