// LorvaneRicerca.Ricerca: the host's venue search component. It keeps what
// the caller sets, shows the search window modally and gives the chosen codes.
#pragma once

#include <QString>
#include <functional>

#include "entry/host_contract.h"

namespace lorvane::host {

class RicercaDialog;

class RicercaComponent : public entry::SearchComponent {
  public:
    // Shows the dialog instead of exec() and gives its result (a QDialog::
    // DialogCode). Tests set one to drive the window; empty restores exec().
    using DialogRunner = std::function<int(RicercaDialog& dialog)>;
    static void setDialogRunner(DialogRunner runner);

    // The objects of this class alive in this module, for DllCanUnloadNow.
    static int liveCount();

    RicercaComponent();
    ~RicercaComponent() override;
    RicercaComponent(const RicercaComponent&) = delete;
    RicercaComponent& operator=(const RicercaComponent&) = delete;

    void SetUser(const QString& user) override { user_ = user; }
    void SetModulo(const QString& modulo) override { modulo_ = modulo; }
    void SetCaption(const QString& caption) override { caption_ = caption; }
    void SetRecordset(db::RecordsetPtr recordset) override { recordset_ = std::move(recordset); }
    void SetRecordsetOperatori(db::RecordsetPtr recordset) override {
        operatori_ = std::move(recordset);
    }
    void SetRecordsetViste(db::RecordsetPtr recordset) override { viste_ = std::move(recordset); }
    void SetCampoRicerca(const QString& campo) override { campoRicerca_ = campo; }
    void SetPercorsoPers(const QString& percorso) override { percorsoPers_ = percorso; }
    void SetPercorso(const QString& percorso) override { percorso_ = percorso; }
    void Setselezionemultipla(bool multipla) override { multipla_ = multipla; }
    void SetStatusBar(int visibile) override { statusBar_ = visibile; }
    void SetToolbar(int visibile) override { toolbar_ = visibile; }
    void SetFilterBar(int visibile) override { filterBar_ = visibile; }
    void SetWindowsState(int stato) override { windowsState_ = stato; }

    // Clears the answer, shows the grid over Recordset and keeps the user's
    // choice. Throws RuntimeError when Recordset is missing or closed, or has
    // no field CampoRicerca.
    void Ricerca() override;
    QString Risposta() const override { return risposta_; }

    const QString& User() const { return user_; }
    const QString& Modulo() const { return modulo_; }
    const QString& Caption() const { return caption_; }
    const db::RecordsetPtr& Recordset() const { return recordset_; }
    const db::RecordsetPtr& RecordsetOperatori() const { return operatori_; }
    const db::RecordsetPtr& RecordsetViste() const { return viste_; }
    const QString& CampoRicerca() const { return campoRicerca_; }
    const QString& PercorsoPers() const { return percorsoPers_; }
    const QString& Percorso() const { return percorso_; }
    bool selezionemultipla() const { return multipla_; }
    int StatusBar() const { return statusBar_; }
    int Toolbar() const { return toolbar_; }
    int FilterBar() const { return filterBar_; }
    int WindowsState() const { return windowsState_; }

  private:
    QString user_;
    QString modulo_;
    QString caption_;
    db::RecordsetPtr recordset_;
    db::RecordsetPtr operatori_;
    db::RecordsetPtr viste_;
    QString campoRicerca_;
    QString percorsoPers_;
    QString percorso_;
    bool multipla_ = false;
    int statusBar_ = 1;
    int toolbar_ = 1;
    int filterBar_ = 1;
    int windowsState_ = 0;
    QString risposta_;
};

}  // namespace lorvane::host
