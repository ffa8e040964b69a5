#include "notify/KtDxCmdLineHook.h"

#include "tests/support/ModuleTest.h"

#include <memory>
#include <tuple>

namespace {

using kthost::HostCall;

class CmdLineHook : public ModuleTest {
protected:
    std::unique_ptr<KtDxCmdLineHook> hook_ = std::make_unique<KtDxCmdLineHook>();
};

TEST_F(CmdLineHook, IsDisabledAtConstruction) {
    EXPECT_FALSE(hook_->isEnabled());
    EXPECT_EQ(filterCount(), 0U);
}

TEST_F(CmdLineHook, RegistersTheFilterWhenEnabled) {
    EXPECT_EQ(hook_->setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(hook_->isEnabled());
    EXPECT_EQ(filterCount(), 1U);
    EXPECT_FALSE(ktedRegisterFilterWinMsg(&idleCheckFilter)); // that very one is there
}

TEST_F(CmdLineHook, RemovesTheFilterWhenDisabled) {
    std::ignore = hook_->setEnabled(true);
    EXPECT_EQ(hook_->setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(hook_->isEnabled());
    EXPECT_EQ(filterCount(), 0U);
}

TEST_F(CmdLineHook, EnabledAgainDoesNotCallTheHost) {
    std::ignore = hook_->setEnabled(true);
    const auto calls = faults().calls(HostCall::registerFilter);
    EXPECT_EQ(hook_->setEnabled(true), Orbx::eOk);
    EXPECT_EQ(faults().calls(HostCall::registerFilter), calls);
}

TEST_F(CmdLineHook, DisabledAgainDoesNotCallTheHost) {
    EXPECT_EQ(hook_->setEnabled(false), Orbx::eOk);
    EXPECT_EQ(faults().calls(HostCall::removeFilter), 0U);
}

TEST_F(CmdLineHook, StaysDisabledWhenTheHostRefusesTheFilter) {
    faults().fail(HostCall::registerFilter, 1, Orbx::eInvalidInput);
    EXPECT_EQ(hook_->setEnabled(true), Orbx::eFilterRefused);
    EXPECT_FALSE(hook_->isEnabled());
}

TEST_F(CmdLineHook, StaysEnabledWhenTheHostRefusesToRemoveTheFilter) {
    std::ignore = hook_->setEnabled(true);
    faults().fail(HostCall::removeFilter, 1, Orbx::eInvalidInput);
    EXPECT_EQ(hook_->setEnabled(false), Orbx::eFilterRefused);
    EXPECT_TRUE(hook_->isEnabled());
}

TEST_F(CmdLineHook, AsksItsStateThroughIsEnabled) {
    struct SaysItIsOn : KtDxCmdLineHook {
        bool isEnabled() const override { return true; }
    };

    SaysItIsOn hook;
    EXPECT_EQ(hook.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(filterCount(), 0U);
}

TEST_F(CmdLineHook, RemovesTheFilterWhenItIsDestroyedEnabled) {
    std::ignore = hook_->setEnabled(true);
    hook_.reset();
    EXPECT_EQ(filterCount(), 0U);
}

TEST_F(CmdLineHook, DoesNotCallTheHostWhenItIsDestroyedDisabled) {
    hook_.reset();
    EXPECT_EQ(faults().calls(HostCall::removeFilter), 0U);
}

TEST_F(CmdLineHook, GoesAwayAlsoWhenTheHostRefusesToRemoveTheFilter) {
    std::ignore = hook_->setEnabled(true);
    faults().fail(HostCall::removeFilter, 1, Orbx::eInvalidInput);
    hook_.reset();
    EXPECT_EQ(faults().calls(HostCall::removeFilter), 1U); // asked once and no more
    EXPECT_EQ(filterCount(), 1U);
}

} // namespace
