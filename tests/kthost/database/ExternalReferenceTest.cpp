#include "tests/kthost/database/DrawingTest.h"

#include <KtDbSymbolUtilities.h>

namespace kthost {

namespace {

using Ids = std::vector<KtDbObjectId>;

/// Attaches drawings with the definitions "Gate" (in it a "Pin") and "Pin"; a Gate lies in its model space.
class ExternalReference : public DrawingTest {
protected:
    std::unique_ptr<Database> load() {
        ++loads;
        if (fails) {
            return nullptr;
        }
        auto other = std::make_unique<Database>(L"external");
        const KtDbObjectId pin = define(*other, L"Pin");
        const KtDbObjectId gate = define(*other, loads == 1 ? L"Gate" : second);
        place(*other, pin, gate);
        inModelSpace = place(*other, gate, other->modelSpaceId());
        return other;
    }

    KtDbObjectId attach() {
        KtDbObjectId record;
        EXPECT_EQ(attachDrawing(
                      drawing, L"EXT", [this] { return load(); }, record),
                  Orbx::eOk);
        return record;
    }

    KtDbObjectId byName(const wchar_t* name) { return recordByName(drawing, name); }

    static KtDbDatabase* external(KtDbObjectId record) {
        auto* opened = openAs<KtDbBlockTableRecord>(record, KtDb::kForRead);
        KtDbDatabase* found = opened->externalDatabase();
        close(opened);
        return found;
    }

    int loads = 0;
    bool fails = false;
    std::wstring second = L"Gate"; // name of the gate in later readings
    KtDbObjectId inModelSpace;
};

TEST_F(ExternalReference, StandsForADrawingWithARecordForEachOfItsDefinitions) {
    const KtDbObjectId record = attach();
    auto* opened = openAs<KtDbBlockTableRecord>(record, KtDb::kForRead);
    EXPECT_TRUE(opened->isFromExternalReference());
    EXPECT_FALSE(opened->isDependent());
    EXPECT_NE(opened->externalDatabase(), nullptr);
    EXPECT_NE(opened->externalDatabase(), &drawing);
    ASSERT_FALSE(byName(L"EXT|Gate").isNull());
    EXPECT_FALSE(byName(L"EXT|Pin").isNull());
    EXPECT_TRUE(byName(L"EXT|*Model_Space").isNull());
    auto* dependent = openAs<KtDbBlockTableRecord>(byName(L"EXT|Gate"), KtDb::kForRead);
    EXPECT_TRUE(dependent->isDependent());
    EXPECT_FALSE(dependent->isFromExternalReference());
    EXPECT_EQ(dependent->externalDatabase(), nullptr);
}

TEST_F(ExternalReference, ListsTheAttachedDrawingsOwnReferences) {
    const KtDbObjectId record = attach();
    EXPECT_EQ(living(byName(L"EXT|Gate")), Ids({inModelSpace}));
    EXPECT_EQ(inModelSpace.database(), external(record));
    const KtDbObjectId container = ownerOf(inModelSpace);
    EXPECT_EQ(KtDbSymbolUtilities::servicesPtr()->blockModelSpaceId(container.database()), container);
    EXPECT_EQ(living(byName(L"EXT|Pin")).size(), 1U);
    EXPECT_EQ(living(byName(L"EXT|Pin"), false).size(), 2U);
}

TEST_F(ExternalReference, IsPlacedLikeAnyBlockAndItsRecordsAreNot) {
    const KtDbObjectId record = attach();
    const KtDbObjectId placed = place(record, drawing.modelSpaceId());
    EXPECT_EQ(living(record), Ids({placed}));
    KtDbObjectId id;
    EXPECT_EQ(insertReference(drawing, {byName(L"EXT|Gate"), drawing.modelSpaceId(), {}, {}, {}}, id),
              Orbx::eIsDependent);
    EXPECT_EQ(insertReference(drawing, {resistor, record, {}, {}, {}}, id), Orbx::eIsDependent);
}

TEST_F(ExternalReference, IsNotChangedFromHere) {
    const KtDbObjectId record = attach();
    KtDbObjectId id;
    for (const KtDbObjectId each : {record, byName(L"EXT|Gate")}) {
        EXPECT_EQ(purgeDefinition(drawing, each), Orbx::eIsDependent);
        EXPECT_EQ(renameDefinition(drawing, each, L"X"), Orbx::eIsDependent);
        EXPECT_EQ(redefine(drawing, each, {}), Orbx::eIsDependent);
        EXPECT_EQ(makeDynamic(drawing, each), Orbx::eIsDependent);
        EXPECT_EQ(copyDefinition(drawing, each, L"X", id), Orbx::eIsDependent);
    }
}

TEST_F(ExternalReference, NeedsAFreeNameThatFitsAndADrawing) {
    KtDbObjectId record;
    EXPECT_EQ(attachDrawing(
                  drawing, L"r", [this] { return load(); }, record),
              Orbx::eDuplicateKey);
    EXPECT_EQ(attachDrawing(
                  drawing, L"", [this] { return load(); }, record),
              Orbx::eInvalidInput);
    EXPECT_EQ(loads, 0);
    fails = true;
    EXPECT_EQ(attachDrawing(
                  drawing, L"EXT", [this] { return load(); }, record),
              Orbx::eFileAccess);
    EXPECT_EQ(attachDrawing(drawing, L"EXT", nullptr, record), Orbx::eFileAccess);
    EXPECT_TRUE(byName(L"EXT").isNull());
}

TEST_F(ExternalReference, GoesWithItsReferencesWhenDetached) {
    const KtDbObjectId record = attach();
    const KtDbObjectId placed = place(record, drawing.modelSpaceId());
    const KtDbObjectId gate = byName(L"EXT|Gate");
    ASSERT_EQ(detachDrawing(drawing, record), Orbx::eOk);
    EXPECT_TRUE(placed.isErased());
    EXPECT_TRUE(record.isErased());
    EXPECT_TRUE(gate.isErased());
    EXPECT_TRUE(byName(L"EXT|Pin").isNull());
    EXPECT_EQ(detachDrawing(drawing, resistor), Orbx::eInvalidInput);
    EXPECT_EQ(detachDrawing(drawing, record), Orbx::eInvalidBlockId);
}

TEST_F(ExternalReference, IsNotDetachedInPartWhenSomethingIsOpen) {
    const KtDbObjectId record = attach();
    const KtDbObjectId placed = place(record, drawing.modelSpaceId());
    open(byName(L"EXT|Pin"), KtDb::kForRead);
    EXPECT_EQ(detachDrawing(drawing, record), Orbx::eWasOpenForRead);
    EXPECT_FALSE(placed.isErased());
    EXPECT_FALSE(record.isErased());
}

TEST_F(ExternalReference, ComesBackWithUndoOfItsDetaching) {
    const KtDbObjectId record = attach();
    const KtDbObjectId placed = place(record, drawing.modelSpaceId());
    step([&] { EXPECT_EQ(detachDrawing(drawing, record), Orbx::eOk); });
    ASSERT_EQ(drawing.history().undo(), Orbx::eOk);
    EXPECT_EQ(byName(L"EXT"), record);
    EXPECT_EQ(living(record), Ids({placed}));
    EXPECT_EQ(living(byName(L"EXT|Gate")), Ids({inModelSpace}));
}

TEST_F(ExternalReference, IsReleasedWithItsDrawingOnceNothingKeepsIt) {
    const KtDbObjectId record = attach();
    EventLog log;
    watch(inModelSpace, log);
    ASSERT_EQ(detachDrawing(drawing, record), Orbx::eOk);
    const std::string goodbye = event("goodbye", inModelSpace);
    EXPECT_EQ(drawing.releaseErased(), 3U);
    EXPECT_EQ(log.take(), Events({goodbye}));
    EXPECT_TRUE(inModelSpace.isValid());
    EXPECT_EQ(inModelSpace.database(), nullptr);
}

TEST_F(ExternalReference, KeepsIdsWhereNamesPersistWhenReloaded) {
    const KtDbObjectId record = attach();
    const KtDbObjectId pin = byName(L"EXT|Pin");
    const KtDbObjectId gate = byName(L"EXT|Gate");
    const KtDbObjectId before = inModelSpace;
    second = L"Buffer";
    ASSERT_EQ(reloadDrawing(drawing, record), Orbx::eOk);
    EXPECT_EQ(loads, 2);
    EXPECT_EQ(byName(L"EXT"), record);
    EXPECT_EQ(byName(L"EXT|Pin"), pin);
    EXPECT_TRUE(gate.isErased());
    EXPECT_EQ(living(byName(L"EXT|Buffer")), Ids({inModelSpace}));
    EXPECT_NE(inModelSpace, before);
    EXPECT_EQ(external(record), inModelSpace.database());
}

TEST_F(ExternalReference, IsOpenedForModifyByReloading) {
    const KtDbObjectId record = attach();
    const KtDbObjectId pin = byName(L"EXT|Pin");
    EventLog log;
    watch(record, log);
    watch(pin, log);
    ASSERT_EQ(reloadDrawing(drawing, record), Orbx::eOk);
    EXPECT_EQ(log.take(), Events({event("openedForModify", record), event("modified", record),
                                  event("objectClosed", record), event("openedForModify", pin),
                                  event("modified", pin), event("objectClosed", pin)}));
}

TEST_F(ExternalReference, GivesTheOldReadingBackWithUndo) {
    const KtDbObjectId record = attach();
    const KtDbObjectId before = inModelSpace;
    second = L"Buffer";
    step([&] { EXPECT_EQ(reloadDrawing(drawing, record), Orbx::eOk); });
    ASSERT_EQ(drawing.history().undo(), Orbx::eOk);
    EXPECT_EQ(external(record), before.database());
    EXPECT_EQ(living(byName(L"EXT|Gate")), Ids({before}));
    EXPECT_TRUE(byName(L"EXT|Buffer").isNull());
    ASSERT_EQ(drawing.history().redo(), Orbx::eOk);
    EXPECT_EQ(living(byName(L"EXT|Buffer")), Ids({inModelSpace}));
}

TEST_F(ExternalReference, ReleasesTheOldReadingAtOnceWhenNothingIsKeptForUndo) {
    drawing.setUndoRecording(false);
    const KtDbObjectId record = attach();
    const KtDbObjectId before = inModelSpace;
    ASSERT_EQ(reloadDrawing(drawing, record), Orbx::eOk);
    EXPECT_EQ(before.database(), nullptr);
    EXPECT_EQ(tryOpen(before, KtDb::kForRead, true), Orbx::eObjectReleased);
}

TEST_F(ExternalReference, KeepsAReadingForRecordsThatUndoBroughtBackWithoutTheirDrawing) {
    const KtDbObjectId record = attach();
    const KtDbObjectId before = inModelSpace;
    second = L"Buffer";
    step([&] { EXPECT_EQ(reloadDrawing(drawing, record), Orbx::eOk); });
    drawing.setUndoRecording(false);
    ASSERT_EQ(detachDrawing(drawing, record), Orbx::eOk);
    ASSERT_EQ(drawing.history().undo(), Orbx::eOk);
    ASSERT_TRUE(record.isErased());
    drawing.releaseErased();
    EXPECT_EQ(living(byName(L"EXT|Gate")), Ids({before}));
    EXPECT_NE(before.database(), nullptr);
}

TEST_F(ExternalReference, StaysAsItWasWhenReloadingFails) {
    const KtDbObjectId record = attach();
    const KtDbObjectId before = inModelSpace;
    fails = true;
    EXPECT_EQ(reloadDrawing(drawing, record), Orbx::eFileAccess);
    EXPECT_EQ(external(record), before.database());
    EXPECT_EQ(living(byName(L"EXT|Gate")), Ids({before}));
}

TEST_F(ExternalReference, OfAnAttachedDrawingShowsThroughItsDependentRecord) {
    Database host(L"host");
    KtDbObjectId record;
    ASSERT_EQ(attachDrawing(
                  host, L"MID",
                  [this] {
                      auto middle = std::make_unique<Database>(L"middle");
                      KtDbObjectId inner;
                      EXPECT_EQ(attachDrawing(
                                    *middle, L"EXT", [this] { return load(); }, inner),
                                Orbx::eOk);
                      return middle;
                  },
                  record),
              Orbx::eOk);
    const KtDbObjectId nested = recordByName(host, L"MID|EXT");
    ASSERT_FALSE(nested.isNull());
    EXPECT_EQ(external(nested), inModelSpace.database());
    EXPECT_EQ(living(recordByName(host, L"MID|EXT|Gate")), Ids({inModelSpace}));
}

TEST_F(ExternalReference, ServicesGiveNothingForNoDatabase) {
    EXPECT_TRUE(KtDbSymbolUtilities::servicesPtr()->blockModelSpaceId(nullptr).isNull());
    Database bare(L"bare", Database::Layouts::none);
    EXPECT_TRUE(KtDbSymbolUtilities::servicesPtr()->blockModelSpaceId(&bare).isNull());
}

} // namespace

} // namespace kthost
