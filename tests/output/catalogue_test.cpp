// The report catalogue on a screen's two lists and tabs: which rows fill the
// lists, which list the tab picks, and the files of the chosen layout.
#include "output/catalogue.h"

#include <gtest/gtest.h>

#include <QListWidget>
#include <QTabWidget>
#include <memory>
#include <ostream>

#include "db/database_fixture.h"
#include "entry/module_values.h"
#include "platform/message_box.h"
#include "platform/runtime_error.h"
#include "support/recording_host.h"

namespace lorvane::output {
namespace {

using namespace Qt::StringLiterals;

// The standard catalogue: StampaIntrodotto has two layouts stored against their
// Ordine, StampaRegistro2 shares a prefix with StampaRegistro.
constexpr char MenuScript[] = R"(
CREATE TABLE stampe (id INTEGER, codiceStampa TEXT, Descrizione TEXT, NomeReport TEXT,
                     nomeTemporaneo TEXT, Ordine INTEGER);
INSERT INTO stampe VALUES (1, 'StampaIntrodotto', 'Introdotto dettagliato',
                           'report\IntrodottoDett.rpt', 'modelli\IntrodottoDett.mdb', 2);
INSERT INTO stampe VALUES (2, 'StampaIntrodotto', 'Introdotto sintetico',
                           'report\Introdotto.rpt', 'modelli\Introdotto.mdb', 1);
INSERT INTO stampe VALUES (3, 'StampaCassa', 'Cassa', 'report\Cassa.rpt', 'modelli\Cassa.mdb', 1);
INSERT INTO stampe VALUES (4, 'StampaRegistro2', 'Registro con comodato',
                           'report\Registro2.rpt', 'modelli\Registro2.mdb', 1);
INSERT INTO stampe VALUES (5, 'StampaRegistro', 'Registro corrispettivi',
                           'report\Registro.rpt', 'modelli\Registro.mdb', 1);
)";

// The customer's catalogue: its id 2 is another row than the standard id 2.
constexpr char PersScript[] = R"(
CREATE TABLE stampe (id INTEGER, codiceStampa TEXT, Descrizione TEXT, NomeReport TEXT,
                     nomeTemporaneo TEXT, Ordine INTEGER);
INSERT INTO stampe VALUES (7, 'StampaIntrodotto', 'Introdotto per zona',
                           'pers\IntrodottoZona.rpt', 'pers\IntrodottoZona.mdb', 2);
INSERT INTO stampe VALUES (2, 'StampaIntrodotto', 'Introdotto del cliente',
                           'pers\IntrodottoCliente.rpt', 'pers\IntrodottoCliente.mdb', 1);
INSERT INTO stampe VALUES (8, 'StampaCassa', 'Cassa del cliente',
                           'pers\Cassa.rpt', 'pers\Cassa.mdb', 1);
)";

constexpr char CatalogueSql[] = "SELECT * FROM stampe ORDER BY Ordine";

// The catalogue controls of one filter screen.
struct Schermo {
    Schermo() {
        Pers.addTab(List1, u"Stampe Base"_s);
        Pers.addTab(List2, u"Personalizzate"_s);
    }
    QTabWidget Pers;
    QListWidget* List1 = new QListWidget;
    QListWidget* List2 = new QListWidget;
};

// "text=id" for every entry of a list, joined by ";".
QString voci(const QListWidget& list) {
    QStringList result;
    for (int i = 0; i < list.count(); ++i) {
        result << list.item(i)->text() + u'=' + list.item(i)->data(Qt::UserRole).toString();
    }
    return result.join(u';');
}

// The row of the selected entry, -1 when none is.
int selezionata(const QListWidget& list) {
    const auto selected = list.selectedItems();
    return selected.isEmpty() ? -1 : list.row(selected.first());
}

class CatalogueTest : public ::testing::Test {
  protected:
    void SetUp() override {
        entry::moduleValues().host = host;
        entry::moduleValues().codiceStampa = u"StampaIntrodotto"_s;
        StampeMenu().reset();
        StampePers().reset();
        platform::setMessageHandler([this](const platform::Message& message) {
            messages.push_back(message);
            return platform::MsgBoxResult::Ok;
        });
    }
    void TearDown() override {
        platform::setMessageHandler({});
        StampeMenu().reset();
        StampePers().reset();
        entry::moduleValues().host.reset();
        entry::moduleValues().codiceStampa.clear();
    }

    // A new screen loaded for `codice`.
    std::unique_ptr<Schermo> carica(const QString& codice, bool personalizzazione = true) {
        entry::moduleValues().codiceStampa = codice;
        recorder().personalizzazione = personalizzazione;
        auto schermo = std::make_unique<Schermo>();
        CaricaElencoStampe(schermo->List1, schermo->List2);
        return schermo;
    }

    testing::RecordingHost& recorder() { return *host; }
    QString percorso(const QString& below) const { return u"/installazione/"_s + below; }

    db::testing::DatabaseFile menu{MenuScript};
    db::testing::DatabaseFile pers{PersScript};
    std::shared_ptr<testing::RecordingHost> host = std::make_shared<testing::RecordingHost>(
        QString(), menu.connectionText(), pers.connectionText());
    std::vector<platform::Message> messages;
};

struct LoadRow {
    const char* name;
    const char* codice;
    bool personalizzazione;
    const char* list1;
    const char* list2;
};

void PrintTo(const LoadRow& row, std::ostream* out) { *out << row.name; }

class CaricaElencoStampeTest : public CatalogueTest,
                               public ::testing::WithParamInterface<LoadRow> {};

TEST_P(CaricaElencoStampeTest, FillsTheListsWithTheCodesRowsInOrdineOrder) {
    const LoadRow& row = GetParam();
    const auto schermo = carica(QString::fromUtf8(row.codice), row.personalizzazione);
    EXPECT_EQ(voci(*schermo->List1), QString::fromUtf8(row.list1));
    EXPECT_EQ(voci(*schermo->List2), QString::fromUtf8(row.list2));
    EXPECT_EQ(selezionata(*schermo->List1), -1);
    EXPECT_EQ(selezionata(*schermo->List2), -1);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, CaricaElencoStampeTest,
    ::testing::Values(
        LoadRow{"TwoLayoutsStoredAgainstOrdine", "StampaIntrodotto", true,
                "Introdotto sintetico=2;Introdotto dettagliato=1",
                "Introdotto del cliente=2;Introdotto per zona=7"},
        LoadRow{"NoPersonalisationLeavesList2Empty", "StampaIntrodotto", false,
                "Introdotto sintetico=2;Introdotto dettagliato=1", ""},
        LoadRow{"OneLayoutEach", "StampaCassa", true, "Cassa=3", "Cassa del cliente=8"},
        LoadRow{"CodeThatIsAPrefixOfAnother", "StampaRegistro", true, "Registro corrispettivi=5",
                ""},
        LoadRow{"LongerCodeOnlyItsOwnRow", "StampaRegistro2", true, "Registro con comodato=4", ""},
        LoadRow{"CodeWithNoRows", "StampaBilancio", true, "", ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CatalogueTest, LoadAsksTheHostInOrder) {
    carica(u"StampaIntrodotto"_s, true);
    const QString sql = QString::fromLatin1(CatalogueSql);
    EXPECT_EQ(recorder().calls,
              QStringList({u"OpenRecordSetMenu("_s + sql + u')', u"Personalizzazione"_s,
                           u"OpenRecordSetPersonalizzazioni("_s + sql + u')'}));
    EXPECT_EQ(StampeMenu()->Filter(), u"codiceStampa='StampaIntrodotto'"_s);
    EXPECT_EQ(StampePers()->Filter(), u"codiceStampa='StampaIntrodotto'"_s);
}

TEST_F(CatalogueTest, WithoutPersonalisationThePersonalisedCatalogueIsLeftAlone) {
    carica(u"StampaCassa"_s, true);
    const db::RecordsetPtr earlier = StampePers();
    const db::RecordsetPtr earlierMenu = StampeMenu();
    recorder().calls.clear();

    const auto schermo = carica(u"StampaIntrodotto"_s, false);
    EXPECT_EQ(recorder().calls,
              QStringList({u"OpenRecordSetMenu("_s + QString::fromLatin1(CatalogueSql) + u')',
                           u"Personalizzazione"_s}));
    EXPECT_EQ(StampePers(), earlier);
    EXPECT_EQ(StampePers()->Filter(), u"codiceStampa='StampaCassa'"_s);
    EXPECT_NE(StampeMenu(), earlierMenu);
    EXPECT_EQ(schermo->List2->count(), 0);
}

// One layout and no click: each routine, called first, works on that layout.
struct RoutineRow {
    const char* name;
    QString (*routine)(QListWidget*, QListWidget*, QTabWidget*);
    const char* expected;
};

void PrintTo(const RoutineRow& row, std::ostream* out) { *out << row.name; }

class OneLayoutTest : public CatalogueTest, public ::testing::WithParamInterface<RoutineRow> {};

TEST_P(OneLayoutTest, WorksOnTheOnlyEntryWithoutAClick) {
    const auto schermo = carica(u"StampaCassa"_s);
    EXPECT_EQ(GetParam().routine(schermo->List1, schermo->List2, &schermo->Pers),
              QString::fromUtf8(GetParam().expected));
    EXPECT_EQ(selezionata(*schermo->List1), 0);
    EXPECT_EQ(schermo->List1->currentRow(), 0);
}

INSTANTIATE_TEST_SUITE_P(Routines, OneLayoutTest,
                         ::testing::Values(RoutineRow{"PercorsoReport", PercorsoReport,
                                                      "/installazione/report\\Cassa.rpt"},
                                           RoutineRow{"PercorsoTemporaneo", PercorsoTemporaneo,
                                                      "/installazione/modelli\\Cassa.mdb"},
                                           RoutineRow{"ListaAttiva", ListaAttiva, "Cassa"}),
                         [](const auto& info) { return std::string(info.param.name); });

struct VerificaRow {
    const char* name;
    const char* codice;
    bool personalizzazione;
    int tab;
    int list1Row;  // selected before the check, -1 for none
    int list2Row;
    bool expected;
    int list1RowAfter;
};

void PrintTo(const VerificaRow& row, std::ostream* out) { *out << row.name; }

class VerificaSelezioneStampaTest : public CatalogueTest,
                                    public ::testing::WithParamInterface<VerificaRow> {};

TEST_P(VerificaSelezioneStampaTest, TheTabDecidesWhichListMustHaveAChoice) {
    const VerificaRow& row = GetParam();
    const auto schermo = carica(QString::fromUtf8(row.codice), row.personalizzazione);
    if (row.list1Row != -1) schermo->List1->setCurrentRow(row.list1Row);
    if (row.list2Row != -1) schermo->List2->setCurrentRow(row.list2Row);
    schermo->Pers.setCurrentIndex(row.tab);

    EXPECT_EQ(VerificaSelezioneStampa(schermo->List1, schermo->List2, &schermo->Pers),
              row.expected);
    EXPECT_EQ(selezionata(*schermo->List1), row.list1RowAfter);
    EXPECT_EQ(selezionata(*schermo->List2), row.list2Row);
    if (row.expected) {
        EXPECT_TRUE(messages.empty());
    } else {
        ASSERT_EQ(messages.size(), 1u);
        EXPECT_EQ(messages[0].prompt, u"Selezionare una stampa dall'elenco"_s);
        EXPECT_EQ(messages[0].title, u"Stampa non selezionata"_s);
        EXPECT_EQ(messages[0].buttons, platform::MsgBoxStyle::Information);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Choices, VerificaSelezioneStampaTest,
    ::testing::Values(
        VerificaRow{"BaseTabKeepsTheUsersChoice", "StampaIntrodotto", true, 0, 1, -1, true, 1},
        VerificaRow{"BaseTabPicksTheFirstEntry", "StampaIntrodotto", true, 0, -1, -1, true, 0},
        VerificaRow{"BaseTabEmptyList", "StampaBilancio", true, 0, -1, -1, false, -1},
        VerificaRow{"PersonalisedTabWithAChoice", "StampaIntrodotto", true, 1, -1, 1, true, -1},
        VerificaRow{"PersonalisedTabInsistsOnAChoice", "StampaIntrodotto", true, 1, -1, -1, false,
                    -1},
        VerificaRow{"PersonalisedTabEmptyDespiteBaseChoice", "StampaIntrodotto", false, 1, 0, -1,
                    false, 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CatalogueTest, VerificaSelezioneStampaGivesFalseOnAFailure) {
    const auto schermo = carica(u"StampaIntrodotto"_s);
    platform::setMessageHandler(
        [](const platform::Message&) -> int { throw RuntimeError(u"Errore del box"_s); });
    schermo->Pers.setCurrentIndex(1);
    EXPECT_FALSE(VerificaSelezioneStampa(schermo->List1, schermo->List2, &schermo->Pers));
    EXPECT_FALSE(VerificaSelezioneStampa(schermo->List1, schermo->List2, nullptr));
}

TEST_F(CatalogueTest, PathsArePercorsoAndTheColumnOfTheChosenRow) {
    const auto schermo = carica(u"StampaIntrodotto"_s);
    schermo->List1->setCurrentRow(1);
    EXPECT_EQ(PercorsoReport(schermo->List1, schermo->List2, &schermo->Pers),
              percorso(u"report\\IntrodottoDett.rpt"_s));
    EXPECT_EQ(PercorsoTemporaneo(schermo->List1, schermo->List2, &schermo->Pers),
              percorso(u"modelli\\IntrodottoDett.mdb"_s));
    EXPECT_EQ(StampeMenu()->Filter(), u"ID=1"_s);

    recorder().percorso = u"/senza/separatore"_s;
    EXPECT_EQ(PercorsoReport(schermo->List1, schermo->List2, &schermo->Pers),
              u"/senza/separatorereport\\IntrodottoDett.rpt"_s);
}

TEST_F(CatalogueTest, SameIdInBothCataloguesReadsEachListsOwnRow) {
    const auto schermo = carica(u"StampaIntrodotto"_s);
    schermo->List1->setCurrentRow(0);
    schermo->List2->setCurrentRow(0);
    ASSERT_EQ(schermo->List1->item(0)->data(Qt::UserRole).toInt(), 2);
    ASSERT_EQ(schermo->List2->item(0)->data(Qt::UserRole).toInt(), 2);

    schermo->Pers.setCurrentIndex(1);
    EXPECT_EQ(PercorsoReport(schermo->List1, schermo->List2, &schermo->Pers),
              percorso(u"pers\\IntrodottoCliente.rpt"_s));
    EXPECT_EQ(StampePers()->Filter(), u"ID=2"_s);
    schermo->Pers.setCurrentIndex(0);
    EXPECT_EQ(PercorsoReport(schermo->List1, schermo->List2, &schermo->Pers),
              percorso(u"report\\Introdotto.rpt"_s));
    schermo->Pers.setCurrentIndex(1);
    EXPECT_EQ(PercorsoTemporaneo(schermo->List1, schermo->List2, &schermo->Pers),
              percorso(u"pers\\IntrodottoCliente.mdb"_s));
}

TEST_F(CatalogueTest, NoChoiceGivesEmptyResults) {
    const auto vuoto = carica(u"StampaBilancio"_s);
    EXPECT_EQ(PercorsoReport(vuoto->List1, vuoto->List2, &vuoto->Pers), QString());
    EXPECT_EQ(PercorsoTemporaneo(vuoto->List1, vuoto->List2, &vuoto->Pers), QString());
    EXPECT_EQ(ListaAttiva(vuoto->List1, vuoto->List2, &vuoto->Pers), QString());

    // The personalised list is never given a choice of its own.
    const auto schermo = carica(u"StampaIntrodotto"_s);
    schermo->List1->setCurrentRow(1);
    schermo->Pers.setCurrentIndex(1);
    EXPECT_EQ(PercorsoReport(schermo->List1, schermo->List2, &schermo->Pers), QString());
    EXPECT_EQ(PercorsoTemporaneo(schermo->List1, schermo->List2, &schermo->Pers), QString());
    EXPECT_EQ(ListaAttiva(schermo->List1, schermo->List2, &schermo->Pers), QString());
    EXPECT_EQ(selezionata(*schermo->List2), -1);
    EXPECT_TRUE(messages.empty());
}

TEST_F(CatalogueTest, ListaAttivaGivesTheTextOfTheActiveListsChoice) {
    const auto schermo = carica(u"StampaIntrodotto"_s);
    schermo->List1->setCurrentRow(1);
    schermo->List2->setCurrentRow(1);
    EXPECT_EQ(ListaAttiva(schermo->List1, schermo->List2, &schermo->Pers),
              u"Introdotto dettagliato"_s);
    schermo->Pers.setCurrentIndex(1);
    EXPECT_EQ(ListaAttiva(schermo->List1, schermo->List2, &schermo->Pers),
              u"Introdotto per zona"_s);
}

TEST_F(CatalogueTest, AnEarlierScreenKeepsWorkingAfterALaterLoad) {
    const auto primo = carica(u"StampaIntrodotto"_s);
    primo->List1->setCurrentRow(1);
    const auto secondo = carica(u"StampaCassa"_s);
    EXPECT_EQ(PercorsoReport(primo->List1, primo->List2, &primo->Pers),
              percorso(u"report\\IntrodottoDett.rpt"_s));
    EXPECT_EQ(PercorsoReport(secondo->List1, secondo->List2, &secondo->Pers),
              percorso(u"report\\Cassa.rpt"_s));
}

TEST_F(CatalogueTest, AnIdNoLongerInTheCatalogueFailsToTheCaller) {
    const auto schermo = carica(u"StampaIntrodotto"_s);
    schermo->List1->setCurrentRow(0);
    schermo->List1->item(0)->setData(Qt::UserRole, 99);
    EXPECT_THROW(PercorsoReport(schermo->List1, schermo->List2, &schermo->Pers), RuntimeError);
    EXPECT_EQ(StampeMenu()->Filter(), u"ID=99"_s);
}

}  // namespace
}  // namespace lorvane::output
