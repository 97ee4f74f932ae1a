#include "screens/preparation.h"

#include "entry/module_values.h"
#include "platform/runtime_error.h"
#include "screens/filter_screen.h"
#include "workdb/copy_routines.h"

namespace lorvane::screens {

using namespace Qt::StringLiterals;

qint16 copiaDalPrincipale(const QString& sql, const QString& table, const char* colonne,
                          QProgressBar* barra) {
    db::RecordsetPtr source = impostato(entry::moduleValues().host).OpenRecordset(sql);
    db::RecordsetPtr target = workdb::ApriTabellaTemporanea(u"SELECT * FROM "_s + table);
    if (barra) {
        workdb::CopiaRecordset(barra, QLatin1String(colonne), *source, *target, 0);
    } else {
        workdb::CopiaTabella(QLatin1String(colonne), *source, *target, 0);
    }
    return contoRighe(source->RecordCount());
}

void scriviParametri(const QString& testo) {
    db::RecordsetPtr parametri = workdb::ApriTabellaTemporanea(u"SELECT * FROM Parametri"_s);
    parametri->AddNew();
    parametri->Fields(u"Parametri"_s).SetValue(testo);
    parametri->Update();
    parametri->Close();
}

}  // namespace lorvane::screens
