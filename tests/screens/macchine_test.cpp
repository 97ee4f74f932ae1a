// The machine reports: their statements for all, some and none of the
// optional criteria, what the work file holds after a run on the real
// screens, and bad input.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QListWidget>

#include "db/database_fixture.h"
#include "reports/collection/macchine_sql.h"
#include "screens/controls.h"
#include "support/screen_fixture.h"

namespace lorvane {
namespace {

using namespace Qt::StringLiterals;
using db::testing::DatabaseFile;
using reports::MacchineCriteri;

MacchineCriteri criteri(const QString& azienda = {}, bool tutti = true, bool visMag = false) {
    MacchineCriteri c;
    c.dallaData = QDate(2025, 1, 31);
    c.allaData = QDate(2025, 3, 1);
    c.data = QDate(2025, 2, 14);
    c.azienda = azienda;
    c.tutti = tutti;
    c.visMag = visMag;
    return c;
}

struct StatementRow {
    const char* name;
    QString (*build)(const MacchineCriteri&);
    MacchineCriteri criteri;
    std::string sql;
};

class MachineStatements : public ::testing::TestWithParam<StatementRow> {};

TEST_P(MachineStatements, AreTheirPiecesInOrder) {
    EXPECT_EQ(GetParam().build(GetParam().criteri), QString::fromStdString(GetParam().sql));
}

constexpr char globali[] =
    "SELECT * FROM MagSchede WHERE Obsoleto=0 AND Venduto=0 AND Dismesso=0 AND "
    "TipologiaIncasso=6 AND UltimoIncasso >= #01/31/2025# AND UltimoIncasso <= #03/01/2025#";
constexpr char letture[] =
    " SELECT *  FROM NoteIncassi INNER JOIN NoteTeste ON NoteIncassi.IdTesta = NoteTeste.id "
    "WHERE  NoteIncassi.DataIncasso >= #01/31/2025# AND  NoteIncassi.DataIncasso <= "
    "#03/01/2025#";
constexpr char schede[] =
    " SELECT *  FROM MagSchede  WHERE  Obsoleto=0  AND  Venduto=0  AND  Dismesso=0  AND  "
    "TipologiaIncasso=6 ";
constexpr char ultimiHopper[] =
    "SELECT ni.* FROM NoteIncassi ni, NoteTeste nt, ( SELECT MAX(DataIncasso) AS maxData, "
    "LinkScheda FROM NoteIncassi INNER JOIN NoteTeste ON NoteTeste.id=NoteIncassi.IdTesta WHERE "
    "NoteTeste.CodCausale = 'CH' GROUP BY LinkScheda ) tmp WHERE nt.id = ni.IdTesta AND "
    "tmp.LinkScheda=ni.LinkScheda AND tmp.maxData=ni.DataIncasso AND ni.LinkScheda IN ( SELECT "
    "id FROM MagSchede WHERE CodLocale IN ( SELECT CodLocale FROM AnagraficaLocali_Tmp";
constexpr char ultimiCambiamonete[] =
    "SELECT ni.* FROM ( ( (NoteIncassi ni INNER JOIN NoteTeste nt ON ni.IdTesta=nt.id) INNER "
    "JOIN ( SELECT MAX(DataIncasso) AS maxData, LinkScheda FROM NoteIncassi, NoteTeste WHERE "
    "NoteTeste.id=NoteIncassi.IdTesta AND NoteTeste.CodCausale = 'CAM' GROUP BY LinkScheda ) "
    "tmp ON tmp.LinkScheda=ni.LinkScheda ) INNER JOIN MagSchede ms ON ms.id=ni.LinkScheda ) "
    "INNER JOIN AnagraficaLocali_Tmp al ON al.CodLocale=ms.CodLocale WHERE "
    "tmp.maxData=ni.DataIncasso AND ni.DataIncasso<=#02/14/2025#";

std::string join(const char* a, const char* b) { return std::string(a) + b; }

INSTANTIATE_TEST_SUITE_P(
    Macchine, MachineStatements,
    ::testing::Values(
        StatementRow{"GlobaliNone", reports::sqlSchedeGlobali, criteri(),
                     join(globali, " AND CodLocale IS NOT NULL")},
        StatementRow{"GlobaliWarehouseAndCompany", reports::sqlSchedeGlobali,
                     criteri(u"AZ1"_s, false, true), join(globali, " AND CodiceAzienda='AZ1'")},
        StatementRow{"LettureAll", reports::sqlLettureParziali, criteri(u"AZ1"_s),
                     join(letture, " and NoteTeste.codCausale='INC6' ")},
        StatementRow{"LettureTicked", reports::sqlLettureParziali, criteri({}, false),
                     join(letture,
                          " AND  NoteIncassi.CodLocale IN (SELECT CodLocale FROM "
                          "AnagraficaLocali_Tmp)  and NoteTeste.codCausale='INC6' ")},
        StatementRow{"SchedeAll", reports::sqlSchedeParziali, criteri(),
                     join(schede,
                          " AND  id IN  (  SELECT LinkScheda  FROM NoteIncassi  "
                          "WHERE  DataIncasso >= #01/31/2025# AND  DataIncasso <= "
                          "#03/01/2025# ) ")},
        StatementRow{"SchedeCompanyTicked", reports::sqlSchedeParziali, criteri(u"AZ1"_s, false),
                     join(schede,
                          " AND  CodiceAzienda='AZ1'  AND  id IN  (  SELECT "
                          "LinkScheda  FROM NoteIncassi  WHERE  DataIncasso >= "
                          "#01/31/2025# AND  DataIncasso <= #03/01/2025# AND  "
                          "CodLocale IN (SELECT CodLocale FROM AnagraficaLocali_Tmp)  ) ")},
        StatementRow{"SchedeHopper", reports::sqlSchedeHopper, criteri(),
                     "SELECT * FROM MagSchede WHERE CodLocale IN ( SELECT CodLocale FROM "
                     "AnagraficaLocali_Tmp )"},
        StatementRow{"SchedeHopperCompany", reports::sqlSchedeHopper, criteri(u"AZ1"_s),
                     "SELECT * FROM MagSchede WHERE CodLocale IN ( SELECT CodLocale FROM "
                     "AnagraficaLocali_Tmp WHERE CodiceAzienda = 'AZ1' )"},
        StatementRow{"UltimiHopper", reports::sqlUltimiHopper, criteri(),
                     join(ultimiHopper, " ) ) AND nt.CodCausale = 'CH'")},
        StatementRow{"UltimiHopperCompany", reports::sqlUltimiHopper, criteri(u"AZ1"_s),
                     join(ultimiHopper,
                          " WHERE CodiceAzienda = 'AZ1' ) ) AND nt.CodCausale = "
                          "'CH'")},
        StatementRow{"SchedeCambiamonete", reports::sqlSchedeCambiamonete, criteri(),
                     "SELECT ms.* FROM MagSchede ms INNER JOIN AnagraficaLocali_Tmp al ON "
                     "al.CodLocale=ms.CodLocale"},
        StatementRow{"SchedeCambiamoneteCompany", reports::sqlSchedeCambiamonete, criteri(u"AZ1"_s),
                     "SELECT ms.* FROM MagSchede ms INNER JOIN AnagraficaLocali_Tmp al ON "
                     "al.CodLocale=ms.CodLocale WHERE al.CodiceAzienda='AZ1'"},
        StatementRow{"UltimiCambiamonete", reports::sqlUltimiCambiamonete, criteri(),
                     join(ultimiCambiamonete, " AND nt.CodCausale = 'CAM'")},
        StatementRow{
            "UltimiCambiamoneteCompany", reports::sqlUltimiCambiamonete, criteri(u"AZ1"_s),
            join(ultimiCambiamonete, " AND al.CodiceAzienda = 'AZ1' AND nt.CodCausale = 'CAM'")}),
    [](const ::testing::TestParamInfo<StatementRow>& info) {
        return std::string(info.param.name);
    });

TEST(MachineTexts, TheVenueFilterAndTheHeadings) {
    const QString codes = reports::elencoCodici({u"L0001"_s, u"L'02"_s});
    EXPECT_EQ(codes, u"'L0001','L''02'"_s);
    EXPECT_EQ(reports::elencoCodici({}), QString());
    EXPECT_EQ(reports::sqlEliminaAltriLocali(codes),
              u"DELETE * FROM MagSchede WHERE (CodLocale NOT IN ('L0001','L''02')) AND CodLocale "
              u"IS NOT NULL"_s);

    const struct {
        MacchineCriteri criteri;
        const char* heading;
    } headings[] = {
        {criteri(), "Parametri di ricerca:  incassi dal 31/01/2025 al 01/03/2025"},
        {criteri(u"AZ1"_s, false),
         "Parametri di ricerca:  incassi dal 31/01/2025 al 01/03/2025 per l'azienda AZ1 con "
         "filtro sui locali"},
    };
    for (const auto& row : headings)
        EXPECT_EQ(reports::parametriPercentuali(row.criteri), QString::fromUtf8(row.heading));

    screens::FrameCriteria frame;
    EXPECT_EQ(reports::parametriFiltroLocali(frame), u"Parametri di ricerca: "_s);
    frame.concessionario = u"SNAI"_s;  // acts on the venues, but is not looked at
    EXPECT_EQ(reports::parametriFiltroLocali(frame), u"Parametri di ricerca: "_s);
    frame.zona = u"Z1"_s;
    EXPECT_EQ(reports::parametriFiltroLocali(frame), u"Parametri di ricerca:  filtro su locali"_s);
}

struct SearchRow {
    const char* name;
    const screens::SearchForms& (*forms)();
    bool sospesi;
    const char* nome;
    const char* concessionario;
    std::string sql;
};

class MachineSearch : public ::testing::TestWithParam<SearchRow> {};

TEST_P(MachineSearch, WritesTheScreensOwnForms) {
    screens::FrameCriteria c;
    c.dallaData = QDate(2025, 1, 31);
    c.allaData = QDate(2025, 3, 1);
    c.sospesi = GetParam().sospesi;
    c.nomeLocale = QString::fromUtf8(GetParam().nome);
    c.concessionario = QString::fromUtf8(GetParam().concessionario);
    EXPECT_EQ(screens::sqlRicercaLocali(c, GetParam().forms()),
              QString::fromStdString(GetParam().sql));
}

constexpr char collected[] =
    "al.CodLocale IN ( SELECT NoteIncassi.CodLocale FROM NoteIncassi INNER JOIN NoteTeste ON "
    "NoteIncassi.IdTesta = NoteTeste.id WHERE NoteIncassi.DataIncasso >= #01/31/2025# AND  "
    "NoteIncassi.DataIncasso <= #03/01/2025# and NoteTeste.codCausale='INC6')";

INSTANTIATE_TEST_SUITE_P(
    Macchine, MachineSearch,
    ::testing::Values(
        SearchRow{"PercentualiNothingTyped", reports::percentualiSearchForms, false, "", "",
                  std::string("select * from anagraficalocali al  WHERE al.sospeso = 0  AND ") +
                      collected},
        SearchRow{"PercentualiConcessionaireFirst", reports::percentualiSearchForms, true, "",
                  "SNAI",
                  std::string("select * from anagraficalocali al  WHERE codLocale al.IN (SELECT "
                              "codlocale FROM magschede WHERE CodConcessionario = 'SNAI')  AND ") +
                      collected},
        SearchRow{"PercentualiNameFirst", reports::percentualiSearchForms, true, "Bar", "SNAI",
                  std::string("select * from anagraficalocali al  WHERE  al.Insegna like '%Bar%' "
                              "AND al.codlocale IN (SELECT codLocale FROM MagSchede WHERE "
                              "CodConcessionario = 'SNAI')  AND ") +
                      collected},
        SearchRow{"HopperWithoutPeriod", reports::hopperSearchForms, true, "", "SNAI",
                  "SELECT * FROM AnagraficaLocali al  WHERE al.codLocale IN (SELECT codLocale "
                  "FROM MagSchede WHERE CodConcessionario = 'SNAI') "},
        SearchRow{"HopperNothingTyped", reports::hopperSearchForms, true, "", "",
                  "SELECT * FROM AnagraficaLocali al "},
        SearchRow{"CambiamoneteHoldingABoard", reports::cambiamoneteSearchForms, false, "Bar", "",
                  "SELECT * FROM AnagraficaLocali al  WHERE al.sospeso = 0  AND al.Insegna like "
                  "'%Bar%' AND al.CodLocale IN ( SELECT DISTINCT CodLocale FROM MagSchede)"}),
    [](const ::testing::TestParamInfo<SearchRow>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lorvane
