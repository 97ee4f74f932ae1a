#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPdfWriter>
#include <QPointer>
#include <QProcess>
#include <QScreen>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QWheelEvent>

#include "engine/engine_fixture.h"
#include "engine/report_viewer.h"
#include "entry/module_values.h"
#include "output/frm_anteprima.h"
#include "platform/message_box.h"
#include "platform/runtime_error.h"
#include "support/recording_host.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;

const QSizeF a4(595.276, 841.89);

Page pageWith(const QStringList& texts, QSizeF size = a4) {
    PlacedBand band;
    double top = 20;
    for (const QString& text : texts) {
        TextItem item;
        item.rect = QRectF(40, top, 300, 12);
        item.text = text;
        band.items.push_back(item);
        top += 14;
    }
    band.items.push_back(LineItem{QPointF(40, 10), QPointF(400, 10)});
    return Page{size, {band}};
}

// Five pages; "Cassa contanti" only on page 4; groups "03" (pages 1-3, with
// the account 03.002 from page 2) and "05" (pages 4-5).
PageDocument fivePages() {
    PageDocument document;
    document.title = u"Bilancio di prova"_s;
    document.pages = {pageWith({u"Mastro 03"_s, u"03.001 Banca"_s}),
                      pageWith({u"03.002 Clienti"_s}), pageWith({u"03.003 Fornitori"_s}),
                      pageWith({u"Mastro 05"_s, u"05.001 Cassa contanti"_s}),
                      pageWith({u"Totale generale"_s}, a4.transposed())};
    document.outline = {{0, u"03"_s, 0}, {1, u"03.002"_s, 1}, {0, u"05"_s, 3}};
    return document;
}

template <typename T>
T* child(const QWidget& parent, const QString& name) {
    T* found = parent.findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
}

class ReportViewerTest : public ::testing::Test {
  protected:
    void SetUp() override { viewer.setDocument(fivePages()); }
    void TearDown() override {
        ReportViewer::setPrintHandler({});
        ReportViewer::setFileChooser({});
        platform::setMessageHandler({});
    }
    void click(const QString& button) {
        QTest::mouseClick(child<QAbstractButton>(viewer, button), Qt::LeftButton);
    }
    QString pageBox() { return child<QLineEdit>(viewer, u"PageNumber"_s)->text(); }
    bool enabled(const QString& button) {
        return child<QAbstractButton>(viewer, button)->isEnabled();
    }
    void showAt(int width, int height) {
        viewer.resize(width, height);
        viewer.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&viewer));
        QApplication::processEvents();
    }

    ReportViewer viewer;
};

TEST_F(ReportViewerTest, ShowsPageOneOfANewDocument) {
    viewer.goToPage(3);
    viewer.setDocument(fivePages());
    EXPECT_EQ(viewer.pageCount(), 5);
    EXPECT_EQ(viewer.currentPage(), 1);
    EXPECT_EQ(pageBox(), u"1 / 5"_s);
}

struct ButtonRow {
    const char* name;
    int from;
    const char* button;
    int expected;
};

class NavigationButtons : public ReportViewerTest,
                          public ::testing::WithParamInterface<ButtonRow> {};

TEST_P(NavigationButtons, MoveWithinTheDocument) {
    const ButtonRow& row = GetParam();
    viewer.goToPage(row.from);
    click(QString::fromLatin1(row.button));
    EXPECT_EQ(viewer.currentPage(), row.expected);
    EXPECT_EQ(pageBox(), u"%1 / 5"_s.arg(row.expected));
}

INSTANTIATE_TEST_SUITE_P(Viewer, NavigationButtons,
                         ::testing::Values(ButtonRow{"NextFromFirst", 1, "NextPage", 2},
                                           ButtonRow{"PreviousFromMiddle", 3, "PreviousPage", 2},
                                           ButtonRow{"LastFromSecond", 2, "LastPage", 5},
                                           ButtonRow{"FirstFromFourth", 4, "FirstPage", 1}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ReportViewerTest, ButtonsPointingPastTheEndsAreDisabled) {
    EXPECT_FALSE(enabled(u"FirstPage"_s));
    EXPECT_FALSE(enabled(u"PreviousPage"_s));
    EXPECT_TRUE(enabled(u"NextPage"_s));
    EXPECT_TRUE(enabled(u"LastPage"_s));
    viewer.goToPage(5);
    EXPECT_TRUE(enabled(u"FirstPage"_s));
    EXPECT_TRUE(enabled(u"PreviousPage"_s));
    EXPECT_FALSE(enabled(u"NextPage"_s));
    EXPECT_FALSE(enabled(u"LastPage"_s));
}

struct PageBoxRow {
    const char* name;
    const char* typed;
    int expected;
};

class PageBoxEntry : public ReportViewerTest, public ::testing::WithParamInterface<PageBoxRow> {};

TEST_P(PageBoxEntry, GoesToTheTypedPage) {
    viewer.goToPage(2);
    QLineEdit* box = child<QLineEdit>(viewer, u"PageNumber"_s);
    box->selectAll();
    QTest::keyClicks(box, QString::fromUtf8(GetParam().typed));
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(viewer.currentPage(), GetParam().expected);
    EXPECT_EQ(box->text(), u"%1 / 5"_s.arg(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(Viewer, PageBoxEntry,
                         ::testing::Values(PageBoxRow{"Number", "4", 4},
                                           PageBoxRow{"NumberWithCount", "3 / 5", 3},
                                           PageBoxRow{"BeyondTheLast", "99", 5},
                                           PageBoxRow{"Zero", "0", 1},
                                           PageBoxRow{"NotANumber", "tre", 2}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ReportViewerTest, EmptyDocumentHasNoPageAndNothingToDo) {
    viewer.setDocument(PageDocument());
    viewer.goToPage(1);
    EXPECT_EQ(viewer.currentPage(), 0);
    EXPECT_EQ(pageBox(), u"0 / 0"_s);
    for (const QString& button :
         {u"FirstPage"_s, u"PreviousPage"_s, u"NextPage"_s, u"LastPage"_s, u"Find"_s, u"Print"_s}) {
        EXPECT_FALSE(enabled(button)) << button.toStdString();
    }
}

TEST_F(ReportViewerTest, FitWidthFollowsTheWidthOfTheViewer) {
    viewer.setDisplayGroupTree(false);
    showAt(600, 500);
    ASSERT_EQ(viewer.width(), 600);
    const double narrow = viewer.scale();
    auto* pages = child<QScrollArea>(viewer, u"Pages"_s);
    EXPECT_LE(pages->widget()->width(), pages->viewport()->width());
    viewer.resize(1200, 500);
    QApplication::processEvents();
    EXPECT_GT(viewer.scale(), 2 * narrow);
    EXPECT_LE(pages->widget()->width(), pages->viewport()->width());
    EXPECT_GT(pages->widget()->width(), pages->viewport()->width() - 40);
}

TEST_F(ReportViewerTest, WholePageFitsTheView) {
    viewer.setDisplayGroupTree(false);
    showAt(900, 400);
    viewer.setZoom(ReportViewer::ZoomWholePage);
    QApplication::processEvents();
    auto* pages = child<QScrollArea>(viewer, u"Pages"_s);
    EXPECT_LE(pages->widget()->height(), pages->viewport()->height());
    EXPECT_EQ(child<QComboBox>(viewer, u"Zoom"_s)->currentText(), u"Pagina intera"_s);
}

TEST_F(ReportViewerTest, ZoomEntriesInPercentScaleByTheScreenResolution) {
    auto* zoom = child<QComboBox>(viewer, u"Zoom"_s);
    const double pointsToPixels = viewer.logicalDpiX() / 72.0;
    for (const auto& [entry, percent] :
         {std::pair{u"50%"_s, 50}, {u"75%"_s, 75}, {u"100%"_s, 100}, {u"200%"_s, 200}}) {
        const int index = zoom->findText(entry);
        ASSERT_GE(index, 0) << entry.toStdString();
        zoom->setCurrentIndex(index);
        emit zoom->activated(index);
        EXPECT_EQ(viewer.zoom(), percent);
        EXPECT_DOUBLE_EQ(viewer.scale(), percent / 100.0 * pointsToPixels);
    }
}

// Whether the canvas shows the highlight's yellow somewhere in `rect` (points).
bool highlighted(ReportViewer& viewer, const QRectF& rect) {
    const QImage canvas = viewer.findChild<QScrollArea*>(u"Pages"_s)->widget()->grab().toImage();
    const QRectF onCanvas(rect.topLeft() * viewer.scale(), rect.size() * viewer.scale());
    const QRect inside = onCanvas.translated(12, 12).toAlignedRect().adjusted(1, 1, -1, -1);
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            const QColor pixel = canvas.pixelColor(x, y);
            if (pixel.red() > 200 && pixel.green() > 150 && pixel.blue() < 140) return true;
        }
    }
    return false;
}

struct FindStep {
    const char* how;  // "Trova", "F3", "Shift+F3", "Enter"
    int page;         // the page shown after it
    int match;        // the current place among all
};

struct FindRow {
    const char* name;
    int from;
    const char* text;
    std::vector<FindStep> steps;
    int places;  // in the whole document
};

class FindSteps : public ReportViewerTest, public ::testing::WithParamInterface<FindRow> {};

// "03" stands twice on page 1, once on page 2, twice on page 3 ("03.003");
// "mastro" on pages 1 and 4. A new text starts on the page shown; the same
// text steps on.
TEST_P(FindSteps, StartOnThePageShownAndStepPlaceByPlace) {
    const FindRow& row = GetParam();
    showAt(900, 700);
    viewer.goToPage(row.from);
    auto* box = child<QLineEdit>(viewer, u"SearchText"_s);
    box->setText(QString::fromUtf8(row.text));
    for (const FindStep& step : row.steps) {
        const QString how = QString::fromUtf8(step.how);
        if (how == u"Trova"_s) {
            click(u"Find"_s);
        } else if (how == u"Enter"_s) {
            QTest::keyClick(box, Qt::Key_Return);
        } else {
            QTest::keyClick(child<QScrollArea>(viewer, u"Pages"_s), Qt::Key_F3,
                            how == u"F3"_s ? Qt::NoModifier : Qt::ShiftModifier);
        }
        EXPECT_EQ(viewer.currentPage(), step.page) << step.how;
        EXPECT_EQ(viewer.currentMatch(), step.match) << step.how;
        EXPECT_EQ(viewer.statusText(), u"\"%1\": %2 di %3, pagina %4"_s.arg(box->text())
                                           .arg(step.match + 1)
                                           .arg(row.places)
                                           .arg(step.page));
    }
    ASSERT_EQ(int(viewer.matches().size()), row.places);
    QApplication::processEvents();
    // Places of other pages are not highlighted, unless one of this page's
    // stands in the same spot.
    for (const TextMatch& match : viewer.matches()) {
        const bool shown = match.page == viewer.currentPage();
        const bool sameSpot = std::any_of(
            viewer.matches().begin(), viewer.matches().end(), [&](const TextMatch& other) {
                return other.page == viewer.currentPage() && other.rect.intersects(match.rect);
            });
        if (shown || !sameSpot)
            EXPECT_EQ(highlighted(viewer, match.rect), shown) << "page " << match.page;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Viewer, FindSteps,
    ::testing::Values(
        FindRow{"CurrentPageFirst", 1, "03", {{"Trova", 1, 0}, {"Trova", 1, 1}, {"F3", 2, 2}}, 5},
        FindRow{"BackwardsAndRound",
                2,
                "03",
                {{"Enter", 2, 2}, {"Shift+F3", 1, 1}, {"Shift+F3", 1, 0}, {"Shift+F3", 3, 4}},
                5},
        FindRow{"FromAPageAfterTheLastPlace", 5, "MASTRO", {{"F3", 1, 0}, {"F3", 4, 1}}, 2},
        FindRow{"PreviousFromAPageWithout", 3, "mastro", {{"Shift+F3", 1, 0}}, 2}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ReportViewerTest, TextFoundNowhereLeavesThePageAndSaysSo) {
    viewer.goToPage(2);
    EXPECT_FALSE(viewer.find(u"Erario"_s));
    EXPECT_EQ(viewer.currentPage(), 2);
    EXPECT_EQ(viewer.statusText(), u"Testo \"Erario\" non trovato."_s);
    EXPECT_TRUE(viewer.matches().empty());
}

struct MoveRow {
    const char* name;
    int from;
    Qt::Key key;  // Qt::Key_unknown: the wheel
    int wheelAngle;
    int expected;
};

class PageMoves : public ReportViewerTest, public ::testing::WithParamInterface<MoveRow> {};

// The whole page shows, so there is nothing to scroll within it: each key or
// notch of the wheel turns the page.
TEST_P(PageMoves, KeysAndWheelMoveAcrossPages) {
    const MoveRow& row = GetParam();
    viewer.setDisplayGroupTree(false);
    showAt(700, 700);
    viewer.setZoom(ReportViewer::ZoomWholePage);
    QApplication::processEvents();
    viewer.goToPage(row.from);
    auto* pages = child<QScrollArea>(viewer, u"Pages"_s);
    if (row.key == Qt::Key_unknown) {
        const QPointF centre = QRectF(pages->viewport()->rect()).center();
        QWheelEvent wheel(centre, pages->viewport()->mapToGlobal(centre), QPoint(),
                          QPoint(0, row.wheelAngle), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(pages->viewport(), &wheel);
    } else {
        QTest::keyClick(pages, row.key);
    }
    EXPECT_EQ(viewer.currentPage(), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Viewer, PageMoves,
    ::testing::Values(MoveRow{"PageDown", 2, Qt::Key_PageDown, 0, 3},
                      MoveRow{"PageUp", 2, Qt::Key_PageUp, 0, 1},
                      MoveRow{"PageDownOnTheLast", 5, Qt::Key_PageDown, 0, 5},
                      MoveRow{"Home", 4, Qt::Key_Home, 0, 1}, MoveRow{"End", 2, Qt::Key_End, 0, 5},
                      MoveRow{"WheelDown", 3, Qt::Key_unknown, -120, 4},
                      MoveRow{"WheelUp", 3, Qt::Key_unknown, 120, 2},
                      MoveRow{"HalfANotchIsNotAPage", 3, Qt::Key_unknown, -60, 3}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ReportViewerTest, EscapeAsksToClose) {
    int asked = 0;
    QObject::connect(&viewer, &ReportViewer::closeRequested, [&] { ++asked; });
    showAt(600, 500);
    QTest::keyClick(child<QScrollArea>(viewer, u"Pages"_s), Qt::Key_Escape);
    QTest::keyClick(child<QLineEdit>(viewer, u"SearchText"_s), Qt::Key_Escape);
    EXPECT_EQ(asked, 2);
}

TEST_F(ReportViewerTest, GroupTreeFollowsTheOutlineAndGoesToAGroupsPage) {
    showAt(900, 600);
    auto* tree = child<QTreeWidget>(viewer, u"GroupTree"_s);
    ASSERT_EQ(tree->topLevelItemCount(), 2);
    ASSERT_EQ(tree->topLevelItem(0)->childCount(), 1);
    for (const auto& [item, page] : {std::pair{tree->topLevelItem(1), 4},
                                     {tree->topLevelItem(0)->child(0), 2},
                                     {tree->topLevelItem(0), 1}}) {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualItemRect(item).center());
        EXPECT_EQ(viewer.currentPage(), page) << item->text(0).toStdString();
    }
    EXPECT_EQ(tree->topLevelItem(0)->child(0)->text(0), u"03.002"_s);
}

TEST_F(ReportViewerTest, DisplayGroupTreeShowsAndHidesTheTree) {
    showAt(900, 600);
    auto* tree = child<QTreeWidget>(viewer, u"GroupTree"_s);
    EXPECT_TRUE(viewer.property("DisplayGroupTree").toBool());
    EXPECT_TRUE(tree->isVisible());
    viewer.setProperty("DisplayGroupTree", false);
    EXPECT_FALSE(viewer.displayGroupTree());
    EXPECT_FALSE(tree->isVisible());
    viewer.setDisplayGroupTree(true);
    EXPECT_TRUE(tree->isVisible());
}

TEST_F(ReportViewerTest, PrintHandsEveryPageToThePrinter) {
    std::vector<QString> firstTexts;
    ReportViewer::setPrintHandler([&](QWidget* parent, const PageDocument& document) {
        EXPECT_EQ(parent, &viewer);
        for (const Page& page : document.pages) {
            firstTexts.push_back(std::get<TextItem>(page.bands.front().items.front()).text);
        }
    });
    viewer.goToPage(3);
    click(u"Print"_s);
    EXPECT_EQ(firstTexts,
              (std::vector<QString>{u"Mastro 03"_s, u"03.002 Clienti"_s, u"03.003 Fornitori"_s,
                                    u"Mastro 05"_s, u"Totale generale"_s}));
}

TEST_F(ReportViewerTest, PrintFailureIsShown) {
    QStringList shown;
    platform::setMessageHandler([&](const platform::Message& message) {
        shown << message.prompt;
        return platform::MsgBoxResult::Ok;
    });
    ReportViewer::setPrintHandler(
        [](QWidget*, const PageDocument&) { throw RuntimeError(u"Stampante non pronta."_s); });
    click(u"Print"_s);
    EXPECT_EQ(shown, QStringList{u"Stampante non pronta."_s});
}

// The pages that pdfinfo reads in a file: "width x height" in points, rounded.
QStringList pdfPageSizes(const QString& path) {
    QProcess pdfinfo;
    pdfinfo.start(u"pdfinfo"_s, {u"-f"_s, u"1"_s, u"-l"_s, u"99"_s, path});
    if (!pdfinfo.waitForFinished() || pdfinfo.exitCode() != 0) return {u"unreadable"_s};
    QStringList sizes;
    for (const QString& line : QString::fromUtf8(pdfinfo.readAllStandardOutput()).split(u'\n')) {
        const QStringList words = line.simplified().split(u' ');
        if (words.size() >= 7 && words[0] == u"Page"_s && words[2] == u"size:"_s) {
            sizes << u"%1x%2"_s.arg(qRound(words[3].toDouble())).arg(qRound(words[5].toDouble()));
        }
    }
    return sizes;
}

struct RangeRow {
    const char* name;
    int first;
    int last;
    QStringList sizes;
};

class PrintRange : public ::testing::TestWithParam<RangeRow> {};

TEST_P(PrintRange, DrawsOneDevicePagePerReportPageAtItsSize) {
    QTemporaryDir folder;
    const QString path = folder.filePath(u"stampa.pdf"_s);
    {
        QPdfWriter writer(path);
        printDocument(fivePages(), writer, GetParam().first, GetParam().last);
    }
    EXPECT_EQ(pdfPageSizes(path), GetParam().sizes);
}

const QString portraitA4 = u"595x842"_s;
const QString landscapeA4 = u"842x595"_s;

INSTANTIATE_TEST_SUITE_P(
    Viewer, PrintRange,
    ::testing::Values(
        RangeRow{"AllPages", 1, 0, {portraitA4, portraitA4, portraitA4, portraitA4, landscapeA4}},
        RangeRow{"Middle", 2, 3, {portraitA4, portraitA4}},
        RangeRow{"LastBeyondTheEnd", 4, 99, {portraitA4, landscapeA4}},
        RangeRow{"LandscapeFirst", 5, 5, {landscapeA4}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PrintDocument, PrintsTheTextOfThePages) {
    QTemporaryDir folder;
    const QString path = folder.filePath(u"stampa.pdf"_s);
    {
        QPdfWriter writer(path);
        printDocument(fivePages(), writer, 4, 4);
    }
    QProcess pdftotext;
    pdftotext.start(u"pdftotext"_s, {path, u"-"_s});
    ASSERT_TRUE(pdftotext.waitForFinished());
    const QString text = QString::fromUtf8(pdftotext.readAllStandardOutput());
    EXPECT_TRUE(text.contains(u"Cassa contanti"_s)) << text.toStdString();
    EXPECT_FALSE(text.contains(u"Banca"_s)) << text.toStdString();
}

// The engine's trial balance over 120 accounts (a few pages).
std::shared_ptr<Report> openTrialBalance(const QTemporaryDir& work, const QTemporaryDir& layouts) {
    qputenv("LORVANE_TEMP1", work.path().toUtf8());
    db::testing::DatabaseFile file(testing::accountsScript(120).constData());
    EXPECT_TRUE(QFile::copy(file.path(), work.filePath(u"Prova.mdb"_s)));
    QFile layout(layouts.filePath(u"prova.lrl"_s));
    EXPECT_TRUE(layout.open(QIODevice::WriteOnly));
    layout.write(testing::trialBalanceLayout);
    layout.close();
    return Application().OpenReport(layout.fileName(), Application::OpenThroughCopy);
}

class ViewerWithReport : public ::testing::Test {
  protected:
    void SetUp() override {
        report = openTrialBalance(work, layouts);
        report->SetTitle(u"Bilancio"_s);
    }
    void TearDown() override {
        ReportViewer::setFileChooser({});
        platform::setMessageHandler({});
        qunsetenv("LORVANE_TEMP1");
    }

    QTemporaryDir work;
    QTemporaryDir layouts;
    ReportPtr report;
    ReportViewer viewer;
    QTemporaryDir exports;
};

TEST_F(ViewerWithReport, ViewReportShowsTheRenderedPagesFromPageOne) {
    viewer.setProperty("ReportSource", QVariant::fromValue(report));
    EXPECT_EQ(viewer.reportSource(), report);
    viewer.ViewReport();
    EXPECT_GT(viewer.pageCount(), 1);
    EXPECT_EQ(viewer.pageCount(), int(report->Pages().pages.size()));
    EXPECT_EQ(viewer.currentPage(), 1);
    EXPECT_TRUE(viewer.find(u"Totale generale"_s));
    EXPECT_EQ(viewer.currentPage(), viewer.pageCount());
}

struct ExportRow {
    const char* name;
    const char* button;
    int format;
    const char* suffix;
    QByteArray magic;
};

class ExportButtons : public ViewerWithReport, public ::testing::WithParamInterface<ExportRow> {};

TEST_P(ExportButtons, WriteTheChosenFileInTheirFormat) {
    const ExportRow& row = GetParam();
    const QString path = exports.filePath(u"bilancio."_s + QString::fromLatin1(row.suffix));
    SaveFileRequest asked;
    ReportViewer::setFileChooser([&](QWidget*, const SaveFileRequest& request) {
        asked = request;
        return path;
    });
    viewer.setReportSource(report);
    viewer.ViewReport();
    QTest::mouseClick(child<QAbstractButton>(viewer, QString::fromLatin1(row.button)),
                      Qt::LeftButton);
    EXPECT_EQ(asked.defaultSuffix, QString::fromLatin1(row.suffix));
    EXPECT_EQ(asked.suggestedName, u"Bilancio"_s);
    EXPECT_EQ(report->GetExportOptions().FormatType, row.format);
    EXPECT_EQ(report->GetExportOptions().DestinationType, ExportDestination::Disk);
    EXPECT_EQ(report->GetExportOptions().DiskFileName, path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.read(row.magic.size()), row.magic);
    EXPECT_EQ(viewer.statusText(), u"Esportato in "_s + path);
}

INSTANTIATE_TEST_SUITE_P(
    Viewer, ExportButtons,
    ::testing::Values(ExportRow{"Pdf", "ExportPdf", ExportFormat::Pdf, "pdf", "%PDF"},
                      ExportRow{"Word", "ExportWord", ExportFormat::Word, "doc", "{\\rtf"},
                      ExportRow{"Excel", "ExportExcel", ExportFormat::Excel, "xls",
                                QByteArray("\xD0\xCF\x11\xE0", 4)}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ViewerWithReport, CancelledExportWritesNothing) {
    ReportViewer::setFileChooser([](QWidget*, const SaveFileRequest&) { return QString(); });
    viewer.setReportSource(report);
    viewer.ViewReport();
    viewer.exportTo(ExportFormat::Pdf);
    EXPECT_EQ(report->GetExportOptions().DestinationType, 0);
    EXPECT_TRUE(QDir(exports.path()).isEmpty());
}

TEST_F(ViewerWithReport, ExportFailureIsShownWithTheEngineWords) {
    QStringList shown;
    platform::setMessageHandler([&](const platform::Message& message) {
        shown << message.prompt;
        return platform::MsgBoxResult::Ok;
    });
    ReportViewer::setFileChooser([&](QWidget*, const SaveFileRequest&) {
        return exports.filePath(u"manca/bilancio.pdf"_s);
    });
    viewer.setReportSource(report);
    viewer.ViewReport();
    viewer.exportTo(ExportFormat::Pdf);
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown[0].contains(u"bilancio.pdf"_s)) << shown[0].toStdString();
    EXPECT_TRUE(viewer.statusText().isEmpty());
}

}  // namespace
}  // namespace lorvane::engine

namespace lorvane::output {
namespace {

using namespace Qt::StringLiterals;
using engine::ReportViewer;

class FrmAnteprimaTest : public ::testing::Test {
  protected:
    void SetUp() override { entry::moduleValues().host = host; }
    void TearDown() override {
        FrmAnteprima::instance().Unload();
        flushDeletes();
        entry::moduleValues().host.reset();
        qunsetenv("LORVANE_TEMP1");
    }
    static void flushDeletes() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void tick(QTimer* timer) { QMetaObject::invokeMethod(timer, "timeout"); }

    std::shared_ptr<lorvane::testing::RecordingHost> host =
        std::make_shared<lorvane::testing::RecordingHost>();
};

TEST_F(FrmAnteprimaTest, Report1FillsTheWindowAtAnySize) {
    FrmAnteprima& window = FrmAnteprima::instance();
    ReportViewer* viewer = window.findChild<ReportViewer*>(u"Report1"_s);
    ASSERT_EQ(viewer, window.Report1());
    window.show();
    for (const QSize size : {QSize(1, 1), QSize(12, 5), QSize(900, 600), QSize(2, 300)}) {
        EXPECT_NO_THROW(window.resize(size));
        QApplication::processEvents();
        EXPECT_EQ(viewer->geometry(), QRect(QPoint(0, 0), window.size()));
    }
}

TEST_F(FrmAnteprimaTest, OneSharedWindowUntilItIsUnloaded) {
    FrmAnteprima* first = &FrmAnteprima::instance();
    EXPECT_EQ(&FrmAnteprima::instance(), first);
    QPointer<FrmAnteprima> unloaded(first);
    first->Unload();
    FrmAnteprima* second = &FrmAnteprima::instance();
    flushDeletes();
    EXPECT_TRUE(unloaded.isNull());
    EXPECT_EQ(&FrmAnteprima::instance(), second);
    EXPECT_TRUE(second->Timer1()->isActive());
}

TEST_F(FrmAnteprimaTest, ViewerCloseButtonUnloadsTheWindow) {
    QPointer<FrmAnteprima> window(&FrmAnteprima::instance());
    window->show();
    QTest::mouseClick(window->Report1()->findChild<QAbstractButton*>(u"Close"_s), Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
    flushDeletes();
    EXPECT_TRUE(window.isNull());
    EXPECT_NE(FrmAnteprima::instance().Report1(), nullptr);
}

TEST_F(FrmAnteprimaTest, Timer1UnloadsTheWindowOnlyWhenTheHostAsks) {
    QPointer<FrmAnteprima> window(&FrmAnteprima::instance());
    EXPECT_EQ(window->findChild<QTimer*>(u"Timer1"_s)->interval(), 3000);
    window->show();
    host->calls.clear();
    tick(window->Timer1());
    flushDeletes();
    ASSERT_FALSE(window.isNull());
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->Timer1()->isActive());
    EXPECT_EQ(host->calls, QStringList{u"ChiudiFinestre"_s});

    host->chiudiFinestre = true;
    tick(window->Timer1());
    EXPECT_FALSE(window->Timer1()->isActive());
    flushDeletes();
    EXPECT_TRUE(window.isNull());
}

TEST_F(FrmAnteprimaTest, AnteprimaReportSetsTheAuthorAndShowsPageOne) {
    QTemporaryDir work;
    QTemporaryDir layouts;
    const engine::ReportPtr report = engine::openTrialBalance(work, layouts);
    host->user = u"Rossi"_s;
    FrmAnteprima& window = FrmAnteprima::instance();
    window.AnteprimaReport(report);
    EXPECT_EQ(report->Author(), u"Rossi"_s);
    EXPECT_EQ(host->calls, QStringList{u"User"_s});
    EXPECT_EQ(window.Report1()->reportSource(), report);
    EXPECT_EQ(window.Report1()->document().author, u"Rossi"_s);
    EXPECT_GT(window.Report1()->pageCount(), 1);
    EXPECT_EQ(window.Report1()->currentPage(), 1);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.windowTitle(), u"Anteprima"_s);
}

// With nothing remembered the window shows a whole page on its screen, with
// the search box at full size (never cut to "Te…").
TEST_F(FrmAnteprimaTest, OpensShowingAWholePageAndEveryTool) {
    FrmAnteprima& window = FrmAnteprima::instance();
    window.Report1()->setDocument(engine::fivePages());
    window.Report1()->setDisplayGroupTree(false);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QApplication::processEvents();
    const QRect area = window.screen()->availableGeometry();
    EXPECT_LE(window.width(), area.width());
    EXPECT_LE(window.height(), area.height());
    EXPECT_GT(window.height(), area.height() * 3 / 4);
    auto* pages = window.findChild<QScrollArea*>(u"Pages"_s);
    EXPECT_LE(pages->widget()->height(), pages->viewport()->height());
    EXPECT_LE(pages->widget()->width(), pages->viewport()->width());
    auto* search = window.findChild<QLineEdit*>(u"SearchText"_s);
    EXPECT_TRUE(search->isVisible());
    EXPECT_GE(search->width(), search->fontMetrics().horizontalAdvance(search->placeholderText()));
}

// The size and zoom the user leaves the preview at come back the next time,
// through the host's settings; a preview never shown writes nothing.
TEST_F(FrmAnteprimaTest, RemembersTheSizeAndZoomTheUserChose) {
    FrmAnteprima::instance().Unload();
    EXPECT_TRUE(host->settings.isEmpty());

    FrmAnteprima* window = &FrmAnteprima::instance();
    window->Report1()->setDocument(engine::fivePages());
    window->show();
    window->resize(760, 560);
    auto* zoom = window->findChild<QComboBox*>(u"Zoom"_s);
    const int index = zoom->findText(u"75%"_s);
    zoom->setCurrentIndex(index);
    emit zoom->activated(index);
    QTest::keyClick(window->findChild<QScrollArea*>(u"Pages"_s), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(host->settings.value(u"Anteprima/Larghezza"_s), u"760"_s);
    EXPECT_EQ(host->settings.value(u"Anteprima/Altezza"_s), u"560"_s);
    EXPECT_EQ(host->settings.value(u"Anteprima/Zoom"_s), u"75"_s);

    flushDeletes();
    window = &FrmAnteprima::instance();
    window->show();
    EXPECT_EQ(window->size(), QSize(760, 560));
    EXPECT_EQ(window->Report1()->zoom(), 75);
}

TEST_F(FrmAnteprimaTest, ExportsStartInTheInstallationsExportFolders) {
    QTemporaryDir work;
    QTemporaryDir layouts;
    host->percorso = u"/srv/lorvane/"_s;
    FrmAnteprima& window = FrmAnteprima::instance();
    window.AnteprimaReport(engine::openTrialBalance(work, layouts));
    QStringList folders;
    ReportViewer::setFileChooser([&](QWidget*, const engine::SaveFileRequest& request) {
        folders << request.folder;
        return QString();
    });
    for (const char* button : {"ExportPdf", "ExportWord", "ExportExcel"})
        window.Report1()->findChild<QAbstractButton*>(QLatin1String(button))->click();
    ReportViewer::setFileChooser({});
    EXPECT_EQ(folders, (QStringList{u"/srv/lorvane/export/pdf/"_s, u"/srv/lorvane/export/Doc/"_s,
                                    u"/srv/lorvane/export/Xls/"_s}));
}

TEST_F(FrmAnteprimaTest, AnteprimaReportPassesTheEngineFailureOn) {
    QTemporaryDir work;
    QTemporaryDir layouts;
    const engine::ReportPtr report = engine::openTrialBalance(work, layouts);
    ASSERT_TRUE(QFile::remove(work.filePath(u"Prova.mdb"_s)));
    EXPECT_THROW(FrmAnteprima::instance().AnteprimaReport(report), RuntimeError);
}

}  // namespace
}  // namespace lorvane::output
