#include "tables/TableQueries.h"

#include <KtDbBlockTableRecord.h>
#include <KtDbTable.h>
#include <ktdx/KtDxNotify.h>

#include "blocks/OpenedObject.h"
#include "kthost/database/BlockTableRecord.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/ExternalReferences.h"
#include "kthost/database/OpenObjects.h"
#include "kthost/database/References.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/HostTrace.h"
#include "tests/support/MadeUpRecord.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using kthost::HostCall;
using testing::ElementsAre;
using testing::IsEmpty;

using Ids = std::vector<KtDbObjectId>;

class TableQueries : public ApplicationTest {
protected:
    kthost::Database& database() { return *document_.database(); }

    /// A table entity in model space.
    KtDbObjectId drawTable() {
        KtDbObjectId table;
        EXPECT_EQ(ktdbCreateTable(&database(), database().modelSpaceId(), {}, 2, 3, table), Orbx::eOk);
        return table;
    }

    KtDbObjectId addAnonymous(wchar_t letter) {
        KtDbObjectId record;
        EXPECT_EQ(kthost::addAnonymousDefinition(database(), letter, record), Orbx::eOk);
        return record;
    }

    KtDbObjectId addDefinition(const std::wstring& name) {
        KtDbObjectId record;
        EXPECT_EQ(kthost::addDefinition(database(), name, record), Orbx::eOk);
        return record;
    }

    KtDbObjectId place(KtDbObjectId definition, KtDbObjectId container) {
        KtDbObjectId reference;
        EXPECT_EQ(kthost::insertReference(database(), {definition, container, {}, {}, {}}, reference),
                  Orbx::eOk);
        return reference;
    }

    KtDbObjectId place(KtDbObjectId definition) { return place(definition, database().modelSpaceId()); }

    /// What the query of table blocks appends; it has to succeed and to leave nothing open.
    Ids tableBlocks() {
        KtArray<KtDbObjectId> ids;
        EXPECT_EQ(ktdxGetBlockRecordIdsOfKtDbTables(&document_, &ids), 1);
        EXPECT_THAT(kthost::openObjects(), IsEmpty());
        return {ids.begin(), ids.end()};
    }

    /// What the query of table entities appends; it has to succeed and to leave nothing open.
    Ids tables() {
        KtArray<KtDbObjectId> ids;
        EXPECT_EQ(ktdxGetKtDbTableIds(&document_, &ids), 1);
        EXPECT_THAT(kthost::openObjects(), IsEmpty());
        return {ids.begin(), ids.end()};
    }

    static bool isTable(KtDbObjectId id) {
        const OpenedObject<KtDbBlockTableRecord> record(id, KtDb::kForRead);
        EXPECT_TRUE(record);
        return isTableBlock(record.get());
    }
};

TEST_F(TableQueries, AppendNothingInADrawingWithoutTables) {
    place(addDefinition(L"R"));
    EXPECT_THAT(tableBlocks(), IsEmpty());
    EXPECT_THAT(tables(), IsEmpty());
}

TEST_F(TableQueries, ReadTheRecordsOfTheTableAndThenThoseThatDrawTables) {
    const KtDbObjectId block = kthost::definitionOf(drawTable());
    const HostTrace trace;
    tables();
    EXPECT_THAT(trace.calls({{database().blockTableId(), "table"}, {block, "block"}}),
                ElementsAre("open table read", "newIterator table", "start table atBeginning skipErased",
                            "open block read", "close block", "close table", "open block read",
                            "getBlockReferenceIds block directOnly forceValidity", "close block"));
}

TEST_F(TableQueries, FindTheBlockAndTheReferenceOfATable) {
    const KtDbObjectId table = drawTable();
    EXPECT_THAT(tableBlocks(), ElementsAre(kthost::definitionOf(table)));
    EXPECT_THAT(tables(), ElementsAre(table));
}

TEST_F(TableQueries, ListTablesInTheOrderOfTheBlockTable) {
    const KtDbObjectId first = drawTable();
    addDefinition(L"R");
    const KtDbObjectId second = drawTable();
    EXPECT_THAT(tableBlocks(), ElementsAre(kthost::definitionOf(first), kthost::definitionOf(second)));
    EXPECT_THAT(tables(), ElementsAre(first, second));
}

TEST_F(TableQueries, ListReferencesBlockByBlockInTheOrderThatTheHostGives) {
    const KtDbObjectId first = addAnonymous(L'T');
    const KtDbObjectId second = addAnonymous(L'T');
    const KtDbObjectId ofSecond = place(second);
    const KtDbObjectId ofFirst = place(first);
    const KtDbObjectId alsoOfFirst = place(first);
    EXPECT_THAT(tables(), ElementsAre(ofFirst, alsoOfFirst, ofSecond));
}

TEST_F(TableQueries, ReportEveryReferenceWhateverItsClass) {
    const KtDbObjectId reference = place(addAnonymous(L'T'));
    EXPECT_THAT(tables(), ElementsAre(reference));
}

TEST_F(TableQueries, ReportDirectReferencesOnly) {
    const KtDbObjectId outer = addDefinition(L"outer");
    const KtDbObjectId inner = place(addAnonymous(L'T'), outer);
    place(outer);
    place(outer);
    EXPECT_THAT(tables(), ElementsAre(inner));
}

TEST_F(TableQueries, ListATableBlockWithoutReferences) {
    const KtDbObjectId block = addAnonymous(L'T');
    EXPECT_THAT(tableBlocks(), ElementsAre(block));
    EXPECT_THAT(tables(), IsEmpty());
}

TEST_F(TableQueries, PassOverErasedTables) {
    const KtDbObjectId table = drawTable();
    const KtDbObjectId kept = drawTable();
    ASSERT_EQ(kthost::eraseReference(database(), table), Orbx::eOk);
    EXPECT_THAT(tables(), ElementsAre(kept));
}

TEST_F(TableQueries, PassOverErasedTableBlocks) {
    const KtDbObjectId block = addAnonymous(L'T');
    ASSERT_EQ(kthost::purgeDefinition(database(), block), Orbx::eOk);
    EXPECT_THAT(tableBlocks(), IsEmpty());
}

TEST_F(TableQueries, PassOverATableBlockOfAnExternalReference) {
    const auto load = [] {
        auto drawing = std::make_unique<kthost::Database>(L"other");
        KtDbObjectId table;
        EXPECT_EQ(ktdbCreateTable(drawing.get(), drawing->modelSpaceId(), {}, 1, 1, table), Orbx::eOk);
        return drawing;
    };
    KtDbObjectId record;
    ASSERT_EQ(kthost::attachDrawing(database(), L"other", load, record), Orbx::eOk);
    place(record);
    EXPECT_THAT(tableBlocks(), IsEmpty());
    EXPECT_THAT(tables(), IsEmpty());
}

TEST_F(TableQueries, KeepWhatIsInTheArrayInFront) {
    const KtDbObjectId table = drawTable();
    const KtDbObjectId before(4711);
    KtArray<KtDbObjectId> blocks{before};
    KtArray<KtDbObjectId> tables{before};
    ktdxGetBlockRecordIdsOfKtDbTables(&document_, &blocks);
    ktdxGetKtDbTableIds(&document_, &tables);
    EXPECT_THAT(Ids(blocks.begin(), blocks.end()), ElementsAre(before, kthost::definitionOf(table)));
    EXPECT_THAT(Ids(tables.begin(), tables.end()), ElementsAre(before, table));
}

TEST_F(TableQueries, ReportEachTableTwiceWhenAskedTwiceIntoOneArray) {
    const KtDbObjectId first = drawTable();
    const KtDbObjectId second = drawTable();
    KtArray<KtDbObjectId> ids;
    ktdxGetKtDbTableIds(&document_, &ids);
    ktdxGetKtDbTableIds(&document_, &ids);
    EXPECT_THAT(Ids(ids.begin(), ids.end()), ElementsAre(first, second, first, second));
}

TEST_F(TableQueries, MakeTheRecordOfADocumentThatHasNone) {
    application_->removeData(&document_);
    tableBlocks();
    EXPECT_NE(application_->getData(&document_, false), nullptr);
    application_->removeData(&document_);
    tables();
    EXPECT_NE(application_->getData(&document_, false), nullptr);
}

TEST_F(TableQueries, FailWithoutADocument) {
    KtArray<KtDbObjectId> ids;
    EXPECT_EQ(ktdxGetBlockRecordIdsOfKtDbTables(nullptr, &ids), 0);
    EXPECT_EQ(ktdxGetKtDbTableIds(nullptr, &ids), 0);
    EXPECT_TRUE(ids.isEmpty());
}

TEST_F(TableQueries, FailWithoutAnArrayAndMakeNoRecord) {
    application_->removeData(&document_);
    EXPECT_EQ(ktdxGetBlockRecordIdsOfKtDbTables(&document_, nullptr), 0);
    EXPECT_EQ(ktdxGetKtDbTableIds(&document_, nullptr), 0);
    EXPECT_EQ(application_->getData(&document_, false), nullptr);
}

TEST_F(TableQueries, FailWithoutAnApplication) {
    drawTable();
    application_.reset();
    KtArray<KtDbObjectId> ids;
    EXPECT_EQ(ktdxGetBlockRecordIdsOfKtDbTables(&document_, &ids), 0);
    EXPECT_EQ(ktdxGetKtDbTableIds(&document_, &ids), 0);
    EXPECT_TRUE(ids.isEmpty());
}

TEST_F(TableQueries, FailForADocumentWithoutADrawing) {
    kthost::Document& empty = openWithoutDrawing(L"empty");
    KtArray<KtDbObjectId> ids;
    EXPECT_EQ(ktdxGetBlockRecordIdsOfKtDbTables(&empty, &ids), 0);
    EXPECT_EQ(ktdxGetKtDbTableIds(&empty, &ids), 0);
}

/// A record of a document that lost its drawing after the record was made.
class RecordWithoutDrawing : public KtDxDocument {
public:
    using KtDxDocument::KtDxDocument;

    KtDbDatabase* database() const override { return nullptr; }
};

class ApplicationWithoutDrawings : public KtDxApplication {
public:
    KtDxDocument* getData(KtApDocument* /*document*/, bool /*create*/) override { return &record_; }

private:
    RecordWithoutDrawing record_{nullptr};
};

TEST_F(TableQueries, FailForARecordWithoutADrawing) {
    application_.reset();
    const ApplicationWithoutDrawings application;
    KtArray<KtDbObjectId> ids;
    EXPECT_EQ(ktdxGetBlockRecordIdsOfKtDbTables(&document_, &ids), 0);
    EXPECT_EQ(ktdxGetKtDbTableIds(&document_, &ids), 0);
}

TEST_F(TableQueries, AppendNothingWhenTheBlockTableCannotBeOpened) {
    drawTable();
    faults().fail(HostCall::openObject, 1, Orbx::eWasOpenForWrite);
    EXPECT_THAT(tableBlocks(), IsEmpty());
    faults().fail(HostCall::openObject, 1, Orbx::eWasOpenForWrite);
    EXPECT_THAT(tables(), IsEmpty());
}

TEST_F(TableQueries, AppendNothingWithoutAnIterator) {
    drawTable();
    faults().fail(HostCall::newTableIterator, 1, Orbx::eInvalidInput);
    EXPECT_THAT(tableBlocks(), IsEmpty());
    faults().fail(HostCall::newTableIterator, 1, Orbx::eInvalidInput);
    EXPECT_THAT(tables(), IsEmpty());
}

/// Two tables, the blocks of which stand last in the block table.
class TwoTables : public TableQueries {
protected:
    KtDbObjectId first_ = drawTable();
    KtDbObjectId second_ = drawTable();
    KtDbObjectId firstBlock_ = kthost::definitionOf(first_);
    KtDbObjectId secondBlock_ = kthost::definitionOf(second_);
};

TEST_F(TwoTables, AreFoundButForTheOneWhoseBlockWillNotOpen) {
    const OpenedObject<KtDbBlockTableRecord> inUse(firstBlock_, KtDb::kForWrite);
    ASSERT_TRUE(inUse);
    KtArray<KtDbObjectId> blocks;
    EXPECT_EQ(ktdxGetBlockRecordIdsOfKtDbTables(&document_, &blocks), 1);
    EXPECT_THAT(Ids(blocks.begin(), blocks.end()), ElementsAre(secondBlock_));
    KtArray<KtDbObjectId> tables;
    EXPECT_EQ(ktdxGetKtDbTableIds(&document_, &tables), 1);
    EXPECT_THAT(Ids(tables.begin(), tables.end()), ElementsAre(second_));
}

TEST_F(TwoTables, AreFoundButForTheOneWhoseBlockWillNotOpenTheSecondTime) {
    // The walk opens the table and its four records; the queries of references open the two blocks again.
    faults().fail(HostCall::openObject, 6, Orbx::eWasOpenForWrite);
    EXPECT_THAT(tables(), ElementsAre(second_));
}

TEST_F(TwoTables, AreFoundButForTheOneWhoseReferencesCannotBeListed) {
    faults().fail(HostCall::getBlockReferenceIds, 1, Orbx::eInvalidInput);
    EXPECT_THAT(tables(), ElementsAre(second_));
}

TEST_F(TwoTables, AreFoundButForTheOneWhoseIdCannotBeHad) {
    faults().fail(HostCall::getRecordId, 3, Orbx::eOutOfRange);
    EXPECT_THAT(tableBlocks(), ElementsAre(secondBlock_));
}

TEST_F(TwoTables, AreFoundButForTheOneWhoseNameCannotBeHad) {
    faults().fail(HostCall::getName, 1, Orbx::eInvalidInput);
    EXPECT_THAT(tableBlocks(), ElementsAre(secondBlock_));
}

TEST_F(TwoTables, AreAllOrNothingWhenThereIsNoMemory) {
    tables(); // the record is there from now on
    std::size_t k = 0;
    bool failed = true;
    while (failed) {
        KtArray<KtDbObjectId> ids;
        std::int32_t result = 0;
        {
            const FailingAllocation failing(++k);
            try {
                result = ktdxGetKtDbTableIds(&document_, &ids);
            } catch (const std::bad_alloc&) { // the host's own, which passes through
            }
            failed = failing.hasFailed();
        }
        EXPECT_EQ(ids.length(), result == 0 ? 0U : 2U) << k;
        EXPECT_THAT(kthost::openObjects(), IsEmpty()) << k;
    }
    EXPECT_GT(k, 3U);
}

TEST_F(TableQueries, TakeAnAnonymousBlockWithAnUppercaseTForATable) {
    EXPECT_TRUE(isTable(addAnonymous(L'T')));
}

TEST_F(TableQueries, TakeNoOtherLetterForATable) {
    EXPECT_FALSE(isTable(addAnonymous(L't')));
    EXPECT_FALSE(isTable(addAnonymous(L'U')));
    EXPECT_FALSE(isTable(addAnonymous(L'D')));
}

TEST_F(TableQueries, TakeNoBlockThatIsNotAnonymousForATable) {
    EXPECT_FALSE(isTable(addDefinition(L"XT1")));
    EXPECT_FALSE(isTable(addDefinition(L"TT")));
}

TEST_F(TableQueries, TakeABlockForATableByItsSecondCharacterAlone) {
    EXPECT_TRUE(isTableBlock(std::make_unique<kthost::BlockTableRecord>(L"*T", false).get()));
    EXPECT_TRUE(isTableBlock(std::make_unique<kthost::BlockTableRecord>(L"*Text", false).get()));
    EXPECT_FALSE(isTableBlock(std::make_unique<kthost::BlockTableRecord>(L"**T", false).get()));
}

TEST_F(TableQueries, TakeNoBlockWithANameOfOneCharacterForATable) {
    EXPECT_FALSE(isTableBlock(std::make_unique<kthost::BlockTableRecord>(L"*", false).get()));
}

TEST_F(TableQueries, TakeNoLayoutForATable) {
    KtDbObjectId layout;
    ASSERT_EQ(kthost::addLayout(database(), L"*Top", layout), Orbx::eOk);
    EXPECT_FALSE(isTable(layout));
    EXPECT_FALSE(isTable(database().modelSpaceId()));
}

TEST_F(TableQueries, TakeNothingForNoTable) {
    EXPECT_FALSE(isTableBlock(nullptr));
}

TEST_F(TableQueries, TakeABlockForNoTableWhoseNameIsNullOrEmpty) {
    EXPECT_FALSE(isTableBlock(std::make_unique<MadeUpRecord>(nullptr).get()));
    EXPECT_FALSE(isTableBlock(std::make_unique<MadeUpRecord>(std::wstring(L"\0T", 2).c_str()).get()));
}

TEST_F(TableQueries, TakeABlockWhoseNameCannotBeHadForNoTable) {
    const KtDbObjectId block = addAnonymous(L'T');
    faults().fail(HostCall::getName, 1, Orbx::eInvalidInput);
    EXPECT_FALSE(isTable(block));
}

} // namespace
