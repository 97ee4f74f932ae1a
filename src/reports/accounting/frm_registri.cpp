// The receipts registers: a calendar of the whole months of the period, the
// notes of the period with their lines and takings, and beside them the
// venues, companies and machines (the plain register) or the comodato share
// of each note (the register with comodato). The layouts make the sums.
#include <QCheckBox>
#include <QProgressBar>
#include <cmath>

#include "output/catalogue.h"
#include "platform/error_handling.h"
#include "reports/accounting/registri_screens.h"
#include "screens/controls.h"
#include "screens/preparation.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
namespace columns = workdb::columns;

namespace {

// Bar1 moves in sixths of its 100.
constexpr double step = 17;

// Adds `righe` to the 16-bit count of a run.
void conta(qint16& count, int righe) { count = screens::contoRighe(qint64(count) + righe); }

}  // namespace

FrmStampaRegistro::FrmStampaRegistro()
    : FrmStampaRegistro(registroProfile(), "SELECT * FROM ZPers") {}

FrmStampaRegistro::FrmStampaRegistro(screens::ScreenProfile profile, const char* opzione)
    : NotePeriodo(std::move(profile)), opzione_(opzione) {
    findChild<QCheckBox*>(u"chkEscludi"_s)->setVisible(false);
}

// The option shows and ticks chkEscludi. Each test that fails with an error
// counts as passed: with no readable ZPers the box comes up ticked.
void FrmStampaRegistro::RiempiListeProprie() {
    db::RecordsetPtr opzioni;
    platform::ignoreErrors([&] { opzioni = host().OpenRecordset(QString::fromLatin1(opzione_)); });
    const auto passa = [&](auto&& prova) {
        if (!opzioni) return true;
        try {
            return bool(prova());
        } catch (const RuntimeError&) {
            return true;
        }
    };
    if (!passa([&] { return opzioni->RecordCount() > 0; })) return;
    if (!passa([&] {
            return db::compare(db::NoNull(opzioni->Fields(u"RegistroCorrispettivi"_s).Value()),
                               db::Variant(true)) == std::strong_ordering::equal;
        }))
        return;
    auto* escludi = findChild<QCheckBox*>(u"chkEscludi"_s);
    escludi->setVisible(true);
    escludi->setChecked(true);
}

// The calendar first, whatever the notes; the connection is closed here, not
// by the preparation.
qint16 FrmStampaRegistro::PreparaStampa() {
    ApriTemporaneo(output::PercorsoTemporaneo(List1, List2, Pers));
    riempiCalendario();
    const qint16 rows = PreparaDati();
    workdb::ConnessioneTemporanea().Close();
    SalvaCausali();
    return rows;
}

void FrmStampaRegistro::riempiCalendario() {
    workdb::ConnessioneTemporanea().Execute(u"Delete * from Calendario"_s);
    db::RecordsetPtr calendario = workdb::ApriTabellaTemporanea(u"select * from Calendario"_s);
    for (const QDate& giorno : giorniCalendario(txtDallaData->date(), txtAllaData->date())) {
        calendario->AddNew();
        calendario->Fields(u"giorno"_s).SetValue(db::DateTime::fromParts(giorno));
        calendario->Update();
    }
}

// Heads, lines and takings of each batch; only the heads count. A failure is
// shown and the next statement runs, up to the machines (PreparaCollegati).
qint16 FrmStampaRegistro::PreparaDati() {
    const RegistriCriteri criteri = criteriNote();
    const QStringList lotti = lottiLocali(elencoLocali());
    Bar1->setMaximum(100);
    svuotaTabelle();
    qint16 count = 0;
    db::RecordsetPtr teste, righe, incassi;
    const double share = step / double(lotti.size());
    for (qsizetype i = 0; i < lotti.size(); ++i) {
        platform::showErrorAndGoOn([&] {
            conta(count, copiaNote(sqlNoteRegistro(PartiNota::Teste, criteri, lotti[i]),
                                   u"NoteTeste"_s, teste, columns::NoteTeste47));
        });
        barra(double(i + 1) * share);
        platform::showErrorAndGoOn([&] {
            copiaNote(sqlNoteRegistro(PartiNota::Righe, criteri, lotti[i]), u"NoteRighe"_s, righe,
                      columns::NoteRighe10);
        });
        barra(double(i + 2) * share);
        platform::showErrorAndGoOn([&] {
            copiaNote(sqlNoteRegistro(PartiNota::Incassi, criteri, lotti[i]), u"NoteIncassi"_s,
                      incassi, columns::NoteIncassi61);
        });
        barra(double(i + 3) * share);
    }
    PreparaCollegati(criteri);
    screens::scriviParametri(parametriRegistro(criteri));
    barra(100);
    return count;
}

// From the machines on, a failure is no longer shown here: it ends the
// preparation and reaches the output button.
void FrmStampaRegistro::PreparaCollegati(const RegistriCriteri& criteri) {
    platform::showErrorAndGoOn([&] {
        copiaCollegati(localiRegistro(), true,
                       [this](double fatto) { barra(3 * step + step * fatto); });
    });
    platform::showErrorAndGoOn([&] { copiaAziende(criteri.azienda); });
    barra(4 * step);
    copiaCollegati(schedeRegistro(), false, [this](double fatto) {
        platform::ignoreErrors([&] { barra(std::fmod(5 * step + step * fatto, 100.0)); });
    });
}

frmStampaRegistro2::frmStampaRegistro2()
    : FrmStampaRegistro(registro2Profile(), "SELECT RegistroCorrispettivi FROM ZPers") {}

// No venues and no machines: the companies, then the comodato share.
void frmStampaRegistro2::PreparaCollegati(const RegistriCriteri& criteri) {
    platform::showErrorAndGoOn([&] { copiaAziende(criteri.azienda); });
    barra(4 * step);
    platform::showErrorAndGoOn([&] { scriviComodato(criteri); });
}

// Each note and contract of the period with a comodato share writes that
// share over percAgente of the note, when the note reached the work table; a
// second contract of one note overwrites the first.
void frmStampaRegistro2::scriviComodato(const RegistriCriteri& criteri) {
    db::RecordsetPtr quote = host().OpenRecordset(sqlComodato(criteri.dallaData, criteri.allaData));
    if (quote->RecordCount() <= 0) return;
    db::RecordsetPtr note = workdb::ApriTabellaTemporanea(u"SELECT * FROM NoteTeste"_s);
    for (quote->MoveFirst(); !quote->Eof(); quote->MoveNext()) {
        note->SetFilter(u"id="_s + quote->Fields(u"idtesta"_s).Value().text());
        if (note->Eof()) continue;
        note->Fields(u"percAgente"_s)
            .SetValue(quotaComodato(
                db::NoNullZero(quote->Fields(u"SommaDiParzialeIn"_s).Value()).toDouble(),
                db::NoNullZero(quote->Fields(u"PercentualeComodato"_s).Value()).toDouble()));
        note->Update();
    }
}

}  // namespace lorvane::reports
