// The cash report: the heads of the notes of a period with the causali
// ticked, their venues and companies, and the heading with the collector and
// the firm. No note lines and no machines reach it; the layout makes the sums.
// On opening the screen repairs the loan variations of the suite's notes.
#include <QComboBox>
#include <QProgressBar>

#include "platform/error_handling.h"
#include "platform/windows.h"
#include "reports/accounting/registri_screens.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;

namespace {

// Bar1 moves in sixths of its 100.
constexpr double step = 17;

}  // namespace

FrmStampaCassa::FrmStampaCassa() : NotePeriodo(cassaProfile()) {}

QString FrmStampaCassa::sqlRicerca() const {
    return sqlRicercaCassa(criteri(), criteriNote().esattore);
}

// Last of the opening, with no handler: a failure (no TabAssociazioneConti)
// ends the opening and reaches the host.
void FrmStampaCassa::Form_Load_Proprio() { AggiornaVarPrestito(); }

// One UPDATE per line through the host, in the order the lines come: a note
// with two lines on the loan account keeps the last one's amount.
void FrmStampaCassa::AggiornaVarPrestito() {
    db::RecordsetPtr righe = host().OpenRecordset(sqlPrestitiDaAggiornare());
    if (righe->RecordCount() < 1) return;
    Bar1->setValue(0);
    Bar1->setMaximum(righe->RecordCount());
    for (righe->MoveFirst(); !righe->Eof(); righe->MoveNext()) {
        host().Execute(
            sqlAggiornaVarPrestito(db::NoNullZero(righe->Fields(u"Somma"_s).Value()).text(),
                                   righe->Fields(u"id"_s).Value().text()));
        Bar1->setValue(Bar1->value() + 1);
        platform::letEventsThrough();
    }
    Bar1->setValue(0);
}

// Every statement shows its failure and the next one runs, so a report can
// come out on tables partly filled.
qint16 FrmStampaCassa::PreparaDati() {
    const RegistriCriteri criteri = criteriNote();
    const QStringList lotti = lottiLocali(elencoLocali());
    Bar1->setMaximum(100);
    svuotaTabelle();
    qint16 count = 0;
    db::RecordsetPtr teste;
    for (qsizetype i = 0; i < lotti.size(); ++i) {
        platform::showErrorAndGoOn([&] {
            const int righe = copiaNote(sqlNoteCassa(criteri, lotti[i]), u"NoteTeste"_s, teste,
                                        workdb::columns::NoteTeste47);
            count = screens::contoRighe(qint64(count) + righe);
        });
        barra(step * double(i + 1) / double(lotti.size()));
    }
    platform::showErrorAndGoOn([&] {
        copiaCollegati(localiCassa(), true,
                       [this](double fatto) { barra(3 * step + step * fatto); });
    });
    platform::showErrorAndGoOn([&] { copiaAziende(criteri.azienda); });
    barra(4 * step);
    platform::showErrorAndGoOn([&] {
        copiaCollegati(schedeCassa(), false,
                       [this](double fatto) { barra(5 * step + step * fatto); });
    });
    platform::showErrorAndGoOn([&] {
        db::RecordsetPtr parametri = workdb::ApriTabellaTemporanea(u"SELECT * FROM Parametri"_s);
        parametri->AddNew();
        parametri->Fields(u"Parametri"_s).SetValue(parametriCassa(criteri));
        parametri->Fields(u"Descr1"_s).SetValue(host().NomeDitta());
        parametri->Update();
        parametri->Close();
    });
    barra(100);
    teste.reset();
    platform::ignoreErrors([] { workdb::ConnessioneTemporanea().Close(); });
    return count;
}

}  // namespace lorvane::reports
