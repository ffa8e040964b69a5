#include "kthost/database/DatabaseContents.h"
#include "kthost/database/DatabaseObject.h"
#include "tests/kthost/database/DrawingTest.h"

#include <KtDbEvalGraph.h>

#include <new>

namespace kthost {

namespace {

using ObjectId = DrawingTest;

TEST_F(ObjectId, IsNeverReusedAndAscendsWithinADrawing) {
    const KtDbObjectId first = place();
    ASSERT_EQ(eraseReference(drawing, first), Orbx::eOk);
    ASSERT_EQ(drawing.releaseErased(), 1U);
    EXPECT_GT(place(), first);
}

TEST_F(ObjectId, OfNothingIsNeitherValidNorErased) {
    EXPECT_FALSE(KtDbObjectId().isValid());
    EXPECT_FALSE(KtDbObjectId().isErased());
    EXPECT_FALSE(KtDbObjectId().isEffectivelyErased());
    EXPECT_EQ(KtDbObjectId().database(), nullptr);
    EXPECT_FALSE(KtDbObjectId(12).isValid());
}

TEST_F(ObjectId, StaysValidWhenTheObjectIsReleasedAndTheDrawingClosed) {
    auto other = std::make_unique<Database>(L"other");
    const KtDbObjectId table = other->blockTableId();
    EXPECT_EQ(table.database(), other.get());
    other.reset();
    EXPECT_TRUE(table.isValid());
    EXPECT_TRUE(table.isErased());
    EXPECT_TRUE(table.isEffectivelyErased());
    EXPECT_EQ(table.database(), nullptr);
    EXPECT_EQ(handleOf(table), 0U);
}

TEST_F(ObjectId, KnowsItsDatabaseWhileTheObjectIsReleased) {
    const KtDbObjectId reference = place();
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    ASSERT_EQ(drawing.releaseErased(), 1U);
    EXPECT_TRUE(reference.isValid());
    EXPECT_TRUE(reference.isErased());
    EXPECT_EQ(reference.database(), &drawing);
}

TEST_F(ObjectId, IsEffectivelyErasedWithWhatOwnsTheObject) {
    const KtDbObjectId reference = place({{L"Value", L"4k7"}});
    const KtDbObjectId value = attribute(reference);
    EXPECT_FALSE(value.isEffectivelyErased());
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    EXPECT_FALSE(value.isErased());
    EXPECT_TRUE(value.isEffectivelyErased());
}

TEST_F(ObjectId, BelongsToAHandleOfItsOwnDrawing) {
    Database other(L"other");
    const KtDbObjectId reference = place();
    EXPECT_EQ(objectByHandle(drawing, handleOf(reference)), reference);
    EXPECT_TRUE(objectByHandle(drawing, 0).isNull());
    EXPECT_TRUE(objectByHandle(drawing, handleOf(reference) + 1).isNull());
    EXPECT_EQ(objectByHandle(other, 1), other.blockTableId());
}

TEST_F(ObjectId, IsFoundByHandleBeyondTheFirstThousands) {
    Database other(L"other");
    std::vector<KtDbObjectId> placed;
    for (int i = 0; i < 5000; ++i) {
        placed.push_back(place());
        define(other, L"D" + std::to_wstring(i)); // ids of two drawings, turn by turn
    }
    for (const KtDbObjectId id : placed) {
        ASSERT_EQ(objectByHandle(drawing, handleOf(id)), id);
        ASSERT_EQ(id.database(), &drawing);
    }
    EXPECT_TRUE(std::is_sorted(placed.begin(), placed.end()));
}

class Unmakeable final : public DatabaseObject<KtDbEvalGraph> {
public:
    Unmakeable() { throw std::bad_alloc(); }
};

TEST_F(ObjectId, IsNotSpentOnAnObjectThatCouldNotBeMade) {
    const KtDbObjectId before = place();
    EXPECT_THROW(makeObject<Unmakeable>(drawing.contents(), {}), std::bad_alloc);
    EXPECT_EQ(handleOf(place()), handleOf(before) + 1);
}

TEST_F(ObjectId, IsKnownToItsObject) {
    const KtDbObjectId reference = place({{L"Value", L"4k7"}});
    for (const KtDbObjectId id : {drawing.blockTableId(), resistor, reference, attribute(reference)}) {
        KtDbObject* object = open(id, KtDb::kForRead);
        EXPECT_EQ(object->objectId(), id);
        EXPECT_EQ(object->handle(), handleOf(id));
        close(object);
    }
}

TEST_F(ObjectId, StaysValidWhenAllObjectsAroundItAreReleased) {
    std::vector<KtDbObjectId> placed;
    for (int i = 0; i < 10000; ++i) {
        placed.push_back(place());
        ASSERT_EQ(eraseReference(drawing, placed.back()), Orbx::eOk);
    }
    ASSERT_EQ(drawing.releaseErased(), placed.size());
    for (const KtDbObjectId id : placed) {
        ASSERT_TRUE(id.isValid() && id.isErased());
        ASSERT_EQ(id.database(), &drawing);
        ASSERT_EQ(tryOpen(id, KtDb::kForRead, true), Orbx::eObjectReleased);
    }
}

} // namespace

} // namespace kthost
