// Reading layout files.
#include "engine/layout.h"

#include <gtest/gtest.h>

#include "engine_fixture.h"
#include "platform/runtime_error.h"

namespace lorvane::engine {
namespace {

using namespace Qt::StringLiterals;

class LayoutTest : public testing::EngineFixture {};

TEST_F(LayoutTest, ReadsPageBandsGroupsAndItems) {
    prepare(1);
    const LayoutSpec layout = loadLayout(layoutPath());
    EXPECT_EQ(layout.title, u"Bilancio di prova"_s);
    EXPECT_EQ(layout.workFile, u"Prova.mdb"_s);
    EXPECT_EQ(layout.pageMm, QSizeF(210, 297));
    EXPECT_EQ(layout.marginLeftMm, 15);
    EXPECT_EQ(layout.marginBottomMm, 12);
    ASSERT_EQ(layout.groups.size(), 1u);
    EXPECT_EQ(layout.groups[0].field, u"Mastro"_s);
    ASSERT_EQ(layout.detail.items.size(), 4u);
    EXPECT_EQ(layout.detail.items[2].format, u"#.##0,00"_s);
    EXPECT_EQ(layout.detail.items[2].align, Align::Right);
    EXPECT_EQ(layout.reportFooter.items[1].scope, ItemSpec::Scope::Report);
    EXPECT_TRUE(layout.pageHeader.items[0].font.bold);
}

TEST_F(LayoutTest, LandscapeTurnsThePage) {
    prepare(1, R"json({"lorvaneLayout": 1, "data": {"workFile": "a.mdb", "query": "SELECT 1"},
                      "page": {"size": "A4", "orientation": "landscape"}})json");
    EXPECT_EQ(loadLayout(layoutPath()).pageMm, QSizeF(297, 210));
}

TEST_F(LayoutTest, FaultsAreNamedWithTheFile) {
    const std::pair<const char*, const char*> cases[] = {
        {"{ not json", "non è valido"},
        {R"({"data": {"workFile": "a.mdb", "query": "SELECT 1"}})", "lorvaneLayout"},
        {R"({"lorvaneLayout": 1})", "workFile"},
        {R"({"lorvaneLayout": 1, "data": {"workFile": "a.mdb", "query": "q"}, "page": {"size": "B7"}})",
         "B7"},
        {R"({"lorvaneLayout": 1, "data": {"workFile": "a.mdb", "query": "q"},
             "detail": {"height": 5, "items": [{"type": "ellipse"}]}})",
         "ellipse"},
        {R"({"lorvaneLayout": 1, "data": {"workFile": "a.mdb", "query": "q"},
             "detail": {"height": 5, "items": [{"type": "field"}]}})",
         "field"},
        {R"({"lorvaneLayout": 1, "data": {"workFile": "a.mdb", "query": "q"}, "detail": {"height": 400}})",
         "non entra"},
        {R"({"lorvaneLayout": 1, "data": {"workFile": "a.mdb", "query": "q"},
             "groups": [{"field": "g", "footer": {"height": 5, "items": [{"type": "text"},
               {"type": "expr", "expr": "100 * Sum(a) / Sum(b"}]}}]})",
         "sezione \"groups[1].footer\", elemento 2, espressione \"100 * Sum(a) / Sum(b\", "
         "carattere 21: manca \")\""},
        {R"({"lorvaneLayout": 1, "data": {"workFile": "a.mdb", "query": "q"},
             "detail": {"height": 5, "items": [{"type": "expr", "expr": "----------------------------------------1"}]}})",
         "sezione \"detail\", elemento 1, espressione"},
        {R"({"lorvaneLayout": 1, "data": {"workFile": "a.mdb", "query": "q"},
             "detail": {"height": 5, "items": [{"type": "expr"}]}})",
         "senza \"expr\""},
        {R"({"lorvaneLayout": 1, "data": {"workFile": "a.mdb", "query": "q"},
             "detail": {"height": 5, "items": [{"type": "sum", "field": "a", "scope": "page"}]}})",
         "ambito \"page\""},
    };
    for (const auto& [text, message] : cases) {
        prepare(1, QByteArray(text));
        try {
            loadLayout(layoutPath());
            ADD_FAILURE() << text;
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(layoutPath())) << error.what();
            EXPECT_TRUE(error.message().contains(QString::fromUtf8(message))) << error.what();
        }
    }
    EXPECT_THROW(loadLayout(layouts.filePath(u"manca.lrl"_s)), RuntimeError);
}

}  // namespace
}  // namespace lorvane::engine
