// A small window with a busy bar, shown while long work runs on a thread of
// its own, so that the user sees that the program is at work.
#pragma once

#include <QString>
#include <functional>

namespace lorvane::host {

// Runs `work` on a worker thread while a window titled `title` shows `text`
// and a busy bar; returns when the work has ended and the window is gone. A
// RuntimeError thrown by the work is thrown again here. `work` must touch no
// widget.
void runWithProgress(const QString& title, const QString& text, const std::function<void()>& work);

}  // namespace lorvane::host
