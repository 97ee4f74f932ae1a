// The host application of the reference installation: the suite's databases
// below Percorso, its settings in an INI file, the logged-in user.
#pragma once

#include <QSettings>
#include <QString>
#include <memory>

#include "db/connection.h"
#include "entry/host_contract.h"

namespace lorvane::host {

// The files of an installation, relative to its folder.
namespace InstallationFiles {
inline constexpr char MainDatabase[] = "Lorvane.db";
inline constexpr char Catalogue[] = "Stampe.db";
inline constexpr char PersonalCatalogue[] = "pers/StampePers.db";
inline constexpr char Preferences[] = "Preferenze.db";
inline constexpr char Settings[] = "Lorvane.ini";
}  // namespace InstallationFiles

class ReferenceHost final : public entry::HostApplication {
  public:
    // `folder` is the installation; it must hold the main database. Throws
    // RuntimeError naming what is missing.
    explicit ReferenceHost(const QString& folder);

    bool ChiudiFinestre() override { return chiudiFinestre_; }
    void Execute(const QString& sql) override;
    QString LeggiSettaggio(const QString& sezione, const QString& chiave,
                           const QString& predefinito) override;
    QString NomeDitta() override;
    db::RecordsetPtr OpenRecordset(const QString& sql) override;
    db::RecordsetPtr OpenRecordSetMenu(const QString& sql) override;
    db::RecordsetPtr OpenRecordSetPersonalizzazioni(const QString& sql) override;
    db::RecordsetPtr OpenRecordSetPreferenze(const QString& sql) override;
    QString Percorso() override { return percorso_; }
    bool Personalizzazione() override;
    void SalvaSettaggio(const QString& sezione, const QString& chiave, QString& valore) override;
    QString User() override;

    // The host raises this to close every window of the module.
    void setChiudiFinestre(bool value) { chiudiFinestre_ = value; }

  private:
    db::RecordsetPtr read(db::Connection& connection, const char* file, const QString& sql);

    QString percorso_;  // ends in "/"
    QSettings settings_;
    db::Connection main_;
    db::Connection catalogue_;
    db::Connection personalCatalogue_;
    db::Connection preferences_;
    bool chiudiFinestre_ = false;
};

}  // namespace lorvane::host
