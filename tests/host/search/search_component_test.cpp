// The venue search component: the answer it gives for what the user does in
// its window, and its life as a component library loaded by program id.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <functional>
#include <memory>

#include "db/connection.h"
#include "db/recordset.h"
#include "host/search/ricerca_dialog.h"
#include "host/search/search_component.h"
#include "platform/component_registry.h"
#include "platform/runtime_error.h"

// Texts in failure messages as text, not as bytes.
static void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace lorvane::host {
namespace {

using namespace Qt::StringLiterals;
using Action = std::function<void(RicercaDialog&)>;

// Names each row of a parameterised suite after its case.
constexpr auto caseName = [](const auto& info) { return std::string(info.param.name); };

class QtEnvironment : public ::testing::Environment {
  public:
    void SetUp() override {
        static int argc = 1;
        static char name[] = "search_tests";
        static char* argv[] = {name, nullptr};
        application_ = std::make_unique<QApplication>(argc, argv);
    }
    void TearDown() override { application_.reset(); }

  private:
    std::unique_ptr<QApplication> application_;
};
[[maybe_unused]] ::testing::Environment* const qtEnvironment =
    ::testing::AddGlobalTestEnvironment(new QtEnvironment);

// Ordine holds 9, 10 and 100 and Apertura dates of several years, so that a
// sort by the shown text would misplace them.
constexpr char venues[] = R"(
CREATE TABLE AnagraficaLocali (CodLocale TEXT(10), Insegna TEXT(50), Citta TEXT(50), Ordine INTEGER,
                               Apertura DATETIME);
INSERT INTO AnagraficaLocali VALUES
  ('L1', 'Bar Roma', 'Roma', 10, '2023-01-31 00:00:00'),
  ('L2', 'Caffè Sport', 'Milano', 9, '2024-02-01 00:00:00'),
  ('L3', 'Bar Centrale', 'CITTÀ DI CASTELLO', 100, '2022-12-15 00:00:00'),
  ('L4', 'antica Tabaccheria', 'Roma', NULL, '2023-06-10 00:00:00');
)";

void clickRow(RicercaDialog& dialog, int row, Qt::KeyboardModifiers modifiers = {}) {
    QTableView* grid = dialog.grid();
    const QPoint point = grid->visualRect(grid->model()->index(row, 0)).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, modifiers, point);
}

// Types `text` key by key, accented letters included.
void type(QLineEdit* edit, const QString& text) {
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(character), {});
    }
}

void clickHeader(RicercaDialog& dialog, int column) {
    QHeaderView* header = dialog.grid()->horizontalHeader();
    const QPoint point(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                       header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, point);
}

void clickSeleziona(RicercaDialog& dialog) {
    QTest::mouseClick(dialog.selezionaButton(), Qt::LeftButton);
}

// The codes the grid shows, top to bottom.
QStringList shownCodes(RicercaDialog& dialog) {
    QStringList codes;
    const QAbstractItemModel* model = dialog.grid()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        codes << model->index(row, 0).data().toString();
    }
    return codes;
}

class RicercaTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const QString path = folder_.filePath(u"main.db"_s);
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(database, venues, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
        connection_.Open(u"Dbq="_s + path + u";"_s);
        locali_ = connection_.OpenRecordset(u"SELECT * FROM AnagraficaLocali ORDER BY CodLocale"_s);

        // As a filter screen's CmdElenco sets it.
        component_.SetUser(u"admin"_s);
        component_.SetModulo(u"AnagLocali"_s);
        component_.SetCaption(u"Anagrafica Locali"_s);
        component_.SetRecordset(locali_);
        component_.SetCampoRicerca(u"codlocale"_s);
        component_.Setselezionemultipla(true);
        component_.SetStatusBar(1);
        component_.SetToolbar(1);
        component_.SetFilterBar(1);
        component_.SetWindowsState(2);
    }
    void TearDown() override { RicercaComponent::setDialogRunner({}); }

    // Calls Ricerca with `user` acting on the shown window, and gives Risposta.
    QString search(const Action& user) {
        RicercaComponent::setDialogRunner([&user](RicercaDialog& dialog) {
            dialog.show();
            user(dialog);
            return dialog.result();
        });
        component_.Ricerca();
        return component_.Risposta();
    }

    QTemporaryDir folder_;
    db::Connection connection_;
    db::RecordsetPtr locali_;
    RicercaComponent component_;
};

struct Click {
    int row;
    Qt::KeyboardModifiers modifiers = {};
};
enum class Ending { Seleziona, DoubleClick, Enter, Annulla, Escape, Close };

struct ChoiceCase {
    const char* name;
    bool multipla;
    std::vector<Click> clicks;
    Ending ending;
    const char* risposta;
};

class RicercaChoiceTest : public RicercaTest, public ::testing::WithParamInterface<ChoiceCase> {};

TEST_P(RicercaChoiceTest, GivesTheChosenCodesInGridOrder) {
    component_.Setselezionemultipla(GetParam().multipla);
    const QString risposta = search([](RicercaDialog& d) {
        for (const Click& click : GetParam().clicks)
            clickRow(d, click.row, click.modifiers);
        switch (GetParam().ending) {
            case Ending::Seleziona:
                return clickSeleziona(d);
            case Ending::DoubleClick: {
                // The second click of a double click: a real mouse sends press
                // and release first, as the last clickRow did.
                QTableView* grid = d.grid();
                const QModelIndex last = grid->model()->index(GetParam().clicks.back().row, 0);
                return QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {},
                                          grid->visualRect(last).center());
            }
            case Ending::Enter:
                return QTest::keyClick(d.grid(), Qt::Key_Return);
            case Ending::Annulla:
                return QTest::mouseClick(d.annullaButton(), Qt::LeftButton);
            case Ending::Escape:
                return QTest::keyClick(d.grid(), Qt::Key_Escape);
            case Ending::Close:
                d.close();
        }
    });
    EXPECT_EQ(risposta, QString::fromUtf8(GetParam().risposta));
}

constexpr Qt::KeyboardModifiers control = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers shift = Qt::ShiftModifier;

INSTANTIATE_TEST_SUITE_P(
    Ways, RicercaChoiceTest,
    ::testing::Values(
        ChoiceCase{"TwoRowsWithControl", true, {{2}, {0, control}}, Ending::Seleziona, "L1|L3|"},
        ChoiceCase{"SingleIgnoresControl", false, {{0}, {2, control}}, Ending::Seleziona, "L3|"},
        ChoiceCase{"RangeWithShift", true, {{1}, {3, shift}}, Ending::Seleziona, "L2|L3|L4|"},
        ChoiceCase{"SingleIgnoresShift", false, {{1}, {3, shift}}, Ending::Seleziona, "L4|"},
        ChoiceCase{"DoubleClickOnARow", true, {{1}}, Ending::DoubleClick, "L2|"},
        ChoiceCase{"EnterOnTheGrid", true, {{3}}, Ending::Enter, "L4|"},
        ChoiceCase{"Annulla", true, {{0}}, Ending::Annulla, ""},
        ChoiceCase{"Escape", true, {{0}}, Ending::Escape, ""},
        ChoiceCase{"WindowClosed", true, {{0}}, Ending::Close, ""},
        ChoiceCase{"SelezionaWithNothingChosen", true, {}, Ending::Seleziona, ""}),
    caseName);

TEST_F(RicercaTest, CancelForgetsTheAnswerOfAnEarlierSearch) {
    ASSERT_EQ(search([](RicercaDialog& d) {
                  clickRow(d, 0);
                  clickSeleziona(d);
              }),
              u"L1|"_s);
    EXPECT_EQ(search([](RicercaDialog& d) { d.reject(); }), u""_s);
}

struct FilterCase {
    const char* name;
    int column;  // the chooser's item: 0 every column, n the grid's column n - 1
    const char* typed;
    QStringList shown;
};

class RicercaFilterTest : public RicercaTest, public ::testing::WithParamInterface<FilterCase> {};

TEST_P(RicercaFilterTest, NarrowsTheRowsAndCountsThem) {
    QStringList shown;
    QString status;
    search([&](RicercaDialog& d) {
        d.filterColumn()->setCurrentIndex(GetParam().column);
        type(d.filterText(), QString::fromUtf8(GetParam().typed));
        shown = shownCodes(d);
        status = d.statusText()->text();
    });
    EXPECT_EQ(shown, GetParam().shown);
    EXPECT_EQ(status, u"%1 di 4 record · 0 selezionati"_s.arg(GetParam().shown.size()));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, RicercaFilterTest,
    ::testing::Values(FilterCase{"EveryColumnAnyCase", 0, "ROMA", {u"L1"_s, u"L4"_s}},
                      FilterCase{"OneColumnOnly", 2, "roma", {u"L1"_s}},
                      FilterCase{"AccentedCapitals", 3, "città", {u"L3"_s}},
                      FilterCase{"NumberAsShown", 4, "10", {u"L1"_s, u"L3"_s}},
                      FilterCase{"NoMatch", 0, "zzz", {}}),
    caseName);

TEST_F(RicercaTest, OnlyRowsTheFilterShowsAreChosen) {
    QString afterFilter;
    QString afterSelectAll;
    const QString risposta = search([&](RicercaDialog& d) {
        clickRow(d, 1);
        type(d.filterText(), u"roma"_s);
        afterFilter = d.statusText()->text();
        EXPECT_FALSE(d.selezionaButton()->isEnabled());
        d.toolBar()->actions().at(0)->trigger();
        afterSelectAll = d.statusText()->text();
        clickSeleziona(d);
    });
    EXPECT_EQ(afterFilter, u"2 di 4 record · 0 selezionati"_s);
    EXPECT_EQ(afterSelectAll, u"2 di 4 record · 2 selezionati"_s);
    EXPECT_EQ(risposta, u"L1|L4|"_s);
}

struct SortCase {
    const char* name;
    int column;
    int clicks;
    const char* risposta;
};

class RicercaSortTest : public RicercaTest, public ::testing::WithParamInterface<SortCase> {};

TEST_P(RicercaSortTest, HeaderClickSortsAndTheAnswerFollows) {
    const QString risposta = search([](RicercaDialog& d) {
        for (int click = 0; click < GetParam().clicks; ++click)
            clickHeader(d, GetParam().column);
        d.grid()->selectAll();
        clickSeleziona(d);
    });
    EXPECT_EQ(risposta, QString::fromUtf8(GetParam().risposta));
}

INSTANTIATE_TEST_SUITE_P(Columns, RicercaSortTest,
                         ::testing::Values(SortCase{"UnsortedKeepsTheRecordsetOrder", 0, 0,
                                                    "L1|L2|L3|L4|"},
                                           SortCase{"NumbersByValueNullLast", 3, 1, "L2|L1|L3|L4|"},
                                           SortCase{"NumbersDescending", 3, 2, "L4|L3|L1|L2|"},
                                           SortCase{"TextIgnoringCase", 1, 1, "L4|L3|L1|L2|"},
                                           SortCase{"DatesByValue", 4, 1, "L3|L1|L4|L2|"}),
                         caseName);

struct CampoCase {
    const char* name;
    const char* campo;
    const char* risposta;
};

class RicercaCampoTest : public RicercaTest, public ::testing::WithParamInterface<CampoCase> {};

TEST_P(RicercaCampoTest, FieldFoundWithoutRegardToCase) {
    component_.SetCampoRicerca(QString::fromUtf8(GetParam().campo));
    EXPECT_EQ(search([](RicercaDialog& d) {
                  clickRow(d, 1);
                  clickSeleziona(d);
              }),
              QString::fromUtf8(GetParam().risposta));
}

INSTANTIATE_TEST_SUITE_P(Names, RicercaCampoTest,
                         ::testing::Values(CampoCase{"Lower", "codlocale", "L2|"},
                                           CampoCase{"Upper", "CODLOCALE", "L2|"},
                                           CampoCase{"AnotherField", "insegna", "Caffè Sport|"}),
                         caseName);

struct BrokenCase {
    const char* name;
    std::function<void(RicercaComponent&, db::Recordset&)> breakIt;
};

class RicercaBrokenTest : public RicercaTest, public ::testing::WithParamInterface<BrokenCase> {};

TEST_P(RicercaBrokenTest, FailsBeforeAnyWindow) {
    bool shown = false;
    RicercaComponent::setDialogRunner([&shown](RicercaDialog&) {
        shown = true;
        return int(QDialog::Accepted);
    });
    GetParam().breakIt(component_, *locali_);
    EXPECT_THROW(component_.Ricerca(), RuntimeError);
    EXPECT_FALSE(shown);
    EXPECT_EQ(component_.Risposta(), u""_s);
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, RicercaBrokenTest,
    ::testing::Values(
        BrokenCase{"UnknownField",
                   [](RicercaComponent& c, db::Recordset&) { c.SetCampoRicerca(u"Codice"_s); }},
        BrokenCase{"NoRecordset",
                   [](RicercaComponent& c, db::Recordset&) { c.SetRecordset(nullptr); }},
        BrokenCase{"ClosedRecordset", [](RicercaComponent&, db::Recordset& r) { r.Close(); }}),
    caseName);

TEST_F(RicercaTest, GridShowsEveryFieldAndLeavesTheRecordsetOnItsFirstRow) {
    locali_->SetAbsolutePosition(3);
    QStringList headers;
    QString lastRow;
    search([&](RicercaDialog& d) {
        const QAbstractItemModel* model = d.grid()->model();
        for (int column = 0; column < model->columnCount(); ++column) {
            headers << model->headerData(column, Qt::Horizontal).toString();
            lastRow += model->index(3, column).data().toString() + u';';
        }
    });
    EXPECT_EQ(headers,
              (QStringList{u"CodLocale"_s, u"Insegna"_s, u"Citta"_s, u"Ordine"_s, u"Apertura"_s}));
    EXPECT_EQ(lastRow, u"L4;antica Tabaccheria;Roma;;10/06/2023;"_s);
    EXPECT_EQ(locali_->AbsolutePosition(), 1);
}

// Where the window cannot be maximised (no window manager) it keeps the size
// it asks for: every column and every row show in it, maximised or not.
TEST_F(RicercaTest, AsksForASizeThatShowsEveryColumnAndRow) {
    for (const int state : {0, 2}) {
        component_.SetWindowsState(state);
        RicercaComponent::setDialogRunner([](RicercaDialog& d) {
            const QTableView* grid = d.grid();
            int columns = 0;
            for (int column = 0; column < grid->model()->columnCount(); ++column)
                columns += grid->columnWidth(column);
            const int rows =
                grid->model()->rowCount() * grid->verticalHeader()->defaultSectionSize();
            d.setWindowState(Qt::WindowNoState);
            d.resize(d.sizeHint());
            d.show();
            EXPECT_GE(grid->viewport()->width(), columns);
            EXPECT_GE(grid->viewport()->height(), rows);
            return int(QDialog::Rejected);
        });
        component_.Ricerca();
    }
}

struct PartsCase {
    const char* name;
    int statusBar, toolbar, filterBar, windowsState;
};

class RicercaPartsTest : public RicercaTest, public ::testing::WithParamInterface<PartsCase> {};

TEST_P(RicercaPartsTest, WindowFollowsTheFlags) {
    const PartsCase& parts = GetParam();
    component_.SetStatusBar(parts.statusBar);
    component_.SetToolbar(parts.toolbar);
    component_.SetFilterBar(parts.filterBar);
    component_.SetWindowsState(parts.windowsState);
    search([&parts](RicercaDialog& d) {
        EXPECT_EQ(d.windowTitle(), u"Anagrafica Locali"_s);
        EXPECT_EQ(d.statusBar()->isVisible(), parts.statusBar == 1);
        EXPECT_EQ(d.toolBar()->isVisible(), parts.toolbar == 1);
        EXPECT_EQ(d.filterBar()->isVisible(), parts.filterBar == 1);
        EXPECT_EQ(d.windowState().testFlag(Qt::WindowMaximized), parts.windowsState == 2);
    });
}

INSTANTIATE_TEST_SUITE_P(Flags, RicercaPartsTest,
                         ::testing::Values(PartsCase{"AllShownMaximised", 1, 1, 1, 2},
                                           PartsCase{"NoneShownNormal", 0, 0, 0, 0},
                                           PartsCase{"OnlyFilterBar", 0, 0, 1, 1}),
                         caseName);

// The library as the module reaches it, with a registry file of the test's own.
class RicercaLibraryTest : public ::testing::Test {
  protected:
    void SetUp() override {
        qputenv("LORVANE_REGISTRY", folder_.filePath(u"components.ini"_s).toLocal8Bit());
    }
    void TearDown() override { qunsetenv("LORVANE_REGISTRY"); }

    const QString library_ = QString::fromLocal8Bit(LORVANE_RICERCA_LIBRARY);
    const QString progId_ = QString::fromLatin1(entry::SearchComponent::ProgId);
    QTemporaryDir folder_;
};

TEST_F(RicercaLibraryTest, RegisteredLibraryMakesTheComponentByProgramId) {
    using platform::ComponentRegistry;
    ComponentRegistry::registerServer(library_);
    EXPECT_EQ(ComponentRegistry::libraryOf(progId_), QFileInfo(library_).absoluteFilePath());

    auto component = platform::createComponent<entry::SearchComponent>(u"lorvanericerca.ricerca"_s);
    ASSERT_TRUE(component);
    EXPECT_EQ(component->Risposta(), u""_s);
    EXPECT_THROW(component->Ricerca(), RuntimeError);

    ComponentRegistry::unregisterServer(library_);
    EXPECT_FALSE(ComponentRegistry::libraryOf(progId_));
}

TEST_F(RicercaLibraryTest, CanUnloadOnlyWhenEveryObjectIsReleased) {
    using platform::ComponentRegistry;
    ComponentRegistry::registerServer(library_);
    EXPECT_TRUE(ComponentRegistry::canUnloadNow(progId_));
    platform::ComponentPtr first = ComponentRegistry::create(progId_);
    platform::ComponentPtr second = ComponentRegistry::create(progId_);
    EXPECT_FALSE(ComponentRegistry::canUnloadNow(progId_));
    first.reset();
    EXPECT_FALSE(ComponentRegistry::canUnloadNow(progId_));
    second.reset();
    EXPECT_TRUE(ComponentRegistry::canUnloadNow(progId_));
}

}  // namespace
}  // namespace lorvane::host
