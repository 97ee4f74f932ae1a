// Configura: shared properties, the version text, and the dispatch of Start.
#include "entry/configura.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QWidget>
#include <typeinfo>

#include "platform/windows.h"
#include "screens/filter_screen.h"
#include "support/screen_fixture.h"

namespace lorvane::entry {
namespace {

using namespace Qt::StringLiterals;

std::vector<screens::FilterScreen*> openScreens() {
    std::vector<screens::FilterScreen*> screens;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* screen = dynamic_cast<screens::FilterScreen*>(widget);
            screen && screen->isVisible()) {
            screens.push_back(screen);
        }
    }
    return screens;
}

// Screens load through the host: the demo installation's serves them.
class ConfiguraTest : public testing::ScreenTest {
  protected:
    void SetUp() override {
        moduleValues() = ModuleValues{};
        ScreenTest::SetUp();
    }
    void TearDown() override {
        for (screens::FilterScreen* screen : openScreens())
            screen->close();
        ScreenTest::TearDown();
    }
    Configura configura;
};

struct DispatchCase {
    const char* code;
    const char* screenClass;
    const char* title;
};

void PrintTo(const DispatchCase& c, std::ostream* os) { *os << c.code; }

class Dispatch : public ConfiguraTest, public ::testing::WithParamInterface<DispatchCase> {};

TEST_P(Dispatch, OpensTheScreenOfTheCodeWithItsTitle) {
    configura.SetCodiceStampa(QString::fromUtf8(GetParam().code));
    configura.Start();
    const auto screens = openScreens();
    ASSERT_EQ(screens.size(), 1u);
    EXPECT_EQ(screens[0]->windowTitle(),
              u"..:: "_s + QString::fromUtf8(GetParam().title) + u" ::.."_s);
    EXPECT_NE(std::string(typeid(*screens[0]).name()).find(GetParam().screenClass),
              std::string::npos)
        << typeid(*screens[0]).name();
}

const DispatchCase dispatchCases[] = {
    {"StampaCassa", "FrmStampaCassa", "Stampa cassa per periodo"},
    {"stampacassa", "FrmStampaCassa", "Stampa cassa per periodo"},
    {"StampaIntrodotto", "FrmStampaIntrodotto", "Stampa Introdotto per periodo"},
    {"StampaRegistro", "FrmStampaRegistro", "Stampa registro corrispettivi"},
    {"STAMPAREGISTRO2", "frmStampaRegistro2", "Stampa registro corrispettivi con Comodato"},
    {"StampaBilancio", "FrmStampaBilancio", "Stampa Bilancio di Verifica"},
    {"StampaSchedaLocale", "FrmStampaSchedaLocale", "Stampa scheda Cliente"},
    {"StampaSchedaContab", "FrmStampaSchedaContab", "Stampa scheda Contabile"},
    {"PercPagamentoG", "FrmPercPagamentoG", "Stampa percentuali di pagamento Globali"},
    {"PercPagamentoP", "FrmPercPagamentoP", "Stampa percentuali di pagamento Parziali"},
    {"SommeConsegnate", "FrmSommeConsegnate", "Stampa somme consegnate al locale"},
    {"Acconti", "FrmStampaAccontiRefill", "Stampa Acconti"},
    {"acconti", "FrmStampaAccontiRefill", "Stampa Acconti"},
    {"Refill", "FrmStampaAccontiRefill", "Stampa Refill"},
    {"SaldiCambiamonete", "FrmStampaCambiamonete", "Stampa situazione cambiamonete"},
    {"SaldiHopper", "FrmStampaHopper", "Stampa situazione hopper"},
    {"Quietanza", "FrmStampaQuietanza", "Stampa Quietanza"},
    {"IntrodottoDistinta", "FrmStampaIntrodottoDistinta", "Stampa introdotto su distinte"},
    {"DifferenzaPreu", "FrmStampaDifferenzaPreu", "Stampa Differenza Preu"},
    {"StampaAttoQuietanza", "FrmStampaAttoQuietanza", "Stampa Atti di Quietanza"},
    {"StampaEtichette", "FrmStampaEtichette", "Stampa Etichette"},
    {"StampaEtichetteMob", "FrmStampaEtichetteMobili", "Stampa Etichette"},
};

INSTANTIATE_TEST_SUITE_P(Codes, Dispatch, ::testing::ValuesIn(dispatchCases));

TEST_F(ConfiguraTest, UnknownOrEmptyCodesOpenNothing) {
    int modalWindows = 0;
    platform::setModalHandler([&](QWidget*) { ++modalWindows; });
    for (const QString& code : {u""_s, u"StampaCassaX"_s, u"Stampa Cassa"_s}) {
        configura.SetCodiceStampa(code);
        configura.SetModale(u"1"_s);
        configura.Start();
    }
    EXPECT_TRUE(openScreens().empty());
    EXPECT_EQ(modalWindows, 0);
}

// The machine speaks English (the tests run with LANG=C); Qt's own dialogs
// and buttons speak Italian once a screen is started.
TEST_F(ConfiguraTest, StartGivesQtsOwnTextsInItalian) {
    configura.SetCodiceStampa(u"StampaCassaX"_s);
    configura.Start();
    QDialogButtonBox box(QDialogButtonBox::Cancel | QDialogButtonBox::Yes);
    EXPECT_EQ(box.button(QDialogButtonBox::Cancel)->text().remove(u'&'), u"Annulla"_s);
    EXPECT_EQ(box.button(QDialogButtonBox::Yes)->text().remove(u'&'), u"Sì"_s);
    for (const auto& [context, english, italian] : {std::tuple{"QPrintDialog", "Print", "Stampa"},
                                                    {"QFileDialog", "Save As", "Salva come"},
                                                    {"QWidgetTextControl", "&Copy", "&Copia"}}) {
        EXPECT_EQ(QCoreApplication::translate(context, english), QString::fromUtf8(italian))
            << context;
    }
}

TEST_F(ConfiguraTest, ModalOnlyWhenModaleIsOne) {
    QStringList modalTitles;
    platform::setModalHandler([&](QWidget* window) {
        modalTitles << window->windowTitle();
        window->close();
    });
    configura.SetCodiceStampa(u"StampaBilancio"_s);
    for (const QString& modale : {u"1"_s, u"0"_s, u"true"_s, u""_s}) {
        configura.SetModale(modale);
        configura.Start();
    }
    EXPECT_EQ(modalTitles, QStringList{u"..:: Stampa Bilancio di Verifica ::.."_s});
    EXPECT_EQ(openScreens().size(), 3u) << "the three modeless screens stand side by side";
}

TEST_F(ConfiguraTest, InstancesShareEveryValueAndUnsetValuesReadEmpty) {
    Configura other;
    EXPECT_EQ(other.Risposta(), QString());
    EXPECT_EQ(other.Modale(), QString());
    configura.SetCodiceStampa(u"StampaCassa"_s);
    configura.SetCodiceEsportazione(u"E"_s);
    configura.SetCodice(u"C"_s);
    configura.SetParametri(u"P"_s);
    configura.SetCampoRicerca(u"codlocale"_s);
    configura.SetRisposta(u"L1|"_s);
    configura.SetModale(u"1"_s);
    EXPECT_EQ(other.CodiceStampa(), u"StampaCassa"_s);
    EXPECT_EQ(other.CodiceEsportazione(), u"E"_s);
    EXPECT_EQ(other.Codice(), u"C"_s);
    EXPECT_EQ(other.Parametri(), u"P"_s);
    EXPECT_EQ(other.CampoRicerca(), u"codlocale"_s);
    EXPECT_EQ(other.Risposta(), u"L1|"_s);
    EXPECT_EQ(other.Modale(), u"1"_s);
}

TEST_F(ConfiguraTest, StartLeavesRispostaAsTheHostSetIt) {
    configura.SetRisposta(u"dal chiamante"_s);
    configura.SetCodiceStampa(u"StampaHopper"_s);
    configura.Start();
    EXPECT_EQ(configura.Risposta(), u"dal chiamante"_s);
}

TEST(Version, KeepsTheLastThreeDigitsOfMinorAndRevision) {
    const std::tuple<int, int, int, const char*> cases[] = {{1, 0, 150, "1.000.150"},
                                                            {2, 5, 7, "2.005.007"},
                                                            {1, 1234, 99999, "1.234.999"},
                                                            {10, 12, 0, "10.012.000"}};
    for (const auto& [major, minor, revision, text] : cases) {
        EXPECT_EQ(buildVersion(major, minor, revision), QString::fromLatin1(text));
    }
    EXPECT_EQ(Configura().Ver(),
              buildVersion(LORVANE_VERSION_MAJOR, LORVANE_VERSION_MINOR, LORVANE_VERSION_PATCH));
}

}  // namespace
}  // namespace lorvane::entry
