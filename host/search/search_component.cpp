#include "host/search/search_component.h"

#include <QApplication>
#include <atomic>

#include "db/recordset.h"
#include "host/search/ricerca_dialog.h"
#include "platform/runtime_error.h"

namespace lorvane::host {

using namespace Qt::StringLiterals;

namespace {

std::atomic<int> liveObjects{0};

RicercaComponent::DialogRunner& dialogRunner() {
    static RicercaComponent::DialogRunner runner;
    return runner;
}

}  // namespace

void RicercaComponent::setDialogRunner(DialogRunner runner) { dialogRunner() = std::move(runner); }

int RicercaComponent::liveCount() { return liveObjects.load(); }

RicercaComponent::RicercaComponent() { ++liveObjects; }

RicercaComponent::~RicercaComponent() { --liveObjects; }

void RicercaComponent::Ricerca() {
    risposta_.clear();
    if (!recordset_ || !recordset_->IsOpen()) {
        throw RuntimeError(
            u"Ricerca: nessun elenco da mostrare. Impostare Recordset con un recordset aperto "
            u"prima di chiamare Ricerca."_s);
    }
    RicercaDialog::Options options;
    options.caption = caption_;
    options.campoRicerca = campoRicerca_;
    options.multipla = multipla_;
    options.statusBar = statusBar_ == 1;
    options.toolbar = toolbar_ == 1;
    options.filterBar = filterBar_ == 1;
    options.maximised = windowsState_ == 2;

    RicercaDialog dialog(*recordset_, options, QApplication::activeWindow());
    dialog.setModal(true);
    const int result = dialogRunner() ? dialogRunner()(dialog) : dialog.exec();
    if (result == QDialog::Accepted) risposta_ = dialog.risposta();
}

}  // namespace lorvane::host
