#include "reports/collection/frm_stampa_introdotto.h"

#include <QComboBox>
#include <QProgressBar>

#include "platform/error_handling.h"
#include "platform/runtime_error.h"
#include "platform/windows.h"
#include "screens/preparation.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using platform::showErrorAndGoOn;
using screens::DateRule;
using screens::ScreenProfile;
namespace columns = workdb::columns;

namespace {

const screens::CausaliList introdottoCausali = {
    "SELECT * FROM AnagraficaCausali WHERE Introdotto <>0 ", "StampaIntrodotto", "'INC6'", true,
    false};

ScreenProfile introdottoProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa Introdotto per periodo"_s);
    profile.dallaOnOpen = DateRule::Today;
    profile.treeOnReset = screens::TreeReset::EmptiedWithRoot;
    profile.loadCallsReset = true;
    profile.chkTuttiKeepsTree = true;
    profile.concessionario2 = true;
    profile.numeroTerminale = true;
    profile.lists.push_back(
        {"SELECT DISTINCT NumeroTerminale FROM NoteTeste WHERE NOT NumeroTerminale IS NULL "
         "ORDER BY NumeroTerminale",
         {{"CmbNumTerminale", "NumeroTerminale"}}});
    profile.causali = &introdottoCausali;
    profile.controllaCausali = true;
    profile.hourglass = false;
    profile.workFolderCopy = u"C:\\temp1\\"_s;
    return profile;
}

// The boards are asked for in batches of this many ids, to keep the IN list short.
constexpr int boardsPerBatch = 100;

}  // namespace

FrmStampaIntrodotto::FrmStampaIntrodotto() : FilterScreen(introdottoProfile()) {}

IntrodottoCriteri FrmStampaIntrodotto::criteriIntrodotto() const {
    const screens::FrameCriteria frame = criteri();
    return {frame.dallaData, frame.allaData, frame.azienda, frame.numeroTerminale,
            frame.concessionario2};
}

// Every statement shows its own failure and the next one runs, so a failed
// step leaves its table short and the others whole. The causali ticked only
// gate the run: the report always takes the collections ('INC6').
qint16 FrmStampaIntrodotto::PreparaDati() {
    const IntrodottoCriteri criteri = criteriIntrodotto();
    auto& work = workdb::ConnessioneTemporanea();
    for (const char* table : {"MagSchede", "NoteIncassi", "NoteRighe", "NoteTeste",
                              "AnagraficaLocali", "AnagraficaAziende", "Parametri"})
        showErrorAndGoOn([&] { work.Execute(u"DELETE * FROM "_s + QLatin1String(table)); });
    Bar1->setValue(0);
    showErrorAndGoOn([&] { PreparaLocali(); });

    qint16 rows = 0;
    const db::RecordsetPtr notes =
        screens::copiaProseguendo(sqlNote(criteri), u"NoteTeste"_s, columns::NoteTeste48, Bar1);
    showErrorAndGoOn([&] { rows = screens::contoRighe(impostato(notes).RecordCount()); });
    screens::copiaProseguendo(sqlRighe(criteri), u"NoteRighe"_s, columns::NoteRighe10, Bar1);
    screens::copiaProseguendo(sqlLetture(criteri), u"NoteIncassi"_s, columns::NoteIncassi62, Bar1);
    screens::copiaProseguendo(sqlAziende(criteri), u"AnagraficaAziende"_s,
                              columns::AnagraficaAziende34);

    copiaSchede();

    showErrorAndGoOn([&] {
        const IntrodottoParametri heading = parametriIntrodotto(criteri);
        db::RecordsetPtr parametri = workdb::ApriTabellaTemporanea(u"SELECT * FROM Parametri"_s);
        parametri->AddNew();
        parametri->Fields(u"Parametri"_s).SetValue(heading.parametri);
        parametri->Fields(u"Descr1"_s).SetValue(heading.descr1);
        parametri->Fields(u"Descr2"_s).SetValue(heading.descr2);
        if (!heading.descr3.isEmpty()) parametri->Fields(u"Descr3"_s).SetValue(heading.descr3);
        parametri->Update();
        parametri->Close();
    });
    showErrorAndGoOn([&] { work.Close(); });
    return rows;
}

// The boards of the readings copied, asked for through the host a hundred
// ids at a time; a board already copied is skipped.
void FrmStampaIntrodotto::copiaSchede() {
    db::RecordsetPtr links;
    showErrorAndGoOn([&] {
        links = workdb::ApriTabellaTemporanea(
            u"SELECT LinkScheda FROM NoteIncassi GROUP BY LinkScheda"_s);
    });
    if (!links || links->RecordCount() == 0) return;
    QString ids;
    int inBatch = 0;
    const int total = links->RecordCount();
    int seen = 0;
    for (links->MoveFirst(); !links->Eof(); links->MoveNext()) {
        if (!ids.isEmpty()) ids += u", "_s;
        ids += links->Fields(u"LinkScheda"_s).Value().text();
        ++inBatch;
        ++seen;
        if (inBatch == boardsPerBatch || seen == total) {
            showErrorAndGoOn([&] {
                db::RecordsetPtr boards = host().OpenRecordset(sqlSchede(ids));
                db::RecordsetPtr copies =
                    workdb::ApriTabellaTemporanea(u"SELECT * FROM MagSchede"_s);
                workdb::CopiaTabella(QLatin1String(columns::MagSchede55), *boards, *copies, 1,
                                     u"id"_s);
            });
            ids.clear();
            inBatch = 0;
        }
        platform::letEventsThrough();
    }
}

}  // namespace lorvane::reports
