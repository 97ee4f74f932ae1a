// What the module expects of the host application, and of the host's venue
// search component: the module calls these members and no others.
#pragma once

#include <QString>
#include <memory>

#include "db/connection.h"
#include "platform/component.h"

namespace lorvane::entry {

// The host application object handed over through Configura.Applicazione.
class HostApplication {
  public:
    virtual ~HostApplication() = default;

    // True asks every open window of the module to close itself.
    virtual bool ChiudiFinestre() = 0;
    // Runs one statement on the main database.
    virtual void Execute(const QString& sql) = 0;
    // A saved setting, or `predefinito` when none was saved.
    virtual QString LeggiSettaggio(const QString& sezione, const QString& chiave,
                                   const QString& predefinito) = 0;
    virtual QString NomeDitta() = 0;
    // Reads the main database. Writable when the statement reads one table.
    virtual db::RecordsetPtr OpenRecordset(const QString& sql) = 0;
    // Reads the standard report catalogue.
    virtual db::RecordsetPtr OpenRecordSetMenu(const QString& sql) = 0;
    // Reads the customer's personalised report catalogue.
    virtual db::RecordsetPtr OpenRecordSetPersonalizzazioni(const QString& sql) = 0;
    // Reads the database of user preferences.
    virtual db::RecordsetPtr OpenRecordSetPreferenze(const QString& sql) = 0;
    // The host's base folder, ending in a separator.
    virtual QString Percorso() = 0;
    virtual bool Personalizzazione() = 0;
    // Stores a setting; the value is passed by reference, as the host declares it.
    virtual void SalvaSettaggio(const QString& sezione, const QString& chiave, QString& valore) = 0;
    // The logged-in operator.
    virtual QString User() = 0;
};

using HostPtr = std::shared_ptr<HostApplication>;

// The venue search component "LorvaneRicerca.Ricerca". The module sets the
// members in the order they are declared here, calls Ricerca (a modal window
// of the component's own) and reads Risposta.
class SearchComponent : public platform::ComponentObject {
  public:
    static constexpr char ProgId[] = "LorvaneRicerca.Ricerca";

    virtual void SetUser(const QString& user) = 0;
    virtual void SetModulo(const QString& modulo) = 0;
    virtual void SetCaption(const QString& caption) = 0;
    virtual void SetRecordset(db::RecordsetPtr recordset) = 0;
    virtual void SetRecordsetOperatori(db::RecordsetPtr recordset) = 0;
    virtual void SetRecordsetViste(db::RecordsetPtr recordset) = 0;
    virtual void SetCampoRicerca(const QString& campo) = 0;
    virtual void SetPercorsoPers(const QString& percorso) = 0;
    virtual void SetPercorso(const QString& percorso) = 0;
    virtual void Setselezionemultipla(bool multipla) = 0;
    virtual void SetStatusBar(int visibile) = 0;
    virtual void SetToolbar(int visibile) = 0;
    virtual void SetFilterBar(int visibile) = 0;
    virtual void SetWindowsState(int stato) = 0;  // 2: maximised
    // Shows the search window and waits for the user.
    virtual void Ricerca() = 0;
    // "" when nothing was chosen; otherwise each chosen value of the
    // CampoRicerca field followed by "|".
    virtual QString Risposta() const = 0;
};

}  // namespace lorvane::entry
