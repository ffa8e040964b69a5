#include "tests/kthost/database/DrawingTest.h"

#include <KtRxClass.h>

namespace kthost {

namespace {

using Definition = DrawingTest;
using Ids = std::vector<KtDbObjectId>;

TEST_F(Definition, TableOfANewDrawingHasTwoEmptyLayouts) {
    Database fresh(L"fresh");
    const Ids layouts = records(fresh, true);
    ASSERT_EQ(layouts.size(), 2U);
    EXPECT_EQ(recordName(layouts[0]), L"*Model_Space");
    EXPECT_EQ(recordName(layouts[1]), L"*Paper_Space");
    EXPECT_EQ(fresh.modelSpaceId(), layouts[0]);
    EXPECT_TRUE(records(fresh, false).empty());
    EXPECT_EQ(fresh.history().undoable(), 0U);
}

TEST_F(Definition, TableMayBeWithoutLayouts) {
    Database bare(L"bare", Database::Layouts::none);
    EXPECT_TRUE(records(bare, true).empty());
    EXPECT_TRUE(bare.modelSpaceId().isNull());
}

TEST_F(Definition, IsOfTheSeamsOwnClass) {
    KtDbObject* record = open(resistor, KtDb::kForRead);
    EXPECT_EQ(record->isA(), KtDbBlockTableRecord::desc());
    EXPECT_STREQ(record->isA()->name(), L"KtDbBlockTableRecord");
    EXPECT_EQ(record->ownerId(), drawing.blockTableId());
    EXPECT_EQ(record->database(), &drawing);
}

TEST_F(Definition, IsNeitherLayoutNorAnonymousNorDependent) {
    auto* record = openAs<KtDbBlockTableRecord>(resistor, KtDb::kForRead);
    EXPECT_FALSE(record->isLayout());
    EXPECT_FALSE(record->isAnonymous());
    EXPECT_FALSE(record->isDependent());
    EXPECT_FALSE(record->isFromExternalReference());
    EXPECT_EQ(record->externalDatabase(true), nullptr);
}

TEST_F(Definition, IsAnonymousWithAnAsteriskUnlessItIsALayout) {
    KtDbObjectId anonymous;
    ASSERT_EQ(addAnonymousDefinition(drawing, L'D', anonymous), Orbx::eOk);
    EXPECT_EQ(recordName(anonymous), L"*D1");
    EXPECT_TRUE(openAs<KtDbBlockTableRecord>(anonymous, KtDb::kForRead)->isAnonymous());
    auto* space = openAs<KtDbBlockTableRecord>(drawing.modelSpaceId(), KtDb::kForRead);
    EXPECT_FALSE(space->isAnonymous());
    EXPECT_TRUE(space->isLayout());
}

TEST_F(Definition, IsLookedUpWithoutRegardToTheCaseOfAsciiLetters) {
    const KtDbObjectId id = define(L"Widerst\u00C4nd");
    auto* table = openAs<KtDbBlockTable>(drawing.blockTableId(), KtDb::kForRead);
    KtDbObjectId found;
    EXPECT_EQ(table->getIdAt(L"WIDERST\u00C4ND", found), Orbx::eOk);
    EXPECT_EQ(found, id);
    EXPECT_EQ(table->getIdAt(L"widerst\u00E4nd", found), Orbx::eKeyNotFound);
    EXPECT_TRUE(found.isNull());
    EXPECT_EQ(table->getIdAt(nullptr, found), Orbx::eInvalidInput);
}

TEST_F(Definition, ThatIsErasedIsLookedUpOnRequestOnly) {
    ASSERT_EQ(purgeDefinition(drawing, resistor), Orbx::eOk);
    auto* table = openAs<KtDbBlockTable>(drawing.blockTableId(), KtDb::kForRead);
    KtDbObjectId found = resistor;
    EXPECT_EQ(table->getIdAt(L"R", found), Orbx::eWasErased);
    EXPECT_TRUE(found.isNull());
    EXPECT_EQ(table->getIdAt(L"R", found, true), Orbx::eOk);
    EXPECT_EQ(found, resistor);
}

TEST_F(Definition, ThatLivesIsFoundBeforeAnErasedOneOfTheSameName) {
    ASSERT_EQ(purgeDefinition(drawing, resistor), Orbx::eOk);
    const KtDbObjectId fresh = define(L"r");
    auto* table = openAs<KtDbBlockTable>(drawing.blockTableId(), KtDb::kForRead);
    KtDbObjectId found;
    EXPECT_EQ(table->getIdAt(L"R", found, true), Orbx::eOk);
    EXPECT_EQ(found, fresh);
}

TEST_F(Definition, IsForgottenByNameWhenItIsReleased) {
    ASSERT_EQ(purgeDefinition(drawing, resistor), Orbx::eOk);
    ASSERT_EQ(drawing.releaseErased(), 1U);
    auto* table = openAs<KtDbBlockTable>(drawing.blockTableId(), KtDb::kForRead);
    KtDbObjectId found;
    EXPECT_EQ(table->getIdAt(L"R", found, true), Orbx::eKeyNotFound);
}

TEST_F(Definition, LookUpFailsAsTheFaultSwitchSays) {
    auto* table = openAs<KtDbBlockTable>(drawing.blockTableId(), KtDb::kForRead);
    Faults::instance().fail(HostCall::getIdAt, 1, Orbx::eNotNow);
    KtDbObjectId found;
    EXPECT_EQ(table->getIdAt(L"R", found), Orbx::eNotNow);
}

TEST_F(Definition, NeedsANameThatIsFreeAndFits) {
    KtDbObjectId id;
    EXPECT_EQ(addDefinition(drawing, L"r", id), Orbx::eDuplicateKey);
    EXPECT_EQ(addDefinition(drawing, L"", id), Orbx::eInvalidInput);
    EXPECT_EQ(addDefinition(drawing, L"*R", id), Orbx::eInvalidInput);
    EXPECT_EQ(addDefinition(drawing, L"A|B", id), Orbx::eInvalidInput);
    EXPECT_EQ(addLayout(drawing, L"*PAPER_SPACE", id), Orbx::eDuplicateKey);
    EXPECT_EQ(addLayout(drawing, L"*Paper_Space0", id), Orbx::eOk);
}

TEST_F(Definition, IsNotAddedWhileTheBlockTableIsRead) {
    open(drawing.blockTableId(), KtDb::kForRead);
    KtDbObjectId id;
    EXPECT_EQ(addDefinition(drawing, L"C", id), Orbx::eWasOpenForRead);
    EXPECT_TRUE(recordByName(drawing, L"C").isNull());
}

TEST_F(Definition, IsMetInTableOrderForwardsAndBackwards) {
    const KtDbObjectId gone = define(L"Gone");
    const KtDbObjectId last = define(L"Last");
    ASSERT_EQ(purgeDefinition(drawing, gone), Orbx::eOk);
    auto* table = openAs<KtDbBlockTable>(drawing.blockTableId(), KtDb::kForRead);
    const auto walk = [table](bool forward, bool skipErased) {
        KtDbBlockTableIterator* made = nullptr;
        EXPECT_EQ(table->newIterator(made, forward, skipErased), Orbx::eOk);
        const std::unique_ptr<KtDbBlockTableIterator> iterator(made);
        Ids ids;
        for (; !iterator->done(); iterator->step(forward, skipErased)) {
            ids.emplace_back();
            EXPECT_EQ(iterator->getRecordId(ids.back()), Orbx::eOk);
        }
        return ids;
    };
    const Ids layouts = records(drawing, true);
    EXPECT_EQ(walk(true, true), Ids({layouts[0], layouts[1], resistor, last}));
    EXPECT_EQ(walk(true, false), Ids({layouts[0], layouts[1], resistor, gone, last}));
    EXPECT_EQ(walk(false, true), Ids({last, resistor, layouts[1], layouts[0]}));
}

TEST_F(Definition, IteratorSaysWhenItIsDone) {
    Database bare(L"bare", Database::Layouts::none);
    auto* table = openAs<KtDbBlockTable>(bare.blockTableId(), KtDb::kForRead);
    KtDbBlockTableIterator* made = nullptr;
    ASSERT_EQ(table->newIterator(made), Orbx::eOk);
    const std::unique_ptr<KtDbBlockTableIterator> iterator(made);
    EXPECT_TRUE(iterator->done());
    KtDbObjectId id = resistor;
    EXPECT_EQ(iterator->getRecordId(id), Orbx::eOutOfRange);
    EXPECT_TRUE(id.isNull());
    iterator->step();
    iterator->start(false);
    EXPECT_TRUE(iterator->done());
}

TEST_F(Definition, IteratorFailsAsTheFaultSwitchesSay) {
    auto* table = openAs<KtDbBlockTable>(drawing.blockTableId(), KtDb::kForRead);
    KtDbBlockTableIterator* made = nullptr;
    Faults::instance().fail(HostCall::newTableIterator, 1, Orbx::eNotNow);
    EXPECT_EQ(table->newIterator(made), Orbx::eNotNow);
    EXPECT_EQ(made, nullptr);
    ASSERT_EQ(table->newIterator(made), Orbx::eOk);
    const std::unique_ptr<KtDbBlockTableIterator> iterator(made);
    Faults::instance().fail(HostCall::getRecordId, 1, Orbx::eMissing);
    KtDbObjectId id;
    EXPECT_EQ(iterator->getRecordId(id), Orbx::eMissing);
}

TEST_F(Definition, NameFailsAsTheFaultSwitchSays) {
    auto* record = openAs<KtDbBlockTableRecord>(resistor, KtDb::kForRead);
    const wchar_t* name = nullptr;
    Faults::instance().fail(HostCall::getName, 1, Orbx::eNotNow);
    EXPECT_EQ(record->getName(name), Orbx::eNotNow);
    EXPECT_EQ(name, nullptr);
    ASSERT_EQ(record->getName(name), Orbx::eOk);
    EXPECT_STREQ(name, L"R");
}

TEST_F(Definition, IsPurgedOnlyWithoutLivingReferences) {
    const KtDbObjectId reference = place();
    EXPECT_EQ(purgeDefinition(drawing, resistor), Orbx::eStillReferenced);
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    EXPECT_EQ(purgeDefinition(drawing, resistor), Orbx::eOk);
    EXPECT_TRUE(resistor.isErased());
    EXPECT_EQ(purgeDefinition(drawing, resistor), Orbx::eInvalidBlockId);
}

TEST_F(Definition, TakesWhatLiesInItAlongWhenItIsPurged) {
    const KtDbObjectId outer = define(L"Outer");
    const KtDbObjectId inner = place(resistor, outer);
    ASSERT_EQ(purgeDefinition(drawing, outer), Orbx::eOk);
    EXPECT_TRUE(inner.isErased());
    EXPECT_EQ(living(resistor), Ids());
    EXPECT_EQ(purgeDefinition(drawing, resistor), Orbx::eOk);
}

TEST_F(Definition, IsNotPurgedInPartWhenSomethingInItIsOpen) {
    const KtDbObjectId outer = define(L"Outer");
    const KtDbObjectId first = place(resistor, outer);
    const KtDbObjectId second = place(resistor, outer);
    open(second, KtDb::kForNotify);
    EXPECT_EQ(purgeDefinition(drawing, outer), Orbx::eWasOpenForNotify);
    EXPECT_FALSE(first.isErased());
    EXPECT_FALSE(outer.isErased());
}

TEST_F(Definition, ThatIsALayoutIsNotPurged) {
    EXPECT_EQ(purgeDefinition(drawing, drawing.modelSpaceId()), Orbx::eInvalidInput);
}

TEST_F(Definition, IsCopiedWithWhatLiesInIt) {
    const KtDbObjectId outer = define(L"Outer");
    place(resistor, outer, {{L"Value", L"1k"}});
    KtDbObjectId copy;
    ASSERT_EQ(copyDefinition(drawing, outer, L"Copy", copy), Orbx::eOk);
    EXPECT_EQ(recordByName(drawing, L"Copy"), copy);
    const Ids inside = referencesIn(copy);
    ASSERT_EQ(inside.size(), 1U);
    EXPECT_EQ(definitionOf(inside[0]), resistor);
    EXPECT_EQ(attributesOf(inside[0])[0].text, L"1k");
    EXPECT_EQ(copyDefinition(drawing, outer, L"Copy", copy), Orbx::eDuplicateKey);
    EXPECT_EQ(copyDefinition(drawing, {}, L"Other", copy), Orbx::eInvalidBlockId);
}

TEST_F(Definition, IsRedefinedKeepingItsIdAndReferences) {
    const KtDbObjectId outer = define(L"Outer");
    const KtDbObjectId other = define(L"Other");
    const KtDbObjectId old = place(resistor, outer);
    const KtDbObjectId placed = place(outer, drawing.modelSpaceId());
    ASSERT_EQ(redefine(drawing, outer, other), Orbx::eOk);
    EXPECT_TRUE(old.isErased());
    EXPECT_EQ(referencesIn(outer), Ids());
    EXPECT_EQ(living(outer), Ids({placed}));
}

TEST_F(Definition, IsNotRedefinedSoAsToContainItself) {
    const KtDbObjectId outer = define(L"Outer");
    place(resistor, outer);
    EXPECT_EQ(redefine(drawing, resistor, outer), Orbx::eSelfReference);
    EXPECT_EQ(redefine(drawing, outer, outer), Orbx::eInvalidInput);
    EXPECT_EQ(redefine(drawing, drawing.modelSpaceId(), outer), Orbx::eInvalidInput);
}

TEST_F(Definition, IsRenamedToAFreeNameThatFits) {
    const KtDbObjectId other = define(L"C");
    EXPECT_EQ(renameDefinition(drawing, other, L"r"), Orbx::eDuplicateKey);
    EXPECT_EQ(renameDefinition(drawing, other, L"*C"), Orbx::eInvalidInput);
    EXPECT_EQ(renameDefinition(drawing, drawing.modelSpaceId(), L"M"), Orbx::eInvalidInput);
    EXPECT_EQ(renameDefinition(drawing, other, L"L"), Orbx::eOk);
    EXPECT_EQ(recordByName(drawing, L"L"), other);
    EXPECT_TRUE(recordByName(drawing, L"C").isNull());
}

TEST_F(Definition, StaysInMemoryWhileAnErasedReferenceToItDoes) {
    const KtDbObjectId reference = place();
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    ASSERT_EQ(purgeDefinition(drawing, resistor), Orbx::eOk);
    open(reference, KtDb::kForNotify);
    EXPECT_EQ(drawing.releaseErased(), 0U);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForRead, true), Orbx::eOk);
}

TEST_F(Definition, IsReleasedWithTheReferencesToIt) {
    const KtDbObjectId reference = place({{L"Value", L"1k"}});
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    ASSERT_EQ(purgeDefinition(drawing, resistor), Orbx::eOk);
    EXPECT_EQ(drawing.releaseErased(), 3U);
}

} // namespace

} // namespace kthost
