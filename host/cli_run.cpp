#include "host/cli_run.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QSaveFile>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <algorithm>
#include <memory>
#include <utility>

#include "engine/painter.h"
#include "engine/report_viewer.h"
#include "entry/configura_interface.h"
#include "host/components.h"
#include "host/demo/demo_data.h"
#include "host/logging_host.h"
#include "host/reference_host.h"
#include "host/scripted_search.h"
#include "platform/clock.h"
#include "platform/component_registry.h"
#include "platform/message_box.h"
#include "platform/runtime_error.h"
#include "platform/shell.h"
#include "platform/windows.h"
#include "platform/windows_paths.h"

namespace lorvane::host {

using namespace Qt::StringLiterals;
using Kind = ScreenAction::Kind;

namespace {

constexpr char RunUsage[] =
    "uso: lorvane run CODICE [--percorso CARTELLA] [--host-log FILE] [--preview-png CARTELLA]\n"
    "                 [--today gg/mm/aaaa] [--grid-answer TESTO] AZIONE...\n"
    "azioni: set NOME=VALORE, pick NOME=INDICE, tick NOME=CHIAVE, untick NOME=CHIAVE,\n"
    "        click NOME, key NOME=CODICE (13 Invio, 46 Canc), timer\n";

struct ActionWord {
    const char* word;
    Kind kind;
    const char* form;
};

constexpr ActionWord actionWords[] = {
    {"set", Kind::Set, "set NOME=VALORE"},    {"pick", Kind::Pick, "pick NOME=INDICE"},
    {"tick", Kind::Tick, "tick NOME=CHIAVE"}, {"untick", Kind::Untick, "untick NOME=CHIAVE"},
    {"click", Kind::Click, "click NOME"},     {"key", Kind::Key, "key NOME=CODICE"},
    {"timer", Kind::Timer, "timer"},
};

const ActionWord& wordOf(Kind kind) {
    for (const ActionWord& each : actionWords)
        if (each.kind == kind) return each;
    Q_UNREACHABLE();
}

// The key codes of the legacy KeyDown events a script can press.
struct KeyCode {
    int code;
    Qt::Key key;
    const char* text;
};

constexpr KeyCode keyCodes[] = {{13, Qt::Key_Return, "\r"}, {46, Qt::Key_Delete, ""}};

const KeyCode* keyOf(int code) {
    for (const KeyCode& each : keyCodes)
        if (each.code == code) return &each;
    return nullptr;
}

// Fills the control and the value of `action` from the word after the action;
// gives "" or what is wrong with it.
QString readOperand(ScreenAction& action, const QString& operand) {
    const QString form = QLatin1String(wordOf(action.kind).form);
    if (action.kind == Kind::Click) {
        if (operand.isEmpty() || operand.contains(u'=')) return u"si scrive %1"_s.arg(form);
        action.control = operand;
        return {};
    }
    const qsizetype equals = operand.indexOf(u'=');
    if (equals <= 0) return u"si scrive %1"_s.arg(form);
    action.control = operand.left(equals);
    action.value = operand.mid(equals + 1);
    bool ok = false;
    switch (action.kind) {
        case Kind::Pick:
            action.number = action.value.toInt(&ok);
            if (!ok || action.number < -1) return u"l'indice è un numero da -1 in su"_s;
            break;
        case Kind::Tick:
        case Kind::Untick:
            if (action.value.isEmpty()) return u"manca la chiave, si scrive %1"_s.arg(form);
            break;
        case Kind::Key:
            action.number = action.value.toInt(&ok);
            if (!ok || !keyOf(action.number)) return u"i tasti sono 13 (Invio) e 46 (Canc)"_s;
            break;
        default:
            break;
    }
    return {};
}

QString kindError(const QObject& control, const ScreenAction& action) {
    return u"%1 non vale per %2 (%3)"_s.arg(QLatin1String(wordOf(action.kind).word), action.control,
                                            QLatin1String(control.metaObject()->className()));
}

QString setValue(QObject& control, const ScreenAction& action) {
    const QString& value = action.value;
    if (auto* picker = qobject_cast<QDateTimeEdit*>(&control)) {
        const QDate date = QDate::fromString(value, u"dd/MM/yyyy"_s);
        if (!date.isValid()) return u"data non valida, si scrive gg/mm/aaaa"_s;
        picker->setDate(date);
        if (picker->date() != date)
            return u"data fuori dall'intervallo di %1"_s.arg(action.control);
        return {};
    }
    if (auto* box = qobject_cast<QAbstractButton*>(&control); box && box->isCheckable()) {
        if (value != u"0"_s && value != u"1"_s) return u"il valore è 0 o 1"_s;
        const bool ticked = value == u"1"_s;
        if (box->isChecked() != ticked) box->click();  // as the user's click: clicked and toggled
        if (box->isChecked() != ticked)
            return u"un'opzione non si toglie: si sceglie un'altra opzione"_s;
        return {};
    }
    if (auto* combo = qobject_cast<QComboBox*>(&control)) {
        const int index = value.isEmpty() ? -1 : combo->findText(value);
        if (index < 0 && !value.isEmpty() && !combo->isEditable())
            return u"\"%1\" non è una voce di %2"_s.arg(value, action.control);
        combo->setCurrentIndex(index);
        if (combo->isEditable() && index < 0) combo->setEditText(value);
        return {};
    }
    if (auto* edit = qobject_cast<QLineEdit*>(&control)) {
        if (edit->isReadOnly()) return u"%1 è di sola lettura"_s.arg(action.control);
        edit->setText(value);
        return {};
    }
    return kindError(control, action);
}

QString pick(QObject& control, const ScreenAction& action) {
    const int index = action.number;
    const auto outside = [&](int count) {
        return u"l'indice %1 è fuori da %2 (da -1 a %3)"_s.arg(action.value, action.control)
            .arg(count - 1);
    };
    if (auto* combo = qobject_cast<QComboBox*>(&control)) {
        if (index >= combo->count()) return outside(combo->count());
        combo->setCurrentIndex(index);
        return {};
    }
    if (auto* list = qobject_cast<QListWidget*>(&control)) {
        if (index >= list->count()) return outside(list->count());
        list->setCurrentRow(
            index, index < 0 ? QItemSelectionModel::Clear : QItemSelectionModel::ClearAndSelect);
        return {};
    }
    if (auto* tabs = qobject_cast<QTabWidget*>(&control)) {
        if (index < 0 || index >= tabs->count())
            return u"la pagina %1 non c'è in %2 (da 0 a %3)"_s.arg(action.value, action.control)
                .arg(tabs->count() - 1);
        tabs->setCurrentIndex(index);
        return {};
    }
    return kindError(control, action);
}

QString tick(QObject& control, const ScreenAction& action) {
    const Qt::CheckState state = action.kind == Kind::Tick ? Qt::Checked : Qt::Unchecked;
    if (auto* tree = qobject_cast<QTreeWidget*>(&control)) {
        for (QTreeWidgetItemIterator it(tree); *it; ++it) {
            if ((*it)->data(0, Qt::UserRole).toString() != action.value) continue;
            if (!((*it)->flags() & Qt::ItemIsUserCheckable))
                return u"il nodo %1 non si spunta"_s.arg(action.value);
            (*it)->setCheckState(0, state);
            return {};
        }
        return u"nessun nodo con chiave %1 in %2"_s.arg(action.value, action.control);
    }
    if (auto* list = qobject_cast<QListWidget*>(&control)) {
        // Rows read "CODE - Descrizione".
        for (int row = 0; row < list->count(); ++row) {
            QListWidgetItem* item = list->item(row);
            const QString text = item->text();
            if (text.left(text.indexOf(u" -"_s)).trimmed() != action.value) continue;
            if (!(item->flags() & Qt::ItemIsUserCheckable))
                return u"la riga %1 non si spunta"_s.arg(action.value);
            item->setCheckState(state);
            return {};
        }
        return u"nessuna riga con codice %1 in %2"_s.arg(action.value, action.control);
    }
    return kindError(control, action);
}

void pressKey(QObject& control, const KeyCode& key) {
    QPointer<QObject> guarded(&control);
    const QString text = QString::fromLatin1(key.text);
    QKeyEvent press(QEvent::KeyPress, key.key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&control, &press);
    if (!guarded) return;  // the key closed what held the control
    QKeyEvent release(QEvent::KeyRelease, key.key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&control, &release);
}

// Posted events, signals and deferred deletes, run as the event loop would
// between two things the user does.
void settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QString iconName(int buttons) {
    switch (buttons & 0x70) {
        case platform::MsgBoxStyle::Critical:
            return u"critical"_s;
        case platform::MsgBoxStyle::Question:
            return u"question"_s;
        case platform::MsgBoxStyle::Exclamation:
            return u"exclamation"_s;
        case platform::MsgBoxStyle::Information:
            return u"information"_s;
        default:
            return {};
    }
}

// The module's timers named Timer1 (the close polling of each window) never
// fire by themselves in a scripted run, not even when a window starts one
// again: only the timer action runs the screen's, so the host log is the same
// on every run.
class TimerSilencer : public QObject {
  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Timer) {
            const auto* timer = qobject_cast<QTimer*>(watched);
            if (timer && timer->objectName() == u"Timer1"_s) return true;
        }
        return QObject::eventFilter(watched, event);
    }
};

// The user of a scripted run: answers the boxes, acts on the screen, looks at
// the windows that open on the way and closes them.
class ScriptedUser {
  public:
    ScriptedUser(const RunArguments& arguments, QTextStream& out, QTextStream& err)
        : arguments_(arguments), out_(out), err_(err) {}

    bool sawScreen() const { return sawScreen_; }
    int exitCode() const { return exitCode_; }

    int answer(const platform::Message& message) {
        print(u"MSG [%1] [%2] %3"_s.arg(
            message.title.isEmpty() ? platform::defaultMessageTitle() : message.title,
            iconName(message.buttons), onOneLine(message.prompt)));
        constexpr int YesNoCancel = 3;
        const int buttons = message.buttons & 0x0F;
        return buttons == platform::MsgBoxStyle::YesNo || buttons == YesNoCancel
                   ? platform::MsgBoxResult::Yes
                   : platform::MsgBoxResult::Ok;
    }

    void open(const QString& path) { print(u"FILE "_s + path); }

    void showModal(QWidget* window) {
        if (std::exchange(sawScreen_, true)) {
            lookAt(window);
        } else {
            useScreen(window);
        }
    }

  private:
    void useScreen(QWidget* window) {
        QPointer<QWidget> screen(window);
        if (auto* timer = window->findChild<QTimer*>(u"Timer1"_s)) timer->stop();
        settle();
        // The screen is never shown, as no one would see it; deleted on close,
        // it is gone once an action has closed it.
        for (const ScreenAction& action : arguments_.actions) {
            if (!screen) {
                fail(action, u"la schermata è già chiusa"_s);
                break;
            }
            QString problem;
            try {
                problem = applyAction(*screen, action);
            } catch (const RuntimeError& error) {
                platform::MsgBox(error.message(), platform::MsgBoxStyle::Critical);
                exitCode_ = 1;
                break;
            }
            if (!problem.isEmpty()) {
                fail(action, problem);
                break;
            }
            settle();
            if (exitCode_ != 0) break;  // a preview could not be written
        }
        if (screen) screen->close();
    }

    // A window opened by an action while it runs: the module's code is on the
    // stack, so nothing is deleted here.
    void lookAt(QWidget* window) {
        const auto* viewer = window->objectName() == u"FrmAnteprima"_s
                                 ? window->findChild<engine::ReportViewer*>(u"Report1"_s)
                                 : nullptr;
        if (viewer) {
            if (!arguments_.previewPng.isEmpty()) savePages(viewer->document());
            if (exitCode_ == 0) print(u"PREVIEW %1"_s.arg(viewer->pageCount()));
        } else {
            print(u"WINDOW "_s + (window->objectName().isEmpty()
                                      ? QLatin1String(window->metaObject()->className())
                                      : window->objectName()));
        }
        window->close();
    }

    // Each page at 96 dpi; a page that cannot be written stops the run.
    void savePages(const engine::PageDocument& document) {
        try {
            for (const QString& path : engine::writePageImages(document, arguments_.previewPng, 96))
                print(u"PNG "_s + path);
        } catch (const RuntimeError& error) {
            stop(error.message());
        }
    }

    void fail(const ScreenAction& action, const QString& problem) {
        stop(u"azione \"%1\": %2"_s.arg(action.text(), problem));
    }

    void stop(const QString& problem) {
        err_ << problem << Qt::endl;
        exitCode_ = 2;
    }

    void print(const QString& line) { out_ << line << Qt::endl; }

    const RunArguments& arguments_;
    QTextStream& out_;
    QTextStream& err_;
    bool sawScreen_ = false;
    int exitCode_ = 0;
};

// Replaces the seams of the platform for the run and puts every one back at
// the end, however the run ends.
class ScriptedSeams {
  public:
    explicit ScriptedSeams(const RunArguments& arguments) {
        if (arguments.today.isValid()) {
            platform::setToday([today = arguments.today] { return today; });
            clockFixed_ = true;
        }
    }
    ScriptedSeams(const ScriptedSeams&) = delete;
    ScriptedSeams& operator=(const ScriptedSeams&) = delete;

    void install(ScriptedUser& user, const QString& gridAnswer) {
        platform::setMessageHandler(
            [&user](const platform::Message& message) { return user.answer(message); });
        platform::setModalHandler([&user](QWidget* window) { user.showModal(window); });
        platform::setShellOpener([&user](const QString& path) {
            user.open(path);
            return true;
        });
        platform::ComponentRegistry::provide(
            QLatin1String(entry::SearchComponent::ProgId),
            [gridAnswer] { return std::make_shared<ScriptedSearch>(gridAnswer); });
        QCoreApplication::instance()->installEventFilter(&timers_);
        installed_ = true;
    }

    ~ScriptedSeams() {
        if (installed_) {
            QCoreApplication::instance()->removeEventFilter(&timers_);
            platform::ComponentRegistry::provide(QLatin1String(entry::SearchComponent::ProgId),
                                                 nullptr);
            platform::setShellOpener(nullptr);
            platform::setModalHandler(nullptr);
            platform::setMessageHandler(nullptr);
        }
        if (clockFixed_) platform::setToday(nullptr);
    }

  private:
    TimerSilencer timers_;
    bool clockFixed_ = false;
    bool installed_ = false;
};

// The host of the installation, written down when the run asks for a log.
entry::HostPtr openHost(const QString& folder, const QString& hostLog) {
    entry::HostPtr host = std::make_shared<ReferenceHost>(folder);
    if (hostLog.isEmpty()) return host;
    auto log = std::make_unique<QFile>(hostLog);
    if (!log->open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        throw RuntimeError(
            u"impossibile scrivere il registro '%1': %2"_s.arg(hostLog, log->errorString()));
    }
    return std::make_shared<LoggingHost>(host, std::move(log));
}

}  // namespace

QString ScreenAction::text() const {
    const QString word = QLatin1String(wordOf(kind).word);
    switch (kind) {
        case Kind::Timer:
            return word;
        case Kind::Click:
            return word + u' ' + control;
        default:
            return word + u' ' + control + u'=' + value;
    }
}

RunArguments parseRunArguments(const QStringList& args) {
    RunArguments run;
    const auto failed = [&run](const QString& error) {
        run.error = error;
        return run;
    };
    if (args.isEmpty() || args[0].isEmpty() || args[0].startsWith(u"--"_s))
        return failed(u"manca il codice della stampa"_s);
    run.code = args[0];
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString& word = args[i];
        if (word.startsWith(u"--"_s)) {
            static const QStringList options = {u"--percorso"_s, u"--host-log"_s,
                                                u"--preview-png"_s, u"--today"_s,
                                                u"--grid-answer"_s};
            if (!options.contains(word)) return failed(u"opzione sconosciuta: %1"_s.arg(word));
            if (++i >= args.size()) return failed(u"manca il valore dopo %1"_s.arg(word));
            const QString& value = args[i];
            if (word == u"--today"_s) {
                run.today = QDate::fromString(value, u"dd/MM/yyyy"_s);
                if (!run.today.isValid())
                    return failed(u"data non valida per --today: '%1' (gg/mm/aaaa)"_s.arg(value));
            } else if (word == u"--grid-answer"_s) {
                run.gridAnswer = value;
            } else if (value.isEmpty()) {
                return failed(u"manca il valore dopo %1"_s.arg(word));
            } else if (word == u"--percorso"_s) {
                run.percorso = value;
            } else if (word == u"--host-log"_s) {
                run.hostLog = value;
            } else {
                run.previewPng = value;
            }
            continue;
        }
        const auto known =
            std::find_if(std::begin(actionWords), std::end(actionWords),
                         [&](const ActionWord& each) { return word == QLatin1String(each.word); });
        if (known == std::end(actionWords)) return failed(u"azione sconosciuta: '%1'"_s.arg(word));
        ScreenAction action;
        action.kind = known->kind;
        if (action.kind != Kind::Timer) {
            if (++i >= args.size())
                return failed(
                    u"azione \"%1\": si scrive %2"_s.arg(word, QLatin1String(known->form)));
            if (const QString problem = readOperand(action, args[i]); !problem.isEmpty())
                return failed(u"azione \"%1 %2\": %3"_s.arg(word, args[i], problem));
        }
        run.actions << action;
    }
    return run;
}

QString applyAction(QWidget& screen, const ScreenAction& action) {
    if (action.kind == Kind::Timer) {
        return QMetaObject::invokeMethod(&screen, "Timer1_Timer", Qt::DirectConnection)
                   ? QString()
                   : u"la schermata non ha Timer1"_s;
    }
    QObject* control = screen.findChild<QObject*>(action.control);
    if (!control) return u"nessun controllo %1 sulla schermata"_s.arg(action.control);
    if (const auto* widget = qobject_cast<QWidget*>(control); widget && !widget->isEnabled())
        return u"%1 è disattivato"_s.arg(action.control);
    switch (action.kind) {
        case Kind::Set:
            return setValue(*control, action);
        case Kind::Pick:
            return pick(*control, action);
        case Kind::Tick:
        case Kind::Untick:
            return tick(*control, action);
        case Kind::Click:
            if (auto* button = qobject_cast<QAbstractButton*>(control)) {
                button->click();
                return {};
            }
            return kindError(*control, action);
        case Kind::Key:
            pressKey(*control, *keyOf(action.number));
            return {};
        case Kind::Timer:
            break;
    }
    return {};
}

int runScreenCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    const RunArguments arguments = parseRunArguments(args);
    if (!arguments.error.isEmpty()) {
        err << arguments.error << '\n' << RunUsage << Qt::flush;
        return 2;
    }
    ScriptedSeams seams(arguments);  // the clock first: the installation may be dated by it

    const QString folder = arguments.percorso.value_or(defaultInstallation());
    entry::HostPtr host;
    try {
        if (arguments.percorso && !isInstallation(folder)) {
            throw RuntimeError(
                u"La cartella '%1' non contiene un'installazione di Lorvane (manca %2)."_s.arg(
                    folder, QLatin1String(InstallationFiles::MainDatabase)));
        }
        prepareInstallation(folder);
        host = openHost(folder, arguments.hostLog);
    } catch (const RuntimeError& error) {
        err << error.message() << Qt::endl;
        return 2;
    }

    ScriptedUser user(arguments, out, err);
    seams.install(user, arguments.gridAnswer);
    try {
        auto configura = platform::createComponent<entry::ConfiguraInterface>(
            QLatin1String(entry::ConfiguraInterface::ProgId));
        configura->SetApplicazione(host);
        configura->SetCodiceStampa(arguments.code);
        configura->SetModale(u"1"_s);
        configura->Start();
    } catch (const RuntimeError& error) {
        platform::MsgBox(error.message(), platform::MsgBoxStyle::Critical);
        settle();
        return 1;
    }
    settle();  // the closed screen is deleted while the run's seams are in place
    if (!user.sawScreen()) {
        err << u"nessuna schermata per il codice %1"_s.arg(arguments.code) << Qt::endl;
        return 2;
    }
    return user.exitCode();
}

}  // namespace lorvane::host
