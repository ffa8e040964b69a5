#include "kthost/database/Attribute.h"
#include "kthost/database/BlockReference.h"
#include "kthost/database/CancelOpening.h"
#include "tests/kthost/database/DrawingTest.h"

namespace kthost {

namespace {

/// A resistor in model space with one attribute, and a log for each.
class Notification : public DrawingTest {
protected:
    Notification() {
        reference = place({{L"Value", L"4k7"}});
        value = attribute(reference);
        watch(reference, log);
    }

    KtDbObjectId reference;
    KtDbObjectId value;
    EventLog log;
};

TEST_F(Notification, IsNotSentForReading) {
    close(open(reference, KtDb::kForRead));
    close(open(reference, KtDb::kForNotify));
    EXPECT_EQ(log.take(), Events());
}

TEST_F(Notification, SaysThatAnUnchangedObjectWasClosed) {
    close(open(reference, KtDb::kForWrite));
    EXPECT_EQ(log.take(), Events({event("objectClosed", reference)}));
}

TEST_F(Notification, OfAChangeComesBeforeItAndAtClose) {
    auto* opened = openAs<KtDbBlockReference>(reference, KtDb::kForWrite);
    KtGePoint3d before{9, 9, 9};
    log.hook = [&](const std::string&) { before = opened->position(); };
    ASSERT_EQ(static_cast<BlockReference*>(opened)->setPosition({1, 2, 3}), Orbx::eOk);
    EXPECT_EQ(before, KtGePoint3d());
    EXPECT_EQ(log.take(), Events({event("openedForModify", reference)}));
    log.hook = nullptr;
    close(opened);
    EXPECT_EQ(log.take(), Events({event("modified", reference), event("objectClosed", reference)}));
}

TEST_F(Notification, OfOpeningForModifyComesOnceUntilTheObjectIsClosed) {
    auto* opened = static_cast<BlockReference*>(openAs<KtDbBlockReference>(reference, KtDb::kForWrite));
    ASSERT_EQ(opened->setPosition({1, 2, 3}), Orbx::eOk);
    ASSERT_EQ(opened->setPosition({4, 5, 6}), Orbx::eOk);
    ASSERT_EQ(opened->erase(), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("openedForModify", reference), event("erased", reference)}));
    close(opened);
    EXPECT_EQ(log.take(), Events({event("modified", reference), event("objectClosed", reference)}));
}

TEST_F(Notification, IsSentWithTheObjectOpenSoThatItsReactorsCanChange) {
    log.hook = [&](const std::string&) {
        unwatch(reference, log);
        log.hook = nullptr;
    };
    ASSERT_EQ(moveReference(drawing, reference, {1, 2, 3}), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("openedForModify", reference)}));
}

TEST_F(Notification, LeavesTheObjectOpenForWriteUntilModifiedWasSent) {
    std::vector<Orbx::ErrorStatus> statuses;
    log.hook = [&](const std::string& heard) {
        statuses.push_back(tryOpen(reference, KtDb::kForRead));
        if (heard.starts_with("objectClosed")) {
            log.hook = nullptr;
        }
    };
    ASSERT_EQ(moveReference(drawing, reference, {1, 2, 3}), Orbx::eOk);
    EXPECT_EQ(statuses,
              std::vector<Orbx::ErrorStatus>({Orbx::eWasOpenForWrite, Orbx::eWasOpenForWrite, Orbx::eOk}));
}

TEST_F(Notification, OfACancelledOpeningPutsTheObjectBack) {
    auto* opened = static_cast<BlockReference*>(openAs<KtDbBlockReference>(reference, KtDb::kForWrite));
    ASSERT_EQ(opened->setPosition({1, 2, 3}), Orbx::eOk);
    ASSERT_EQ(cancelOpening(*opened), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("openedForModify", reference), event("cancelled", reference),
                                  event("objectClosed", reference)}));
    EXPECT_EQ(openAs<KtDbBlockReference>(reference, KtDb::kForRead)->position(), KtGePoint3d());
}

TEST_F(Notification, OfACancelledEraseRestoresTheObject) {
    KtDbObject* opened = open(reference, KtDb::kForWrite);
    ASSERT_EQ(opened->erase(), Orbx::eOk);
    EXPECT_EQ(living(resistor), std::vector<KtDbObjectId>());
    ASSERT_EQ(cancelOpening(*opened), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("openedForModify", reference), event("erased", reference),
                                  event("unerased", reference), event("cancelled", reference),
                                  event("objectClosed", reference)}));
    EXPECT_EQ(living(resistor), std::vector<KtDbObjectId>({reference}));
}

TEST_F(Notification, OfACancelledOpeningKeepsNothingForUndo) {
    step([&] {
        auto* opened = static_cast<BlockReference*>(openAs<KtDbBlockReference>(reference, KtDb::kForWrite));
        ASSERT_EQ(opened->setPosition({1, 2, 3}), Orbx::eOk);
        ASSERT_EQ(cancelOpening(*opened), Orbx::eOk);
    });
    EXPECT_EQ(drawing.history().undoable(), 0U);
}

TEST_F(Notification, OfCancellingIsRefusedForAReader) {
    EXPECT_EQ(cancelOpening(*open(reference, KtDb::kForRead)), Orbx::eNotOpenForWrite);
    EXPECT_EQ(log.take(), Events());
}

TEST_F(Notification, OfAChangedAttributeReachesItsReferenceAsASubObject) {
    ASSERT_EQ(setAttributeText(drawing, reference, L"Value", L"10k"), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("subObjectModified", reference, value)}));
}

TEST_F(Notification, OfAChangedAttributeReachesTheAttribute) {
    EventLog attributeLog;
    watch(value, attributeLog);
    ASSERT_EQ(setAttributeText(drawing, reference, L"Value", L"10k"), Orbx::eOk);
    EXPECT_EQ(attributeLog.take(), Events({event("openedForModify", value), event("modified", value),
                                           event("objectClosed", value)}));
}

TEST_F(Notification, OfAChangedReferenceReachesItsContainerAsASubObject) {
    EventLog container;
    watch(drawing.modelSpaceId(), container);
    ASSERT_EQ(moveReference(drawing, reference, {1, 2, 3}), Orbx::eOk);
    EXPECT_EQ(container.take(), Events({event("subObjectModified", drawing.modelSpaceId(), reference)}));
}

TEST_F(Notification, OfAnAppendedAttributeOpensTheReferenceForModify) {
    KtDbObjectId added;
    ASSERT_EQ(appendAttribute(drawing, reference, L"Note", L"hot", added), Orbx::eOk);
    EXPECT_EQ(log.take(),
              Events({event("openedForModify", reference), event("subObjectModified", reference, added),
                      event("modified", reference), event("objectClosed", reference)}));
}

TEST_F(Notification, OfAnErasedAttributeOpensBothForModify) {
    EventLog attributeLog;
    watch(value, attributeLog);
    ASSERT_EQ(eraseAttribute(drawing, value), Orbx::eOk);
    EXPECT_EQ(attributeLog.take(), Events({event("openedForModify", value), event("erased", value),
                                           event("modified", value), event("objectClosed", value)}));
    EXPECT_EQ(log.take(),
              Events({event("openedForModify", reference), event("subObjectModified", reference, value),
                      event("modified", reference), event("objectClosed", reference)}));
}

TEST_F(Notification, OfAnInsertedReferenceOpensItsContainerForModify) {
    const KtDbObjectId space = drawing.modelSpaceId();
    EventLog container;
    watch(space, container);
    const KtDbObjectId added = place();
    EXPECT_EQ(container.take(),
              Events({event("openedForModify", space), event("subObjectModified", space, added),
                      event("modified", space), event("objectClosed", space)}));
}

TEST_F(Notification, OfAnErasedReferenceOpensItsContainerForModify) {
    const KtDbObjectId space = drawing.modelSpaceId();
    watch(space, log);
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    EXPECT_EQ(log.take(),
              Events({event("openedForModify", space), event("openedForModify", reference),
                      event("erased", reference), event("modified", reference),
                      event("subObjectModified", space, reference), event("objectClosed", reference),
                      event("modified", space), event("objectClosed", space)}));
}

TEST_F(Notification, OfARestoredReferenceSaysUnerased) {
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    log.take();
    ASSERT_EQ(restoreReference(drawing, reference), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("openedForModify", reference), event("unerased", reference),
                                  event("modified", reference), event("objectClosed", reference)}));
}

TEST_F(Notification, OfACopyComesWhenTheWholeCopyIsThere) {
    EventLog attributeLog;
    watch(value, attributeLog);
    std::size_t attributes = 0;
    log.hook = [&](const std::string&) { attributes = attributesOf(living(resistor).back()).size(); };
    KtDbObjectId copy;
    ASSERT_EQ(copyReference(drawing, reference, {5, 0, 0}, copy), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("copied", reference, copy)}));
    EXPECT_EQ(attributeLog.take(), Events({event("copied", value, attribute(copy))}));
    EXPECT_EQ(attributes, 1U);
}

TEST_F(Notification, OfExtendedDataComesBesideModified) {
    ASSERT_EQ(setXData(drawing, reference, L"APP", {{KtDbXDataItem::kText, 0, L"hello"}}), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("openedForModify", reference), event("modified", reference),
                                  event("modifiedXData", reference), event("objectClosed", reference)}));
}

TEST_F(Notification, OfANewDefinitionOpensTheBlockTableForModify) {
    const KtDbObjectId table = drawing.blockTableId();
    EventLog tableLog;
    watch(table, tableLog);
    const KtDbObjectId added = define(L"C");
    EXPECT_EQ(tableLog.take(),
              Events({event("openedForModify", table), event("subObjectModified", table, added),
                      event("modified", table), event("objectClosed", table)}));
}

TEST_F(Notification, OfAPurgedDefinitionOpensTheBlockTableForModify) {
    const KtDbObjectId spare = define(L"C");
    const KtDbObjectId table = drawing.blockTableId();
    EventLog both;
    watch(table, both);
    watch(spare, both);
    ASSERT_EQ(purgeDefinition(drawing, spare), Orbx::eOk);
    EXPECT_EQ(both.take(), Events({event("openedForModify", table), event("openedForModify", spare),
                                   event("erased", spare), event("modified", spare),
                                   event("subObjectModified", table, spare), event("objectClosed", spare),
                                   event("modified", table), event("objectClosed", table)}));
}

TEST_F(Notification, OfAPurgeTellsTheReferencesInside) {
    const KtDbObjectId outer = define(L"Outer");
    const KtDbObjectId inner = place(resistor, outer);
    EventLog innerLog;
    watch(inner, innerLog);
    ASSERT_EQ(purgeDefinition(drawing, outer), Orbx::eOk);
    EXPECT_EQ(innerLog.take(), Events({event("openedForModify", inner), event("erased", inner),
                                       event("modified", inner), event("objectClosed", inner)}));
}

TEST_F(Notification, OfACopiedDefinitionComesFirstForTheRecord) {
    const KtDbObjectId outer = define(L"Outer");
    const KtDbObjectId inner = place(resistor, outer, {{L"Value", L"1k"}});
    EventLog all;
    watch(outer, all);
    watch(inner, all);
    watch(attribute(inner), all);
    KtDbObjectId copy;
    ASSERT_EQ(copyDefinition(drawing, outer, L"Copy", copy), Orbx::eOk);
    const KtDbObjectId innerCopy = referencesIn(copy).at(0);
    EXPECT_EQ(all.take(), Events({event("copied", outer, copy), event("copied", inner, innerCopy),
                                  event("copied", attribute(inner), attribute(innerCopy))}));
}

TEST_F(Notification, OfARedefinitionErasesWhatWasThereAndAppendsTheCopies) {
    const KtDbObjectId outer = define(L"Outer");
    const KtDbObjectId other = define(L"Other");
    const KtDbObjectId old = place(resistor, outer);
    place(resistor, other);
    EventLog all;
    watch(outer, all);
    ASSERT_EQ(redefine(drawing, outer, other), Orbx::eOk);
    const KtDbObjectId fresh = referencesIn(outer).at(0);
    EXPECT_EQ(all.take(), Events({event("openedForModify", outer), event("subObjectModified", outer, old),
                                  event("modified", outer), event("objectClosed", outer),
                                  event("openedForModify", outer), event("subObjectModified", outer, fresh),
                                  event("modified", outer), event("objectClosed", outer)}));
}

TEST_F(Notification, OfARenamedDefinitionIsAModification) {
    EventLog all;
    watch(resistor, all);
    ASSERT_EQ(renameDefinition(drawing, resistor, L"Resistor"), Orbx::eOk);
    EXPECT_EQ(all.take(), Events({event("openedForModify", resistor), event("modified", resistor),
                                  event("objectClosed", resistor)}));
}

TEST_F(Notification, OfGoodbyeIsTheLastAndComesWhileEverythingIsStillThere) {
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    EventLog attributeLog;
    watch(value, attributeLog);
    log.take();
    std::wstring tag;
    attributeLog.hook = [&](const std::string&) {
        tag = openAs<KtDbAttribute>(value, KtDb::kForNotify)->tag();
    };
    ASSERT_EQ(drawing.releaseErased(), 2U);
    EXPECT_EQ(log.take(), Events({event("goodbye", reference)}));
    EXPECT_EQ(attributeLog.take(), Events({event("goodbye", value)}));
    EXPECT_EQ(tag, L"Value");
}

TEST_F(Notification, OfGoodbyeLetsTheReactorRemoveItself) {
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    log.take();
    Orbx::ErrorStatus removed = Orbx::eNotNow;
    log.hook = [&](const std::string&) {
        const auto* object = openAs<KtDbBlockReference>(reference, KtDb::kForNotify);
        removed = object->removeReactor(&log);
        EXPECT_EQ(const_cast<KtDbBlockReference*>(object)->close(), Orbx::eOk);
    };
    drawing.releaseErased();
    EXPECT_EQ(removed, Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("goodbye", reference)}));
}

TEST(DatabaseEnd, SaysGoodbyeToEveryObjectInAscendingOrder) {
    EventLog log;
    std::vector<std::string> expected;
    {
        Database drawing(L"short-lived");
        KtDbObjectId definition;
        ASSERT_EQ(addDefinition(drawing, L"R", definition), Orbx::eOk);
        KtDbObjectId reference;
        ASSERT_EQ(
            insertReference(drawing, {definition, drawing.modelSpaceId(), {}, {{L"A", L"a"}}, {}}, reference),
            Orbx::eOk);
        for (const KtDbObjectId id : {attributesOf(reference).front().id, reference, definition,
                                      drawing.modelSpaceId(), drawing.blockTableId()}) {
            KtDbObject* object = nullptr;
            ASSERT_EQ(ktdbOpenObject(object, id, KtDbObject::desc(), KtDb::kForNotify), Orbx::eOk);
            ASSERT_EQ(object->addReactor(&log), Orbx::eOk);
            ASSERT_EQ(object->close(), Orbx::eOk);
            expected.insert(expected.begin(), "goodbye " + std::to_string(handleOf(id)));
        }
    }
    EXPECT_EQ(log.take(), expected);
}

} // namespace

} // namespace kthost
