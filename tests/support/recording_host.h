// A host for tests: every call the module makes is recorded, in order, and
// served from small SQLite files the test builds.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include "db/connection.h"
#include "db/recordset.h"
#include "entry/host_contract.h"

namespace lorvane::testing {

class RecordingHost final : public entry::HostApplication {
  public:
    // Each database is a connection text, or "" when the test does not need
    // it; the personalised catalogue is the standard one unless given.
    explicit RecordingHost(const QString& mainDatabase = QString(),
                           const QString& catalogue = QString(),
                           const QString& personalCatalogue = QString())
        : mainText_(mainDatabase),
          catalogueText_(catalogue),
          personalCatalogueText_(personalCatalogue.isEmpty() ? catalogue : personalCatalogue) {}

    // "Member(arg, arg)" for every call, in order.
    QStringList calls;

    bool chiudiFinestre = false;
    QString nomeDitta = QStringLiteral("Ditta di prova");
    QString percorso = QStringLiteral("/installazione/");
    bool personalizzazione = false;
    QString user = QStringLiteral("tester");
    QHash<QString, QString> settings;  // "Sezione/Chiave" -> value
    // The connection text of the preferences; "" serves them from the main database.
    QString preferencesDatabase;

    bool ChiudiFinestre() override {
        calls << QStringLiteral("ChiudiFinestre");
        return chiudiFinestre;
    }
    void Execute(const QString& sql) override {
        calls << QStringLiteral("Execute(%1)").arg(sql);
        main().Execute(sql);
    }
    QString LeggiSettaggio(const QString& sezione, const QString& chiave,
                           const QString& predefinito) override {
        calls << QStringLiteral("LeggiSettaggio(%1, %2, %3)").arg(sezione, chiave, predefinito);
        return settings.value(sezione + u'/' + chiave, predefinito);
    }
    QString NomeDitta() override {
        calls << QStringLiteral("NomeDitta");
        return nomeDitta;
    }
    db::RecordsetPtr OpenRecordset(const QString& sql) override {
        calls << QStringLiteral("OpenRecordset(%1)").arg(sql);
        return main().OpenRecordset(sql);
    }
    db::RecordsetPtr OpenRecordSetMenu(const QString& sql) override {
        calls << QStringLiteral("OpenRecordSetMenu(%1)").arg(sql);
        return open(catalogue_, catalogueText_).OpenRecordset(sql);
    }
    db::RecordsetPtr OpenRecordSetPersonalizzazioni(const QString& sql) override {
        calls << QStringLiteral("OpenRecordSetPersonalizzazioni(%1)").arg(sql);
        return open(personalCatalogue_, personalCatalogueText_).OpenRecordset(sql);
    }
    db::RecordsetPtr OpenRecordSetPreferenze(const QString& sql) override {
        calls << QStringLiteral("OpenRecordSetPreferenze(%1)").arg(sql);
        if (preferencesDatabase.isEmpty()) return main().OpenRecordset(sql);
        return open(preferences_, preferencesDatabase).OpenRecordset(sql);
    }
    QString Percorso() override {
        calls << QStringLiteral("Percorso");
        return percorso;
    }
    bool Personalizzazione() override {
        calls << QStringLiteral("Personalizzazione");
        return personalizzazione;
    }
    void SalvaSettaggio(const QString& sezione, const QString& chiave, QString& valore) override {
        calls << QStringLiteral("SalvaSettaggio(%1, %2, %3)").arg(sezione, chiave, valore);
        settings.insert(sezione + u'/' + chiave, valore);
    }
    QString User() override {
        calls << QStringLiteral("User");
        return user;
    }

  private:
    db::Connection& main() { return open(main_, mainText_); }
    static db::Connection& open(db::Connection& connection, const QString& text) {
        if (!connection.IsOpen()) connection.Open(text);
        return connection;
    }

    QString mainText_;
    QString catalogueText_;
    QString personalCatalogueText_;
    db::Connection main_;
    db::Connection catalogue_;
    db::Connection personalCatalogue_;
    db::Connection preferences_;
};

}  // namespace lorvane::testing
