// Message boxes, as the legacy MsgBox shows them, through one function that a
// test can replace.
#pragma once

#include <QString>
#include <functional>

namespace lorvane::platform {

// Flags of the buttons argument, as the legacy runtime numbers them.
namespace MsgBoxStyle {
inline constexpr int OkOnly = 0;
inline constexpr int OkCancel = 1;
inline constexpr int YesNo = 4;
inline constexpr int Critical = 16;
inline constexpr int Question = 32;
inline constexpr int Exclamation = 48;
inline constexpr int Information = 64;
}  // namespace MsgBoxStyle

// Results: the button pressed.
namespace MsgBoxResult {
inline constexpr int Ok = 1;
inline constexpr int Cancel = 2;
inline constexpr int Yes = 6;
inline constexpr int No = 7;
}  // namespace MsgBoxResult

struct Message {
    QString prompt;
    int buttons = MsgBoxStyle::OkOnly;
    QString title;       // "" when the caller gave none: the box shows the default title
    bool error = false;  // the box tells of a failure (shown by a handler of errors)
};

// The default title of a box, the component's name.
inline const QString& defaultMessageTitle() {
    static const QString title = QStringLiteral("LorvaneStampe");
    return title;
}

// Shows a modal box and gives the button pressed.
int MsgBox(const QString& prompt, int buttons = MsgBoxStyle::OkOnly,
           const QString& title = QString());

// The box a handler of errors shows: the same as MsgBox, marked as telling of
// a failure, so that a scripted run can tell the caller that something failed.
int ErrorBox(const QString& prompt, int buttons = MsgBoxStyle::OkOnly,
             const QString& title = QString());

// Replaces the box (a test records the message and answers); an empty
// function puts the real box back.
void setMessageHandler(std::function<int(const Message&)> handler);

}  // namespace lorvane::platform
