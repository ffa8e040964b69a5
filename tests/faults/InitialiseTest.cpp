#include "kthost/runtime/Faults.h"
#include "tests/faults/ModuleMemory.h"
#include "tests/faults/Stage.h"

#include <gtest/gtest.h>

namespace {

TEST(Initialise, SaysThatItsResourcesAreMissingAlsoWhenThereIsNoMemory) {
    Stage stage;
    kthost::Faults::instance().fail(kthost::HostCall::loadResource, 1, Orbx::eInvalidInput);
    {
        const modulememory::Failing none(1, true);
        stage.load();
    }
    EXPECT_FALSE(stage.isLoaded());
    ASSERT_EQ(stage.host().window().messageBoxes().size(), 1U);
    EXPECT_EQ(stage.host().window().messageBoxes()[0].text,
              L"Unable to load resource DLL: KtDxNotifyRes.dll");
}

/// What the host and the tests allocate does not count as the module's.
TEST(ModuleMemory, CountsNothingOfAHostWithoutTheModule) {
    Stage stage;
    const modulememory::Failing counting(0);
    stage.open(L"plan");
    stage.command([] {});
    EXPECT_EQ(modulememory::Failing::count(), 0U);
}

TEST(ModuleMemory, CountsTheApplicationObjectAndTheRecordOfADocument) {
    Stage stage;
    const modulememory::Failing counting(0);
    stage.load();
    EXPECT_EQ(modulememory::Failing::count(), 1U); // the application
    stage.open(L"plan");
    EXPECT_EQ(modulememory::Failing::count(), 4U); // the record, its entry, the set of open documents
}

} // namespace
