#include <KtRxClass.h>
#include <KtRxService.h>

#include "kthost/runtime/ModuleLoader.h"
#include "kthost/runtime/SystemRegistry.h"
#include "tests/kthost/modules/TestModules.h"

#include <gtest/gtest.h>

#include <memory>

namespace kthost {
namespace {

class Registry : public testing::Test {
protected:
    static KtRxDictionary* services() {
        return dynamic_cast<KtRxDictionary*>(ktrxSysRegistry()->at(L"ServiceDictionary"));
    }

    int count = 0; // outlives what the registry owns
    ModuleLoader modules;
    SystemRegistry registry;
};

/// Counts how many there are.
class Counted : public KtRxObject {
public:
    explicit Counted(int& count) : count_(count) { ++count_; }

    ~Counted() override { --count_; }

private:
    int& count_;
};

TEST_F(Registry, HoldsTheServiceDictionary) {
    const KtRxObject* found = ktrxSysRegistry()->at(L"ServiceDictionary");
    ASSERT_NE(found, nullptr);
    EXPECT_TRUE(found->isA()->isDerivedFrom(KtRxDictionary::desc()));
}

TEST_F(Registry, PutsARegisteredServiceIntoTheServiceDictionary) {
    ASSERT_TRUE(ktrxRegisterService(L"Clock"));
    const KtRxObject* service = services()->at(L"Clock");
    ASSERT_NE(service, nullptr);
    EXPECT_TRUE(service->isA()->isDerivedFrom(KtRxService::desc()));
}

TEST_F(Registry, KnowsARegisteredService) {
    ASSERT_TRUE(ktrxRegisterService(L"Clock"));
    EXPECT_TRUE(ktrxServiceIsRegistered(L"Clock"));
}

TEST_F(Registry, KnowsNoServiceThatWasNotRegistered) {
    EXPECT_FALSE(ktrxServiceIsRegistered(L"Clock"));
}

TEST_F(Registry, ComparesNamesExactly) {
    ASSERT_TRUE(ktrxRegisterService(L"Clock"));
    EXPECT_FALSE(ktrxServiceIsRegistered(L"clock"));
}

TEST_F(Registry, RefusesAServiceTwice) {
    ASSERT_TRUE(ktrxRegisterService(L"Clock"));
    EXPECT_FALSE(ktrxRegisterService(L"Clock"));
}

TEST_F(Registry, RefusesAServiceWithoutName) {
    EXPECT_FALSE(ktrxRegisterService(nullptr));
}

TEST_F(Registry, RefusesServicesWithoutServiceDictionary) {
    delete ktrxSysRegistry()->remove(L"ServiceDictionary");
    EXPECT_FALSE(ktrxRegisterService(L"Clock"));
    EXPECT_FALSE(ktrxServiceIsRegistered(L"Clock"));
}

TEST_F(Registry, RefusesServicesWhenSomethingElseStandsForTheServiceDictionary) {
    delete ktrxSysRegistry()->remove(L"ServiceDictionary");
    auto other = std::make_unique<KtRxService>();
    ASSERT_TRUE(ktrxSysRegistry()->add(L"ServiceDictionary", other.get()));
    static_cast<void>(other.release());
    EXPECT_FALSE(ktrxRegisterService(L"Clock"));
}

TEST_F(Registry, HandsARemovedObjectToTheCaller) {
    services()->add(L"Counted", new Counted(count));
    const std::unique_ptr<KtRxObject> removed(services()->remove(L"Counted"));
    ASSERT_NE(removed, nullptr);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(services()->at(L"Counted"), nullptr);
}

TEST_F(Registry, GivesNullForWhatIsNotThere) {
    EXPECT_EQ(services()->at(L"Clock"), nullptr);
    EXPECT_EQ(services()->remove(L"Clock"), nullptr);
}

TEST_F(Registry, GivesNullForNoName) {
    EXPECT_EQ(services()->at(nullptr), nullptr);
    EXPECT_EQ(services()->remove(nullptr), nullptr);
}

TEST_F(Registry, TakesNothingOverUnderAKeyThatIsThere) {
    const auto second = std::make_unique<Counted>(count);
    services()->add(L"Counted", new Counted(count));
    EXPECT_FALSE(services()->add(L"Counted", second.get()));
}

TEST_F(Registry, NotesWhichModuleBroughtAService) {
    ASSERT_TRUE(modules.load(testModule("CarelessModule.kmx")));
    modules.send(*modules.find("CarelessModule.kmx"), 3000);
    ASSERT_TRUE(registry.services()->entries().contains(L"Careless"));
    EXPECT_EQ(registry.services()->entries().find(L"Careless")->second.broughtBy, "CarelessModule.kmx");
}

TEST(RegistryEnd, DestroysWhatIsLeftInIt) {
    int count = 0;
    {
        SystemRegistry registry;
        registry.services()->add(L"Counted", new Counted(count));
    }
    EXPECT_EQ(count, 0);
}

TEST(RegistryEnd, LeavesNoRegistryBehind) {
    { const SystemRegistry registry; }
    EXPECT_EQ(ktrxSysRegistry(), nullptr);
    EXPECT_FALSE(ktrxRegisterService(L"Clock"));
}

} // namespace
} // namespace kthost
