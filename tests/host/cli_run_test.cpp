// "lorvane run": the script read from the command line, the actions on a
// screen's controls, and a whole run on a small screen of the test's own,
// opened through a stand-in Configura on a real installation.
#include "host/cli_run.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include "engine/report_viewer.h"
#include "entry/configura_interface.h"
#include "host/demo/demo_data.h"
#include "host/scripted_search.h"
#include "platform/clock.h"
#include "platform/component_registry.h"
#include "platform/message_box.h"
#include "platform/runtime_error.h"
#include "platform/shell.h"
#include "platform/windows.h"
#include "support/recording_host.h"

// Texts in failure messages as text, not as bytes.
static void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace lorvane::host {

void PrintTo(const ScreenAction& action, std::ostream* os) {
    *os << action.text().toStdString() << " #" << action.number;
}

namespace {

using namespace Qt::StringLiterals;
using Kind = ScreenAction::Kind;

struct ParseCase {
    QStringList words;  // after the code
    QList<ScreenAction> actions;
    const char* error;  // a part of the error, or nullptr
};

// Each action as written, the way messages name it.
QString texts(const QList<ScreenAction>& actions) {
    QStringList written;
    for (const ScreenAction& action : actions)
        written << action.text();
    return written.join(u"; "_s);
}

const ParseCase parseCases[] = {
    {{u"set"_s, u"TxtNota=a=b"_s, u"set"_s, u"CmbZona="_s},
     {{Kind::Set, u"TxtNota"_s, u"a=b"_s, 0}, {Kind::Set, u"CmbZona"_s, u""_s, 0}},
     nullptr},
    {{u"pick"_s, u"List1=-1"_s, u"--today"_s, u"31/12/2026"_s, u"pick"_s, u"Tab1=2"_s},
     {{Kind::Pick, u"List1"_s, u"-1"_s, -1}, {Kind::Pick, u"Tab1"_s, u"2"_s, 2}},
     nullptr},
    {{u"tick"_s, u"Tree=A"_s, u"untick"_s, u"ListCausali=V"_s, u"click"_s, u"CmdPdf"_s, u"key"_s,
      u"CmbZona=46"_s, u"timer"_s},
     {{Kind::Tick, u"Tree"_s, u"A"_s, 0},
      {Kind::Untick, u"ListCausali"_s, u"V"_s, 0},
      {Kind::Click, u"CmdPdf"_s, u""_s, 0},
      {Kind::Key, u"CmbZona"_s, u"46"_s, 46},
      {Kind::Timer, u""_s, u""_s, 0}},
     nullptr},
    {{u"clic"_s, u"CmdPdf"_s}, {}, "azione sconosciuta: 'clic'"},
    {{u"set"_s, u"TxtNota"_s}, {}, "\"set TxtNota\": si scrive set NOME=VALORE"},
    {{u"set"_s, u"=1"_s}, {}, "si scrive set NOME=VALORE"},
    {{u"pick"_s, u"List1=primo"_s}, {}, "da -1 in su"},
    {{u"pick"_s, u"List1=-2"_s}, {}, "da -1 in su"},
    {{u"key"_s, u"CmbZona=27"_s}, {}, "13 (Invio) e 46 (Canc)"},
    {{u"tick"_s, u"Tree="_s}, {}, "manca la chiave"},
    {{u"click"_s, u"CmdPdf=1"_s}, {}, "si scrive click NOME"},
    {{u"timer"_s, u"click"_s}, {}, "\"click\": si scrive click NOME"},
    {{u"--today"_s, u"31/02/2026"_s}, {}, "data non valida per --today"},
    {{u"--percorso"_s}, {}, "manca il valore dopo --percorso"},
    {{u"--colore"_s, u"rosso"_s}, {}, "opzione sconosciuta: --colore"},
};

TEST(RunArguments, ReadActionsAndOptionsAndRejectBadForms) {
    for (const ParseCase& test : parseCases) {
        const RunArguments run = parseRunArguments(QStringList{u"StampaBilancio"_s} + test.words);
        SCOPED_TRACE(test.words.join(u' ').toStdString());
        if (test.error) {
            EXPECT_TRUE(run.error.contains(QString::fromUtf8(test.error)))
                << run.error.toStdString();
            continue;
        }
        EXPECT_EQ(run.error, QString());
        EXPECT_EQ(run.actions, test.actions);
    }
    EXPECT_EQ(texts(parseRunArguments(QStringList{u"X"_s} + parseCases[0].words).actions),
              u"set TxtNota=a=b; set CmbZona="_s);
    EXPECT_EQ(texts(parseRunArguments(QStringList{u"X"_s} + parseCases[2].words).actions),
              u"tick Tree=A; untick ListCausali=V; click CmdPdf; key CmbZona=46; timer"_s);
    EXPECT_TRUE(parseRunArguments({}).error.contains(u"codice"_s));
    const RunArguments options = parseRunArguments(
        {u"Acconti"_s, u"--percorso"_s, u"/inst"_s, u"--grid-answer"_s, u""_s, u"--today"_s,
         u"01/02/2026"_s, u"--host-log"_s, u"h.log"_s, u"--preview-png"_s, u"png"_s});
    EXPECT_EQ(options.code, u"Acconti"_s);
    EXPECT_EQ(options.percorso, u"/inst"_s);
    EXPECT_EQ(options.today, QDate(2026, 2, 1));
    EXPECT_EQ(options.hostLog, u"h.log"_s);
    EXPECT_EQ(options.previewPng, u"png"_s);
    EXPECT_FALSE(parseRunArguments({u"Acconti"_s}).percorso.has_value());
}

// A screen of the module's kind, small: named controls of each kind, the close
// timer, and buttons that tell what the controls hold, export, preview, open
// another window or close.
class TestScreen : public QWidget {
    Q_OBJECT

  public:
    explicit TestScreen(entry::HostPtr host) : host_(std::move(host)) {
        setObjectName(u"FrmProva"_s);
        setAttribute(Qt::WA_DeleteOnClose);
        nome_ = control<QLineEdit>(u"TxtNomeLocale"_s);
        connect(nome_, &QLineEdit::returnPressed, this,
                [this] { host_->LeggiSettaggio(u"Ricerca"_s, u"Nome"_s, nome_->text()); });
        data_ = control<QDateEdit>(u"txtDallaData"_s);
        data_->setDisplayFormat(u"dd/MM/yyyy"_s);
        zona_ = control<QComboBox>(u"CmbZona"_s);
        zona_->addItems({u"Nord"_s, u"Sud"_s});
        terminale_ = control<QComboBox>(u"CmbNumTerminale"_s);
        terminale_->setEditable(true);
        terminale_->addItem(u"T-1"_s);
        sospesi_ = control<QCheckBox>(u"chkSospesi"_s);
        causali_ = control<QListWidget>(u"ListCausali"_s);
        for (const QString& text : {u"V - Versamento"_s, u"P - Prelievo"_s, u"AB - Abbuono"_s}) {
            auto* row = new QListWidgetItem(text, causali_);
            row->setFlags(row->flags() | Qt::ItemIsUserCheckable);
            row->setCheckState(text.startsWith(u'V') ? Qt::Checked : Qt::Unchecked);
        }
        tree_ = control<QTreeWidget>(u"Tree"_s);
        auto* root = node(new QTreeWidgetItem(tree_), u"A"_s);
        node(new QTreeWidgetItem(root), u"L1"_s);
        node(new QTreeWidgetItem(root), u"L2"_s);
        tabs_ = control<QTabWidget>(u"Tab1"_s);
        tabs_->addTab(new QWidget, u"Locali"_s);
        tabs_->addTab(new QWidget, u"Causali"_s);
        button(u"CmdMostra"_s, [this] { platform::MsgBox(state(), 64, u"Prova"_s); });
        button(u"CmdPdf"_s, [] {
            if (platform::MsgBox(u"Esportare?"_s, 4 + 32) == platform::MsgBoxResult::Yes)
                platform::ShellOpen(u"/esportati/bilancio.pdf"_s);
        });
        button(u"CmdStampa"_s, [this] { showPreview(); });
        button(u"CmdAltro"_s, [] {
            auto* other = new QWidget;
            other->setObjectName(u"FrmAltro"_s);
            other->setAttribute(Qt::WA_DeleteOnClose);
            platform::showModal(other);
        });
        button(u"CmdChiudi"_s, [this] { close(); });
        button(u"CmdSpento"_s, [] {})->setEnabled(false);
        // Left running, this timer would call the host on every pass of the loop.
        auto* timer = new QTimer(this);
        timer->setObjectName(u"Timer1"_s);
        connect(timer, &QTimer::timeout, this, &TestScreen::Timer1_Timer);
        timer->start(0);
    }

    Q_INVOKABLE void Timer1_Timer() {
        if (host_->ChiudiFinestre()) close();
    }

    QPointer<QWidget> preview;

  private:
    template <typename Control>
    Control* control(const QString& name) {
        auto* widget = new Control(this);
        widget->setObjectName(name);
        return widget;
    }
    template <typename Handler>
    QPushButton* button(const QString& name, Handler handler) {
        auto* widget = control<QPushButton>(name);
        connect(widget, &QPushButton::clicked, this, handler);
        return widget;
    }
    static QTreeWidgetItem* node(QTreeWidgetItem* item, const QString& key) {
        item->setData(0, Qt::UserRole, key);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, Qt::Unchecked);
        return item;
    }

    // What the controls hold, a line each, with the grid's answer and today.
    QString state() const {
        QStringList ticked;
        for (int row = 0; row < causali_->count(); ++row)
            if (causali_->item(row)->checkState() == Qt::Checked)
                ticked << causali_->item(row)->text().left(2).trimmed();
        for (QTreeWidgetItemIterator it(tree_, QTreeWidgetItemIterator::Checked); *it; ++it)
            ticked << (*it)->data(0, Qt::UserRole).toString();
        auto grid = platform::createComponent<entry::SearchComponent>(
            QLatin1String(entry::SearchComponent::ProgId));
        grid->Ricerca();
        return QStringList{nome_->text(),
                           data_->text(),
                           zona_->currentText(),
                           terminale_->currentText(),
                           QString::number(sospesi_->isChecked()),
                           QString::number(tabs_->currentIndex()),
                           ticked.join(u','),
                           grid->Risposta(),
                           platform::Today().toString(u"dd/MM/yyyy"_s)}
            .join(u"\r\n"_s);
    }

    void showPreview() {
        auto* window = new QWidget;
        window->setObjectName(u"FrmAnteprima"_s);
        window->setAttribute(Qt::WA_DeleteOnClose);
        auto* viewer = new engine::ReportViewer(window);
        viewer->setObjectName(u"Report1"_s);
        engine::PageDocument document;
        document.pages.resize(2, engine::Page{QSizeF(216, 72), {}});
        viewer->setDocument(std::move(document));
        // The preview polls the host too, from its own timer.
        auto* timer = new QTimer(window);
        timer->setObjectName(u"Timer1"_s);
        connect(timer, &QTimer::timeout, this, [this] { host_->ChiudiFinestre(); });
        timer->start(0);
        preview = window;
        platform::showModal(window);
    }

    entry::HostPtr host_;
    QLineEdit* nome_;
    QDateEdit* data_;
    QComboBox* zona_;
    QComboBox* terminale_;
    QCheckBox* sospesi_;
    QListWidget* causali_;
    QTreeWidget* tree_;
    QTabWidget* tabs_;
};

TEST(ApplyAction, RefusesWhatTheScreenCannotTake) {
    const struct {
        const char* action;
        const char* problem;
    } cases[] = {
        {"click CmdNessuno", "nessun controllo CmdNessuno sulla schermata"},
        {"click CmdSpento", "CmdSpento è disattivato"},
        {"set CmdMostra=1", "set non vale per CmdMostra (QPushButton)"},
        {"click Tree", "click non vale per Tree (QTreeWidget)"},
        {"set txtDallaData=2026-02-01", "data non valida, si scrive gg/mm/aaaa"},
        {"set chkSospesi=sì", "il valore è 0 o 1"},
        {"set CmbZona=Est", "\"Est\" non è una voce di CmbZona"},
        {"pick CmbZona=2", "l'indice 2 è fuori da CmbZona (da -1 a 1)"},
        {"pick Tab1=-1", "la pagina -1 non c'è in Tab1 (da 0 a 1)"},
        {"tick Tree=L9", "nessun nodo con chiave L9 in Tree"},
        {"untick ListCausali=X", "nessuna riga con codice X in ListCausali"},
    };
    TestScreen screen(std::make_shared<testing::RecordingHost>());
    for (const auto& test : cases) {
        const RunArguments run =
            parseRunArguments(QStringList{u"Prova"_s} + QString::fromUtf8(test.action).split(u' '));
        ASSERT_EQ(run.actions.size(), 1) << test.action;
        EXPECT_EQ(applyAction(screen, run.actions[0]), QString::fromUtf8(test.problem))
            << test.action;
    }
    EXPECT_TRUE(applyAction(*new QWidget(&screen), {Kind::Timer, {}, {}, 0}).contains(u"Timer1"_s))
        << "a screen without the close timer";
}

// Opens TestScreen for any code but three: "Ignota" shows nothing, "Guasta"
// and "Lunga" fail.
class TestConfigura final : public entry::ConfiguraInterface {
  public:
    explicit TestConfigura(QPointer<TestScreen>* screen) : screen_(screen) {}
    QString CodiceStampa() const override { return codice_; }
    void SetCodiceStampa(const QString& value) override { codice_ = value; }
    QString CodiceEsportazione() const override { return {}; }
    void SetCodiceEsportazione(const QString&) override {}
    QString Codice() const override { return {}; }
    void SetCodice(const QString&) override {}
    QString Parametri() const override { return {}; }
    void SetParametri(const QString&) override {}
    void Start() override {
        if (codice_ == u"Guasta"_s) throw RuntimeError(u"Tabella\r\nmancante"_s);
        if (codice_ == u"Lunga"_s)
            throw RuntimeError(u"Valore non valido: "_s + QString(70000, u'9'));
        if (codice_ == u"Ignota"_s || modale_ != u"1"_s) return;
        *screen_ = new TestScreen(host_);
        platform::showModal(*screen_);
    }
    void SetApplicazione(entry::HostPtr host) override { host_ = std::move(host); }
    QString Ver() const override { return {}; }
    QString CampoRicerca() const override { return {}; }
    void SetCampoRicerca(const QString&) override {}
    QString Risposta() const override { return {}; }
    void SetRisposta(const QString&) override {}
    QString Modale() const override { return modale_; }
    void SetModale(const QString& value) override { modale_ = value; }

  private:
    QPointer<TestScreen>* screen_;
    entry::HostPtr host_;
    QString codice_;
    QString modale_;
};

class RunCommand : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        demo::DemoOptions options;
        options.venues = 3;
        options.months = 1;
        options.lastDay = QDate(2026, 1, 31);
        demo::writeDemoInstallation(folder().filePath(u"inst"_s), options);
    }
    static QTemporaryDir& folder() {
        static QTemporaryDir dir;
        return dir;
    }
    void SetUp() override {
        qputenv("LORVANE_REGISTRY", work.filePath(u"components.ini"_s).toUtf8());
        qputenv("LORVANE_TEMP1", work.filePath(u"temp1"_s).toUtf8());
        platform::ComponentRegistry::provide(
            QLatin1String(entry::ConfiguraInterface::ProgId),
            [this] { return std::make_shared<TestConfigura>(&screen); });
    }
    void TearDown() override {
        platform::ComponentRegistry::provide(QLatin1String(entry::ConfiguraInterface::ProgId),
                                             nullptr);
        qunsetenv("LORVANE_REGISTRY");
        qunsetenv("LORVANE_TEMP1");
    }

    int run(const QString& code, const QStringList& words) {
        QString printed;
        QString errors;
        QTextStream out(&printed);
        QTextStream err(&errors);
        const int status = runScreenCommand(
            QStringList{code, u"--percorso"_s, folder().filePath(u"inst"_s)} + words, out, err);
        lines = printed.split(u'\n', Qt::SkipEmptyParts);
        error = errors;
        return status;
    }

    QTemporaryDir work;
    QPointer<TestScreen> screen;
    QStringList lines;
    QString error;
};

TEST_F(RunCommand, ActsOnTheScreenAndPrintsWhatTheUserSees) {
    const QString png = work.filePath(u"anteprima"_s);
    const QString log = work.filePath(u"host.log"_s);
    ASSERT_EQ(run(u"Prova"_s, {u"--host-log"_s,    log,
                               u"--preview-png"_s, png,
                               u"--today"_s,       u"15/03/2026"_s,
                               u"--grid-answer"_s, u"L1|L2|"_s,
                               u"set"_s,           u"TxtNomeLocale=Bar Sport"_s,
                               u"key"_s,           u"TxtNomeLocale=13"_s,
                               u"set"_s,           u"txtDallaData=01/02/2026"_s,
                               u"set"_s,           u"CmbZona=Sud"_s,
                               u"set"_s,           u"CmbNumTerminale=T-99"_s,
                               u"set"_s,           u"chkSospesi=1"_s,
                               u"pick"_s,          u"Tab1=1"_s,
                               u"tick"_s,          u"ListCausali=AB"_s,
                               u"untick"_s,        u"ListCausali=V"_s,
                               u"tick"_s,          u"Tree=L2"_s,
                               u"click"_s,         u"CmdMostra"_s,
                               u"timer"_s,         u"click"_s,
                               u"CmdPdf"_s,        u"click"_s,
                               u"CmdStampa"_s,     u"click"_s,
                               u"CmdAltro"_s}),
              0)
        << error.toStdString();
    const QString page1 = QDir(png).filePath(u"pagina-001.png"_s);
    const QString page2 = QDir(png).filePath(u"pagina-002.png"_s);
    EXPECT_EQ(lines,
              (QStringList{
                  u"MSG [Prova] [information] Bar Sport 01/02/2026 Sud T-99 1 1 AB,L2 L1|L2| "
                  u"15/03/2026"_s,
                  u"MSG [LorvaneStampe] [question] Esportare?"_s,
                  u"FILE /esportati/bilancio.pdf"_s,
                  u"PNG "_s + page1,
                  u"PNG "_s + page2,
                  u"PREVIEW 2"_s,
                  u"WINDOW FrmAltro"_s,
              }));
    EXPECT_EQ(QDir(png).entryList(QDir::Files),
              (QStringList{u"pagina-001.png"_s, u"pagina-002.png"_s}));
    EXPECT_EQ(QImage(page2).size(), QSize(288, 96)) << "216 x 72 points at 96 dpi";
    QFile hostLog(log);
    ASSERT_TRUE(hostLog.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(hostLog.readAll()),
              u"LeggiSettaggio\tRicerca\tNome\tBar Sport\nChiudiFinestre\t\n"_s)
        << "the screen's timer ran only when told";
    EXPECT_TRUE(screen.isNull()) << "the screen is closed at the end";

    // Every seam is back as it was.
    EXPECT_EQ(platform::Today(), QDate::currentDate());
    EXPECT_FALSE(std::dynamic_pointer_cast<ScriptedSearch>(
        platform::ComponentRegistry::create(QLatin1String(entry::SearchComponent::ProgId))));
}

TEST_F(RunCommand, StopsAtTheFirstActionThatCannotBeDone) {
    const struct {
        QString code;
        QStringList words;
        int status;
        QStringList lines;
        QString error;
    } cases[] = {
        {u"Prova"_s,
         {u"click"_s, u"CmdPdf"_s, u"set"_s, u"CmbZona=Est"_s, u"click"_s, u"CmdAltro"_s},
         2,
         {u"MSG [LorvaneStampe] [question] Esportare?"_s, u"FILE /esportati/bilancio.pdf"_s},
         u"azione \"set CmbZona=Est\": \"Est\" non è una voce di CmbZona\n"_s},
        {u"Prova"_s,
         {u"click"_s, u"CmdChiudi"_s, u"timer"_s},
         2,
         {},
         u"azione \"timer\": la schermata è già chiusa\n"_s},
        {u"Ignota"_s, {u"timer"_s}, 2, {}, u"nessuna schermata per il codice Ignota\n"_s},
        {u"Guasta"_s, {}, 1, {u"MSG [LorvaneStampe] [critical] Tabella mancante"_s}, u""_s},
        // A long value in a message is cut: the box stays readable.
        {u"Lunga"_s,
         {},
         1,
         {u"MSG [LorvaneStampe] [critical] Valore non valido: "_s + QString(980, u'9') + u'…'},
         u""_s},
        // A folder named that holds no installation gets no demo either.
        {u"Prova"_s,
         {u"--percorso"_s, work.path()},
         2,
         {},
         u"La cartella '%1' non contiene un'installazione di Lorvane (manca Lorvane.db).\n"_s.arg(
             work.path())},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE((test.code + u' ' + test.words.join(u' ')).toStdString());
        EXPECT_EQ(run(test.code, test.words), test.status);
        EXPECT_EQ(lines, test.lines);
        EXPECT_EQ(error, test.error);
        EXPECT_TRUE(screen.isNull());
    }
    EXPECT_FALSE(QFile::exists(work.filePath(u"Lorvane.db"_s)));
}

}  // namespace
}  // namespace lorvane::host

#include "cli_run_test.moc"
