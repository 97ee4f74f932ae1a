#include "entry/dispatch.h"

#include <memory>

#include "reports/accounting/accounting_screens.h"
#include "reports/accounting/frm_stampa_bilancio.h"
#include "reports/collection/collection_screens.h"
#include "reports/collection/macchine_screens.h"
#include "reports/collection/frm_stampa_introdotto.h"
#include "reports/documents/document_screens.h"

namespace lorvane::entry {

namespace {

// A new screen, loaded; one that fails to load is not left behind.
template <typename Screen>
QWidget* make() {
    auto screen = std::make_unique<Screen>();
    screen->load();
    return screen.release();
}

}  // namespace

std::span<const ReportScreen> reportScreens() {
    using namespace reports;
    static const ReportScreen screens[] = {
        {"StampaCassa", "FrmStampaCassa", make<FrmStampaCassa>},
        {"StampaIntrodotto", "FrmStampaIntrodotto", make<FrmStampaIntrodotto>},
        {"StampaRegistro", "FrmStampaRegistro", make<FrmStampaRegistro>},
        {"StampaRegistro2", "frmStampaRegistro2", make<frmStampaRegistro2>},
        {"StampaBilancio", "FrmStampaBilancio", make<FrmStampaBilancio>},
        {"StampaSchedaLocale", "FrmStampaSchedaLocale", make<FrmStampaSchedaLocale>},
        {"StampaSchedaContab", "FrmStampaSchedaContab", make<FrmStampaSchedaContab>},
        {"PercPagamentoG", "FrmPercPagamentoG", make<FrmPercPagamentoG>},
        {"PercPagamentoP", "FrmPercPagamentoP", make<FrmPercPagamentoP>},
        {"SommeConsegnate", "FrmSommeConsegnate", make<FrmSommeConsegnate>},
        {"Acconti", "FrmStampaAccontiRefill", make<FrmStampaAccontiRefill>},
        {"Refill", "FrmStampaAccontiRefill", make<FrmStampaAccontiRefill>},
        {"SaldiCambiamonete", "FrmStampaCambiamonete", make<FrmStampaCambiamonete>},
        {"SaldiHopper", "FrmStampaHopper", make<FrmStampaHopper>},
        {"Quietanza", "FrmStampaQuietanza", make<FrmStampaQuietanza>},
        {"IntrodottoDistinta", "FrmStampaIntrodottoDistinta", make<FrmStampaIntrodottoDistinta>},
        {"DifferenzaPreu", "FrmStampaDifferenzaPreu", make<FrmStampaDifferenzaPreu>},
        {"StampaAttoQuietanza", "FrmStampaAttoQuietanza", make<FrmStampaAttoQuietanza>},
        {"StampaEtichette", "FrmStampaEtichette", make<FrmStampaEtichette>},
        {"StampaEtichetteMob", "FrmStampaEtichetteMobili", make<FrmStampaEtichetteMobili>},
    };
    return screens;
}

const ReportScreen* findReportScreen(const QString& code) {
    for (const ReportScreen& screen : reportScreens()) {
        if (code.compare(QLatin1String(screen.code), Qt::CaseInsensitive) == 0) return &screen;
    }
    return nullptr;
}

}  // namespace lorvane::entry
