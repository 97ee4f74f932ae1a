// The venue search grid of a scripted run: it keeps what the module sets,
// shows nothing, and gives the answer the script chose.
#pragma once

#include <QString>

#include "entry/host_contract.h"

namespace lorvane::host {

class ScriptedSearch final : public entry::SearchComponent {
  public:
    // What the module set before asking.
    struct Request {
        QString user;
        QString modulo;
        QString caption;
        db::RecordsetPtr recordset;
        db::RecordsetPtr operatori;
        db::RecordsetPtr viste;
        QString campoRicerca;
        QString percorsoPers;
        QString percorso;
        bool multipla = false;
        int statusBar = 1;
        int toolbar = 1;
        int filterBar = 1;
        int windowsState = 0;
    };

    // `answer` is what each search gives: "" as when the user cancels,
    // else the chosen codes, each followed by "|".
    explicit ScriptedSearch(QString answer) : answer_(std::move(answer)) {}

    void SetUser(const QString& user) override { request_.user = user; }
    void SetModulo(const QString& modulo) override { request_.modulo = modulo; }
    void SetCaption(const QString& caption) override { request_.caption = caption; }
    void SetRecordset(db::RecordsetPtr recordset) override {
        request_.recordset = std::move(recordset);
    }
    void SetRecordsetOperatori(db::RecordsetPtr recordset) override {
        request_.operatori = std::move(recordset);
    }
    void SetRecordsetViste(db::RecordsetPtr recordset) override {
        request_.viste = std::move(recordset);
    }
    void SetCampoRicerca(const QString& campo) override { request_.campoRicerca = campo; }
    void SetPercorsoPers(const QString& percorso) override { request_.percorsoPers = percorso; }
    void SetPercorso(const QString& percorso) override { request_.percorso = percorso; }
    void Setselezionemultipla(bool multipla) override { request_.multipla = multipla; }
    void SetStatusBar(int visibile) override { request_.statusBar = visibile; }
    void SetToolbar(int visibile) override { request_.toolbar = visibile; }
    void SetFilterBar(int visibile) override { request_.filterBar = visibile; }
    void SetWindowsState(int stato) override { request_.windowsState = stato; }

    // The answer is given at once, as if the user had chosen it.
    void Ricerca() override;
    // "" until the first search, as with the real grid.
    QString Risposta() const override { return risposta_; }

    const Request& request() const { return request_; }

  private:
    QString answer_;
    QString risposta_;
    Request request_;
};

}  // namespace lorvane::host
