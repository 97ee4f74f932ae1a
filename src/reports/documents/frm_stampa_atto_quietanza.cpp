// The deeds of quittance: the suite's documents of kind 8 with the lines of
// every document of the period, each venue's concession codes and owner, and
// the repair of older deed lines that have no company.
#include <QEvent>
#include <QProgressBar>

#include "platform/error_handling.h"
#include "platform/message_box.h"
#include "platform/windows.h"
#include "reports/documents/documenti_screens.h"
#include "reports/documents/documenti_sql.h"
#include "screens/preparation.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::ScreenProfile;
namespace columns = workdb::columns;

namespace {

// Venues with a deed in the period; a ticked venue's statement takes the
// company too. No heading row for this report.
ScreenProfile attoQuietanzaProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa Atti di Quietanza"_s);
    profile.frame1Caption = u"Criteri per la generazione degli atti di quietanza "_s;
    profile.searchForms = &attoQuietanzaSearchForms();
    profile.venueCopy.companyOnTree = true;
    profile.emptiedBeforeRun = {
        "AnagraficaAziende",   "AnagraficaLocali", "AnagraficaLocaliCaratteristiche",
        "AnagraficaOperatori", "DocTeste",         "DocRighe"};
    return profile;
}

}  // namespace

FrmStampaAttoQuietanza::FrmStampaAttoQuietanza() : FilterScreen(attoQuietanzaProfile()) {}

// A failure of the repair is shown, and the screen stays open.
bool FrmStampaAttoQuietanza::event(QEvent* event) {
    const bool handled = FilterScreen::event(event);
    if (event->type() == QEvent::WindowActivate)
        platform::showErrorAndLeave([this] { Form_Activate(); });
    return handled;
}

// Each deed line without a company takes its head's, written through the
// host as it stands. Nothing is said when there is nothing to repair, so a
// second activation is silent; lines not reached are found next time.
void FrmStampaAttoQuietanza::Form_Activate() {
    db::RecordsetPtr righe = host().OpenRecordset(sqlRigheDaRiparare());
    if (righe->RecordCount() < 1) return;
    Bar1->setMaximum(righe->RecordCount());
    Bar1->setValue(0);
    for (righe->MoveFirst(); !righe->Eof(); righe->MoveNext()) {
        host().Execute(sqlRiparaRiga(righe->Fields(u"Codspettabile"_s).Value().text(),
                                     righe->Fields(u"id"_s).Value().text()));
        Bar1->setValue(Bar1->value() + 1);
        platform::letEventsThrough();
    }
    Bar1->setValue(0);
    platform::MsgBox(u"Aggiornamento struttura completato. E' possibile proseguire con la stampa"_s,
                     platform::MsgBoxStyle::OkOnly);
}

// The heads of the period count. A selected company narrows the heads, not
// the lines. No handler of its own: a failure goes to the output button's.
qint16 FrmStampaAttoQuietanza::PreparaDati() {
    const screens::FrameCriteria c = criteri();
    PreparaLocali();
    copiaCaratteristicheETitolari();
    screens::copiaDalPrincipale(sqlAziendeAtti(), u"AnagraficaAziende"_s,
                                columns::AnagraficaAziende34);
    const qint16 rows =
        screens::copiaDalPrincipale(sqlTesteAtti(c), u"DocTeste"_s, columns::DocTeste70, Bar1);
    screens::copiaDalPrincipale(sqlRigheAtti(c), u"DocRighe"_s, columns::DocRighe62, Bar1);
    workdb::ConnessioneTemporanea().Close();
    return rows;
}

// Venue by venue: its concession codes, and its owner unless an earlier
// venue brought the same one.
void FrmStampaAttoQuietanza::copiaCaratteristicheETitolari() {
    db::RecordsetPtr caratteristiche =
        workdb::ApriTabellaTemporanea(u"SELECT * FROM AnagraficaLocaliCaratteristiche"_s);
    db::RecordsetPtr operatori =
        workdb::ApriTabellaTemporanea(u"SELECT * FROM AnagraficaOperatori"_s);
    db::RecordsetPtr locali = workdb::ApriTabellaTemporanea(u"SELECT * FROM AnagraficaLocali"_s);
    if (locali->RecordCount() == 0) return;
    Bar1->setMaximum(locali->RecordCount());
    Bar1->setValue(0);
    const QString caratteristicheColumns = QLatin1String(columns::AnagraficaLocaliCaratteristiche7);
    const QString operatoriColumns = QLatin1String(columns::AnagraficaOperatori22);
    for (locali->MoveFirst(); !locali->Eof(); locali->MoveNext()) {
        db::RecordsetPtr codici = host().OpenRecordset(
            sqlCaratteristicheLocale(locali->Fields(u"CodLocale"_s).Value().text()));
        workdb::CopiaTabella(caratteristicheColumns, *codici, *caratteristiche, 0);
        db::RecordsetPtr titolare = host().OpenRecordset(
            sqlTitolare(db::NoNull(locali->Fields(u"codTitolare"_s).Value()).text()));
        if (titolare->RecordCount() > 0) {
            operatori->SetFilter(
                filtroOperatore(titolare->Fields(u"codiceoperatore"_s).Value().text()));
            if (operatori->RecordCount() < 1)
                workdb::CopiaTabella(operatoriColumns, *titolare, *operatori, 0);
        }
        Bar1->setValue(Bar1->value() + 1);
    }
    Bar1->setValue(0);
}

}  // namespace lorvane::reports
