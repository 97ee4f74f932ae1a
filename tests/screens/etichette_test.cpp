// The label screens: their statements for all, some and none of the criteria,
// the tree their searches and grid build, the rows of a run, and the bar-code
// font put in place on opening.
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>

#include "db/database_fixture.h"
#include "platform/runtime_error.h"
#include "reports/documents/etichette_sql.h"
#include "reports/documents/installa_font.h"
#include "screens/controls.h"
#include "support/report_screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;
using reports::EtichetteCriteri;

// The board search as the screen writes it, piece by piece.
constexpr char schede[] =
    "SELECT MagProdottoFinito.*, MagSchede.id AS id_Scheda, MagSchede.NomeGioco, "
    "MagSchede.CodiceInterno, MagSchede.CodiceAAMS, MagSchede.Nullaosta, "
    "MagSchede.ProgrProduttore, MagSchede.CodiceABarre, MagSchede.SerialeScheda, "
    "MagSchede.Omologa, AnagraficaLocali.Insegna, AnagraficaLocali.Soprannome, "
    "AnagraficaLocali.CAP, AnagraficaLocali.Indirizzo, AnagraficaLocali.Citta, "
    "AnagraficaLocali.tel, AnagraficaLocali.cell, MagAnagArticoli.CatApparecchio, "
    "MagAnagArticoli.CatStatistica, MagAnagArticoli.CatMarca, MagSchede.CodConcessionario, "
    "MagSchede.Contratto, MagSchede.UltimoIncasso, MagSchede.Omologa, MagSchede.isiPagata  "
    "FROM (((MagProdottoFinito INNER JOIN MagProdottoDistinta ON MagProdottoFinito.id = "
    "MagProdottoDistinta.IdProdottoFinito) INNER JOIN MagSchede ON "
    "MagProdottoDistinta.linkScheda = MagSchede.id) LEFT JOIN AnagraficaLocali ON "
    "MagProdottoFinito.CodLocale = AnagraficaLocali.CodLocale) left JOIN MagAnagArticoli ON "
    "(MagProdottoFinito.CodArticolo = MagAnagArticoli.CodArticolo and "
    "MagAnagArticoli.tipoArticolo=4 ) WHERE ((MagSchede.Obsoleto)=0 or MagSchede.Obsoleto is "
    "null) AND ((MagSchede.Venduto)=0 or MagSchede.Venduto is null) AND "
    "((MagSchede.Dismesso)=0 or MagSchede.Dismesso is null)";
constexpr char mobili[] =
    "SELECT MagMobili.*, AnagraficaLocali.Insegna, AnagraficaLocali.Soprannome, "
    "AnagraficaLocali.CAP, AnagraficaLocali.Indirizzo, AnagraficaLocali.Citta, "
    "AnagraficaLocali.Provincia, AnagraficaLocali.NumCivico, AnagraficaLocali.tel, "
    "AnagraficaLocali.cell  FROM MagMobili LEFT JOIN AnagraficaLocali ON MagMobili.CodLocale = "
    "AnagraficaLocali.CodLocale WHERE 1=1";
constexpr char conCodice[] = " AND (CodiceABarre<>'' OR NOT CodiceABarre IS NULL)";
constexpr char msInUso[] =
    " WHERE ((ms.Obsoleto)=0 or ms.Obsoleto is null) AND ((ms.Venduto)=0 or ms.Venduto is "
    "null) AND ((ms.Dismesso)=0 or ms.Dismesso is null)";
constexpr char categorie[] =
    "SELECT ms.id AS idScheda,maa.CatApparecchio AS Categoria FROM MagSchede ms INNER JOIN "
    "MagAnagArticoli maa ON (maa.CodArticolo=ms.CodArticolo)";

EtichetteCriteri criteri(const char* codice, const char* interno, bool senzaCodice) {
    return {QString::fromUtf8(codice), QString::fromUtf8(interno), senzaCodice};
}

struct StatementRow {
    const char* name;
    QString sql;
    std::string expected;
};

class LabelStatements : public ::testing::TestWithParam<StatementRow> {};

TEST_P(LabelStatements, AreTheirPiecesInOrder) {
    EXPECT_EQ(GetParam().sql, QString::fromStdString(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    Etichette, LabelStatements,
    ::testing::Values(
        StatementRow{"BoardsNothingTyped", reports::sqlRicercaSchede(criteri("", "", false)),
                     schede + std::string(conCodice)},
        StatementRow{"BoardsWithoutCodeToo", reports::sqlRicercaSchede(criteri("", "", true)),
                     std::string(schede)},
        StatementRow{"BoardsAamsOnly", reports::sqlRicercaSchede(criteri("A'1", "", false)),
                     schede + std::string(conCodice) + " AND (MagSchede.CodiceAAMS='A''1')"},
        StatementRow{"BoardsBothTyped", reports::sqlRicercaSchede(criteri("AAMS1", "S'0''1", true)),
                     schede + std::string(" AND (MagSchede.CodiceAAMS='AAMS1') AND "
                                          "(MagSchede.CodiceInterno='S''0''''1')")},
        StatementRow{"BoardsGrid", reports::sqlElencoSchede(false),
                     schede + std::string(conCodice)},
        StatementRow{"AllBoards", reports::sqlTutteLeSchede(false),
                     "SELECT ms.* FROM MagSchede ms" + std::string(msInUso) + conCodice},
        StatementRow{"AllBoardsWithoutCodeToo", reports::sqlTutteLeSchede(true),
                     "SELECT ms.* FROM MagSchede ms" + std::string(msInUso)},
        StatementRow{"AllCategories", reports::sqlCategorieTutte(),
                     categorie + std::string(msInUso) + " AND maa.tipoArticolo=1"},
        StatementRow{"OneBoard", reports::sqlScheda(u"42"_s),
                     "SELECT * FROM MagSchede WHERE id=42 "},
        StatementRow{"OneCategory", reports::sqlCategoriaScheda(u"42"_s),
                     categorie + std::string(" WHERE maa.tipoArticolo=1 AND ms.id=42")},
        StatementRow{"CabinetsNothingTyped", reports::sqlRicercaMobili(criteri("", "", false)),
                     mobili + std::string(" AND (MagMobili.CodiceABarre<>'' OR NOT CodiceABarre "
                                          "IS NULL)")},
        StatementRow{"CabinetsBothTyped",
                     reports::sqlRicercaMobili(criteri("Slim d'oro", "M'1", true)),
                     mobili + std::string(" AND (MagMobili.NomeMobile LIKE '%Slim d''oro%') AND "
                                          "(MagMobili.CodiceInterno='M''1')")},
        StatementRow{"CabinetsInternalOnly", reports::sqlRicercaMobili(criteri("", "M1", true)),
                     mobili + std::string(" AND (MagMobili.CodiceInterno='M1')")},
        StatementRow{"AllCabinets", reports::sqlTuttiIMobili(false),
                     "SELECT MagMobili.* FROM MagMobili WHERE ((MagMobili.Obsoleto)=0 OR "
                     "MagMobili.Obsoleto IS NULL) AND ((MagMobili.Venduto)=0 OR "
                     "MagMobili.Venduto IS NULL) AND ((MagMobili.Dismesso)=0 OR "
                     "MagMobili.Dismesso IS NULL)" +
                         std::string(conCodice)},
        StatementRow{"OneCabinet", reports::sqlMobile(u"7"_s),
                     "SELECT * FROM MagMobili WHERE id=7 "}),
    [](const ::testing::TestParamInfo<StatementRow>& info) {
        return std::string(info.param.name);
    });

TEST(LabelNodes, PadAndCutEachColumn) {
    const struct {
        QString text;
        const char* expected;
    } rows[] = {
        {reports::testoNodoScheda(u"Book of Ra"_s, u"AAMS1"_s, u"S1"_s),
         "Book of Ra                - AAMS1        - S1        "},
        {reports::testoNodoScheda(u"Il gioco dell'oca e del drago"_s, u"1234567890123"_s,
                                  u"S0000000001"_s),
         "Il gioco dell'oca e del d - 123456789012 - S000000000"},
        {reports::testoNodoScheda({}, {}, {}),
         "                          -              -           "},
        {reports::testoNodoMobile(u"Slim 22"_s, u"M00001"_s),
         "Slim 22                   - M00001    "},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.text, QString::fromUtf8(row.expected));
}

// The real screens on the fixture's installation.
class LabelRun : public testing::ReportScreenTest {
  protected:
    void SetUp() override {
        ScreenTest::SetUp();
        qputenv("XDG_DATA_HOME", fonts.path().toUtf8());
    }
    void TearDown() override {
        qunsetenv("XDG_DATA_HOME");
        ScreenTest::TearDown();
    }

    screens::KeyedTree* tree() const { return control<screens::KeyedTree>(screen, "Tree"); }
    void type(const char* box, const QString& text) {
        control<QLineEdit>(screen, box)->setText(text);
    }
    void search() { control<QPushButton>(screen, "CmdRicerca")->click(); }

    QTemporaryDir fonts;
};

QString opened(const QString& sql) { return u"OpenRecordset("_s + sql + u")"_s; }

// Boards that the search finds: mounted, in use, with a bar code.
constexpr char mounted[] =
    "SELECT ms.id FROM MagSchede ms JOIN MagProdottoDistinta d ON d.linkScheda = ms.id WHERE "
    "(ms.Obsoleto = 0 OR ms.Obsoleto IS NULL) AND (ms.Venduto = 0 OR ms.Venduto IS NULL) AND "
    "(ms.Dismesso = 0 OR ms.Dismesso IS NULL) AND ms.CodiceABarre IS NOT NULL ORDER BY ms.id";

TEST_F(LabelRun, SearchesAddUpAndNeverDuplicateANode) {
    const QStringList ids = mainQuery(QString::fromLatin1(mounted)).split(u';');
    ASSERT_GE(ids.size(), 2);
    const auto aamsOf = [](const QString& id) {
        return mainQuery(u"SELECT CodiceAAMS FROM MagSchede WHERE id = "_s + id);
    };
    openScreen("StampaEtichette");
    EXPECT_EQ(tree()->nodeCount(), 1);
    auto* tutti = control<QCheckBox>(screen, "ChkTutti");
    tutti->setChecked(false);
    tutti->setChecked(true);  // empties the tree, root too
    EXPECT_EQ(tree()->nodeCount(), 0);

    const struct {
        QString aams;
        int nodes;  // root included, after the search
    } steps[] = {{aamsOf(ids[0]), 2}, {aamsOf(ids[0]), 2}, {aamsOf(ids[1]), 3}, {u"nessuno"_s, 3}};
    for (const auto& step : steps) {
        takeCalls();
        type("txtAAMS", step.aams);
        search();
        EXPECT_EQ(statements(),
                  QStringList{opened(reports::sqlRicercaSchede({step.aams, {}, false}))});
        EXPECT_EQ(tree()->nodeCount(), step.nodes) << step.aams.toStdString();
        EXPECT_FALSE(control<QCheckBox>(screen, "ChkTutti")->isChecked());
    }
    const QTreeWidgetItem* node = tree()->node(u"A"_s + ids[1]);
    ASSERT_NE(node, nullptr);
    EXPECT_TRUE(screens::KeyedTree::isTicked(node));
    EXPECT_TRUE(screens::KeyedTree::isTicked(tree()->node(u"A"_s)));
    EXPECT_EQ(node->text(0).size(), 25 + 3 + 12 + 3 + 10);
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
}

// Ticked boards go in one statement each, with their category; the root and
// unticked boards not at all.
TEST_F(LabelRun, TickedBoardsAreCopiedOneByOneWithTheirCategory) {
    const QStringList ids = mainQuery(QString::fromLatin1(mounted)).split(u';');
    ASSERT_GE(ids.size(), 3);
    openScreen("StampaEtichette");
    search();
    ASSERT_GT(tree()->nodeCount(), 3);
    for (QTreeWidgetItem* node : tree()->allNodes())
        tree()->setTicked(node, false);
    tree()->setTicked(tree()->node(u"A"_s + ids[2]), true);
    tree()->setTicked(tree()->node(u"A"_s + ids[0]), true);
    control<QCheckBox>(screen, "chkCodiceABarre")->setChecked(true);  // acts only in searches
    takeCalls();
    control<QPushButton>(screen, "CmdPdf")->click();

    QStringList expected;
    for (const QTreeWidgetItem* node : tree()->allNodes()) {
        const QString key = screens::KeyedTree::keyOf(node);
        if (key == ids[0] || key == u"A"_s + ids[0] || key == u"A"_s + ids[2]) {
            expected << opened(reports::sqlScheda(key.mid(1)))
                     << opened(reports::sqlCategoriaScheda(key.mid(1)));
        }
    }
    EXPECT_EQ(statements(), expected);
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    EXPECT_EQ(work("Etichette.mdb",
                   "SELECT group_concat(id) FROM (SELECT id FROM MagSchede ORDER "
                   "BY id)"),
              ids[0] + u',' + ids[2]);
    EXPECT_EQ(work("Etichette.mdb",
                   "SELECT group_concat(idScheda || '=' || Categoria) FROM "
                   "(SELECT * FROM SchedaCateg ORDER BY idScheda)"),
              mainQuery(u"SELECT group_concat(ms.id || '=' || a.CatApparecchio) FROM MagSchede ms "
                        u"JOIN MagAnagArticoli a ON a.CodArticolo = ms.CodArticolo AND "
                        u"a.tipoArticolo = 1 WHERE ms.id IN ("_s +
                        ids[0] + u',' + ids[2] + u") ORDER BY ms.id"_s));
}

struct AllRow {
    const char* name;
    const char* code;
    const char* workFile;
    const char* table;
    bool senzaCodice;
    const char* expected;  // the rows of the main database the work table gets
};

class LabelAll : public LabelRun, public ::testing::WithParamInterface<AllRow> {};

// With ChkTutti on, the text boxes and the tree are not read.
TEST_P(LabelAll, IgnoresTreeAndFields) {
    const AllRow& row = GetParam();
    openScreen(row.code);
    search();
    ASSERT_GT(tree()->nodeCount(), 1);
    control<QCheckBox>(screen, "ChkTutti")->setChecked(true);
    EXPECT_EQ(tree()->nodeCount(), 0);
    type("txtCodInt", u"nessuno"_s);
    control<QCheckBox>(screen, "chkCodiceABarre")->setChecked(row.senzaCodice);
    control<QPushButton>(screen, "CmdPdf")->click();
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    const QByteArray count = u"SELECT COUNT(*) FROM "_s.toUtf8() + row.table;
    EXPECT_EQ(work(row.workFile, count.constData()), mainQuery(QString::fromUtf8(row.expected)));
    EXPECT_EQ(openedFiles.size(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Etichette, LabelAll,
    ::testing::Values(
        AllRow{"BoardsWithCode", "StampaEtichette", "Etichette.mdb", "MagSchede", false,
               "SELECT COUNT(*) FROM MagSchede WHERE (Obsoleto = 0 OR Obsoleto IS NULL) AND "
               "(Venduto = 0 OR Venduto IS NULL) AND (Dismesso = 0 OR Dismesso IS NULL) AND "
               "CodiceABarre IS NOT NULL"},
        AllRow{"BoardsAll", "StampaEtichette", "Etichette.mdb", "MagSchede", true,
               "SELECT COUNT(*) FROM MagSchede WHERE (Obsoleto = 0 OR Obsoleto IS NULL) AND "
               "(Venduto = 0 OR Venduto IS NULL) AND (Dismesso = 0 OR Dismesso IS NULL)"},
        AllRow{"Categories", "StampaEtichette", "Etichette.mdb", "SchedaCateg", false,
               "SELECT COUNT(*) FROM MagSchede ms JOIN MagAnagArticoli a ON a.CodArticolo = "
               "ms.CodArticolo AND a.tipoArticolo = 1 WHERE (Obsoleto = 0 OR Obsoleto IS NULL) "
               "AND (Venduto = 0 OR Venduto IS NULL) AND (Dismesso = 0 OR Dismesso IS NULL)"},
        AllRow{"CabinetsWithCode", "StampaEtichetteMob", "EtichetteMobili.mdb", "MagMobili", false,
               "SELECT COUNT(*) FROM MagMobili WHERE (Obsoleto = 0 OR Obsoleto IS NULL) AND "
               "(Venduto = 0 OR Venduto IS NULL) AND (Dismesso = 0 OR Dismesso IS NULL) AND "
               "CodiceABarre IS NOT NULL"}),
    [](const ::testing::TestParamInfo<AllRow>& info) { return std::string(info.param.name); });

// A cabinet search matches part of the name, the internal code whole, and
// finds dismissed cabinets too, which a ticked run then prints.
TEST_F(LabelRun, CabinetSearchFindsDismissedOnesByPartOfTheName) {
    const QString dismissed = mainQuery(
        u"SELECT id || '|' || NomeMobile || '|' || CodiceInterno FROM MagMobili WHERE Dismesso "
        u"<> 0 AND CodiceABarre IS NOT NULL ORDER BY id LIMIT 1"_s);
    const QStringList parts = dismissed.split(u'|');
    ASSERT_EQ(parts.size(), 3);
    openScreen("StampaEtichetteMob");
    type("txtNomeMobile", parts[1].mid(1, 4));
    type("txtCodInt", parts[2].left(parts[2].size() - 1));  // not whole: nothing found
    search();
    EXPECT_EQ(tree()->nodeCount(), 1);
    type("txtCodInt", parts[2]);
    search();
    EXPECT_EQ(tree()->nodeCount(), 2);
    ASSERT_NE(tree()->node(u"A"_s + parts[0]), nullptr);
    control<QPushButton>(screen, "CmdPdf")->click();
    EXPECT_EQ(work("EtichetteMobili.mdb", "SELECT group_concat(id) FROM MagMobili"), parts[0]);
}

struct FontRow {
    const char* name;
    bool source;        // the installation has the font
    bool target;        // the font folder has one already (other bytes)
    const char* after;  // what the font folder holds then: "", "source", "target"
};

class LabelFont : public LabelRun, public ::testing::WithParamInterface<FontRow> {};

TEST_P(LabelFont, IsCopiedOnlyFromASourceToNoTarget) {
    const FontRow& row = GetParam();
    QTemporaryDir installation;
    host->percorso = installation.path() + u'/';
    const QString source = installation.filePath(u"Bin/"_s + QLatin1String(reports::FontEtichette));
    const QString target = fonts.filePath(u"fonts/"_s + QLatin1String(reports::FontEtichette));
    const auto write = [](const QString& path, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    if (row.source) write(source, "font of the installation");
    if (row.target) write(target, "font already there");
    for (const char* code : {"StampaEtichette", "StampaEtichetteMob"})
        open(QLatin1String(code));
    EXPECT_TRUE(messages.isEmpty()) << messages.join(u'\n').toStdString();
    QFile file(target);
    const QByteArray held = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QByteArray expected = qstrcmp(row.after, "source") == 0   ? "font of the installation"
                                : qstrcmp(row.after, "target") == 0 ? "font already there"
                                                                    : "";
    EXPECT_EQ(held, expected);
    EXPECT_EQ(QDir(fonts.filePath(u"fonts"_s)).entryList(QDir::Files).size(),
              expected.isEmpty() ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Etichette, LabelFont,
                         ::testing::Values(FontRow{"SourceMissing", false, false, ""},
                                           FontRow{"TargetPresent", true, true, "target"},
                                           FontRow{"CopyMade", true, false, "source"},
                                           FontRow{"OnlyTarget", false, true, "target"}),
                         [](const ::testing::TestParamInfo<FontRow>& info) {
                             return std::string(info.param.name);
                         });

// A font folder that cannot be made stops the opening with a message in Italian.
TEST_F(LabelRun, AnUnwritableFontFolderStopsTheOpening) {
    QTemporaryDir installation;
    host->percorso = installation.path() + u'/';
    QDir().mkpath(installation.filePath(u"Bin"_s));
    QFile source(installation.filePath(u"Bin/"_s + QLatin1String(reports::FontEtichette)));
    ASSERT_TRUE(source.open(QIODevice::WriteOnly));
    source.write("font");
    source.close();
    QFile blocker(fonts.filePath(u"fonts"_s));  // a file where the folder should be
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    try {
        open(u"StampaEtichette"_s);
        FAIL() << "the screen opened";
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.message().startsWith(u"Impossibile copiare il font"_s))
            << error.message().toStdString();
    }
    EXPECT_TRUE(QFileInfo(fonts.filePath(u"fonts"_s)).isFile());
}

}  // namespace
}  // namespace lorvane
