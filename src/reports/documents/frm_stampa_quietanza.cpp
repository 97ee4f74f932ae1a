// The quittance statements: the heads and lines the main program stored for
// the period, copied as they stand with the companies and concessionaires.
#include "reports/collection/macchine_sql.h"
#include "reports/documents/documenti_screens.h"
#include "reports/documents/documenti_sql.h"
#include "screens/preparation.h"
#include "workdb/column_lists.h"
#include "workdb/work_database.h"

namespace lorvane::reports {

using namespace Qt::StringLiterals;
using screens::ScreenProfile;
namespace columns = workdb::columns;

namespace {

// Venues with a quittance in the period; both copies of "Tutti i locali"
// without the bar.
ScreenProfile quietanzaProfile() {
    ScreenProfile profile = screens::standardProfile(u"Stampa Quietanza"_s);
    profile.searchForms = &quietanzaSearchForms();
    profile.venueCopy.barWhenAll = false;
    profile.emptiedBeforeRun = {"AnagraficaAziende", "AnagraficaConcessionari", "AnagraficaLocali",
                                "Parametri",         "QuietanzaRighe",          "QuietanzaTesta"};
    return profile;
}

}  // namespace

FrmStampaQuietanza::FrmStampaQuietanza() : FilterScreen(quietanzaProfile()) {}

// The lines count, so heads without lines print nothing. The concessionaire of
// the venue page narrows only the concessionaires copied. No handler of its own.
qint16 FrmStampaQuietanza::PreparaDati() {
    const screens::FrameCriteria c = criteri();
    PreparaLocali();
    screens::copiaDalPrincipale(sqlTesteQuietanza(c), u"QuietanzaTesta"_s,
                                columns::QuietanzaTesta32);
    const qint16 rows = screens::copiaDalPrincipale(sqlRigheQuietanza(c), u"QuietanzaRighe"_s,
                                                    columns::QuietanzaRighe45);
    screens::copiaDalPrincipale(sqlAziendeQuietanza(c), u"AnagraficaAziende"_s,
                                columns::AnagraficaAziende35);
    screens::copiaDalPrincipale(sqlConcessionariQuietanza(c), u"AnagraficaConcessionari"_s,
                                columns::AnagraficaConcessionari25);
    screens::scriviParametri(parametriFiltroLocali(c));
    workdb::ConnessioneTemporanea().Close();
    return rows;
}

}  // namespace lorvane::reports
