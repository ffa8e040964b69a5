#include "tests/kthost/database/DrawingTest.h"

namespace kthost {

namespace {

using Reference = DrawingTest;
using Ids = std::vector<KtDbObjectId>;

TEST_F(Reference, LiesInItsContainerWithItsAttributesInOrder) {
    KtDbObjectId id;
    ASSERT_EQ(insertReference(drawing,
                              {resistor, drawing.modelSpaceId(), {1, 2, 3}, {{L"B", L"b"}, {L"A", L"a"}}, {}},
                              id),
              Orbx::eOk);
    auto* opened = openAs<KtDbBlockReference>(id, KtDb::kForRead);
    EXPECT_EQ(opened->ownerId(), drawing.modelSpaceId());
    EXPECT_EQ(opened->blockTableRecord(), resistor);
    EXPECT_EQ(opened->position(), (KtGePoint3d{1, 2, 3}));
    const std::unique_ptr<KtDbObjectIterator> attributes(opened->attributeIterator());
    std::wstring tags;
    for (; !attributes->done(); attributes->step()) {
        tags += openAs<KtDbAttribute>(attributes->objectId(), KtDb::kForRead)->tag();
    }
    EXPECT_EQ(tags, L"BA");
    EXPECT_TRUE(attributes->objectId().isNull());
}

TEST_F(Reference, WithoutAttributesHasNoIterator) {
    EXPECT_EQ(openAs<KtDbBlockReference>(place(), KtDb::kForRead)->attributeIterator(), nullptr);
}

TEST_F(Reference, IteratesOverErasedAttributesToo) {
    const KtDbObjectId id = place({{L"A", L"a"}, {L"B", L"b"}});
    ASSERT_EQ(eraseAttribute(drawing, attribute(id, 0)), Orbx::eOk);
    const std::unique_ptr<KtDbObjectIterator> attributes(
        openAs<KtDbBlockReference>(id, KtDb::kForRead)->attributeIterator());
    EXPECT_TRUE(attributes->objectId().isErased());
    attributes->step();
    EXPECT_FALSE(attributes->done());
    EXPECT_EQ(attributesOf(id).size(), 1U);
}

TEST_F(Reference, KeepsAttributesInOrderWhenOthersComeBetween) {
    const KtDbObjectId first = place({{L"A", L""}});
    const KtDbObjectId second = place({{L"X", L""}});
    KtDbObjectId added;
    ASSERT_EQ(appendAttribute(drawing, first, L"B", L"", added), Orbx::eOk);
    ASSERT_EQ(appendAttribute(drawing, second, L"Y", L"", added), Orbx::eOk);
    ASSERT_EQ(appendAttribute(drawing, first, L"C", L"", added), Orbx::eOk);
    std::wstring tags;
    for (const AttributeView& view : attributesOf(first)) {
        tags += view.tag;
    }
    EXPECT_EQ(tags, L"ABC");
}

TEST_F(Reference, KeepsTheOtherAttributesWhenSomeAreReleased) {
    const KtDbObjectId id = place({{L"A", L""}, {L"B", L""}, {L"C", L""}});
    ASSERT_EQ(eraseAttribute(drawing, attribute(id, 0)), Orbx::eOk);
    ASSERT_EQ(drawing.releaseErased(), 1U);
    KtDbObjectId added;
    ASSERT_EQ(appendAttribute(drawing, id, L"D", L"", added), Orbx::eOk);
    std::wstring tags;
    for (const AttributeView& view : attributesOf(id)) {
        tags += view.tag;
    }
    EXPECT_EQ(tags, L"BCD");
    EXPECT_EQ(definitionOf(id), resistor);
}

TEST_F(Reference, HasMoreAttributesThanCanBeCountedInPlace) {
    const std::vector<AttributeText> many(40000, {L"A", L""});
    const KtDbObjectId id = place(many);
    const std::vector<AttributeView> views = attributesOf(id);
    ASSERT_EQ(views.size(), many.size());
    EXPECT_EQ(views.back().id.asUnsigned() - views.front().id.asUnsigned(), many.size() - 1);
    EXPECT_EQ(definitionOf(id), resistor);
}

TEST_F(Reference, IsListedOnceHoweverOftenItIsErasedAndRestored) {
    const std::vector<KtDbObjectId> placed{place(), place(), place()};
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(eraseReference(drawing, placed[1]), Orbx::eOk);
        ASSERT_EQ(restoreReference(drawing, placed[1]), Orbx::eOk);
    }
    EXPECT_EQ(living(resistor), placed);
    EXPECT_TRUE(erased(resistor).empty());
    ASSERT_EQ(eraseReference(drawing, placed[0]), Orbx::eOk);
    ASSERT_EQ(eraseReference(drawing, placed[2]), Orbx::eOk);
    EXPECT_EQ(living(resistor), std::vector{placed[1]});
    EXPECT_EQ(erased(resistor), (std::vector{placed[0], placed[2]}));
    ASSERT_EQ(restoreReference(drawing, placed[0]), Orbx::eOk);
    EXPECT_EQ(living(resistor), (std::vector{placed[0], placed[1]}));
    EXPECT_EQ(erased(resistor), std::vector{placed[2]});
}

TEST_F(Reference, IsRefusedWithoutALivingDefinitionOrContainer) {
    KtDbObjectId id;
    const KtDbObjectId space = drawing.modelSpaceId();
    EXPECT_EQ(insertReference(drawing, {{}, space, {}, {}, {}}, id), Orbx::eInvalidBlockId);
    EXPECT_EQ(insertReference(drawing, {resistor, {}, {}, {}, {}}, id), Orbx::eInvalidBlockId);
    EXPECT_EQ(insertReference(drawing, {place(), space, {}, {}, {}}, id), Orbx::eInvalidBlockId);
    const KtDbObjectId gone = define(L"Gone");
    ASSERT_EQ(purgeDefinition(drawing, gone), Orbx::eOk);
    EXPECT_EQ(insertReference(drawing, {gone, space, {}, {}, {}}, id), Orbx::eInvalidBlockId);
    EXPECT_EQ(insertReference(drawing, {space, resistor, {}, {}, {}}, id), Orbx::eInvalidBlockId);
    Database other(L"other");
    EXPECT_EQ(insertReference(drawing, {resistor, other.modelSpaceId(), {}, {}, {}}, id),
              Orbx::eInvalidBlockId);
    EXPECT_TRUE(id.isNull());
}

TEST_F(Reference, IsRefusedWhileItsContainerIsOpen) {
    open(drawing.modelSpaceId(), KtDb::kForRead);
    KtDbObjectId id;
    EXPECT_EQ(insertReference(drawing, {resistor, drawing.modelSpaceId(), {}, {}, {}}, id),
              Orbx::eWasOpenForRead);
    EXPECT_TRUE(living(resistor).empty());
}

TEST_F(Reference, IsRefusedWhereADefinitionWouldContainItself) {
    const KtDbObjectId a = define(L"A");
    const KtDbObjectId b = define(L"B");
    const KtDbObjectId c = define(L"C");
    place(b, a);
    place(c, b);
    KtDbObjectId id;
    EXPECT_EQ(insertReference(drawing, {a, a, {}, {}, {}}, id), Orbx::eSelfReference);
    EXPECT_EQ(insertReference(drawing, {a, b, {}, {}, {}}, id), Orbx::eSelfReference);
    EXPECT_EQ(insertReference(drawing, {a, c, {}, {}, {}}, id), Orbx::eSelfReference);
    EXPECT_EQ(insertReference(drawing, {c, a, {}, {}, {}}, id), Orbx::eOk);
}

TEST_F(Reference, MayBePlacedTheOtherWayRoundOnceNothingIsNestedAnyMore) {
    const KtDbObjectId a = define(L"A");
    const KtDbObjectId b = define(L"B");
    const KtDbObjectId nested = place(b, a);
    ASSERT_EQ(eraseReference(drawing, nested), Orbx::eOk);
    place(a, b);
    EXPECT_EQ(restoreReference(drawing, nested), Orbx::eSelfReference);
    EXPECT_TRUE(nested.isErased());
}

TEST_F(Reference, IsListedAscendingWhereverItLies) {
    const KtDbObjectId outer = define(L"Outer");
    const KtDbObjectId first = place();
    const KtDbObjectId second = place(resistor, outer);
    const KtDbObjectId third = place();
    EXPECT_EQ(living(resistor), Ids({first, second, third}));
    EXPECT_EQ(erased(resistor), Ids());
}

TEST_F(Reference, MovesFromTheLivingToTheErasedListAndBack) {
    const KtDbObjectId first = place();
    const KtDbObjectId second = place();
    const KtDbObjectId third = place();
    ASSERT_EQ(eraseReference(drawing, second), Orbx::eOk);
    EXPECT_EQ(living(resistor), Ids({first, third}));
    EXPECT_EQ(erased(resistor), Ids({second}));
    ASSERT_EQ(eraseReference(drawing, first), Orbx::eOk);
    ASSERT_EQ(restoreReference(drawing, second), Orbx::eOk);
    EXPECT_EQ(living(resistor), Ids({second, third}));
    EXPECT_EQ(erased(resistor), Ids({first}));
    ASSERT_EQ(drawing.releaseErased(), 1U);
    EXPECT_EQ(erased(resistor), Ids());
}

TEST_F(Reference, IsAppendedToAListThatHasIdsInIt) {
    const KtDbObjectId id = place();
    auto* opened = openAs<KtDbBlockTableRecord>(resistor, KtDb::kForRead);
    KtArray<KtDbObjectId> ids{KtDbObjectId(7)};
    ASSERT_EQ(opened->getBlockReferenceIds(ids), Orbx::eOk);
    ASSERT_EQ(opened->getErasedBlockReferenceIds(ids), Orbx::eOk);
    ASSERT_EQ(ids.length(), 2U);
    EXPECT_EQ(ids[0], KtDbObjectId(7));
    EXPECT_EQ(ids[1], id);
}

TEST_F(Reference, IsCountedThroughOtherBlocksWhenAskedFor) {
    const KtDbObjectId middle = define(L"Middle");
    const KtDbObjectId outer = define(L"Outer");
    const KtDbObjectId inMiddle = place(resistor, middle);
    const KtDbObjectId inOuter = place(middle, outer);
    const KtDbObjectId inSpace = place(outer, drawing.modelSpaceId());
    const KtDbObjectId direct = place();
    EXPECT_EQ(living(resistor, true), Ids({inMiddle, direct}));
    EXPECT_EQ(living(resistor, false), Ids({inMiddle, inOuter, inSpace, direct}));
}

TEST_F(Reference, IsListedNotAtAllWhenTheFaultSwitchSaysSo) {
    place();
    auto* opened = openAs<KtDbBlockTableRecord>(resistor, KtDb::kForRead);
    KtArray<KtDbObjectId> ids;
    Faults::instance().fail(HostCall::getBlockReferenceIds, 1, Orbx::eNotNow);
    Faults::instance().fail(HostCall::getErasedBlockReferenceIds, 1, Orbx::eMissing);
    EXPECT_EQ(opened->getBlockReferenceIds(ids), Orbx::eNotNow);
    EXPECT_EQ(opened->getErasedBlockReferenceIds(ids), Orbx::eMissing);
    EXPECT_TRUE(ids.isEmpty());
}

TEST_F(Reference, IsMetInDrawingOrderErasedOnesLeftOut) {
    const KtDbObjectId first = place();
    const KtDbObjectId second = place();
    const KtDbObjectId third = place();
    ASSERT_EQ(eraseReference(drawing, second), Orbx::eOk);
    const std::unique_ptr<KtDbObjectIterator> entities(
        openAs<KtDbBlockTableRecord>(drawing.modelSpaceId(), KtDb::kForRead)->entityIterator());
    EXPECT_EQ(entities->objectId(), first);
    entities->step();
    EXPECT_EQ(entities->objectId(), third);
    entities->step();
    EXPECT_TRUE(entities->done());
    EXPECT_TRUE(entities->objectId().isNull());
}

TEST_F(Reference, IsNotLostToAnIteratorWhenOthersAreReleasedBehindIt) {
    const KtDbObjectId first = place();
    const KtDbObjectId second = place();
    const KtDbObjectId third = place();
    ASSERT_EQ(eraseReference(drawing, first), Orbx::eOk);
    KtDbObject* space = open(drawing.modelSpaceId(), KtDb::kForRead);
    const std::unique_ptr<KtDbObjectIterator> entities(
        static_cast<KtDbBlockTableRecord*>(space)->entityIterator());
    EXPECT_EQ(entities->objectId(), second);
    EXPECT_EQ(drawing.releaseErased(), 1U);
    entities->step();
    EXPECT_EQ(entities->objectId(), third);
}

TEST_F(Reference, ThatWasCopiedTakesItsLivingAttributesAndExtendedDataAlong) {
    const KtDbObjectId id = place({{L"A", L"a"}, {L"B", L"b"}});
    ASSERT_EQ(eraseAttribute(drawing, attribute(id, 0)), Orbx::eOk);
    ASSERT_EQ(setXData(drawing, id, L"APP", {{KtDbXDataItem::kInteger, 42, L""}}), Orbx::eOk);
    KtDbObjectId copy;
    ASSERT_EQ(copyReference(drawing, id, {5, 0, 0}, copy), Orbx::eOk);
    ASSERT_EQ(attributesOf(copy).size(), 1U);
    EXPECT_EQ(attributesOf(copy)[0].text, L"b");
    auto* opened = openAs<KtDbBlockReference>(copy, KtDb::kForRead);
    EXPECT_EQ(opened->position(), (KtGePoint3d{5, 0, 0}));
    KtArray<KtDbXDataItem> items;
    ASSERT_EQ(opened->getXData(L"APP", items), Orbx::eOk);
    EXPECT_EQ(items[0].integer, 42);
}

TEST_F(Reference, OfAnotherDrawingIsNotToBeEdited) {
    Database other(L"other");
    const KtDbObjectId foreign = place(other, define(other, L"C"), other.modelSpaceId());
    KtDbObjectId copy;
    EXPECT_EQ(moveReference(drawing, foreign, {}), Orbx::eWrongDatabase);
    EXPECT_EQ(copyReference(drawing, foreign, {}, copy), Orbx::eWrongDatabase);
    EXPECT_EQ(eraseReference(drawing, foreign), Orbx::eWrongDatabase);
    EXPECT_EQ(restoreReference(drawing, foreign), Orbx::eWrongDatabase);
    EXPECT_EQ(setAttributeText(drawing, foreign, L"A", L"a"), Orbx::eWrongDatabase);
}

TEST_F(Reference, IsNotToBeConfusedWithOtherObjects) {
    EXPECT_EQ(moveReference(drawing, resistor, {}), Orbx::eNotThatKindOfClass);
    EXPECT_EQ(moveReference(drawing, {}, {}), Orbx::eNullObjectId);
    EXPECT_EQ(moveReference(drawing, KtDbObjectId(3), {}), Orbx::eInvalidObjectId);
}

TEST_F(Reference, CanBeErasedOnceAndRestoredAgainAndAgain) {
    const KtDbObjectId id = place();
    EXPECT_EQ(restoreReference(drawing, id), Orbx::eOk);
    ASSERT_EQ(eraseReference(drawing, id), Orbx::eOk);
    EXPECT_EQ(eraseReference(drawing, id), Orbx::eWasErased);
    EXPECT_EQ(restoreReference(drawing, id), Orbx::eOk);
    EXPECT_FALSE(id.isErased());
}

TEST_F(Reference, IsNotErasedWithoutBeingOpenForWrite) {
    const KtDbObjectId id = place();
    EXPECT_EQ(open(id, KtDb::kForRead)->erase(), Orbx::eNotOpenForWrite);
    EXPECT_EQ(eraseReference(drawing, id), Orbx::eWasOpenForRead);
    EXPECT_FALSE(id.isErased());
}

TEST_F(Reference, StaysErasedWhileItsDefinitionIs) {
    const KtDbObjectId id = place();
    ASSERT_EQ(eraseReference(drawing, id), Orbx::eOk);
    ASSERT_EQ(purgeDefinition(drawing, resistor), Orbx::eOk);
    EXPECT_EQ(restoreReference(drawing, id), Orbx::eWasErased);
}

TEST_F(Reference, IsFoundByItsDesignator) {
    const KtDbObjectId first = place({{L"Reference", L"R1"}});
    EXPECT_EQ(referencesByDesignator(drawing, L"R1"), Ids({first}));
    const KtDbObjectId unit = place({{L"Value", L"R1"}, {L"Reference", L"R1"}});
    EXPECT_EQ(referencesByDesignator(drawing, L"R1"), Ids({first, unit}));
    ASSERT_EQ(setAttributeText(drawing, first, L"Reference", L"R2"), Orbx::eOk);
    EXPECT_EQ(referencesByDesignator(drawing, L"R1"), Ids({unit}));
    EXPECT_EQ(referencesByDesignator(drawing, L"R2"), Ids({first}));
    ASSERT_EQ(eraseReference(drawing, unit), Orbx::eOk);
    EXPECT_EQ(referencesByDesignator(drawing, L"R1"), Ids());
}

TEST_F(Reference, IsFoundByTheDesignatorThatUndoBroughtBack) {
    const KtDbObjectId id = place({{L"Reference", L"R1"}});
    step([&] { EXPECT_EQ(setAttributeText(drawing, id, L"Reference", L"R2"), Orbx::eOk); });
    EXPECT_EQ(referencesByDesignator(drawing, L"R2"), Ids({id}));
    ASSERT_EQ(drawing.history().undo(), Orbx::eOk);
    EXPECT_EQ(referencesByDesignator(drawing, L"R1"), Ids({id}));
    EXPECT_EQ(referencesByDesignator(drawing, L"R2"), Ids());
}

TEST_F(Reference, IsFoundByItsDesignatorAfterManyChanges) {
    const KtDbObjectId id = place({{L"Reference", L"R"}});
    EXPECT_EQ(referencesByDesignator(drawing, L"R").size(), 1U);
    for (int i = 0; i < 3000; ++i) {
        ASSERT_EQ(setAttributeText(drawing, id, L"Reference", L"R" + std::to_wstring(i)), Orbx::eOk);
    }
    EXPECT_EQ(referencesByDesignator(drawing, L"R2999"), Ids({id}));
    EXPECT_EQ(referencesByDesignator(drawing, L"R2998"), Ids());
}

TEST_F(Reference, GetsAnAttributeWhenATextIsSetForATagThatItHasNot) {
    const KtDbObjectId id = place({{L"Value", L"1k"}});
    ASSERT_EQ(setAttributeText(drawing, id, L"value", L"2k"), Orbx::eOk);
    ASSERT_EQ(attributesOf(id).size(), 2U);
    EXPECT_EQ(attributesOf(id)[0].text, L"1k");
    EXPECT_EQ(attributesOf(id)[1].tag, L"value");
}

TEST_F(Reference, KeepsTextOutsideAsciiAsItIs) {
    const KtDbObjectId id = place({{L"Wert", L"4,7\u2126 \U0001F4A1"}});
    EXPECT_EQ(attributesOf(id)[0].text, L"4,7\u2126 \U0001F4A1");
}

TEST_F(Reference, KeepsExtendedDataForEachApplication) {
    const KtDbObjectId id = place();
    ASSERT_EQ(
        setXData(drawing, id, L"A", {{KtDbXDataItem::kText, 0, L"text"}, {KtDbXDataItem::kInteger, -3, L""}}),
        Orbx::eOk);
    ASSERT_EQ(setXData(drawing, id, L"B", {{KtDbXDataItem::kInteger, 1, L""}}), Orbx::eOk);
    auto* opened = open(id, KtDb::kForRead);
    KtArray<KtDbXDataItem> items;
    ASSERT_EQ(opened->getXData(L"A", items), Orbx::eOk);
    ASSERT_EQ(items.length(), 2U);
    EXPECT_STREQ(items[0].text, L"text");
    EXPECT_EQ(items[1].kind, KtDbXDataItem::kInteger);
    EXPECT_EQ(items[1].integer, -3);
    EXPECT_EQ(opened->getXData(L"C", items), Orbx::eKeyNotFound);
    EXPECT_EQ(opened->getXData(nullptr, items), Orbx::eKeyNotFound);
}

TEST_F(Reference, LosesExtendedDataThatIsSetToNothing) {
    const KtDbObjectId id = place();
    ASSERT_EQ(setXData(drawing, id, L"A", {{KtDbXDataItem::kInteger, 1, L""}}), Orbx::eOk);
    ASSERT_EQ(setXData(drawing, id, L"A", {}), Orbx::eOk);
    KtArray<KtDbXDataItem> items;
    EXPECT_EQ(open(id, KtDb::kForRead)->getXData(L"A", items), Orbx::eKeyNotFound);
}

TEST_F(Reference, IsInsertedWithItsOccurrences) {
    KtDbObjectId id;
    ASSERT_EQ(insertReference(
                  drawing, {resistor, drawing.modelSpaceId(), {}, {}, {{KtDbXDataItem::kText, 0, L"/"}}}, id),
              Orbx::eOk);
    KtArray<KtDbXDataItem> items;
    ASSERT_EQ(open(id, KtDb::kForRead)->getXData(kKtDbOccurrences, items), Orbx::eOk);
    EXPECT_STREQ(items[0].text, L"/");
}

} // namespace

} // namespace kthost
