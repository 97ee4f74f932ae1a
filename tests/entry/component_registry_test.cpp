// The component registry: the module's own library registered, created by
// program id, asked whether it can unload, and removed.
#include "platform/component_registry.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "entry/configura_interface.h"

namespace lorvane::platform {
namespace {

using namespace Qt::StringLiterals;

const QString configuraId = QLatin1String(entry::ConfiguraInterface::ProgId);

class ComponentRegistryTest : public ::testing::Test {
  protected:
    void SetUp() override {
        qputenv("LORVANE_REGISTRY", folder.filePath(u"components.ini"_s).toUtf8());
    }
    void TearDown() override { qunsetenv("LORVANE_REGISTRY"); }

    QTemporaryDir folder;
    const QString library = QString::fromLocal8Bit(LORVANE_MODULE_LIBRARY);
};

TEST_F(ComponentRegistryTest, RegisteredLibraryMakesConfigura) {
    ComponentRegistry::registerServer(library);
    EXPECT_EQ(ComponentRegistry::libraryOf(u"lorvanestampe.configura"_s),
              std::optional<QString>(library));

    auto configura = createComponent<entry::ConfiguraInterface>(configuraId);
    configura->SetCodiceStampa(u"StampaBilancio"_s);
    EXPECT_EQ(configura->CodiceStampa(), u"StampaBilancio"_s);
    EXPECT_TRUE(configura->Ver().contains(u'.'));
    auto second = createComponent<entry::ConfiguraInterface>(configuraId);
    EXPECT_EQ(second->CodiceStampa(), u"StampaBilancio"_s)
        << "the library's instances share their values";

    EXPECT_FALSE(ComponentRegistry::canUnloadNow(configuraId));
    configura.reset();
    second.reset();
    EXPECT_TRUE(ComponentRegistry::canUnloadNow(configuraId));
}

TEST_F(ComponentRegistryTest, UnregisteredIdsFailNamingTheId) {
    ComponentRegistry::registerServer(library);
    ComponentRegistry::unregisterServer(library);
    EXPECT_FALSE(ComponentRegistry::libraryOf(configuraId).has_value());
    for (const QString& id : {configuraId, u"LorvaneRicerca.Ricerca"_s, u"Nessuno.Componente"_s}) {
        try {
            ComponentRegistry::create(id);
            ADD_FAILURE() << id.toStdString() << " created";
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.message().contains(id)) << error.what();
            EXPECT_TRUE(error.message().contains(u"non è registrato"_s)) << error.what();
        }
    }
}

TEST_F(ComponentRegistryTest, AnIdOfAnotherLibraryIsRefused) {
    ComponentRegistry::add(u"Altro.Componente"_s, library);
    EXPECT_THROW(ComponentRegistry::create(u"Altro.Componente"_s), RuntimeError);
    ComponentRegistry::add(u"Rotto.Componente"_s, folder.filePath(u"manca.so"_s));
    EXPECT_THROW(ComponentRegistry::create(u"Rotto.Componente"_s), RuntimeError);
}

TEST_F(ComponentRegistryTest, ProvidedClassesComeFirstAndCanBeWithdrawn) {
    struct Stand : ComponentObject {};
    ComponentRegistry::provide(u"Prova.Classe"_s, [] { return std::make_shared<Stand>(); });
    EXPECT_NE(std::dynamic_pointer_cast<Stand>(ComponentRegistry::create(u"PROVA.classe"_s)),
              nullptr);
    EXPECT_THROW(createComponent<entry::ConfiguraInterface>(u"Prova.Classe"_s), RuntimeError);
    ComponentRegistry::provide(u"Prova.Classe"_s, nullptr);
    EXPECT_THROW(ComponentRegistry::create(u"Prova.Classe"_s), RuntimeError);
}

}  // namespace
}  // namespace lorvane::platform
