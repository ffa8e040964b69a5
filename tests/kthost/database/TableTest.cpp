#include "tests/kthost/database/DrawingTest.h"

#include <KtDbTable.h>

namespace kthost {

namespace {

class Table : public DrawingTest {
protected:
    KtDbObjectId draw(std::uint32_t rows, std::uint32_t columns) {
        KtDbObjectId id;
        EXPECT_EQ(ktdbCreateTable(&drawing, drawing.modelSpaceId(), {1, 2, 3}, rows, columns, id), Orbx::eOk);
        return id;
    }
};

TEST_F(Table, IsAReferenceToAnAnonymousRecordOfItsOwn) {
    const KtDbObjectId first = draw(2, 3);
    const KtDbObjectId second = draw(1, 1);
    EXPECT_EQ(recordName(definitionOf(first)), L"*T1");
    EXPECT_EQ(recordName(definitionOf(second)), L"*T2");
    EXPECT_EQ(living(definitionOf(first)), std::vector<KtDbObjectId>({first}));
    auto* table = openAs<KtDbTable>(first, KtDb::kForRead);
    EXPECT_TRUE(table->isKindOf(KtDbBlockReference::desc()));
    EXPECT_EQ(table->isA(), KtDbTable::desc());
    EXPECT_EQ(table->rows(), 2U);
    EXPECT_EQ(table->columns(), 3U);
    EXPECT_EQ(table->position(), (KtGePoint3d{1, 2, 3}));
    EXPECT_STREQ(table->cell(0, 0), L"");
}

TEST_F(Table, KeepsWhatStaysInsideWhenItsSizeChanges) {
    auto* table = openAs<KtDbTable>(draw(2, 2), KtDb::kForWrite);
    ASSERT_EQ(table->setCell(0, 1, L"stays"), Orbx::eOk);
    ASSERT_EQ(table->setCell(1, 0, L"goes"), Orbx::eOk);
    ASSERT_EQ(table->setSize(1, 3), Orbx::eOk);
    EXPECT_STREQ(table->cell(0, 1), L"stays");
    EXPECT_STREQ(table->cell(0, 2), L"");
    ASSERT_EQ(table->setSize(2, 3), Orbx::eOk);
    EXPECT_STREQ(table->cell(1, 0), L"");
}

TEST_F(Table, RefusesCellsOutsideAndNoText) {
    auto* table = openAs<KtDbTable>(draw(2, 2), KtDb::kForWrite);
    EXPECT_EQ(table->setCell(2, 0, L"x"), Orbx::eOutOfRange);
    EXPECT_EQ(table->setCell(0, 2, L"x"), Orbx::eOutOfRange);
    EXPECT_EQ(table->setCell(0, 0, nullptr), Orbx::eInvalidInput);
    EXPECT_STREQ(table->cell(2, 0), L"");
}

TEST_F(Table, RefusesMoreCellsThanMemoryHolds) {
    KtDbObjectId id;
    EXPECT_EQ(ktdbCreateTable(&drawing, drawing.modelSpaceId(), {}, 0xFFFFFFFF, 0xFFFFFFFF, id),
              Orbx::eInvalidInput);
    EXPECT_EQ(openAs<KtDbTable>(draw(1, 1), KtDb::kForWrite)->setSize(0xFFFFFFFF, 2), Orbx::eInvalidInput);
}

TEST_F(Table, HasToBeOpenForWriteToChange) {
    auto* table = openAs<KtDbTable>(draw(1, 1), KtDb::kForRead);
    EXPECT_EQ(table->setCell(0, 0, L"x"), Orbx::eNotOpenForWrite);
    EXPECT_EQ(table->setSize(2, 2), Orbx::eNotOpenForWrite);
}

TEST_F(Table, TellsItsReactorsAboutCells) {
    const KtDbObjectId id = draw(1, 1);
    EventLog log;
    watch(id, log);
    auto* table = openAs<KtDbTable>(id, KtDb::kForWrite);
    ASSERT_EQ(table->setCell(0, 0, L"x"), Orbx::eOk);
    close(table);
    EXPECT_EQ(log.take(),
              Events({event("openedForModify", id), event("modified", id), event("objectClosed", id)}));
}

TEST_F(Table, GetsItsCellsBackWithUndo) {
    const KtDbObjectId id = draw(1, 1);
    step([&] {
        auto* table = openAs<KtDbTable>(id, KtDb::kForWrite);
        ASSERT_EQ(table->setSize(2, 1), Orbx::eOk);
        ASSERT_EQ(table->setCell(1, 0, L"x"), Orbx::eOk);
        close(table);
    });
    ASSERT_EQ(drawing.history().undo(), Orbx::eOk);
    auto* undone = openAs<KtDbTable>(id, KtDb::kForRead);
    EXPECT_EQ(undone->rows(), 1U);
    close(undone);
    ASSERT_EQ(drawing.history().redo(), Orbx::eOk);
    EXPECT_STREQ(openAs<KtDbTable>(id, KtDb::kForRead)->cell(1, 0), L"x");
}

TEST_F(Table, IsCopiedWithARecordOfItsOwn) {
    const KtDbObjectId id = draw(1, 1);
    auto* table = openAs<KtDbTable>(id, KtDb::kForWrite);
    ASSERT_EQ(table->setCell(0, 0, L"x"), Orbx::eOk);
    close(table);
    KtDbObjectId copy;
    ASSERT_EQ(copyReference(drawing, id, {7, 0, 0}, copy), Orbx::eOk);
    EXPECT_EQ(recordName(definitionOf(copy)), L"*T2");
    EXPECT_STREQ(openAs<KtDbTable>(copy, KtDb::kForRead)->cell(0, 0), L"x");
    EXPECT_EQ(openAs<KtDbTable>(copy, KtDb::kForRead)->position(), (KtGePoint3d{7, 0, 0}));
}

TEST_F(Table, IsNotDrawnInPartWhenTheContainerIsOpen) {
    open(drawing.modelSpaceId(), KtDb::kForRead);
    KtDbObjectId id;
    EXPECT_EQ(ktdbCreateTable(&drawing, drawing.modelSpaceId(), {}, 1, 1, id), Orbx::eWasOpenForRead);
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(recordByName(drawing, L"*T1").isNull());
}

TEST_F(Table, IsNotDrawnWithoutADatabaseOrWhenTheFaultSwitchSaysSo) {
    KtDbObjectId id;
    EXPECT_EQ(ktdbCreateTable(nullptr, drawing.modelSpaceId(), {}, 1, 1, id), Orbx::eInvalidInput);
    Faults::instance().fail(HostCall::createTable, 1, Orbx::eNotNow);
    EXPECT_EQ(ktdbCreateTable(&drawing, drawing.modelSpaceId(), {}, 1, 1, id), Orbx::eNotNow);
}

} // namespace

} // namespace kthost
