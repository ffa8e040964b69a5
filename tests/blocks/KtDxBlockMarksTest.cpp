#include "tests/blocks/BlocksTest.h"

#include <algorithm>

namespace {

using BlockMarks = BlockMonitorTest;

TEST_F(BlockMarks, StartUnchangedWithARescanDue) {
    const KtDxBlock block;
    EXPECT_FALSE(block.isChanged());
    EXPECT_TRUE(block.needsUpdate());
}

TEST_F(BlockMarks, NeedsUpdateStaysUnsetWithoutAnOwner) {
    KtDxBlock block;
    block.setNeedsUpdate(false);
    block.setNeedsUpdate(true);
    EXPECT_FALSE(block.needsUpdate());
}

TEST_F(BlockMarks, ChangedStaysUnsetWithoutAnOwner) {
    KtDxBlock block;
    block.setChanged(true);
    EXPECT_FALSE(block.isChanged());
}

TEST_F(BlockMarks, NeedsUpdateIsClearedWithoutAnOwner) {
    KtDxBlock block;
    block.setNeedsUpdate(false);
    EXPECT_FALSE(block.needsUpdate());
}

TEST_F(BlockMarks, SettingNeedsUpdateAsksTheOwnerForARescan) {
    KtDxBlock& block = monitor(valve_);
    forgetMarks(block);
    block.setNeedsUpdate(true);
    EXPECT_TRUE(block.needsUpdate());
    EXPECT_TRUE(owner_->rescanWasAsked());
    EXPECT_TRUE(owner_->isRescanNeeded());
}

TEST_F(BlockMarks, SettingChangedTellsTheOwner) {
    KtDxBlock& block = monitor(valve_);
    forgetMarks(block);
    block.setChanged(true);
    EXPECT_TRUE(block.isChanged());
    EXPECT_TRUE(owner_->changesWereTold());
    EXPECT_TRUE(owner_->hasPendingChanges());
}

TEST_F(BlockMarks, ClearingDoesNotTellTheOwner) {
    KtDxBlock& block = monitor(valve_);
    block.setNeedsUpdate(true);
    block.setChanged(true);
    block.setNeedsUpdate(false);
    block.setChanged(false);
    EXPECT_FALSE(block.needsUpdate());
    EXPECT_FALSE(block.isChanged());
    EXPECT_TRUE(owner_->isRescanNeeded());
    EXPECT_TRUE(owner_->hasPendingChanges());
}

/// Looks at the marks of a block when the block tells it of them.
class LookingOwner : public QuietOwner {
public:
    using QuietOwner::QuietOwner;

    void look(const KtDxBlock* block) { block_ = block; }

    void setRescanNeeded(bool on) override {
        neededUpdateWhenAsked_ = block_ != nullptr && block_->needsUpdate();
        QuietOwner::setRescanNeeded(on);
    }

    void setPendingChanges(bool on) override {
        wasChangedWhenTold_ = block_ != nullptr && block_->isChanged();
        QuietOwner::setPendingChanges(on);
    }

    bool neededUpdateWhenAsked() const { return neededUpdateWhenAsked_; }

    bool wasChangedWhenTold() const { return wasChangedWhenTold_; }

private:
    const KtDxBlock* block_ = nullptr;
    bool neededUpdateWhenAsked_ = true;
    bool wasChangedWhenTold_ = true;
};

TEST_F(BlockMarks, TheOwnerHearsOfAMarkBeforeItIsSet) {
    auto looking = std::make_unique<LookingOwner>(record());
    LookingOwner& owner = *looking;
    owner_ = std::move(looking);
    KtDxBlock& block = monitor(valve_);
    forgetMarks(block);
    owner.look(&block);
    block.setNeedsUpdate(true);
    block.setChanged(true);
    EXPECT_FALSE(owner.neededUpdateWhenAsked());
    EXPECT_FALSE(owner.wasChangedWhenTold());
    owner.look(nullptr);
}

using BlockCallbacks = BlockMonitorTest;

TEST_F(BlockCallbacks, NullIsIgnored) {
    KtDxBlock block;
    block.addCallback(nullptr);
    EXPECT_TRUE(block.callbacks()->empty());
    block.addCallback(client_.at(0));
    block.removeCallback(nullptr);
    EXPECT_EQ(block.callbacks()->size(), 1U);
}

TEST_F(BlockCallbacks, OneAddedTwiceIsHeldOnce) {
    KtDxBlock block;
    block.addCallback(client_.at(0));
    block.addCallback(client_.at(0));
    block.removeCallback(client_.at(0));
    EXPECT_TRUE(block.callbacks()->empty());
}

TEST_F(BlockCallbacks, AreKeptInAscendingOrderOfAddress) {
    KtDxBlock block;
    for (const std::size_t rank : {3U, 0U, 4U, 1U, 2U}) {
        block.addCallback(client_.at(rank));
    }
    EXPECT_TRUE(std::is_sorted(block.callbacks()->begin(), block.callbacks()->end(), ByAddress{}));
    EXPECT_EQ(block.callbacks()->size(), ClientCallbacks::kCount);
}

TEST_F(BlockCallbacks, RemovingOneThatIsNotThereChangesNothing) {
    KtDxBlock block;
    block.addCallback(client_.at(0));
    block.removeCallback(client_.at(1));
    EXPECT_TRUE(block.callbacks()->contains(client_.at(0)));
}

} // namespace
