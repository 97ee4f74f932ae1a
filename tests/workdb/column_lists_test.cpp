// The column lists: each holds the count of names its constant says, once each.
#include "workdb/column_lists.h"

#include <gtest/gtest.h>

#include <QSet>
#include <QStringList>

namespace lorvane::workdb::columns {
namespace {

TEST(ColumnLists, HoldTheirCountOfDistinctNames) {
    const std::pair<const char*, int> lists[] = {
        {NoteTeste47, 47},
        {NoteTeste48, 48},
        {NoteTeste56, 56},
        {NoteTeste57, 57},
        {NoteRighe10, 10},
        {NoteRighe11, 11},
        {NoteIncassi61, 61},
        {NoteIncassi62, 62},
        {NoteIncassi76, 76},
        {NoteIncassi81, 81},
        {NoteIncassi81Saldi, 81},
        {NoteIncassi82, 82},
        {AnagraficaLocali57, 57},
        {AnagraficaLocali56, 56},
        {AnagraficaLocali61, 61},
        {AnagraficaLocaliCaratteristiche7, 7},
        {AnagraficaAziende34, 34},
        {AnagraficaAziende35, 35},
        {AnagraficaOperatori33, 33},
        {AnagraficaOperatori22, 22},
        {AnagraficaConcessionari25, 25},
        {AnagraficaPianoConti9, 9},
        {Saldi10, 10},
        {MagSchede55, 55},
        {MagSchede59, 59},
        {MagSchede63, 63},
        {MagSchede66, 66},
        {MagSchede55Cambiamonete, 55},
        {MagMobili51, 51},
        {DocTeste70, 70},
        {DocRighe62, 62},
        {QuietanzaTesta32, 32},
        {QuietanzaRighe45, 45},
    };
    for (const auto& [text, count] : lists) {
        const QStringList names = QString::fromLatin1(text).split(u',');
        QSet<QString> distinct;
        for (const QString& name : names) {
            EXPECT_FALSE(name.isEmpty() || name.contains(u' ')) << text;
            distinct.insert(name.toLower());
        }
        EXPECT_EQ(names.size(), count) << text;
        EXPECT_EQ(distinct.size(), count) << text;
    }
}

TEST(ColumnLists, VariantsPlaceTheirNamesWhereTheReportsExpectThem) {
    const auto names = [](const char* text) { return QString::fromLatin1(text).split(u','); };
    EXPECT_EQ(names(NoteTeste48).last(), QLatin1String("NumeroTerminale"));
    EXPECT_EQ(names(NoteTeste57).indexOf(QLatin1String("idFattura")),
              names(NoteTeste57).indexOf(QLatin1String("Fatturato")) + 1);
    EXPECT_EQ(names(NoteIncassi76).last(), QLatin1String("Contratto"));
    EXPECT_EQ(
        names(NoteIncassi81Saldi).mid(74),
        names("Contratto,CodiceAzienda,Progressivo,TotaleTasse,HopperOLD1,HopperOLD2,HopperOLD3"));
    EXPECT_EQ(names(AnagraficaLocali56), names(AnagraficaLocali57).mid(1));
    EXPECT_FALSE(names(MagSchede55Cambiamonete).contains(QLatin1String("Obsoleto")));
    EXPECT_TRUE(names(MagSchede55Cambiamonete).contains(QLatin1String("Contratto")));
}

}  // namespace
}  // namespace lorvane::workdb::columns
