#include "host/launcher_window.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "entry/configura_interface.h"
#include "platform/component_registry.h"
#include "platform/error_handling.h"

namespace lorvane::host {

using namespace Qt::StringLiterals;

std::span<const MenuReport> menuReports() {
    static const MenuReport reports[] = {
        {"Incassi", "StampaIntrodotto", "Stampa Introdotto per periodo"},
        {"Incassi", "IntrodottoDistinta", "Stampa introdotto su distinte"},
        {"Incassi", "PercPagamentoG", "Stampa percentuali di pagamento Globali"},
        {"Incassi", "PercPagamentoP", "Stampa percentuali di pagamento Parziali"},
        {"Incassi", "SaldiHopper", "Stampa situazione hopper"},
        {"Incassi", "SaldiCambiamonete", "Stampa situazione cambiamonete"},
        {"Incassi", "Acconti", "Stampa Acconti"},
        {"Incassi", "Refill", "Stampa Refill"},
        {"Incassi", "DifferenzaPreu", "Stampa Differenza Preu"},
        {"Contabilità", "StampaCassa", "Stampa cassa per periodo"},
        {"Contabilità", "StampaRegistro", "Stampa registro corrispettivi"},
        {"Contabilità", "StampaRegistro2", "Stampa registro corrispettivi con Comodato"},
        {"Contabilità", "StampaBilancio", "Stampa Bilancio di Verifica"},
        {"Contabilità", "StampaSchedaLocale", "Stampa scheda Cliente"},
        {"Contabilità", "StampaSchedaContab", "Stampa scheda Contabile"},
        {"Documenti ed etichette", "SommeConsegnate", "Stampa somme consegnate al locale"},
        {"Documenti ed etichette", "Quietanza", "Stampa Quietanza"},
        {"Documenti ed etichette", "StampaAttoQuietanza", "Stampa Atti di Quietanza"},
        {"Documenti ed etichette", "StampaEtichette", "Stampa Etichette (schede)"},
        {"Documenti ed etichette", "StampaEtichetteMob", "Stampa Etichette (mobili)"},
    };
    return reports;
}

LauncherWindow::LauncherWindow(std::shared_ptr<ReferenceHost> host, QWidget* parent)
    : QMainWindow(parent), host_(std::move(host)) {
    setWindowTitle(u"Lorvane — Stampe"_s);
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->addWidget(new QLabel(
        u"<b>%1</b> — scegliere una stampa"_s.arg(host_->NomeDitta().toHtmlEscaped()), central));

    reports_ = new QTreeWidget(central);
    reports_->setObjectName(u"Stampe"_s);
    reports_->setColumnCount(2);
    reports_->setHeaderLabels({u"Stampa"_s, u"Codice"_s});
    reports_->setRootIsDecorated(true);
    QTreeWidgetItem* area = nullptr;
    for (const MenuReport& report : menuReports()) {
        if (!area || area->text(0) != QString::fromUtf8(report.area)) {
            area = new QTreeWidgetItem(reports_, {QString::fromUtf8(report.area)});
            area->setFlags(Qt::ItemIsEnabled);
            area->setExpanded(true);
        }
        auto* item = new QTreeWidgetItem(
            area, {QString::fromUtf8(report.title), QString::fromLatin1(report.code)});
        item->setData(0, Qt::UserRole, QString::fromLatin1(report.code));
    }
    reports_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    reports_->header()->setStretchLastSection(false);
    reports_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    layout->addWidget(reports_, 1);

    auto* buttons = new QHBoxLayout();
    modal_ = new QCheckBox(u"Modale"_s, central);
    modal_->setObjectName(u"Modale"_s);
    modal_->setToolTip(u"Apre la stampa come finestra modale"_s);
    auto* open = new QPushButton(u"&Apri stampa"_s, central);
    open->setObjectName(u"Apri"_s);
    open->setDefault(true);
    auto* closeAll = new QPushButton(u"C&hiudi finestre"_s, central);
    closeAll->setObjectName(u"ChiudiFinestre"_s);
    closeAll->setToolTip(u"Chiede al modulo di chiudere tutte le sue finestre"_s);
    buttons->addWidget(modal_);
    buttons->addStretch(1);
    buttons->addWidget(closeAll);
    buttons->addWidget(open);
    layout->addLayout(buttons);
    setCentralWidget(central);

    const auto openSelected = [this] {
        const QTreeWidgetItem* item = reports_->currentItem();
        if (item && item->data(0, Qt::UserRole).isValid())
            openReport(item->data(0, Qt::UserRole).toString());
    };
    connect(open, &QPushButton::clicked, this, openSelected);
    connect(reports_, &QTreeWidget::itemActivated, this, openSelected);
    connect(closeAll, &QPushButton::clicked, this, &LauncherWindow::raiseCloseRequest);

    statusBar()->showMessage(
        u"Installazione: %1 · Utente: %2"_s.arg(host_->Percorso(), host_->User()));
    resize(640, 560);
}

void LauncherWindow::openReport(const QString& code) {
    platform::showErrorAndLeave(
        [&] {
            auto configura = platform::createComponent<entry::ConfiguraInterface>(
                QLatin1String(entry::ConfiguraInterface::ProgId));
            configura->SetApplicazione(host_);
            configura->SetCodiceStampa(code);
            configura->SetModale(modal_->isChecked() ? u"1"_s : u"0"_s);
            configura->Start();
        },
        platform::MsgBoxStyle::Critical);
}

// The module's windows poll the flag every three seconds: it stays up a
// little longer than that, then falls so that new windows can open.
void LauncherWindow::raiseCloseRequest() {
    host_->setChiudiFinestre(true);
    QTimer::singleShot(3500, this, [this] { host_->setChiudiFinestre(false); });
}

}  // namespace lorvane::host
