#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"

#include <KtDbBlockReference.h>

#include <functional>
#include <utility>

/// Objects that could not be let go of when they should have been.
namespace {

using kthost::HostCall;

/// Does something when a block tells that it is changed.
class MeddlingOwner : public QuietOwner {
public:
    using QuietOwner::QuietOwner;

    void setPendingChanges(bool on) override {
        QuietOwner::setPendingChanges(on);
        if (on && meddle_) {
            std::exchange(meddle_, {})();
        }
    }

    void atNextChange(std::function<void()> meddle) { meddle_ = std::move(meddle); }

private:
    std::function<void()> meddle_;
};

class LeftBehind : public BlockMonitorTest {
protected:
    LeftBehind() {
        auto owner = std::make_unique<MeddlingOwner>(record());
        meddling_ = owner.get();
        owner_ = std::move(owner);
    }

    void refuseToLetGo() { faults().fail(HostCall::removeReactor, 1, Orbx::eTooManyReaders, true); }

    /// Without any help from who hears it.
    static void letGo(KtDbObjectId id, KtDbObjectReactor* reactor) {
        const OpenedObject<KtDbObject> opened(id, KtDb::kForNotify, true);
        must(opened->removeReactor(reactor));
    }

    MeddlingOwner* meddling_ = nullptr;
};

TEST_F(LeftBehind, HoweverManyTheyAreTheyAreLetGoOfInTheEnd) {
    Ids expected{valve_};
    for (int i = 0; i < 9; ++i) {
        expected.push_back(edit_.insert(valve_));
    }
    KtDxBlock& block = enabledMonitor(valve_);
    refuseToLetGo();
    EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), expected);
    faults().reset();
    owner_->reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(LeftBehind, OneThatIsRefusedAgainAndAgainIsAskedOnceMoreInTheEnd) {
    edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    refuseToLetGo();
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
        must(block.setEnabled(true));
    }
    faults().reset();
    must(block.setEnabled(false));
    ASSERT_EQ(reactorCount(), 0U);
    faults().reset();
    owner_->reset();
    EXPECT_LE(faults().calls(HostCall::removeReactor),
              4U); // the reference and the record, each at most twice
}

TEST_F(LeftBehind, OneThatIsErasedMeanwhileIsLetGoOfInTheEnd) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    refuseToLetGo();
    must(block.setEnabled(false));
    faults().reset();
    edit_.erase(reference);
    edit_.purge(valve_);
    EXPECT_EQ(heardBy(&block), (Ids{valve_, reference}));
    owner_->reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(LeftBehind, AnAttributeThatWillNotOpenIsLetGoOfInTheEnd) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    KtDxBlock& block = enabledMonitor(valve_);
    faults().fail(HostCall::openObject, 2, Orbx::eTooManyReaders); // the first behind its reference
    EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), DrawingEditor::attributesOf(reference));
    owner_->reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(LeftBehind, AnAttributeThatRefusesWhileTheMonitorGoesIsAskedOnceMore) {
    edit_.insertWithAttributes(valve_, 1);
    enabledMonitor(valve_);
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);    // its reference
    faults().fail(HostCall::removeReactor, 2, Orbx::eTooManyReaders); // behind the record
    owner_->reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(LeftBehind, OneThatIsReleasedMeanwhileIsNotMissed) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    faults().fail(HostCall::removeReactor, 1, Orbx::eTooManyReaders);
    must(block.setEnabled(false));
    edit_.erase(reference);
    edit_.release();
    owner_->reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(LeftBehind, IsNoReferenceThatWasReleased) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    edit_.erase(reference);
    edit_.release();
    must(block.setEnabled(false));
    faults().reset();
    owner_->reset();
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
}

TEST_F(LeftBehind, AllRecordsAreBehindOneThatWillNotOpen) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    for (const wchar_t* label : {L"1", L"2", L"3"}) {
        edit_.represent(pump, label);
    }
    KtDxBlock& block = enabledMonitor(pump);
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    EXPECT_EQ(block.setEnabled(false), Orbx::eTooManyReaders);
    EXPECT_EQ(heardBy(&block).size(), 4U);
    owner_->reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(LeftBehind, NothingIsBesidesTheRecords) {
    KtDxBlock& block = enabledMonitor(valve_);
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    EXPECT_EQ(block.setEnabled(false), Orbx::eTooManyReaders);
    faults().reset();
    owner_->reset();
    EXPECT_EQ(faults().calls(HostCall::openObject), 1U);
}

TEST_F(LeftBehind, AReferenceThatWillNotOpenIsLetGoOfInTheEnd) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(heardBy(&block), Ids{reference});
    faults().reset();
    owner_->reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(LeftBehind, IsNoReferenceThatWasNeverHeard) {
    KtDxBlock& block = enabledMonitor(valve_);
    const KtDbObjectId reference = edit_.insert(valve_);
    {
        const OpenedObject<KtDbBlockReference> held(reference, KtDb::kForWrite);
        must(block.refresh());
    }
    must(block.setEnabled(false));
    faults().reset();
    owner_->reset();
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
}

TEST_F(LeftBehind, WithoutMemoryOneKeepsItsReactor) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    faults().fail(HostCall::removeReactor, 1, Orbx::eTooManyReaders);
    {
        const FailingAllocation none(1, sizeof(KtDbObjectId));
        EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
        EXPECT_TRUE(none.hasFailed());
    }
    EXPECT_FALSE(block.isEnabled());
    EXPECT_EQ(heardBy(&block), Ids{reference});
    letGo(reference, &block);
}

TEST_F(LeftBehind, JoinedByWhatARescanWithoutMemoryDidNotComeTo) {
    const KtDbObjectId busy = edit_.insert(valve_);
    for (int i = 0; i < 3; ++i) {
        edit_.insertWithAttributes(valve_, 1);
    }
    bool failed = true;
    for (std::size_t k = 1; failed; ++k) {
        KtDxBlock& block = enabledMonitor(valve_);
        {
            const OpenedObject<KtDbBlockReference> held(busy, KtDb::kForWrite);
            must(block.refresh()); // leaves the busy one behind
        }
        {
            const FailingAllocation none(k);
            const Orbx::ErrorStatus status = block.refresh();
            failed = none.hasFailed();
            EXPECT_EQ(status, failed ? Orbx::eMissing : Orbx::eOk) << k;
        }
        owner_->reset();
        ASSERT_EQ(reactorCount(), 0U) << k;
        must(owner_->attachDocument(&record()));
    }
}

TEST_F(LeftBehind, StayRememberedThoughARescanWithoutMemoryBreaksOffAtOneOfThem) {
    edit_.insert(valve_);
    const KtDbObjectId busy = edit_.insert(valve_, edit_.paperSpace());
    bool failed = true;
    for (std::size_t k = 1; failed; ++k) {
        KtDxBlock& block = enabledMonitor(valve_);
        {
            const OpenedObject<KtDbBlockReference> held(busy, KtDb::kForWrite);
            must(block.refresh()); // leaves it behind, and its container is gone
        }
        {
            const FailingAllocation none(k);
            const Orbx::ErrorStatus status = block.refresh();
            failed = none.hasFailed();
            EXPECT_EQ(status, failed ? Orbx::eMissing : Orbx::eOk) << k;
        }
        owner_->reset();
        ASSERT_EQ(reactorCount(), 0U) << k;
        must(owner_->attachDocument(&record()));
    }
}

TEST_F(LeftBehind, JoinedByWhatARescanThatLostAContainerDidNotComeTo) {
    edit_.insert(valve_);
    KtDxBlock& block = enabledMonitor(valve_);
    edit_.insert(valve_);
    meddling_->atNextChange([&] { block.references()->at(edit_.modelSpace()) = nullptr; });
    EXPECT_EQ(block.refresh(), Orbx::eMissing);
    owner_->reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(LeftBehind, AreNotAttributesThatCannotBe) {
    const KtDbObjectId reference = edit_.insertWithAttributes(valve_, 1);
    KtDxBlock& block = enabledMonitor(valve_);
    auto& recorded = const_cast<KtDbObjectIdArray&>(block.attributesByReference().at(reference));
    recorded.append(KtDbObjectId());
    recorded.append(kNeverHandedOut);
    faults().reset();
    EXPECT_EQ(block.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(faults().calls(HostCall::openObject), 3U); // reference, attribute, record
    faults().reset();
    owner_->reset();
    EXPECT_EQ(faults().calls(HostCall::openObject), 0U);
}

} // namespace
