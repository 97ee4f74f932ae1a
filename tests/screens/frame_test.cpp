// The frame on real screens: what each screen opens with and resets to, the
// causali and their saved ticks, the keys, "Tutti i locali", the order of a
// run up to the preview, and the host's request to close.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "db/connection.h"
#include "output/frm_anteprima.h"
#include "screens/controls.h"
#include "support/screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using testing::ScreenTest;

QString shown(const QWidget* screen, const char* name) {
    const auto* picker = screen->findChild<QDateEdit*>(QLatin1String(name));
    return picker ? picker->text() : u"-"_s;
}

int treeNodes(const QWidget* screen) {
    const auto* tree = screen->findChild<screens::KeyedTree*>(u"Tree"_s);
    return tree ? tree->nodeCount() : -1;
}

struct ScreenRow {
    const char* code;
    const char* caption;
    int pages;                // of Tab1; 0 without it
    const char* dallaOnOpen;  // "-": no such picker
    const char* allaOnOpen;
    const char* dallaAfterReset;
    const char* allaAfterReset;
    int treeOnOpen;      // nodes; -1: no tree
    int treeAfterReset;  // with a venue added to the rooted tree before
};

class EveryScreen : public ScreenTest, public ::testing::WithParamInterface<ScreenRow> {};

// Today is 20/03/2025; the dates are set to 05/02/2025 before the reset, so
// that "left as they are" shows.
TEST_P(EveryScreen, OpensAndResetsAsItsProfileSays) {
    const ScreenRow& row = GetParam();
    screens::FilterScreen* screen = open(QLatin1String(row.code));
    EXPECT_EQ(screen->windowTitle(), QString::fromUtf8(row.caption));
    const auto* tabs = screen->findChild<QTabWidget*>(u"Tab1"_s);
    EXPECT_EQ(tabs ? tabs->count() : 0, row.pages);
    EXPECT_EQ(shown(screen, "txtDallaData"), QLatin1String(row.dallaOnOpen));
    EXPECT_EQ(shown(screen, "txtAllaData"), QLatin1String(row.allaOnOpen));
    EXPECT_EQ(treeNodes(screen), row.treeOnOpen);

    for (auto* picker : screen->findChildren<QDateEdit*>())
        picker->setDate(QDate(2025, 2, 5));
    if (auto* tree = screen->findChild<screens::KeyedTree*>(u"Tree"_s)) {
        tree->clearNodes();
        tree->addNode(QString(), u"A"_s, u"radice"_s, screens::KeyedTree::RootImage);
        tree->addNode(u"A"_s, u"AL0001"_s, u"locale"_s, screens::KeyedTree::NodeImage);
    }
    control<QPushButton>(screen, "CmdAzzera")->click();
    EXPECT_EQ(shown(screen, "txtDallaData"), QLatin1String(row.dallaAfterReset));
    EXPECT_EQ(shown(screen, "txtAllaData"), QLatin1String(row.allaAfterReset));
    EXPECT_EQ(treeNodes(screen), row.treeAfterReset);
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
}

constexpr char today[] = "20/03/2025";
constexpr char newYear[] = "01/01/2025";
constexpr char firstOfMonth[] = "01/03/2025";
constexpr char before[] = "05/02/2025";

INSTANTIATE_TEST_SUITE_P(
    Frame, EveryScreen,
    ::testing::Values(
        ScreenRow{"StampaIntrodotto", "..:: Stampa Introdotto per periodo ::..", 3, today, today,
                  today, today, 1, 1},
        ScreenRow{"IntrodottoDistinta", "..:: Stampa introdotto su distinte ::..", 2, newYear,
                  today, today, today, 1, 0},
        ScreenRow{"StampaCassa", "..:: Stampa cassa per periodo ::..", 3, today, today, today,
                  today, 1, 2},
        ScreenRow{"StampaRegistro", "..:: Stampa registro corrispettivi ::..", 3, newYear, today,
                  today, today, 1, 2},
        ScreenRow{"StampaRegistro2", "..:: Stampa registro corrispettivi con Comodato ::..", 3,
                  newYear, today, today, today, 1, 2},
        ScreenRow{"StampaBilancio", "..:: Stampa Bilancio di Verifica ::..", 0, newYear, today,
                  before, before, -1, -1},
        ScreenRow{"StampaSchedaLocale", "..:: Stampa scheda Cliente ::..", 2, newYear, today, today,
                  today, 1, 0},
        ScreenRow{"StampaSchedaContab", "..:: Stampa scheda Contabile ::..", 3, newYear, today,
                  newYear, today, 0, 0},
        ScreenRow{"PercPagamentoG", "..:: Stampa percentuali di pagamento Globali ::..", 2, newYear,
                  today, today, today, 1, 0},
        ScreenRow{"PercPagamentoP", "..:: Stampa percentuali di pagamento Parziali ::..", 2,
                  newYear, today, today, today, 1, 0},
        ScreenRow{"SommeConsegnate", "..:: Stampa somme consegnate al locale ::..", 2, firstOfMonth,
                  today, firstOfMonth, today, 1, 1},
        ScreenRow{"Acconti", "..:: Stampa Acconti ::..", 2, newYear, today, newYear, today, 0, 0},
        ScreenRow{"Refill", "..:: Stampa Refill ::..", 2, newYear, today, newYear, today, 0, 0},
        ScreenRow{"SaldiCambiamonete", "..:: Stampa situazione cambiamonete ::..", 2, "-", "-", "-",
                  "-", 1, 1},
        ScreenRow{"SaldiHopper", "..:: Stampa situazione hopper ::..", 2, "-", "-", "-", "-", 1, 0},
        ScreenRow{"Quietanza", "..:: Stampa Quietanza ::..", 2, newYear, today, today, today, 1, 0},
        ScreenRow{"DifferenzaPreu", "..:: Stampa Differenza Preu ::..", 2, newYear, today, newYear,
                  today, 1, 0},
        ScreenRow{"StampaAttoQuietanza", "..:: Stampa Atti di Quietanza ::..", 2, newYear, today,
                  today, today, 1, 0},
        ScreenRow{"StampaEtichette", "..:: Stampa Etichette ::..", 1, "-", "-", "-", "-", 1, 0},
        ScreenRow{"StampaEtichetteMob", "..:: Stampa Etichette ::..", 1, "-", "-", "-", "-", 1, 0}),
    [](const ::testing::TestParamInfo<ScreenRow>& info) { return std::string(info.param.code); });

QStringList tickedRows(QWidget* screen) {
    QStringList ticked;
    auto* list = screen->findChild<screens::CheckList*>(u"ListCausali"_s);
    for (int row = 0; row < list->count(); ++row)
        if (list->isTicked(row)) ticked << list->item(row)->text().section(u" -"_s, 0, 0);
    return ticked;
}

struct CausaliRow {
    const char* name;
    const char* code;
    const char* saved;        // the host's setting; nullptr when none was saved
    const char* onlyCausale;  // leaves the list with this one row, when set
    const char* ticked;       // the codes ticked after Form_Load
};

class SavedCausali : public ScreenTest, public ::testing::WithParamInterface<CausaliRow> {};

TEST_P(SavedCausali, TickTheRowsTheyName) {
    const CausaliRow& row = GetParam();
    if (row.onlyCausale) {
        const QString copy = mainDatabaseCopy();
        db::Connection main;
        main.Open(u"Dbq="_s + copy);
        main.Execute(u"UPDATE AnagraficaCausali SET Cassa = 0 WHERE CodiceCausale <> '%1'"_s.arg(
            QLatin1String(row.onlyCausale)));
        main.Close();
        useMainDatabase(copy);
    }
    if (row.saved) {
        const QString section = QLatin1String(row.code).startsWith(u"StampaRegistro"_s)
                                    ? u"StampaRegistro"_s
                                    : QLatin1String(row.code);
        host->settings.insert(section + u"/Causali"_s, QLatin1String(row.saved));
    }
    screens::FilterScreen* screen = open(QLatin1String(row.code));
    EXPECT_EQ(tickedRows(screen).join(u','), QLatin1String(row.ticked));
}

// The cash screen writes its drive letter in capitals, the others not.
TEST_F(ScreenTest, EachScreenSpellsTheWorkFolderOfItsConnectionAsItsOwn) {
    const struct {
        const char* code;
        const char* connection;
    } rows[] = {
        {"StampaCassa", "Dbq=C:\\temp1\\Cassa.mdb;"},
        {"StampaIntrodotto", "Dbq=c:\\temp1\\Introdotto.mdb;"},
    };
    for (const auto& row : rows) {
        screens::FilterScreen* screen = open(QLatin1String(row.code));
        control<QListWidget>(screen, "List1")->setCurrentRow(0);
        control<QPushButton>(screen, "CmdStampa")->click();
        EXPECT_TRUE(workdb::ConnessioneTemporanea().ConnectionString().contains(
            QLatin1String(row.connection)))
            << row.code << ": " << workdb::ConnessioneTemporanea().ConnectionString().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Frame, SavedCausali,
    ::testing::Values(
        CausaliRow{"CassaOneCode", "StampaCassa", "'INC'", nullptr, "INC"},
        CausaliRow{"CassaSeveralCodesAnyCase", "StampaCassa", "'inc6', 'FUR', 'XYZ'", nullptr,
                   "INC6,FUR"},
        CausaliRow{"CassaNothingSavedTakesItsDefault", "StampaCassa", nullptr, nullptr, "INC6,INC"},
        CausaliRow{"CassaListOfOneRowIsNotLookedAt", "StampaCassa", "'INC'", "INC", ""},
        CausaliRow{"RegistroSharedByBothScreens", "StampaRegistro2", "'FUR'", nullptr, "FUR"},
        CausaliRow{"RegistroDefaultFromTheHost", "StampaRegistro", nullptr, nullptr,
                   "INC6,INC,FUR"},
        CausaliRow{"IntrodottoTicksEveryRowWhateverWasSaved", "StampaIntrodotto", "'XYZ'", nullptr,
                   "INC6"}),
    [](const ::testing::TestParamInfo<CausaliRow>& info) { return std::string(info.param.name); });

TEST_F(ScreenTest, RegistroAsksTheHostWithItsDefault) {
    open(u"StampaRegistro"_s);
    EXPECT_TRUE(
        host->calls.contains(u"LeggiSettaggio(StampaRegistro, Causali, 'INC6','INC','FUR')"_s))
        << host->calls.join(u'\n').toStdString();
}

TEST_F(ScreenTest, TheTicksAreSavedAsQuotedCodes) {
    screens::FilterScreen* screen = open(u"StampaCassa"_s);
    auto* list = control<screens::CheckList>(screen, "ListCausali");
    for (int row = 0; row < list->count(); ++row)
        list->setTicked(row, row == 0 || row == 2);
    screen->SalvaCausali();
    EXPECT_EQ(host->settings.value(u"StampaCassa/Causali"_s), u"'INC6', 'FUR'"_s);

    for (int row = 0; row < list->count(); ++row)
        list->setTicked(row, row == 1);
    screen->SalvaCausali();
    EXPECT_EQ(host->settings.value(u"StampaCassa/Causali"_s), u"'INC'"_s);
}

TEST_F(ScreenTest, NoCausaleTickedRefusesEveryOutput) {
    screens::FilterScreen* screen = open(u"StampaIntrodotto"_s);
    control<QListWidget>(screen, "List1")->addItem(u"layout"_s);
    control<screens::CheckList>(screen, "ListCausali")->setTicked(0, false);
    for (const char* button : {"CmdStampa", "CmdPdf", "CmdXls", "CmdExportExcel"}) {
        messages.clear();
        takeCalls();
        control<QPushButton>(screen, button)->click();
        EXPECT_EQ(messages, QStringList{u"Causale non selezionata|64|Selezionare almeno una "
                                        u"causale dall'elenco"_s})
            << button;
    }
}

void sendKey(QWidget* control, QEvent::Type type, int key, const QString& text = QString()) {
    QKeyEvent event(type, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(control, &event);
}

TEST_F(ScreenTest, DeleteClearsTheCombosThatHaveIt) {
    screens::FilterScreen* screen = open(u"StampaIntrodotto"_s);
    auto* azienda = control<QComboBox>(screen, "CmbAzienda");
    ASSERT_GT(azienda->count(), 0);
    sendKey(azienda, QEvent::KeyRelease, Qt::Key_Delete);  // empty: nothing happens
    EXPECT_EQ(azienda->currentIndex(), -1);
    azienda->setCurrentIndex(0);
    sendKey(azienda, QEvent::KeyRelease, Qt::Key_Delete);
    EXPECT_EQ(azienda->currentIndex(), -1);

    auto* terminale = control<QComboBox>(screen, "CmbNumTerminale");
    ASSERT_GT(terminale->count(), 0);
    terminale->setCurrentIndex(0);
    sendKey(terminale, QEvent::KeyRelease, Qt::Key_Delete);
    EXPECT_EQ(terminale->currentIndex(), 0);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(ScreenTest, EnterInAnEmptyProvinciaRunsTheSearch) {
    screens::FilterScreen* screen = open(u"StampaIntrodotto"_s);
    takeCalls();
    sendKey(control<QLineEdit>(screen, "txtProvincia"), QEvent::KeyPress, Qt::Key_Return, u"\r"_s);
    EXPECT_EQ(takeCalls(),
              QStringList{u"OpenRecordset(SELECT * FROM AnagraficaLocali al  WHERE al.sospeso = 0 "
                          u" AND  al.CodLocale IN (SELECT CodLocale FROM NoteIncassi WHERE "
                          u"DataIncasso>=#03/20/2025#  AND DataIncasso<=#03/20/2025#))"_s});
    EXPECT_FALSE(control<QCheckBox>(screen, "ChkTutti")->isChecked());
    auto* tree = control<screens::KeyedTree>(screen, "Tree");
    ASSERT_NE(tree->node(u"A"_s), nullptr);
    EXPECT_TRUE(screens::KeyedTree::isTicked(tree->node(u"A"_s)));
}

struct TuttiRow {
    const char* code;
    int nodesLeft;
};

class ChkTuttiOn : public ScreenTest, public ::testing::WithParamInterface<TuttiRow> {};

TEST_P(ChkTuttiOn, ClearsTheCriteriaAndEmptiesTheTreeButOnFourScreens) {
    screens::FilterScreen* screen = open(QLatin1String(GetParam().code));
    auto* tree = control<screens::KeyedTree>(screen, "Tree");
    tree->addNode(u"A"_s, u"AL0001"_s, u"locale"_s, screens::KeyedTree::NodeImage);
    auto* tutti = control<QCheckBox>(screen, "ChkTutti");
    tutti->setChecked(false);
    control<QLineEdit>(screen, "TxtNomeLocale")->setText(u"Bar"_s);
    control<QComboBox>(screen, "CmbZona")->setCurrentIndex(0);
    control<QCheckBox>(screen, "chkSospesi")->setChecked(true);

    tutti->setChecked(true);
    EXPECT_EQ(tree->nodeCount(), GetParam().nodesLeft);
    EXPECT_TRUE(control<QLineEdit>(screen, "TxtNomeLocale")->text().isEmpty());
    EXPECT_EQ(control<QComboBox>(screen, "CmbZona")->currentIndex(), -1);
    EXPECT_TRUE(control<QCheckBox>(screen, "chkSospesi")->isChecked());
}

INSTANTIATE_TEST_SUITE_P(
    Frame, ChkTuttiOn,
    ::testing::Values(TuttiRow{"StampaIntrodotto", 2}, TuttiRow{"StampaCassa", 2},
                      TuttiRow{"StampaRegistro", 2}, TuttiRow{"StampaRegistro2", 2},
                      TuttiRow{"SaldiHopper", 0}, TuttiRow{"Quietanza", 0}),
    [](const ::testing::TestParamInfo<TuttiRow>& info) { return std::string(info.param.code); });

// A screen of the frame whose preparation gives a fixed count, on the
// trial balance's layout.
class CountingScreen final : public screens::FilterScreen {
  public:
    explicit CountingScreen(qint16 rows) : FilterScreen(profileOf()), rows_(rows) {}
    using FilterScreen::mousePointer;

  protected:
    qint16 PreparaDati() override { return rows_; }

  private:
    static screens::ScreenProfile profileOf() {
        screens::ScreenProfile profile = screens::standardProfile(u"Prova"_s);
        profile.codiceStampa = "StampaBilancio";
        return profile;
    }
    qint16 rows_;
};

TEST_F(ScreenTest, ACountOfNothingShowsNoPreview) {
    CountingScreen screen(0);
    screen.load();
    screen.findChild<QPushButton*>(u"CmdStampa"_s)->click();
    EXPECT_EQ(messages, QStringList{u"Lorvane|64|Nessun dato da stampare"_s});
    EXPECT_TRUE(modalWindows.isEmpty());
    EXPECT_EQ(screen.mousePointer(), screens::MousePointer::Default);

    messages.clear();
    screen.findChild<QPushButton*>(u"CmdPdf"_s)->click();
    EXPECT_EQ(messages, QStringList{u"Lorvane|64|Nessun dato da stampare"_s});
    EXPECT_TRUE(openedFiles.isEmpty());
}

TEST_F(ScreenTest, ACountShowsThePreviewWithoutGroupTree) {
    CountingScreen screen(3);
    screen.load();
    bool groupTree = true;
    onModal = [&](QWidget* window) {
        groupTree =
            window->findChild<QWidget*>(u"Report1"_s)->property("DisplayGroupTree").toBool();
    };
    screen.findChild<QPushButton*>(u"CmdStampa"_s)->click();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(modalWindows, QStringList{u"FrmAnteprima"_s});
    EXPECT_FALSE(groupTree);
    EXPECT_EQ(screen.mousePointer(), screens::MousePointer::Default);
}

// The tree opens wide enough for its root, on the label screens too.
TEST_F(ScreenTest, TheTreeShowsItsRootWhole) {
    for (const QString& code : {u"StampaEtichette"_s, u"StampaEtichetteMob"_s, u"Quietanza"_s}) {
        screens::FilterScreen* screen = open(code);
        screen->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(screen));
        auto* tree = control<screens::KeyedTree>(screen, "Tree");
        QApplication::processEvents();
        const QAbstractItemView* view = tree;
        EXPECT_GE(tree->viewport()->width(), view->sizeHintForColumn(0)) << code.toStdString();
        screen->close();
    }
}

TEST_F(ScreenTest, TheHostsRequestClosesScreenAndPreview) {
    QPointer<screens::FilterScreen> screen = open(u"StampaBilancio"_s);
    screen->show();
    EXPECT_TRUE(control<QTimer>(screen, "Timer1")->isActive());
    screen->Timer1_Timer();
    EXPECT_TRUE(screen->isVisible());

    host->chiudiFinestre = true;
    QPointer<output::FrmAnteprima> preview = &output::FrmAnteprima::instance();
    preview->show();
    preview->Timer1_Timer();
    screen->Timer1_Timer();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(screen.isNull());
    EXPECT_TRUE(preview.isNull());
}

}  // namespace
}  // namespace lorvane
