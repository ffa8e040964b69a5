#include "blocks/OpenedObject.h"
#include "tests/blocks/BlocksTest.h"

#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>
#include <KtDbBlockTable.h>
#include <KtDbEvalGraph.h>

/// What the monitors do while somebody else has an object open for writing: what is only heard or let go of
/// is opened for notification, which always succeeds; what is read has to wait.
namespace {

template <typename T>
class Held {
public:
    explicit Held(KtDbObjectId id) : object_(id, KtDb::kForWrite, true) { must(object_.status()); }

private:
    OpenedObject<T> object_;
};

class WhileWritten : public BlockMonitorTest {
protected:
    Ids withAttributes(KtDbObjectId reference) const {
        Ids ids{valve_, reference};
        const Ids attributes = DrawingEditor::attributesOf(reference);
        ids.insert(ids.end(), attributes.begin(), attributes.end());
        return ids;
    }

    KtDbObjectId reference_ = edit_.insertWithAttributes(valve_, 1);
    KtDbObjectId attribute_ = DrawingEditor::attributesOf(reference_)[0];
    KtDxBlock& block_ = monitor(valve_);
};

TEST_F(WhileWritten, ARecordIsHeardAndLetGoOf) {
    const Held<KtDbBlockTableRecord> held(valve_);
    EXPECT_EQ(block_.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(heardBy(&block_), withAttributes(reference_));
    EXPECT_EQ(block_.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(heardBy(&block_), Ids{});
}

TEST_F(WhileWritten, AReferenceIsHeardAndLetGoOf) {
    const Held<KtDbBlockReference> held(reference_);
    EXPECT_EQ(block_.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(heardBy(&block_), withAttributes(reference_));
    EXPECT_EQ(block_.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(heardBy(&block_), Ids{});
}

TEST_F(WhileWritten, AnAttributeIsHeardAndLetGoOf) {
    const Held<KtDbAttribute> held(attribute_);
    EXPECT_EQ(block_.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(heardBy(&block_), withAttributes(reference_));
    EXPECT_EQ(block_.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(heardBy(&block_), Ids{});
}

TEST_F(WhileWritten, WhatWasLeftBehindIsLetGoOf) {
    must(block_.setEnabled(true));
    faults().fail(kthost::HostCall::removeReactor, 1, Orbx::eTooManyReaders, true);
    must(block_.setEnabled(false));
    faults().reset();
    const Held<KtDbBlockReference> held(reference_);
    owner_->reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(WhileWritten, AnErasedAttributeIsLetGoOf) {
    must(block_.setEnabled(true));
    must(kthost::eraseAttribute(drawing(), attribute_));
    EXPECT_EQ(block_.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(heardBy(&block_), Ids{});
}

TEST_F(WhileWritten, ARecordCannotBeAskedForItsReferences) {
    const Held<KtDbBlockTableRecord> held(valve_);
    EXPECT_EQ(block_.refresh(), Orbx::eWasOpenForWrite);
}

TEST_F(WhileWritten, AGraphCountsAsNone) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.represent(pump, L"1");
    KtDbEvalGraph* graph = nullptr;
    {
        const OpenedObject<KtDbBlockTableRecord> opened(pump, KtDb::kForRead);
        must(KtDbEvalGraph::getGraph(graph, opened.get(), L"ORBX_ENHANCEDBLOCK", KtDb::kForWrite));
    }
    const OpenedObject<KtDbEvalGraph> held(graph);
    EXPECT_EQ(toIds(monitor(pump).recordIds()), Ids{pump});
}

class TableWhileWritten : public BlocksTest {
protected:
    KtDbObjectId valve_ = edit_.define(L"valve");
};

TEST_F(TableWhileWritten, IsHeardAndLetGoOf) {
    KtDxBlocks& made = blocks();
    const Held<KtDbBlockTable> held(drawing().blockTableId());
    EXPECT_EQ(made.setEnabled(true), Orbx::eOk);
    EXPECT_EQ(heardBy(&made), Ids{drawing().blockTableId()});
    EXPECT_EQ(made.setEnabled(false), Orbx::eOk);
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(TableWhileWritten, IsLetGoOfByAMonitorThatWasResetWhileEnabled) {
    auto made = std::make_unique<KtDxBlocks>();
    must(made->attachDocument(&record()));
    must(made->setEnabled(true));
    made->reset();
    const Held<KtDbBlockTable> held(drawing().blockTableId());
    made.reset();
    EXPECT_EQ(reactorCount(), 0U);
}

TEST_F(TableWhileWritten, CannotBeAttachedTo) {
    KtDxBlocks made;
    const Held<KtDbBlockTable> held(drawing().blockTableId());
    EXPECT_EQ(made.attachDocument(&record()), Orbx::eWasOpenForWrite);
    EXPECT_TRUE(made.modelSpaceId().isNull());
}

TEST_F(TableWhileWritten, ARecordIsPassedOverByTheScan) {
    KtDxBlocks& made = blocks();
    const std::int32_t before = made.monitoredCount();
    const Held<KtDbBlockTableRecord> held(valve_);
    EXPECT_EQ(made.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(made.monitoredCount(), before - 1);
}

TEST_F(TableWhileWritten, AnErasedRecordIsNotOpenedUnlessAskedFor) {
    edit_.purge(valve_);
    EXPECT_EQ(OpenedObject<KtDbBlockTableRecord>(valve_, KtDb::kForRead).status(), Orbx::eWasErased);
    EXPECT_EQ(OpenedObject<KtDbBlockTableRecord>(valve_, KtDb::kForRead, true).status(), Orbx::eOk);
}

} // namespace
