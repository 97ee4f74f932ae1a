// Venue selection on the reference screen: the search, the grid, the root's
// tick, and the venues a run copies into AnagraficaLocali_Tmp.
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>

#include "db/database_fixture.h"
#include "platform/component_registry.h"
#include "screens/controls.h"
#include "support/screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;

// The grid of the suite, answering what the test chose and noting what the
// module set, in order.
class AnsweringGrid final : public entry::SearchComponent {
  public:
    explicit AnsweringGrid(QString answer, QStringList* log)
        : answer_(std::move(answer)), log_(log) {}
    void SetUser(const QString& v) override { *log_ << u"User="_s + v; }
    void SetModulo(const QString& v) override { *log_ << u"Modulo="_s + v; }
    void SetCaption(const QString& v) override { *log_ << u"Caption="_s + v; }
    void SetRecordset(db::RecordsetPtr r) override {
        *log_ << u"Recordset=%1"_s.arg(r->RecordCount());
    }
    void SetRecordsetOperatori(db::RecordsetPtr) override { *log_ << u"RecordsetOperatori"_s; }
    void SetRecordsetViste(db::RecordsetPtr) override { *log_ << u"RecordsetViste"_s; }
    void SetCampoRicerca(const QString& v) override { *log_ << u"CampoRicerca="_s + v; }
    void SetPercorsoPers(const QString& v) override { *log_ << u"PercorsoPers="_s + v; }
    void SetPercorso(const QString& v) override { *log_ << u"Percorso="_s + v; }
    void Setselezionemultipla(bool v) override { *log_ << u"selezionemultipla=%1"_s.arg(v); }
    void SetStatusBar(int v) override { *log_ << u"StatusBar=%1"_s.arg(v); }
    void SetToolbar(int v) override { *log_ << u"Toolbar=%1"_s.arg(v); }
    void SetFilterBar(int v) override { *log_ << u"FilterBar=%1"_s.arg(v); }
    void SetWindowsState(int v) override { *log_ << u"WindowsState=%1"_s.arg(v); }
    void Ricerca() override { *log_ << u"Ricerca"_s; }
    QString Risposta() const override { return answer_; }

  private:
    QString answer_;
    QStringList* log_;
};

class VenueSelection : public testing::ScreenTest {
  protected:
    void SetUp() override {
        ScreenTest::SetUp();
        screen = open(u"StampaIntrodotto"_s);
        control<QDateEdit>(screen, "txtDallaData")->setDate(QDate(2025, 1, 1));
        control<QDateEdit>(screen, "txtAllaData")->setDate(QDate(2025, 3, 31));
        tree = control<screens::KeyedTree>(screen, "Tree");
        tutti = control<QCheckBox>(screen, "ChkTutti");
    }
    void TearDown() override {
        platform::ComponentRegistry::provide(QLatin1String(entry::SearchComponent::ProgId), {});
        ScreenTest::TearDown();
    }

    // The grid answers `answer` to the next CmdElenco.
    void gridAnswers(const QString& answer) {
        platform::ComponentRegistry::provide(
            QLatin1String(entry::SearchComponent::ProgId),
            [this, answer] { return std::make_shared<AnsweringGrid>(answer, &gridLog); });
    }
    void click(const char* button) { control<QPushButton>(screen, button)->click(); }
    QStringList tickedKeys() const {
        QStringList keys;
        for (QTreeWidgetItem* node : tree->allNodes())
            if (screens::KeyedTree::isTicked(node)) keys << screens::KeyedTree::keyOf(node);
        return keys;
    }
    QString mainQuery(const char* sql) const {
        return DatabaseFile::queryFile(folder() + u"/Lorvane.db"_s, sql);
    }

    screens::FilterScreen* screen = nullptr;
    screens::KeyedTree* tree = nullptr;
    QCheckBox* tutti = nullptr;
    QStringList gridLog;
};

TEST_F(VenueSelection, ASearchWithNothingTypedListsTheVenuesCollectedInThePeriod) {
    click("CmdRicerca");
    const QString expected = mainQuery(
        "SELECT COUNT(*) FROM AnagraficaLocali WHERE Sospeso = 0 AND CodLocale IN (SELECT "
        "CodLocale FROM NoteIncassi WHERE DataIncasso >= '2025-01-01' AND DataIncasso <= "
        "'2025-03-31 00:00:00')");
    EXPECT_EQ(tree->nodeCount() - 1, expected.toInt());
    EXPECT_GT(expected.toInt(), 0);
    EXPECT_EQ(tickedKeys().size(), tree->nodeCount()) << "every node ticked, the root too";
    EXPECT_FALSE(tutti->isChecked());
}

TEST_F(VenueSelection, ASearchThatFindsNothingLeavesTheRootAlone) {
    control<QLineEdit>(screen, "TxtNomeLocale")->setText(u"nessun locale si chiama così"_s);
    click("CmdRicerca");
    EXPECT_EQ(tickedKeys(), QStringList{u"A"_s});
    EXPECT_FALSE(tutti->isChecked());
}

TEST_F(VenueSelection, TheRootsTickGoesToEveryVenue) {
    click("CmdRicerca");
    QTreeWidgetItem* root = tree->node(u"A"_s);
    root->setCheckState(0, Qt::Unchecked);  // as the user clicks it
    EXPECT_TRUE(tickedKeys().isEmpty());
    tree->allNodes().at(2)->setCheckState(0, Qt::Checked);
    EXPECT_EQ(tickedKeys().size(), 1) << "a venue's tick stays its own";
    root->setCheckState(0, Qt::Checked);
    EXPECT_EQ(tickedKeys().size(), tree->nodeCount());
}

TEST_F(VenueSelection, TheGridsPicksAddUpAndStandOnce) {
    const QString first =
        mainQuery("SELECT CodLocale FROM AnagraficaLocali ORDER BY CodLocale LIMIT 1");
    const QString second =
        mainQuery("SELECT CodLocale FROM AnagraficaLocali ORDER BY CodLocale LIMIT 1 OFFSET 1");
    gridAnswers(first + u'|' + second + u'|');
    click("CmdElenco");
    EXPECT_EQ(
        gridLog,
        (QStringList{u"User=tester"_s, u"Modulo=AnagLocali"_s, u"Caption=Anagrafica Locali"_s,
                     u"Recordset="_s + mainQuery("SELECT COUNT(*) FROM AnagraficaLocali a "
                                                 "JOIN AnagraficaLocaliCaratteristiche c "
                                                 "ON a.CodLocale = c.CodLocale WHERE "
                                                 "a.Sospeso = 0"),
                     u"RecordsetOperatori"_s, u"RecordsetViste"_s, u"CampoRicerca=codlocale"_s,
                     u"PercorsoPers="_s + folder() + u"/pers\\"_s,
                     u"Percorso="_s + folder() + u"/"_s, u"selezionemultipla=1"_s, u"StatusBar=1"_s,
                     u"Toolbar=1"_s, u"FilterBar=1"_s, u"WindowsState=2"_s, u"Ricerca"_s}));
    gridAnswers(second + u'|');
    click("CmdElenco");
    EXPECT_EQ(tickedKeys(), (QStringList{u"A"_s, u"A"_s + first, u"A"_s + second}));
    EXPECT_FALSE(tutti->isChecked());

    gridAnswers(QString());   // cancelled
    tutti->setChecked(true);  // this screen keeps its tree
    click("CmdElenco");
    EXPECT_EQ(tree->nodeCount(), 3);
    EXPECT_TRUE(tutti->isChecked());
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
}

TEST_F(VenueSelection, AGridThatIsNotInstalledIsACriticalMessage) {
    qputenv("LORVANE_REGISTRY", work.filePath(u"nessuno.ini"_s).toUtf8());
    click("CmdElenco");
    qunsetenv("LORVANE_REGISTRY");
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].startsWith(u"|16|"_s) &&
                messages[0].contains(u"LorvaneRicerca.Ricerca"_s))
        << messages[0].toStdString();
    EXPECT_EQ(tree->nodeCount(), 1);
    EXPECT_TRUE(tutti->isChecked());
}

// A run copies into AnagraficaLocali_Tmp every venue with "Tutti i locali",
// however full the tree; otherwise each ticked venue twice, one statement each.
TEST_F(VenueSelection, ARunTakesAllVenuesOrTheTickedOnesTwice) {
    click("CmdRicerca");
    control<QListWidget>(screen, "List1")->setCurrentRow(0);
    tutti->setChecked(true);
    click("CmdPdf");
    const char* tmpCount = "SELECT COUNT(*), COUNT(DISTINCT CodLocale) FROM AnagraficaLocali_Tmp";
    const QString notSuspended =
        mainQuery("SELECT COUNT(*) FROM AnagraficaLocali WHERE Sospeso = 0");
    EXPECT_EQ(mainQuery(tmpCount), notSuspended + u'|' + notSuspended);

    tutti->setChecked(false);
    tree->node(u"A"_s)->setCheckState(0, Qt::Unchecked);
    const QList<QTreeWidgetItem*> nodes = tree->allNodes();
    nodes.at(1)->setCheckState(0, Qt::Checked);
    nodes.at(3)->setCheckState(0, Qt::Checked);
    takeCalls();
    click("CmdPdf");
    EXPECT_EQ(mainQuery(tmpCount), u"4|2"_s);
    const QStringList perVenue = takeCalls().filter(u"WHERE CodLocale='"_s);
    EXPECT_EQ(perVenue.size(), 2);
    EXPECT_TRUE(perVenue.value(0).endsWith(u"' AND Sospeso=0)"_s))
        << perVenue.value(0).toStdString();
}

}  // namespace
}  // namespace lorvane
