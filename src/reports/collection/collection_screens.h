// The screens of the collection reports: what the machines took in and hold.
#pragma once

#include "entry/module_values.h"
#include "screens/filter_screen.h"

namespace lorvane::reports {

class FrmStampaIntrodotto final : public screens::FilterScreen {
  public:
    FrmStampaIntrodotto() : FilterScreen(QStringLiteral("Stampa Introdotto per periodo")) {}
};

class FrmStampaIntrodottoDistinta final : public screens::FilterScreen {
  public:
    FrmStampaIntrodottoDistinta() : FilterScreen(QStringLiteral("Stampa introdotto su distinte")) {}
};

class FrmPercPagamentoG final : public screens::FilterScreen {
  public:
    FrmPercPagamentoG() : FilterScreen(QStringLiteral("Stampa percentuali di pagamento Globali")) {}
};

class FrmPercPagamentoP final : public screens::FilterScreen {
  public:
    FrmPercPagamentoP()
        : FilterScreen(QStringLiteral("Stampa percentuali di pagamento Parziali")) {}
};

class FrmStampaHopper final : public screens::FilterScreen {
  public:
    FrmStampaHopper() : FilterScreen(QStringLiteral("Stampa situazione hopper")) {}
};

class FrmStampaCambiamonete final : public screens::FilterScreen {
  public:
    FrmStampaCambiamonete() : FilterScreen(QStringLiteral("Stampa situazione cambiamonete")) {}
};

class FrmStampaDifferenzaPreu final : public screens::FilterScreen {
  public:
    FrmStampaDifferenzaPreu() : FilterScreen(QStringLiteral("Stampa Differenza Preu")) {}
};

// One screen for two codes: "Acconti" (advances) and "Refill".
class FrmStampaAccontiRefill final : public screens::FilterScreen {
  public:
    FrmStampaAccontiRefill()
        : FilterScreen(entry::moduleValues().codiceStampa.compare(QLatin1String("Acconti"),
                                                                  Qt::CaseInsensitive) == 0
                           ? QStringLiteral("Stampa Acconti")
                           : QStringLiteral("Stampa Refill")) {}
};

}  // namespace lorvane::reports
