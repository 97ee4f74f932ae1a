// What the cash report and the registers share: the criteria of a run, the
// venues ticked, the work tables emptied and the venues or machines of the
// notes copied in groups of 100.
#include <QCheckBox>
#include <QComboBox>
#include <QProgressBar>

#include "platform/error_handling.h"
#include "reports/accounting/registri_screens.h"
#include "screens/controls.h"
#include "workdb/column_lists.h"
#include "workdb/copy_routines.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;

namespace {

constexpr int valuesPerStatement = 100;

}  // namespace

RegistriCriteri NotePeriodo::criteriNote() const {
    const screens::FrameCriteria frame = criteri();
    RegistriCriteri c;
    c.dallaData = frame.dallaData;
    c.allaData = frame.allaData;
    c.azienda = frame.azienda;
    if (auto* esattore = findChild<QComboBox*>(u"cmbEsattore"_s);
        esattore && esattore->currentIndex() >= 0)
        c.esattore = esattore->currentText();
    c.causali = elencoQuotato(frame.causali);
    if (auto* escludi = findChild<QCheckBox*>(u"chkEscludi"_s)) c.escludi = escludi->isChecked();
    return c;
}

QString NotePeriodo::elencoLocali() const {
    if (ChkTutti->isChecked()) return {};
    QStringList codes;
    for (QTreeWidgetItem* node : Tree->allNodes()) {
        const QString key = screens::KeyedTree::keyOf(node);
        if (screens::KeyedTree::isTicked(node) && key != QLatin1String(screens::KeyedTree::RootKey))
            codes << key.mid(1);
    }
    return elencoQuotato(codes);
}

void NotePeriodo::svuotaTabelle() {
    for (const QString& statement : svuotaNote())
        platform::showErrorAndGoOn([&] { workdb::ConnessioneTemporanea().Execute(statement); });
}

void NotePeriodo::copiaCollegati(const FormeCollegate& forme, bool virgolette,
                                 const std::function<void(double)>& passo) {
    db::RecordsetPtr gruppo =
        workdb::ConnessioneTemporanea().OpenRecordset(QLatin1String(forme.gruppo));
    const int totale = gruppo->RecordCount();
    if (totale < 1) return;
    db::RecordsetPtr destinazione;
    QStringList valori;
    int visti = 0;
    for (gruppo->MoveFirst(); !gruppo->Eof(); gruppo->MoveNext()) {
        const QString valore = db::NoNull(gruppo->Fields(0).Value()).text();
        valori << (virgolette ? u'\'' + valore + u'\'' : valore);
        if (++visti % valuesPerStatement == 0 || visti == totale) {
            db::RecordsetPtr origine =
                host().OpenRecordset(QLatin1String(forme.origine) + valori.join(u", "_s) + u")"_s);
            if (!destinazione)
                destinazione = workdb::ApriTabellaTemporanea(QLatin1String(forme.destinazione));
            workdb::CopiaTabella(QLatin1String(forme.colonne), *origine, *destinazione, 1, u"id"_s);
            valori.clear();
        }
        passo(double(visti) / totale);
    }
}

int NotePeriodo::copiaNote(const QString& sql, const QString& tabella, db::RecordsetPtr& aperta,
                           const char* colonne) {
    db::RecordsetPtr origine = host().OpenRecordset(sql);
    if (!aperta) aperta = workdb::ApriTabellaTemporanea(u"SELECT * FROM "_s + tabella);
    workdb::CopiaTabella(QLatin1String(colonne), *origine, *aperta, 0);
    return origine->RecordCount();
}

void NotePeriodo::copiaAziende(const QString& azienda) {
    db::RecordsetPtr aziende = host().OpenRecordset(sqlAziende(azienda));
    db::RecordsetPtr tabella = workdb::ApriTabellaTemporanea(u"SELECT * FROM AnagraficaAziende"_s);
    workdb::CopiaTabella(QLatin1String(workdb::columns::AnagraficaAziende34), *aziende, *tabella, 1,
                         u"id"_s);
}

void NotePeriodo::barra(double valore) { Bar1->setValue(qBound(0, qRound(valore), 100)); }

}  // namespace lorvane::reports
