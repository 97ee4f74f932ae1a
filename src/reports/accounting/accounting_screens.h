// The screens of the accounting reports: cash, registers and ledgers.
#pragma once

#include "screens/filter_screen.h"

namespace lorvane::reports {

class FrmStampaCassa final : public screens::FilterScreen {
  public:
    FrmStampaCassa() : FilterScreen(QStringLiteral("Stampa cassa per periodo")) {}
};

class FrmStampaRegistro final : public screens::FilterScreen {
  public:
    FrmStampaRegistro() : FilterScreen(QStringLiteral("Stampa registro corrispettivi")) {}
};

class frmStampaRegistro2 final : public screens::FilterScreen {
  public:
    frmStampaRegistro2()
        : FilterScreen(QStringLiteral("Stampa registro corrispettivi con Comodato")) {}
};

class FrmStampaBilancio final : public screens::FilterScreen {
  public:
    FrmStampaBilancio() : FilterScreen(QStringLiteral("Stampa Bilancio di Verifica")) {}
};

class FrmStampaSchedaLocale final : public screens::FilterScreen {
  public:
    FrmStampaSchedaLocale() : FilterScreen(QStringLiteral("Stampa scheda Cliente")) {}
};

class FrmStampaSchedaContab final : public screens::FilterScreen {
  public:
    FrmStampaSchedaContab() : FilterScreen(QStringLiteral("Stampa scheda Contabile")) {}
};

}  // namespace lorvane::reports
