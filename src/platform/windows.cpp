#include "platform/windows.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPointer>
#include <QWidget>

namespace lorvane::platform {

namespace {

constexpr qint64 EventPassMs = 8;

std::function<void(QWidget*)>& modalHandler() {
    static std::function<void(QWidget*)> handler;
    return handler;
}

std::function<void()>& eventPump() {
    static std::function<void()> pump;
    return pump;
}

// Ends a loop once the watched window is no longer shown (closed, hidden or
// gone); a minimised window still counts as shown.
class CloseWatcher : public QObject {
  public:
    CloseWatcher(QEventLoop* loop, QWidget* window) : loop_(loop), window_(window) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Close || event->type() == QEvent::Hide) {
            QMetaObject::invokeMethod(this, &CloseWatcher::check, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    void check() {
        if (!window_ || !window_->isVisible()) loop_->quit();
    }

    QEventLoop* loop_;
    QPointer<QWidget> window_;
};

}  // namespace

void showModal(QWidget* window) {
    if (modalHandler()) {
        modalHandler()(window);
        return;
    }
    QEventLoop loop;
    CloseWatcher watcher(&loop, window);
    QPointer<QWidget> guarded(window);
    window->installEventFilter(&watcher);
    QObject::connect(window, &QObject::destroyed, &loop, &QEventLoop::quit);
    window->setWindowModality(Qt::ApplicationModal);
    window->show();
    loop.exec(QEventLoop::DialogExec);
    if (guarded) guarded->removeEventFilter(&watcher);
}

void setModalHandler(std::function<void(QWidget*)> handler) { modalHandler() = std::move(handler); }

void letEventsThrough() {
    if (eventPump()) {
        eventPump()();
        return;
    }
    // A pass over the event queue costs a poll of the display connection; a
    // loop that calls this for every row gets one pass every few milliseconds,
    // which no user can tell from a pass per row.
    static QElapsedTimer sinceLastPass;
    if (sinceLastPass.isValid() && !sinceLastPass.hasExpired(EventPassMs)) return;
    QCoreApplication::processEvents();
    sinceLastPass.start();
}

void setEventPump(std::function<void()> pump) { eventPump() = std::move(pump); }

}  // namespace lorvane::platform
