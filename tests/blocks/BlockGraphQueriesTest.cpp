#include "tests/blocks/BlocksTest.h"
#include "tests/support/FailingAllocation.h"

namespace {

class BlockGraph : public BlocksTest {
protected:
    void recordAll() { must(blocks().scanBlockTable()); }

    void insertTimes(std::size_t count, KtDbObjectId block, KtDbObjectId container = {}) {
        for (std::size_t i = 0; i < count; ++i) {
            edit_.insert(block, container);
        }
    }

    /// Makes the monitor of one definition.
    void monitor(KtDbObjectId definition) {
        KtDxBlock* made = nullptr;
        const OpenedObject<KtDbBlockTableRecord> opened(definition, KtDb::kForRead);
        must(blocks().createBlockMonitor(made, opened.get()));
    }

    /// Has the monitor of a block believe that this many references lie in a container.
    void pretend(KtDbObjectId block, KtDbObjectId container, std::size_t count) {
        auto array = std::make_unique<KtDbObjectIdArray>(0, 8);
        for (std::size_t i = 0; i < count; ++i) {
            array->append(kNeverHandedOut);
        }
        monitorOf(block)->references()->insert_or_assign(container, std::move(array));
    }

    KtDbObjectId w_ = edit_.define(L"W");
    KtDbObjectId y_ = edit_.define(L"Y");
    KtDbObjectId v_ = edit_.define(L"V");
};

// Nested blocks

using NestedBlocks = BlockGraph;

TEST_F(NestedBlocks, OfOneLevel) {
    edit_.insert(w_);
    edit_.insert(y_, w_);
    recordAll();
    IdSet nested;
    EXPECT_EQ(blocks().collectNestedBlocks(edit_.modelSpace(), false, nested), Orbx::eOk);
    EXPECT_EQ(nested, IdSet{w_});
}

TEST_F(NestedBlocks, OfEveryLevel) {
    edit_.insert(w_);
    edit_.insert(y_, w_);
    edit_.insert(v_, y_);
    recordAll();
    IdSet nested;
    EXPECT_EQ(blocks().collectNestedBlocks(edit_.modelSpace(), true, nested), Orbx::eOk);
    EXPECT_EQ(nested, (IdSet{w_, y_, v_}));
}

TEST_F(NestedBlocks, AddToWhatIsThere) {
    edit_.insert(w_);
    recordAll();
    IdSet nested{y_};
    EXPECT_EQ(blocks().collectNestedBlocks(edit_.modelSpace(), false, nested), Orbx::eOk);
    EXPECT_EQ(nested, (IdSet{w_, y_}));
}

TEST_F(NestedBlocks, OfAContainerThatWasVisitedAreNone) {
    edit_.insert(w_);
    recordAll();
    IdSet nested;
    IdSet visited{edit_.modelSpace()};
    EXPECT_EQ(blocks().collectNestedBlocks(edit_.modelSpace(), true, nested, visited), Orbx::eOk);
    EXPECT_EQ(nested, IdSet{});
}

TEST_F(NestedBlocks, AreNotFollowedThroughABlockThatWasVisited) {
    edit_.insert(w_);
    edit_.insert(y_, w_);
    recordAll();
    IdSet nested;
    IdSet visited{w_};
    EXPECT_EQ(blocks().collectNestedBlocks(edit_.modelSpace(), true, nested, visited), Orbx::eOk);
    EXPECT_EQ(nested, IdSet{w_});
    EXPECT_EQ(visited, (IdSet{w_, edit_.modelSpace()}));
}

TEST_F(NestedBlocks, WhichAreVisitedIsTold) {
    edit_.insert(w_);
    edit_.insert(y_, w_);
    recordAll();
    IdSet nested;
    IdSet visited;
    must(blocks().collectNestedBlocks(edit_.modelSpace(), true, nested, visited));
    EXPECT_EQ(visited, (IdSet{edit_.modelSpace(), w_, y_}));
}

TEST_F(NestedBlocks, OfABlockThatContainsItselfThroughNestingDoNotLoop) {
    edit_.insert(y_, w_);
    recordAll();
    pretend(w_, y_, 1);
    IdSet nested;
    EXPECT_EQ(blocks().collectNestedBlocks(w_, true, nested), Orbx::eOk);
    EXPECT_EQ(nested, (IdSet{w_, y_}));
}

TEST_F(NestedBlocks, ABlockInsideItselfIsNotItsOwn) {
    recordAll();
    pretend(w_, w_, 1);
    IdSet nested;
    EXPECT_EQ(blocks().collectNestedBlocks(w_, true, nested), Orbx::eOk);
    EXPECT_EQ(nested, IdSet{});
}

TEST_F(NestedBlocks, AContainerCountsWithoutItsArray) {
    recordAll();
    monitorOf(w_)->references()->insert_or_assign(y_, nullptr);
    IdSet nested;
    EXPECT_EQ(blocks().collectNestedBlocks(y_, true, nested), Orbx::eOk);
    EXPECT_EQ(nested, IdSet{w_});
}

TEST_F(NestedBlocks, UpToAnEmptyEntryAreKept) {
    edit_.insert(w_);
    edit_.insert(v_, w_);
    const KtDbObjectId between = edit_.insert(v_);
    const KtDbObjectId last = edit_.define(L"last");
    edit_.insert(last);
    edit_.insert(last, w_);
    recordAll();
    blocks().addRepresentation(between, nullptr);
    IdSet nested;
    EXPECT_EQ(blocks().collectNestedBlocks(edit_.modelSpace(), true, nested), Orbx::eMissing);
    EXPECT_EQ(nested, (IdSet{w_, v_}));
}

TEST_F(NestedBlocks, BehindAnEmptyEntryAreThereOnceItIsFilled) {
    recordAll();
    const KtDbObjectId added = edit_.define(L"added");
    const KtDbObjectId last = edit_.define(L"last");
    edit_.insert(last);
    monitor(last);
    blocks().addRepresentation(added, nullptr);
    IdSet nested;
    EXPECT_EQ(blocks().collectNestedBlocks(edit_.modelSpace(), true, nested), Orbx::eMissing);
    monitor(added);
    EXPECT_EQ(blocks().collectNestedBlocks(edit_.modelSpace(), true, nested), Orbx::eOk);
    EXPECT_EQ(nested, IdSet{last});
}

TEST_F(NestedBlocks, WithoutMemoryAreMissing) {
    edit_.insert(w_);
    recordAll();
    KtDxBlocks& made = blocks();
    IdSet nested;
    const FailingAllocation none;
    EXPECT_EQ(made.collectNestedBlocks(edit_.modelSpace(), true, nested), Orbx::eMissing);
}

TEST_F(NestedBlocks, AreFoundHoweverDeepTheyLie) {
    constexpr std::size_t kDepth = 3000;
    Ids chain{edit_.modelSpace()};
    for (std::size_t i = 0; i < kDepth; ++i) {
        chain.push_back(edit_.define(L"level " + std::to_wstring(i)));
        edit_.insert(chain.back(), chain[i]);
    }
    recordAll();
    IdSet nested;
    EXPECT_EQ(blocks().collectNestedBlocks(edit_.modelSpace(), true, nested), Orbx::eOk);
    EXPECT_EQ(nested, IdSet(chain.begin() + 1, chain.end()));
}

// Counts

using CountReferences = BlockGraph;

TEST_F(CountReferences, StraightInAContainer) {
    insertTimes(3, w_);
    insertTimes(2, w_, y_);
    recordAll();
    EXPECT_EQ(blocks().countReferences(w_, edit_.modelSpace(), false), 3U);
    EXPECT_EQ(blocks().countReferences(w_, y_, false), 2U);
    EXPECT_EQ(blocks().countReferences(w_, v_, false), 0U);
}

TEST_F(CountReferences, ReachTwoLevels) {
    insertTimes(3, w_);
    insertTimes(2, y_, w_);
    insertTimes(1, y_);
    recordAll();
    EXPECT_EQ(blocks().countReferences(y_, edit_.modelSpace(), true), 7U);
}

TEST_F(CountReferences, DoNotReachAThirdLevel) {
    insertTimes(3, w_);
    insertTimes(2, y_, w_);
    insertTimes(1, y_);
    insertTimes(1, v_, w_);
    insertTimes(4, y_, v_);
    recordAll();
    EXPECT_EQ(blocks().countReferences(y_, edit_.modelSpace(), true), 7U);
}

TEST_F(CountReferences, OfIdsThatAreNoKeysAreNone) {
    insertTimes(1, w_);
    recordAll();
    pretend(w_, kNeverHandedOut, 5);
    EXPECT_EQ(blocks().countReferences(kNeverHandedOut, edit_.modelSpace(), true), 0U);
    EXPECT_EQ(blocks().countReferences(w_, kNeverHandedOut, false), 0U);
}

TEST_F(CountReferences, OfAVisitedBlockAreNoneWhenRecursive) {
    insertTimes(1, w_);
    recordAll();
    IdSet visited{w_};
    EXPECT_EQ(blocks().countReferences(w_, edit_.modelSpace(), true, visited), 0U);
    EXPECT_EQ(blocks().countReferences(w_, edit_.modelSpace(), false, visited), 1U);
}

TEST_F(CountReferences, MarkTheBlockAsVisitedWhenRecursiveOnly) {
    recordAll();
    IdSet visited;
    blocks().countReferences(w_, y_, false, visited);
    EXPECT_EQ(visited, IdSet{});
    blocks().countReferences(w_, y_, true, visited);
    EXPECT_EQ(visited, IdSet{w_});
}

TEST_F(CountReferences, OfAnEmptyEntryAreNone) {
    blocks().addRepresentation(KtDbObjectId(1), nullptr);
    EXPECT_EQ(blocks().countReferences(KtDbObjectId(1), edit_.modelSpace(), true), 0U);
    EXPECT_EQ(blocks().countReferences(KtDbObjectId(1), edit_.modelSpace(), false), 0U);
}

TEST_F(CountReferences, PassOverContainersWithoutArrayOrReferences) {
    insertTimes(1, w_);
    insertTimes(1, v_);
    recordAll();
    monitorOf(y_)->references()->insert_or_assign(w_, nullptr);
    pretend(y_, v_, 0);
    EXPECT_EQ(blocks().countReferences(y_, edit_.modelSpace(), true), 0U);
    EXPECT_EQ(blocks().countReferences(y_, w_, false), 0U);
}

TEST_F(CountReferences, PassOverContainersThatAreNullInvalidOrErased) {
    recordAll();
    const KtDbObjectId gone = edit_.define(L"gone");
    recordAll();
    edit_.purge(gone);
    pretend(y_, {}, 2);
    pretend(y_, kNeverHandedOut, 2);
    pretend(y_, gone, 2);
    EXPECT_EQ(blocks().countReferences(y_, gone, true), 0U);
    EXPECT_EQ(blocks().countReferences(y_, gone, false), 2U);
}

TEST_F(CountReferences, OfABlockThatContainsItselfThroughNestingDoNotLoop) {
    insertTimes(1, w_);
    insertTimes(2, y_, w_);
    recordAll();
    pretend(w_, y_, 1);
    EXPECT_EQ(blocks().countReferences(y_, edit_.modelSpace(), true), 2U);
}

TEST_F(CountReferences, WrapAroundAtThirtyTwoBits) {
    recordAll();

    class Many : public KtDxBlocks {
    public:
        using KtDxBlocks::countReferences;

        std::uint32_t countReferences(KtDbObjectId block, KtDbObjectId container, bool recursive,
                                      KtDbObjectIdSet& visited) override {
            return recursive ? KtDxBlocks::countReferences(block, container, recursive, visited)
                             : 0x80000000U;
        }
    } many;

    must(many.attachDocument(&record()));
    insertTimes(2, y_, w_);
    must(many.scanBlockTable());
    EXPECT_EQ(many.countReferences(y_, edit_.modelSpace(), true), 0U);
}

using CountInstances = BlockGraph;

TEST_F(CountInstances, InModelSpaceOnly) {
    insertTimes(2, w_);
    insertTimes(3, w_, edit_.paperSpace());
    recordAll();
    EXPECT_EQ(blocks().countInstances(w_, true, false), 2U);
}

TEST_F(CountInstances, OverModelSpaceAndEveryPaperSpaceLayout) {
    KtDbObjectId layout;
    must(kthost::addLayout(drawing(), L"*Paper_Space0", layout));
    insertTimes(2, w_);
    insertTimes(3, w_, edit_.paperSpace());
    insertTimes(4, w_, layout);
    insertTimes(5, w_, y_); // y is nowhere
    recordAll();
    EXPECT_EQ(blocks().countInstances(w_, false, false), 9U);
}

TEST_F(CountInstances, EachLayoutIsCountedAfresh) {
    insertTimes(1, y_);
    insertTimes(1, y_, edit_.paperSpace());
    insertTimes(2, w_, y_);
    recordAll();
    EXPECT_EQ(blocks().countInstances(w_, false, true), 4U);
}

// External drawings

class ExternalGraph : public BlockGraph {
protected:
    ExternalGraph() {
        other_ = attachDrawing(L"other", [this](DrawingEditor& editor) {
            const KtDbObjectId tank = editor.define(L"tank");
            foreignModelSpace_ = editor.modelSpace();
            editor.insert(tank);
            editor.insert(tank);
        });
        tank_ = kthost::recordByName(drawing(), L"other|tank");
        recordAll();
    }

    AttachedDrawing other_;
    KtDbObjectId tank_;
    KtDbObjectId foreignModelSpace_;
};

TEST_F(ExternalGraph, ReferencesInItsModelSpaceAreFiledUnderItsRecord) {
    EXPECT_EQ(recordedOf(*monitorOf(tank_)).begin()->first, other_.record);
    EXPECT_EQ(recordedOf(*monitorOf(tank_)).size(), 1U);
}

TEST_F(ExternalGraph, CountsThroughTheRecordThatAttachesIt) {
    insertTimes(3, other_.record);
    recordAll();
    EXPECT_EQ(blocks().countReferences(tank_, edit_.modelSpace(), true), 6U);
    EXPECT_EQ(blocks().countReferences(tank_, other_.record, true), 2U);
}

TEST_F(ExternalGraph, AContainerRecordedAsItsModelSpaceCountsLikeItsRecord) {
    insertTimes(3, other_.record);
    recordAll();
    monitorOf(tank_)->references()->clear();
    pretend(tank_, foreignModelSpace_, 2);
    EXPECT_EQ(blocks().countReferences(tank_, edit_.modelSpace(), true), 6U);
}

TEST_F(ExternalGraph, TheRecordOfADrawingIsFound) {
    EXPECT_EQ(blocks().findXrefBlock(foreignModelSpace_), other_.record);
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(ExternalGraph, TheOwnDrawingHasNoRecord) {
    EXPECT_TRUE(blocks().findXrefBlock(edit_.modelSpace()).isNull());
}

TEST_F(ExternalGraph, ADrawingThatIsNotAttachedHasNoRecord) {
    const kthost::Document& unrelated = open(L"unrelated");
    EXPECT_TRUE(blocks().findXrefBlock(unrelated.database()->modelSpaceId()).isNull());
}

TEST_F(ExternalGraph, ADetachedDrawingHasNoRecord) {
    must(kthost::detachDrawing(drawing(), other_.record));
    EXPECT_TRUE(blocks().findXrefBlock(foreignModelSpace_).isNull());
}

TEST_F(ExternalGraph, WithoutADrawingOfItsOwnThereIsNoRecord) {
    const KtDxBlocks unbound;
    EXPECT_TRUE(unbound.findXrefBlock(foreignModelSpace_).isNull());
}

TEST_F(ExternalGraph, RecordsThatWillNotOpenAreSkipped) {
    const OpenedObject<KtDbBlockTableRecord> held(w_, KtDb::kForWrite);
    EXPECT_EQ(blocks().findXrefBlock(foreignModelSpace_), other_.record);
}

TEST_F(ExternalGraph, TheSecondOfTwoDrawingsIsToldFromTheFirst) {
    KtDbObjectId modelSpace;
    const AttachedDrawing second =
        attachDrawing(L"second", [&](DrawingEditor& editor) { modelSpace = editor.modelSpace(); });
    EXPECT_EQ(blocks().findXrefBlock(modelSpace), second.record);
}

} // namespace
