#include "tests/blocks/BlocksTest.h"

#include <KtDbBlockRepresentation.h>
#include <KtDbTable.h>
#include <KtRxClass.h>

namespace {

using kthost::HostCall;

class Scan : public BlocksTest {
protected:
    Scan() { must(blocks_.attachDocument(&record())); }

    KtDxBlock* monitorFor(KtDbObjectId id) const { return monitorIn(blocks_, id); }

    KtDxBlocks blocks_;
};

TEST_F(Scan, WithoutADrawingSomethingIsMissing) {
    KtDxBlocks blocks;
    EXPECT_EQ(blocks.scanBlockTable(), Orbx::eMissing);
}

TEST_F(Scan, EveryRecordIsMonitored) {
    const KtDbObjectId valve = edit_.define(L"valve");
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(keysOf(blocks_), (IdSet{edit_.modelSpace(), edit_.paperSpace(), valve}));
    EXPECT_EQ(blocks_.monitoredCount(), 3);
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(Scan, AgainCountsTheKnownOnesAnew) {
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(blocks_.monitoredCount(), 2);
}

TEST_F(Scan, LayoutsAreListedInTableOrderEachTime) {
    KtDbObjectId layout;
    must(kthost::addLayout(drawing(), L"*Paper_Space0", layout));
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(toIds(blocks_.layoutIds()), (Ids{edit_.modelSpace(), edit_.paperSpace(), layout}));
}

TEST_F(Scan, ErasedRecordsAreSkippedAndKeepTheirMonitor) {
    const KtDbObjectId valve = edit_.define(L"valve");
    must(blocks_.scanBlockTable());
    edit_.purge(valve);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(blocks_.monitoredCount(), 2);
    EXPECT_NE(monitorFor(valve), nullptr);
}

TEST_F(Scan, ARecordErasedBeforeItWasSeenIsNotMonitored) {
    const KtDbObjectId valve = edit_.define(L"valve");
    edit_.purge(valve);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorFor(valve), nullptr);
}

TEST_F(Scan, KnownBlocksLookAtTheirReferencesAgain) {
    const KtDbObjectId valve = edit_.define(L"valve");
    must(blocks_.scanBlockTable());
    const KtDbObjectId reference = edit_.insert(valve);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(recordedOf(*monitorFor(valve)), (Recorded{{edit_.modelSpace(), {reference}}}));
}

TEST_F(Scan, ARecordThatWillNotOpenIsSkipped) {
    const KtDbObjectId held = edit_.define(L"held");
    const KtDbObjectId valve = edit_.define(L"valve");
    const OpenedObject<KtDbBlockTableRecord> writing(held, KtDb::kForWrite);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorFor(held), nullptr);
    EXPECT_NE(monitorFor(valve), nullptr);
    EXPECT_EQ(blocks_.monitoredCount(), 3);
}

TEST_F(Scan, ARecordIdThatCannotBeHadIsSkipped) {
    const KtDbObjectId valve = edit_.define(L"valve");
    faults().fail(HostCall::getRecordId, 1, Orbx::eOutOfRange);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_NE(monitorFor(valve), nullptr);
    EXPECT_EQ(blocks_.monitoredCount(), 2);
}

TEST_F(Scan, AMonitorThatCannotBeMadeIsSkipped) {
    const KtDbObjectId valve = edit_.define(L"valve");
    const KtDbObjectId later = edit_.define(L"later");
    faults().fail(HostCall::getBlockReferenceIds, 3, Orbx::eOutOfRange); // behind the two layouts
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorFor(valve), nullptr);
    EXPECT_NE(monitorFor(later), nullptr);
    EXPECT_EQ(blocks_.monitoredCount(), 3);
}

TEST_F(Scan, ABlockTableThatWillNotOpenIsTheHostsStatus) {
    blocks_.setRescanNeeded(true);
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eTooManyReaders);
    EXPECT_TRUE(blocks_.isRescanNeeded());
}

TEST_F(Scan, ClearsTheNeedOfARescan) {
    blocks_.setRescanNeeded(true);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_FALSE(blocks_.isRescanNeeded());
}

TEST_F(Scan, AnEmptyEntryEndsItWithEverythingClosed) {
    const KtDbObjectId empty = edit_.define(L"empty");
    const KtDbObjectId behind = edit_.define(L"behind");
    blocks_.addRepresentation(empty, nullptr);
    blocks_.setRescanNeeded(true);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eMissing);
    EXPECT_EQ(monitorFor(behind), nullptr);
    EXPECT_TRUE(blocks_.isRescanNeeded());
    EXPECT_EQ(openCount(), 0U);
}

TEST_F(Scan, ARepresentationBehindItsDefinitionJoinsIt) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    must(blocks_.scanBlockTable());
    const KtDbObjectId first = edit_.represent(pump, L"1");
    const KtDbObjectId reference = edit_.insert(first);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorFor(first), monitorFor(pump));
    EXPECT_EQ(recordedOf(*monitorFor(pump)), (Recorded{{edit_.modelSpace(), {reference}}}));
    EXPECT_EQ(blocks_.monitoredCount(), 4);
}

TEST_F(Scan, ARepresentationBeforeItsDefinitionKeepsAMonitorOfItsOwn) {
    const KtDbObjectId older = edit_.anonymous();
    edit_.insert(older);
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    edit_.adopt(pump, older, L"1");
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    ASSERT_NE(monitorFor(older), nullptr);
    EXPECT_NE(monitorFor(older), monitorFor(pump));
    EXPECT_EQ(monitorFor(older)->blockId(), older);
    EXPECT_EQ(toIds(monitorFor(pump)->recordIds()), (Ids{pump, older}));
}

TEST_F(Scan, AnAnonymousRecordWithoutReferencesIsItsOwnKey) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    must(blocks_.scanBlockTable());
    const KtDbObjectId first = edit_.represent(pump, L"1");
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorFor(first)->blockId(), first);
}

TEST_F(Scan, ErasedReferencesAreNotAskedWhatARecordRepresents) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    must(blocks_.scanBlockTable());
    const KtDbObjectId first = edit_.represent(pump, L"1");
    edit_.erase(edit_.insert(first)); // the host lists it among the erased ones only
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorFor(first)->blockId(), first);
}

TEST_F(Scan, AnAnonymousRecordThatRepresentsNothingIsItsOwnKey) {
    const KtDbObjectId drawn = edit_.anonymous();
    edit_.insert(drawn);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorFor(drawn)->blockId(), drawn);
}

/// "*U1", not seen yet, represents "pump", which is known.
class ScanOfAReferenceThatWillNotOpen : public Scan {
protected:
    ScanOfAReferenceThatWillNotOpen() { must(blocks_.scanBlockTable()); }

    void scan() {
        // Before it: the table, three known records (each for the scan and for its monitor), the record
        // itself.
        faults().fail(HostCall::openObject, 9, Orbx::eTooManyReaders);
        EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    }

    KtDbObjectId pump_ = edit_.defineDynamic(L"pump");
    KtDbObjectId first_;
};

TEST_F(ScanOfAReferenceThatWillNotOpen, LeavesTheRecordItsOwnKeyIfItIsTheOnlyOne) {
    first_ = edit_.represent(pump_, L"1");
    edit_.insert(first_);
    scan();
    EXPECT_EQ(monitorFor(first_)->blockId(), first_);
}

TEST_F(ScanOfAReferenceThatWillNotOpen, AsksTheNextOne) {
    first_ = edit_.represent(pump_, L"1");
    edit_.insert(first_);
    edit_.insert(first_);
    scan();
    EXPECT_EQ(monitorFor(first_), monitorFor(pump_));
}

/// An extension registered for tables, of a class that is no block representation.
class TableExtension : public KtRxObject {
public:
    TableExtension() { KtDbTable::desc()->addX(KtDbBlockRepresentation::desc(), this); }

    TableExtension(const TableExtension&) = delete;
    TableExtension& operator=(const TableExtension&) = delete;

    ~TableExtension() override { KtDbTable::desc()->removeX(KtDbBlockRepresentation::desc()); }
};

TEST_F(Scan, TheFirstReferenceThatCarriesARepresentationDecides) {
    const TableExtension noRepresentation;
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    must(blocks_.scanBlockTable());
    KtDbObjectId table;
    must(ktdbCreateTable(&drawing(), edit_.modelSpace(), {}, 1, 1, table));
    const KtDbObjectId drawn = kthost::definitionOf(table);
    edit_.adopt(pump, drawn, L"1");
    const KtDbObjectId second = edit_.insert(drawn);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorFor(drawn), monitorFor(pump));
    EXPECT_EQ(recordedOf(*monitorFor(pump)), (Recorded{{edit_.modelSpace(), {table, second}}}));
}

TEST_F(Scan, TheFirstExtensionDecidesAlsoWhenItNamesNoDefinition) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    must(blocks_.scanBlockTable());
    const KtDbObjectId first = edit_.represent(pump, L"1");
    edit_.insert(first);
    edit_.insert(first);
    faults().fail(HostCall::originalBlockTableRecord, 1, Orbx::eOutOfRange);
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    EXPECT_EQ(monitorFor(first)->blockId(), first);
}

TEST_F(Scan, ReferencesThatCannotBeListedLeaveTheRecordItsOwnKey) {
    const KtDbObjectId pump = edit_.defineDynamic(L"pump");
    must(blocks_.scanBlockTable());
    const KtDbObjectId first = edit_.represent(pump, L"1");
    edit_.insert(first);
    faults().fail(HostCall::getBlockReferenceIds, 4, Orbx::eOutOfRange); // behind three known records
    EXPECT_EQ(blocks_.scanBlockTable(), Orbx::eOk);
    // The record's own references cannot be listed a second time either way: the fault strikes once.
    EXPECT_EQ(monitorFor(first)->blockId(), first);
}

// Making one monitor

using MakeMonitor = Scan;

TEST_F(MakeMonitor, NeedsARecord) {
    KtDxBlock* block = nullptr;
    EXPECT_EQ(blocks_.createBlockMonitor(block, nullptr), Orbx::eMissing);
    EXPECT_EQ(block, nullptr);
}

TEST_F(MakeMonitor, RefusesARecordThatIsMonitored) {
    KtDxBlock* block = monitorFor(edit_.modelSpace());
    const KtDxBlock* known = block;
    const OpenedObject<KtDbBlockTableRecord> opened(edit_.modelSpace(), KtDb::kForRead);
    EXPECT_EQ(blocks_.createBlockMonitor(block, opened.get()), Orbx::eDuplicateRecordId);
    EXPECT_EQ(block, nullptr);
    EXPECT_EQ(monitorFor(edit_.modelSpace()), known);
}

TEST_F(MakeMonitor, ReplacesAnEmptyEntry) {
    const KtDbObjectId valve = edit_.define(L"valve");
    blocks_.addRepresentation(valve, nullptr);
    const OpenedObject<KtDbBlockTableRecord> opened(valve, KtDb::kForRead);
    KtDxBlock* block = nullptr;
    EXPECT_EQ(blocks_.createBlockMonitor(block, opened.get()), Orbx::eOk);
    EXPECT_NE(block, nullptr);
    EXPECT_EQ(monitorFor(valve), block);
}

TEST_F(MakeMonitor, PassesItsStatusOn) {
    const KtDbObjectId valve = edit_.define(L"valve");
    const OpenedObject<KtDbBlockTableRecord> opened(valve, KtDb::kForRead);
    faults().fail(HostCall::getBlockReferenceIds, 1, Orbx::eOutOfRange);
    KtDxBlock* block = nullptr;
    EXPECT_EQ(blocks_.createBlockMonitor(block, opened.get()), Orbx::eOutOfRange);
    EXPECT_EQ(block, nullptr);
    EXPECT_EQ(monitorFor(valve), nullptr);
}

TEST_F(MakeMonitor, AKeyKeepsTheMonitorThatItHas) {
    KtDxBlock* known = monitorFor(edit_.modelSpace());
    blocks_.addRepresentation(edit_.modelSpace(), monitorFor(edit_.paperSpace()));
    EXPECT_EQ(monitorFor(edit_.modelSpace()), known);
}

} // namespace
