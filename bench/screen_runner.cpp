#include "screen_runner.h"

#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>

#include "entry/configura.h"
#include "entry/dispatch.h"
#include "generated_table.h"
#include "host/demo/demo_data.h"
#include "host/reference_host.h"
#include "platform/clock.h"
#include "platform/message_box.h"
#include "platform/windows_paths.h"
#include "platform/runtime_error.h"
#include "platform/shell.h"
#include "screens/controls.h"
#include "screens/filter_screen.h"

namespace lorvane::bench {

using namespace Qt::StringLiterals;
using host::ScreenAction;

ScreenRunner::ScreenRunner(const QString& installation) {
    platform::setMessageHandler([this](const platform::Message& message) {
        messages << message.prompt;
        return platform::MsgBoxResult::Ok;
    });
    platform::setShellOpener([this](const QString& path) {
        files << path;
        return true;
    });
    entry::Configura().SetApplicazione(std::make_shared<host::ReferenceHost>(installation));
}

ScreenRunner::~ScreenRunner() {
    delete screen_;
    platform::setShellOpener(nullptr);
    platform::setMessageHandler(nullptr);
}

void ScreenRunner::open(const QString& code) {
    delete screen_;
    entry::moduleValues().codiceStampa = code;
    screen_ = qobject_cast<screens::FilterScreen*>(entry::findReportScreen(code)->create());
    act(ScreenAction::Kind::Pick, u"List1"_s, u"0"_s);
}

void ScreenRunner::act(ScreenAction::Kind kind, const QString& control, const QString& value) {
    const ScreenAction action{kind, control, value,
                              kind == ScreenAction::Kind::Pick ? value.toInt() : 0};
    const QString problem = host::applyAction(*screen_, action);
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(action.text()), qPrintable(problem));
        std::exit(3);
    }
}

QStringList ScreenRunner::tickedVenues() const {
    QStringList ticked;
    for (QTreeWidgetItem* node : screen_->findChild<screens::KeyedTree*>(u"Tree"_s)->allNodes())
        if (screens::KeyedTree::isTicked(node) && node->parent())
            ticked << screens::KeyedTree::keyOf(node).mid(1);
    return ticked;
}

double ScreenRunner::prepare() {
    messages.clear();
    files.clear();
    failure.clear();
    return timed([this] {
        try {
            rows = screen_->PreparaStampa();
        } catch (const RuntimeError& error) {
            failure = error.message();
        }
    });
}

double ScreenRunner::runPdf() {
    messages.clear();
    files.clear();
    return timed([this] { act(ScreenAction::Kind::Click, u"CmdPdf"_s); });
}

bool pdfWritten(const ScreenRunner& runner) {
    return runner.messages.isEmpty() && runner.files.size() == 1 &&
           QFileInfo(runner.files[0]).size() > 0;
}

void useBenchFolder(const QString& folder, const QDate& today) {
    qputenv("LORVANE_TEMP1", QDir(folder).filePath(u"temp1"_s).toUtf8());
    QDir().mkpath(platform::workFolder());
    platform::setToday([today] { return today; });
}

QString writeInstallation(const QString& folder, int venues, int months, const QDate& lastDay) {
    demo::DemoOptions options;
    options.venues = venues;
    options.months = months;
    options.lastDay = lastDay;
    const double took = timed([&] { demo::writeDemoInstallation(folder, options); });
    std::printf("demo installation: %d venues, %d months to %s, written in %.1f s\n", venues,
                months, qPrintable(lastDay.toString(u"dd/MM/yyyy"_s)), took);
    return folder;
}

ScreenBenchOptions readOptions(const QStringList& arguments) {
    ScreenBenchOptions options;
    for (int i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        const bool valued = i + 1 < arguments.size();
        if (argument == QLatin1String("--venues") && valued)
            options.venues = arguments[++i].toInt();
        if (argument == QLatin1String("--repeat") && valued)
            options.repeat = arguments[++i].toInt();
        if (argument == QLatin1String("--check")) options.check = true;
    }
    return options;
}

}  // namespace lorvane::bench
