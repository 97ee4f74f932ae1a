#include "host/progress_window.h"

#include <QDialog>
#include <QEventLoop>
#include <QLabel>
#include <QProgressBar>
#include <QThread>
#include <QVBoxLayout>
#include <optional>

#include "platform/runtime_error.h"

namespace lorvane::host {

void runWithProgress(const QString& title, const QString& text, const std::function<void()>& work) {
    QDialog window;
    window.setObjectName(QStringLiteral("Preparazione"));
    window.setWindowTitle(title);
    window.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    auto* layout = new QVBoxLayout(&window);
    auto* message = new QLabel(text, &window);
    message->setWordWrap(true);
    auto* bar = new QProgressBar(&window);
    bar->setRange(0, 0);  // busy: the work does not say how far it is
    layout->addWidget(message);
    layout->addWidget(bar);
    window.setMinimumWidth(420);

    std::optional<RuntimeError> failure;
    QEventLoop loop;
    QThread* worker = QThread::create([&] {
        try {
            work();
        } catch (const RuntimeError& error) {
            failure = error;
        }
    });
    QObject::connect(worker, &QThread::finished, &loop, &QEventLoop::quit);
    window.show();
    worker->start();
    // Only painting and the like: the user cannot act while it runs.
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    worker->wait();
    delete worker;
    window.hide();
    if (failure) throw *failure;
}

}  // namespace lorvane::host
