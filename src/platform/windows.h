// Showing windows modally, and letting pending window events run during long
// work, each through one function that a test or a benchmark can replace.
#pragma once

#include <functional>

class QWidget;

namespace lorvane::platform {

// Shows `window` modally with no owner and returns when it has closed. The
// window is deleted on close by its own attribute, as the caller set it.
void showModal(QWidget* window);

// Replaces the modal loop: the handler gets the window (a test acts on it and
// closes it). An empty function puts the real loop back.
void setModalHandler(std::function<void(QWidget*)> handler);

// Lets pending window events run (repaints, clicks) in the middle of a loop.
void letEventsThrough();

// Replaces what letEventsThrough does; an empty function puts it back.
void setEventPump(std::function<void()> pump);

}  // namespace lorvane::platform
