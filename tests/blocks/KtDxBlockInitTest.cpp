#include "kthost/runtime/RuntimeClass.h"
#include "tests/blocks/BlocksTest.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>

namespace {

/// As long as it lives, references have another block-representation extension, or none.
class OtherExtension {
public:
    explicit OtherExtension(KtRxObject* extension)
        : before_(KtDbBlockReference::desc()->removeX(KtDbBlockRepresentation::desc())) {
        if (extension != nullptr) {
            KtDbBlockReference::desc()->addX(KtDbBlockRepresentation::desc(), extension);
        }
    }

    OtherExtension(const OtherExtension&) = delete;
    OtherExtension& operator=(const OtherExtension&) = delete;

    ~OtherExtension() { KtDbBlockReference::desc()->addX(KtDbBlockRepresentation::desc(), before_); }

private:
    KtRxObject* before_;
};

/// An extension that is registered for the protocol and does not keep to it.
class NoRepresentation : public KtRxObject {
public:
    NoRepresentation() = default;
};

class BlockInit : public BlockMonitorTest {
protected:
    Orbx::ErrorStatus create(KtDbObjectId id, KtDxBlock*& block) {
        const OpenedObject<KtDbBlockTableRecord> opened(id, KtDb::kForRead, true);
        return owner_->createBlockMonitor(block, opened.get());
    }
};

TEST_F(BlockInit, WithoutARecordSomethingIsMissing) {
    std::unique_ptr<KtDxBlock> block;
    EXPECT_EQ(KtDxBlock::create(owner_.get(), nullptr, block), Orbx::eMissing);
    EXPECT_EQ(block, nullptr);
}

TEST_F(BlockInit, WithoutAnOwnerSomethingIsMissing) {
    std::unique_ptr<KtDxBlock> block;
    const OpenedObject<KtDbBlockTableRecord> opened(valve_, KtDb::kForRead);
    EXPECT_EQ(KtDxBlock::create(nullptr, opened.get(), block), Orbx::eMissing);
    EXPECT_EQ(block, nullptr);
}

TEST_F(BlockInit, ABlockWithoutAGraphIsWatchedAlone) {
    KtDxBlock& block = monitor(valve_);
    EXPECT_EQ(block.blockId(), valve_);
    EXPECT_EQ(toIds(block.recordIds()), Ids{valve_});
    EXPECT_EQ(owner_->takeRepresentations(), Ids{});
    EXPECT_EQ(keysOf(*owner_), IdSet{valve_});
}

TEST_F(BlockInit, ADynamicBlockIsWatchedWithEveryRepresentation) {
    const KtDbObjectId older = edit_.anonymous();
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    edit_.adopt(pump, older, L"2");
    KtDxBlock& block = monitor(pump);
    EXPECT_EQ(toIds(block.recordIds()), (Ids{pump, first, older}));
    EXPECT_EQ(owner_->takeRepresentations(), (Ids{first, older}));
    EXPECT_EQ(monitorIn(*owner_, first), &block);
    EXPECT_EQ(monitorIn(*owner_, older), &block);
}

TEST_F(BlockInit, AKeyThatReachesAnotherMonitorKeepsIt) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    KtDxBlock& own = monitor(first);
    KtDxBlock& block = monitor(pump);
    EXPECT_EQ(monitorIn(*owner_, first), &own);
    EXPECT_EQ(toIds(block.recordIds()), (Ids{pump, first}));
}

TEST_F(BlockInit, RepresentationsThatTheHostCannotTellAreLeftOut) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.represent(pump, L"1");
    faults().fail(kthost::HostCall::getRepresentations, 1, Orbx::eInvalidInput);
    EXPECT_EQ(toIds(monitor(pump).recordIds()), Ids{pump});
}

TEST_F(BlockInit, ADynamicBlockIsWatchedAloneWithoutTheProtocol) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.represent(pump, L"1");
    const OtherExtension none(nullptr);
    EXPECT_EQ(toIds(monitor(pump).recordIds()), Ids{pump});
}

TEST_F(BlockInit, AnExtensionOfAnotherClassIsNotTaken) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.represent(pump, L"1");
    NoRepresentation wrong;
    const OtherExtension other(&wrong);
    EXPECT_EQ(toIds(monitor(pump).recordIds()), Ids{pump});
}

/// Breaks off behind the first representation. Sees what it is given to fill.
class BreakingOff : public KtDbBlockRepresentation {
public:
    explicit BreakingOff(KtDbObjectId first) : first_(first) {}

    KtDbObjectId originalBlockTableRecord(const KtDbBlockReference* /*reference*/) const override {
        return {};
    }

    Orbx::ErrorStatus getRepresentations(KtDbObjectId /*definition*/,
                                         KtArray<KtDbObjectId>& ids) const override {
        EXPECT_TRUE(ids.isEmpty());
        EXPECT_EQ(ids.growLength(), 8U);
        EXPECT_EQ(ids.physicalLength(), 0U);
        ids.append(first_);
        return Orbx::eOutOfRange;
    }

private:
    KtDbObjectId first_;
};

TEST_F(BlockInit, RepresentationsOfAListThatBreaksOffAreLeftOut) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    BreakingOff breaking(edit_.represent(pump, L"1"));
    const OtherExtension other(&breaking);
    EXPECT_EQ(toIds(monitor(pump).recordIds()), Ids{pump});
    EXPECT_EQ(owner_->takeRepresentations(), Ids{});
}

TEST_F(BlockInit, AGraphThatCannotBeHadCountsAsNone) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.represent(pump, L"1");
    faults().fail(kthost::HostCall::getEvalGraph, 1, Orbx::eWasErased);
    EXPECT_EQ(toIds(monitor(pump).recordIds()), Ids{pump});
}

TEST_F(BlockInit, NothingStaysOpen) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.insertWithAttributes(edit_.represent(pump, L"1"), 2);
    enabledMonitor(pump);
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(BlockInit, TheFirstScanIsDone) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = monitor(valve_);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {reference}}}));
    EXPECT_FALSE(block.needsUpdate());
    EXPECT_TRUE(block.isChanged());
}

TEST_F(BlockInit, TheStatusOfAFirstScanThatFailsIsPassedOn) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const OpenedObject<KtDbBlockTableRecord> held(edit_.represent(pump, L"1"), KtDb::kForWrite);
    KtDxBlock* block = nullptr;
    EXPECT_EQ(create(pump, block), Orbx::eWasOpenForWrite);
    EXPECT_EQ(block, nullptr);
}

TEST_F(BlockInit, NoKeyReachesAMonitorThatCouldNotBeInitialised) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.represent(pump, L"1");
    const OpenedObject<KtDbBlockTableRecord> held(edit_.represent(pump, L"2"), KtDb::kForWrite);
    KtDxBlock* block = nullptr;
    EXPECT_NE(create(pump, block), Orbx::eOk);
    EXPECT_EQ(owner_->takeRepresentations().size(), 2U);
    EXPECT_EQ(keysOf(*owner_), IdSet{});
}

TEST_F(BlockInit, AFailureLeavesKeysOfOtherMonitorsAlone) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    const KtDbObjectId first = edit_.represent(pump, L"1");
    const KtDxBlock& own = monitor(first);
    const OpenedObject<KtDbBlockTableRecord> held(edit_.represent(pump, L"2"), KtDb::kForWrite);
    KtDxBlock* block = nullptr;
    EXPECT_NE(create(pump, block), Orbx::eOk);
    EXPECT_EQ(keysOf(*owner_), IdSet{first});
    EXPECT_EQ(monitorIn(*owner_, first), &own);
}

TEST_F(BlockInit, ADisabledOwnerGetsADisabledMonitor) {
    const KtDxBlock& block = monitor(valve_);
    EXPECT_FALSE(block.isEnabled());
    EXPECT_EQ(heardBy(&block), Ids{});
}

TEST_F(BlockInit, AnEnabledOwnerGetsAnEnabledMonitor) {
    must(owner_->setEnabled(true));
    const KtDxBlock& block = monitor(valve_);
    EXPECT_TRUE(block.isEnabled());
    EXPECT_EQ(heardBy(&block), Ids{valve_});
}

TEST_F(BlockInit, AnEnablingThatFailsDoesNotMakeItFail) {
    must(owner_->setEnabled(true));
    edit_.purge(valve_);
    KtDxBlock* block = nullptr;
    EXPECT_EQ(create(valve_, block), Orbx::eOk);
    EXPECT_NE(block, nullptr);
}

TEST_F(BlockInit, AgainItRecordsWhatItHadRecorded) {
    const KtDbObjectId reference = edit_.insert(valve_);
    KtDxBlock& block = monitor(valve_);
    const OpenedObject<KtDbBlockTableRecord> opened(valve_, KtDb::kForRead);
    EXPECT_EQ(block.init(owner_.get(), opened.get()), Orbx::eOk);
    EXPECT_EQ(recordedOf(block), (Recorded{{edit_.modelSpace(), {reference}}}));
}

TEST_F(BlockInit, AgainItStartsAnewButForItsRecords) {
    const KtDbObjectId pump = edit_.define(L"pump");
    const KtDbObjectId representation = edit_.anonymous();
    KtDxBlock& block = monitor(valve_);
    must(block.update(representation));
    block.addCallback(client_.at(0));
    const OpenedObject<KtDbBlockTableRecord> opened(pump, KtDb::kForRead);
    EXPECT_EQ(block.init(owner_.get(), opened.get()), Orbx::eOk);
    EXPECT_EQ(block.blockId(), pump);
    EXPECT_TRUE(block.callbacks()->empty());
    EXPECT_EQ(toIds(block.recordIds()), (Ids{valve_, representation, pump}));
}

} // namespace
