// Real screens on a small demo installation: a recording host over its
// databases, a fixed clock, and the message boxes, modal windows and shell
// opener replaced by recorders.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QWidget>
#include <functional>
#include <memory>

#include "entry/configura.h"
#include "entry/dispatch.h"
#include "host/demo/demo_data.h"
#include "platform/clock.h"
#include "platform/message_box.h"
#include "platform/shell.h"
#include "platform/windows.h"
#include "screens/filter_screen.h"
#include "support/recording_host.h"
#include "workdb/work_database.h"

// Texts in the failures of a test, readable.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

namespace lorvane::testing {

inline QDate fixedToday() { return QDate(2025, 3, 20); }

class ScreenTest : public ::testing::Test {
  protected:
    // A message as the user saw it: "title|buttons|text".
    QStringList messages;
    // The objectName of every window shown modally, in order.
    QStringList modalWindows;
    // Acts on a modal window before it is closed.
    std::function<void(QWidget*)> onModal;
    QStringList openedFiles;
    // Whether the desktop has a program for the files exported.
    bool desktopOpensFiles = true;
    std::shared_ptr<RecordingHost> host;

    static void SetUpTestSuite() {
        installation = new QTemporaryDir;
        demo::DemoOptions options;
        options.venues = 12;
        options.months = 3;
        options.seed = 5;
        options.lastDay = QDate(2025, 3, 31);
        demo::writeDemoInstallation(folder(), options);
    }
    static void TearDownTestSuite() { delete installation; }

    static QString folder() { return installation->filePath(QStringLiteral("demo")); }

    void SetUp() override {
        qputenv("LORVANE_TEMP1", work.path().toUtf8());
        platform::setToday(fixedToday);
        platform::setMessageHandler([this](const platform::Message& message) {
            messages << QStringLiteral("%1|%2|%3")
                            .arg(message.title)
                            .arg(message.buttons)
                            .arg(message.prompt);
            return platform::MsgBoxResult::Ok;
        });
        platform::setModalHandler([this](QWidget* window) {
            modalWindows << window->objectName();
            if (onModal) onModal(window);
            window->close();
        });
        platform::setShellOpener([this](const QString& path) {
            openedFiles << path;
            return desktopOpensFiles;
        });
        useMainDatabase(folder() + QStringLiteral("/Lorvane.db"));
    }

    void TearDown() override {
        for (const QPointer<screens::FilterScreen>& screen : screens_)
            delete screen.data();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        workdb::ConnessioneTemporanea().Close();
        platform::setToday(nullptr);
        platform::setMessageHandler(nullptr);
        platform::setModalHandler(nullptr);
        platform::setShellOpener(nullptr);
        platform::setEventPump(nullptr);
        qunsetenv("LORVANE_TEMP1");
    }

    // A host over `mainDatabase`, the installation's personalised catalogue
    // and its standard one, or the file `catalogue` in its place.
    void useMainDatabase(const QString& mainDatabase, const QString& catalogue = {}) {
        host = std::make_shared<RecordingHost>(
            QStringLiteral("Dbq=") + mainDatabase,
            QStringLiteral("Dbq=") +
                (catalogue.isEmpty() ? folder() + QStringLiteral("/Stampe.db") : catalogue),
            QStringLiteral("Dbq=") + folder() + QStringLiteral("/pers/StampePers.db"));
        host->percorso = folder() + u'/';
        host->preferencesDatabase =
            QStringLiteral("Dbq=") + folder() + QStringLiteral("/Preferenze.db");
        entry::Configura().SetApplicazione(host);
    }

    // A copy of the demo main database that a test may change.
    QString mainDatabaseCopy() {
        const QString copy = work.filePath(QStringLiteral("Lorvane-copia.db"));
        QFile::remove(copy);
        QFile::copy(folder() + QStringLiteral("/Lorvane.db"), copy);
        return copy;
    }

    // The screen of `code`, loaded as Configura.Start loads it.
    screens::FilterScreen* open(const QString& code) {
        entry::moduleValues().codiceStampa = code;
        auto* screen =
            qobject_cast<screens::FilterScreen*>(entry::findReportScreen(code)->create());
        screens_ << screen;
        return screen;
    }

    template <typename Control>
    static Control* control(QWidget* screen, const char* name) {
        auto* found = screen->findChild<Control*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    // The host calls made since the last look.
    QStringList takeCalls() { return std::exchange(host->calls, {}); }

    QTemporaryDir work;

  private:
    static inline QTemporaryDir* installation = nullptr;
    QList<QPointer<screens::FilterScreen>> screens_;
};

}  // namespace lorvane::testing
