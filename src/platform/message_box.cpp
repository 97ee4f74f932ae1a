#include "platform/message_box.h"

#include <QMessageBox>

#include "platform/message_text.h"

namespace lorvane::platform {

namespace {

std::function<int(const Message&)>& handler() {
    static std::function<int(const Message&)> current;
    return current;
}

QMessageBox::Icon iconOf(int buttons) {
    switch (buttons & 0x70) {
        case MsgBoxStyle::Critical:
            return QMessageBox::Critical;
        case MsgBoxStyle::Question:
            return QMessageBox::Question;
        case MsgBoxStyle::Exclamation:
            return QMessageBox::Warning;
        case MsgBoxStyle::Information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

int showBox(const Message& message) {
    QMessageBox box(iconOf(message.buttons),
                    message.title.isEmpty() ? defaultMessageTitle() : message.title,
                    message.prompt);
    switch (message.buttons & 0x0F) {
        case MsgBoxStyle::OkCancel:
            box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            return box.exec() == QMessageBox::Ok ? MsgBoxResult::Ok : MsgBoxResult::Cancel;
        case MsgBoxStyle::YesNo:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            return box.exec() == QMessageBox::Yes ? MsgBoxResult::Yes : MsgBoxResult::No;
        default:
            box.setStandardButtons(QMessageBox::Ok);
            box.exec();
            return MsgBoxResult::Ok;
    }
}

// Each line of a prompt cut to what a box can show: a value of thousands of
// characters quoted in a message would hide the rest of it.
QString readablePrompt(const QString& prompt) {
    constexpr qsizetype MaxLineChars = 1000;
    QStringList lines = prompt.split(u'\n');
    for (QString& line : lines)
        line = elided(line, MaxLineChars);
    return lines.join(u'\n');
}

int show(const Message& message) { return handler() ? handler()(message) : showBox(message); }

}  // namespace

int MsgBox(const QString& prompt, int buttons, const QString& title) {
    return show(Message{readablePrompt(prompt), buttons, title, false});
}

int ErrorBox(const QString& prompt, int buttons, const QString& title) {
    return show(Message{readablePrompt(prompt), buttons, title, true});
}

void setMessageHandler(std::function<int(const Message&)> replacement) {
    handler() = std::move(replacement);
}

}  // namespace lorvane::platform
