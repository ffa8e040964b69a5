#include "kthost/runtime/Faults.h"
#include "tests/faults/ModuleMemory.h"
#include "tests/faults/Stage.h"
#include "tests/support/FailingAllocation.h"

#include <gtest/gtest.h>

namespace {

TEST(Initialise, SaysThatItsResourcesAreMissingAlsoWhenThereIsNoMemory) {
    Stage stage;
    kthost::Faults::instance().fail(kthost::HostCall::loadResource, 1, Orbx::eInvalidInput);
    {
        const FailingFiltered none(&modulememory::isAskedForByModule, 1, true);
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
    const FailingFiltered counting(&modulememory::isAskedForByModule, 0);
    stage.open(L"plan");
    stage.command([] {});
    EXPECT_EQ(FailingFiltered::count(), 0U);
}

TEST(ModuleMemory, CountsTheApplicationObjectAndTheRecordOfADocument) {
    Stage stage;
    const FailingFiltered counting(&modulememory::isAskedForByModule, 0);
    stage.load();
    EXPECT_EQ(FailingFiltered::count(), 1U); // the application
    stage.open(L"plan");
    EXPECT_EQ(FailingFiltered::count(), 4U); // the record, its entry, the set of open documents
}

} // namespace
