// A host that writes down every call the module makes to another host, one
// line a call, so that a run can be compared with another.
#pragma once

#include <QIODevice>
#include <QString>
#include <initializer_list>
#include <memory>

#include "entry/host_contract.h"

namespace lorvane::host {

// `text` with each line break (CR LF, CR or LF) made one space.
QString onOneLine(QString text);

// Each call is written before it is passed on, as the member's name, a tab
// and its arguments separated by tabs, on one line; what the call gives back
// is not written.
class LoggingHost final : public entry::HostApplication {
  public:
    // `log` is open for writing; each line is flushed as it is written.
    LoggingHost(entry::HostPtr inner, std::unique_ptr<QIODevice> log);

    bool ChiudiFinestre() override;
    void Execute(const QString& sql) override;
    QString LeggiSettaggio(const QString& sezione, const QString& chiave,
                           const QString& predefinito) override;
    QString NomeDitta() override;
    db::RecordsetPtr OpenRecordset(const QString& sql) override;
    db::RecordsetPtr OpenRecordSetMenu(const QString& sql) override;
    db::RecordsetPtr OpenRecordSetPersonalizzazioni(const QString& sql) override;
    db::RecordsetPtr OpenRecordSetPreferenze(const QString& sql) override;
    QString Percorso() override;
    bool Personalizzazione() override;
    void SalvaSettaggio(const QString& sezione, const QString& chiave, QString& valore) override;
    QString User() override;

  private:
    void write(const char* member, std::initializer_list<QString> arguments = {});

    entry::HostPtr inner_;
    std::unique_ptr<QIODevice> log_;
};

}  // namespace lorvane::host
