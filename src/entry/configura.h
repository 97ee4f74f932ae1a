// Configura, the one public class of the module: properties kept module-wide,
// the version text, and Start, which opens the screen of the report code.
#pragma once

#include "entry/configura_interface.h"
#include "entry/module_values.h"

namespace lorvane::entry {

// "major.minor.revision" with minor and revision as their last three digits
// after "000" is put in front: 1, 0, 150 give "1.000.150".
QString buildVersion(int major, int minor, int revision);

class Configura final : public ConfiguraInterface {
  public:
    QString CodiceStampa() const override { return moduleValues().codiceStampa; }
    void SetCodiceStampa(const QString& value) override { moduleValues().codiceStampa = value; }
    QString CodiceEsportazione() const override { return moduleValues().codiceEsportazione; }
    void SetCodiceEsportazione(const QString& value) override {
        moduleValues().codiceEsportazione = value;
    }
    QString Codice() const override { return moduleValues().codice; }
    void SetCodice(const QString& value) override { moduleValues().codice = value; }
    QString Parametri() const override { return moduleValues().parametri; }
    void SetParametri(const QString& value) override { moduleValues().parametri = value; }
    void Start() override;
    void SetApplicazione(HostPtr host) override { moduleValues().host = std::move(host); }
    QString Ver() const override;
    QString CampoRicerca() const override { return moduleValues().campoRicerca; }
    void SetCampoRicerca(const QString& value) override { moduleValues().campoRicerca = value; }
    QString Risposta() const override { return moduleValues().risposta; }
    void SetRisposta(const QString& value) override { moduleValues().risposta = value; }
    QString Modale() const override { return moduleValues().modale; }
    void SetModale(const QString& value) override { moduleValues().modale = value; }

  private:
    LiveObject live_;
};

}  // namespace lorvane::entry
