// "lorvane run CODE [options] ACTION...": opens the filter screen of a report
// code through Configura with the host of an installation, without a window,
// acts on it as a user would and prints what the user would have seen.
#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <optional>

class QWidget;

namespace lorvane::host {

// One step of a script, as written on the command line.
struct ScreenAction {
    enum class Kind { Set, Pick, Tick, Untick, Click, Key, Timer };

    Kind kind = Kind::Click;
    QString control;  // the control's name; "" for Timer
    QString value;    // what follows "=": a value, an index, a key or a key code
    int number = 0;   // Pick: the index; Key: the key code

    // The action as written: "set txtDallaData=01/01/2026".
    QString text() const;
    bool operator==(const ScreenAction&) const = default;
};

// The words after "run", read.
struct RunArguments {
    QString code;
    std::optional<QString> percorso;  // none: the default installation
    QString hostLog;                  // "" for no log
    QString previewPng;               // "" for no images
    QDate today;                      // invalid: the system clock
    QString gridAnswer;
    QList<ScreenAction> actions;
    QString error;  // "" when the words are well formed
};

// Reads the words after "run": the report code, then options and actions in
// any order. Only the form is checked here; whether a control exists and
// takes the value is known only on the screen.
RunArguments parseRunArguments(const QStringList& args);

// Acts on the control of `screen` that the action names. Gives "", or why
// the action cannot be done there (no such control, a control of another
// kind, disabled, or a value it does not take).
QString applyAction(QWidget& screen, const ScreenAction& action);

// `args` are the words after "run". Prints one line for each thing shown to
// the user, in order:
//   MSG [title] [icon] text    a message box, answered OK (Yes for Yes/No)
//   FILE path                  an exported file the module opens
//   PNG path                   a page of a preview written with --preview-png
//   PREVIEW n                  a preview of n pages, then closed
//   WINDOW name                any other window, closed at once
// Gives 0 when every action ran, 1 when the module failed, 2 on a mistake of
// the command line or of an action, with the error on `err`.
int runScreenCommand(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace lorvane::host
