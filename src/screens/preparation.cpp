#include "screens/preparation.h"

#include "entry/module_values.h"
#include "platform/error_handling.h"
#include "platform/runtime_error.h"
#include "screens/filter_screen.h"
#include "workdb/copy_routines.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

namespace {

// The three steps of a copy, each run by `step`; `source` is the host's
// recordset, the work table's is given back.
template <typename Step>
db::RecordsetPtr copia(const QString& sql, const QString& table, const char* colonne,
                       QProgressBar* barra, db::RecordsetPtr& source, Step step) {
    db::RecordsetPtr target;
    step([&] { source = impostato(entry::moduleValues().host).OpenRecordset(sql); });
    step([&] { target = workdb::ApriTabellaTemporanea(u"SELECT * FROM "_s + table); });
    step([&] {
        if (barra) {
            workdb::CopiaRecordset(barra, QLatin1String(colonne), impostato(source),
                                   impostato(target), 0);
        } else {
            workdb::CopiaTabella(QLatin1String(colonne), impostato(source), impostato(target), 0);
        }
    });
    return target;
}

}  // namespace

qint16 copiaDalPrincipale(const QString& sql, const QString& table, const char* colonne,
                          QProgressBar* barra) {
    db::RecordsetPtr source;
    copia(sql, table, colonne, barra, source, [](const auto& run) { run(); });
    return contoRighe(source->RecordCount());
}

db::RecordsetPtr copiaProseguendo(const QString& sql, const QString& table, const char* colonne,
                                  QProgressBar* barra) {
    db::RecordsetPtr source;
    return copia(sql, table, colonne, barra, source,
                 [](const auto& run) { platform::showErrorAndGoOn(run); });
}

void scriviParametri(const QString& testo) {
    db::RecordsetPtr parametri = workdb::ApriTabellaTemporanea(u"SELECT * FROM Parametri"_s);
    parametri->AddNew();
    parametri->Fields(u"Parametri"_s).SetValue(testo);
    parametri->Update();
    parametri->Close();
}

}  // namespace lorvane::screens
