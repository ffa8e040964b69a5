#include "tests/kthost/database/DrawingTest.h"

#include <KtDbBlockRepresentation.h>
#include <KtDbEvalGraph.h>
#include <KtRxClass.h>

namespace kthost {

namespace {

constexpr const wchar_t* kKey = L"ORBX_ENHANCEDBLOCK";
using Ids = std::vector<KtDbObjectId>;

class DynamicDefinition : public DrawingTest {
protected:
    Orbx::ErrorStatus graphStatus(KtDbObjectId record, const wchar_t* key = kKey) {
        KtDbObject* opened = open(record, KtDb::kForRead);
        KtDbEvalGraph* graph = nullptr;
        const Orbx::ErrorStatus status = KtDbEvalGraph::getGraph(graph, opened, key, KtDb::kForRead);
        EXPECT_EQ(graph != nullptr, status == Orbx::eOk);
        if (graph != nullptr) {
            close(graph);
        }
        close(opened);
        return status;
    }

    static const KtDbBlockRepresentation& protocol() {
        KtRxObject* extension = KtDbBlockReference::desc()->queryX(KtDbBlockRepresentation::desc());
        EXPECT_TRUE(extension != nullptr && extension->isKindOf(KtDbBlockRepresentation::desc()));
        return *static_cast<KtDbBlockRepresentation*>(extension);
    }

    static Ids representations(KtDbObjectId definition) {
        KtArray<KtDbObjectId> ids;
        EXPECT_EQ(protocol().getRepresentations(definition, ids), Orbx::eOk);
        return {ids.begin(), ids.end()};
    }

    KtDbObjectId represent(const std::wstring& label) {
        KtDbObjectId id;
        EXPECT_EQ(addRepresentation(drawing, resistor, label, id), Orbx::eOk);
        return id;
    }
};

TEST_F(DynamicDefinition, HasAGraphUnderItsKeyOnly) {
    EXPECT_EQ(graphStatus(resistor), Orbx::eKeyNotFound);
    ASSERT_EQ(makeDynamic(drawing, resistor), Orbx::eOk);
    EXPECT_EQ(graphStatus(resistor), Orbx::eOk);
    EXPECT_EQ(graphStatus(resistor, L"OTHER"), Orbx::eKeyNotFound);
    EXPECT_EQ(graphStatus(resistor, nullptr), Orbx::eKeyNotFound);
    EXPECT_EQ(graphStatus(drawing.modelSpaceId()), Orbx::eKeyNotFound);
}

TEST_F(DynamicDefinition, GraphFailsAsTheFaultSwitchSays) {
    ASSERT_EQ(makeDynamic(drawing, resistor), Orbx::eOk);
    Faults::instance().fail(HostCall::getEvalGraph, 1, Orbx::eNotNow);
    EXPECT_EQ(graphStatus(resistor), Orbx::eNotNow);
}

TEST_F(DynamicDefinition, LosesItsGraphWithUndoAndGetsItBackWithRedo) {
    step([&] { EXPECT_EQ(makeDynamic(drawing, resistor), Orbx::eOk); });
    ASSERT_EQ(drawing.history().undo(), Orbx::eOk);
    EXPECT_EQ(graphStatus(resistor), Orbx::eKeyNotFound);
    ASSERT_EQ(drawing.history().redo(), Orbx::eOk);
    EXPECT_EQ(graphStatus(resistor), Orbx::eOk);
}

TEST_F(DynamicDefinition, IsRepresentedInTheOrderOfMaking) {
    ASSERT_EQ(makeDynamic(drawing, resistor), Orbx::eOk);
    const KtDbObjectId first = represent(L"unit 1");
    const KtDbObjectId second = represent(L"unit 2");
    EXPECT_EQ(recordName(first), L"*U1");
    EXPECT_EQ(recordName(second), L"*U2");
    EXPECT_EQ(representations(resistor), Ids({first, second}));
    EXPECT_EQ(representation(resistor, L"unit 2"), second);
    EXPECT_EQ(representationLabel(second), L"unit 2");
    EXPECT_EQ(representedDefinition(second), resistor);
}

TEST_F(DynamicDefinition, IsNotRepresentedTwiceUnderOneLabel) {
    ASSERT_EQ(makeDynamic(drawing, resistor), Orbx::eOk);
    represent(L"unit 1");
    KtDbObjectId id;
    EXPECT_EQ(addRepresentation(drawing, resistor, L"unit 1", id), Orbx::eDuplicateKey);
}

TEST_F(DynamicDefinition, IsWhatCanBeRepresented) {
    KtDbObjectId id;
    EXPECT_EQ(addRepresentation(drawing, resistor, L"unit 1", id), Orbx::eInvalidInput);
}

TEST_F(DynamicDefinition, IsFoundFromAReferenceToARepresentation) {
    ASSERT_EQ(makeDynamic(drawing, resistor), Orbx::eOk);
    const KtDbObjectId placed = place(represent(L"unit 1"), drawing.modelSpaceId());
    const KtDbObjectId plain = place();
    EXPECT_EQ(protocol().originalBlockTableRecord(openAs<KtDbBlockReference>(placed, KtDb::kForNotify)),
              resistor);
    EXPECT_TRUE(
        protocol().originalBlockTableRecord(openAs<KtDbBlockReference>(plain, KtDb::kForNotify)).isNull());
    EXPECT_TRUE(protocol().originalBlockTableRecord(nullptr).isNull());
}

TEST_F(DynamicDefinition, AdoptsAnAnonymousRecordOlderThanItself) {
    KtDbObjectId older;
    ASSERT_EQ(addAnonymousDefinition(drawing, L'U', older), Orbx::eOk);
    const KtDbObjectId younger = define(L"Younger");
    ASSERT_EQ(makeDynamic(drawing, younger), Orbx::eOk);
    EXPECT_EQ(adoptRepresentation(drawing, younger, L"unit 1", older), Orbx::eOk);
    EXPECT_EQ(representations(younger), Ids({older}));
    EXPECT_EQ(adoptRepresentation(drawing, younger, L"unit 2", older), Orbx::eInvalidInput);
    EXPECT_EQ(adoptRepresentation(drawing, younger, L"unit 2", resistor), Orbx::eInvalidInput);
}

TEST_F(DynamicDefinition, ForgetsARepresentationWithUndo) {
    ASSERT_EQ(makeDynamic(drawing, resistor), Orbx::eOk);
    KtDbObjectId id;
    step([&] { id = represent(L"unit 1"); });
    ASSERT_EQ(drawing.history().undo(), Orbx::eOk);
    EXPECT_EQ(representations(resistor), Ids());
    EXPECT_TRUE(representation(resistor, L"unit 1").isNull());
    ASSERT_EQ(drawing.history().redo(), Orbx::eOk);
    EXPECT_EQ(representations(resistor), Ids({id}));
}

TEST_F(DynamicDefinition, IsPurgedWithItsRepresentations) {
    ASSERT_EQ(makeDynamic(drawing, resistor), Orbx::eOk);
    const KtDbObjectId unit = represent(L"unit 1");
    const KtDbObjectId placed = place(unit, drawing.modelSpaceId());
    EXPECT_EQ(purgeDefinition(drawing, resistor), Orbx::eStillReferenced);
    ASSERT_EQ(eraseReference(drawing, placed), Orbx::eOk);
    ASSERT_EQ(purgeDefinition(drawing, resistor), Orbx::eOk);
    EXPECT_TRUE(unit.isErased());
    EXPECT_EQ(drawing.releaseErased(), 4U);
}

TEST_F(DynamicDefinition, IsCopiedAsDynamicWithoutRepresentations) {
    ASSERT_EQ(makeDynamic(drawing, resistor), Orbx::eOk);
    represent(L"unit 1");
    KtDbObjectId copy;
    ASSERT_EQ(copyDefinition(drawing, resistor, L"Copy", copy), Orbx::eOk);
    EXPECT_TRUE(isDynamic(copy));
    EXPECT_EQ(representations(copy), Ids());
}

TEST_F(DynamicDefinition, RepresentationsFailAsTheFaultSwitchSays) {
    KtArray<KtDbObjectId> ids;
    Faults::instance().fail(HostCall::getRepresentations, 1, Orbx::eNotNow);
    EXPECT_EQ(protocol().getRepresentations(resistor, ids), Orbx::eNotNow);
    EXPECT_EQ(protocol().getRepresentations({}, ids), Orbx::eInvalidBlockId);
}

} // namespace

} // namespace kthost
