// The launcher: the suite's print menu opening reports through the module's
// public class, created by program id.
#include "host/launcher_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDeadlineTimer>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <atomic>

#include "db/database_fixture.h"
#include "entry/configura_interface.h"
#include "host/progress_window.h"
#include "platform/component_registry.h"
#include "platform/message_box.h"
#include "platform/runtime_error.h"

namespace lorvane::host {
namespace {

using namespace Qt::StringLiterals;

// Records what the launcher asks of the module's public class.
class RecordingConfigura final : public entry::ConfiguraInterface {
  public:
    explicit RecordingConfigura(QStringList* calls) : calls_(calls) {}
    QString CodiceStampa() const override { return codice_; }
    void SetCodiceStampa(const QString& value) override {
        codice_ = value;
        *calls_ << u"CodiceStampa="_s + value;
    }
    QString CodiceEsportazione() const override { return {}; }
    void SetCodiceEsportazione(const QString&) override {}
    QString Codice() const override { return {}; }
    void SetCodice(const QString&) override {}
    QString Parametri() const override { return {}; }
    void SetParametri(const QString&) override {}
    void Start() override { *calls_ << u"Start"_s; }
    void SetApplicazione(entry::HostPtr host) override {
        *calls_ << (host ? u"Applicazione"_s : u"nessun host"_s);
    }
    QString Ver() const override { return u"1.000.000"_s; }
    QString CampoRicerca() const override { return {}; }
    void SetCampoRicerca(const QString&) override {}
    QString Risposta() const override { return {}; }
    void SetRisposta(const QString&) override {}
    QString Modale() const override { return {}; }
    void SetModale(const QString& value) override { *calls_ << u"Modale="_s + value; }

  private:
    QStringList* calls_;
    QString codice_;
};

class LauncherTest : public ::testing::Test {
  protected:
    void SetUp() override {
        db::testing::DatabaseFile main("CREATE TABLE operatori (id INTEGER);");
        ASSERT_TRUE(QFile::copy(main.path(), folder.filePath(u"Lorvane.db"_s)));
        qputenv("LORVANE_REGISTRY", folder.filePath(u"components.ini"_s).toUtf8());
        platform::ComponentRegistry::provide(
            QLatin1String(entry::ConfiguraInterface::ProgId),
            [this] { return std::make_shared<RecordingConfigura>(&calls); });
        platform::setMessageHandler([this](const platform::Message& message) {
            messages << message.prompt;
            return platform::MsgBoxResult::Ok;
        });
        host = std::make_shared<ReferenceHost>(folder.path());
        window = std::make_unique<LauncherWindow>(host);
    }
    void TearDown() override {
        platform::ComponentRegistry::provide(QLatin1String(entry::ConfiguraInterface::ProgId),
                                             nullptr);
        platform::setMessageHandler(nullptr);
        qunsetenv("LORVANE_REGISTRY");
    }

    QTemporaryDir folder;
    QStringList calls;
    QStringList messages;
    std::shared_ptr<ReferenceHost> host;
    std::unique_ptr<LauncherWindow> window;
};

TEST(MenuReports, AreTheTwentyCodesOfTheModule) {
    QSet<QString> codes;
    for (const MenuReport& report : menuReports())
        codes.insert(QString::fromLatin1(report.code));
    EXPECT_EQ(codes.size(), 20);
    for (const char* code :
         {"StampaCassa", "Acconti", "Refill", "StampaEtichetteMob", "StampaRegistro2"}) {
        EXPECT_TRUE(codes.contains(QString::fromLatin1(code))) << code;
    }
}

TEST_F(LauncherTest, OpensAReportAsTheSuiteDoes) {
    window->openReport(u"StampaBilancio"_s);
    window->findChild<QCheckBox*>(u"Modale"_s)->setChecked(true);
    window->openReport(u"Acconti"_s);
    EXPECT_EQ(calls, (QStringList{u"Applicazione"_s, u"CodiceStampa=StampaBilancio"_s,
                                  u"Modale=0"_s, u"Start"_s, u"Applicazione"_s,
                                  u"CodiceStampa=Acconti"_s, u"Modale=1"_s, u"Start"_s}));
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(LauncherTest, AModuleThatIsNotRegisteredIsReportedByName) {
    platform::ComponentRegistry::provide(QLatin1String(entry::ConfiguraInterface::ProgId), nullptr);
    window->openReport(u"StampaCassa"_s);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains(u"LorvaneStampe.Configura"_s)) << messages[0].toStdString();
}

TEST_F(LauncherTest, TheCloseButtonRaisesTheHostsRequest) {
    EXPECT_FALSE(host->ChiudiFinestre());
    window->findChild<QPushButton*>(u"ChiudiFinestre"_s)->click();
    EXPECT_TRUE(host->ChiudiFinestre());
}

// The work waits (at most a few seconds) until the window has been seen on
// screen from the user interface thread; a failure of the work comes back.
TEST(ProgressWindow, ShowsWhileTheWorkRunsAndPassesItsFailureOn) {
    for (const bool fails : {false, true}) {
        std::atomic<bool> seen{false};
        QString shownText;
        QTimer probe;
        QObject::connect(&probe, &QTimer::timeout, [&] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (window->objectName() == u"Preparazione"_s && window->isVisible()) {
                    shownText = window->findChild<QLabel*>()->text();
                    seen = true;
                }
            }
        });
        probe.start(0);
        const auto work = [&] {
            QDeadlineTimer deadline(5000);
            while (!seen && !deadline.hasExpired())
                QThread::msleep(5);
            if (fails) throw RuntimeError(u"Disco pieno."_s);
        };
        if (fails) {
            EXPECT_THROW(runWithProgress(u"Lorvane"_s, u"Preparazione…"_s, work), RuntimeError);
        } else {
            runWithProgress(u"Lorvane"_s, u"Preparazione…"_s, work);
        }
        EXPECT_TRUE(seen);
        EXPECT_EQ(shownText, u"Preparazione…"_s);
        for (QWidget* window : QApplication::topLevelWidgets())
            EXPECT_FALSE(window->objectName() == u"Preparazione"_s && window->isVisible());
    }
}

}  // namespace
}  // namespace lorvane::host
