#include "kthost/database/Attribute.h"
#include "tests/kthost/database/DrawingTest.h"

#include <memory>

namespace kthost {

namespace {

using OpenObject = DrawingTest;

/// Apart from the tests: where the compiler knows the object's size, it warns of looking at the slots in
/// front, which is done for stored objects alone.
[[gnu::noinline]] std::unique_ptr<Attribute> makeUnstored() {
    return std::make_unique<Attribute>(L"Value", L"4k7");
}

TEST_F(OpenObject, RefusesTheNullId) {
    EXPECT_EQ(tryOpen({}, KtDb::kForRead), Orbx::eNullObjectId);
}

TEST_F(OpenObject, RefusesAnIdThatWasNeverHandedOut) {
    EXPECT_EQ(tryOpen(KtDbObjectId(1), KtDb::kForRead), Orbx::eInvalidObjectId);
    EXPECT_EQ(tryOpen(KtDbObjectId(~0ULL), KtDb::kForRead), Orbx::eInvalidObjectId);
    EXPECT_EQ(tryOpen(KtDbObjectId(place().asUnsigned() + 1), KtDb::kForRead), Orbx::eInvalidObjectId);
}

TEST_F(OpenObject, RefusesAnErasedObjectUnlessAskedFor) {
    const KtDbObjectId reference = place();
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    EXPECT_EQ(tryOpen(reference, KtDb::kForRead), Orbx::eWasErased);
    EXPECT_EQ(tryOpen(reference, KtDb::kForRead, true), Orbx::eOk);
}

TEST_F(OpenObject, RefusesAReleasedObjectEvenWhenErasedOnesAreAskedFor) {
    const KtDbObjectId reference = place();
    ASSERT_EQ(eraseReference(drawing, reference), Orbx::eOk);
    ASSERT_EQ(drawing.releaseErased(), 1U);
    EXPECT_EQ(tryOpen(reference, KtDb::kForRead, true), Orbx::eObjectReleased);
}

TEST_F(OpenObject, RefusesAnObjectOfAClosedDrawing) {
    auto other = std::make_unique<Database>(L"other");
    const KtDbObjectId table = other->blockTableId();
    other.reset();
    EXPECT_EQ(tryOpen(table, KtDb::kForRead), Orbx::eObjectReleased);
}

TEST_F(OpenObject, RefusesAnotherClass) {
    KtDbAttribute* attribute = nullptr;
    EXPECT_EQ(ktdbOpenObject(attribute, resistor, KtDb::kForRead), Orbx::eNotThatKindOfClass);
    EXPECT_EQ(attribute, nullptr);
}

TEST_F(OpenObject, OpensByAClassThatTheObjectsOwnDerivesFrom) {
    KtDbSymbolTableRecord* record = nullptr;
    EXPECT_EQ(ktdbOpenObject(record, resistor, KtDb::kForRead), Orbx::eOk);
    EXPECT_EQ(record->objectId(), resistor);
}

TEST_F(OpenObject, RefusesNothingAsAClass) {
    KtDbObject* object = nullptr;
    EXPECT_EQ(ktdbOpenObject(object, resistor, nullptr, KtDb::kForRead), Orbx::eNotThatKindOfClass);
}

TEST_F(OpenObject, RefusesReadersAndWritersWhileWritten) {
    open(resistor, KtDb::kForWrite);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForRead), Orbx::eWasOpenForWrite);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForWrite), Orbx::eWasOpenForWrite);
}

TEST_F(OpenObject, RefusesAWriterWhileRead) {
    open(resistor, KtDb::kForRead);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForWrite), Orbx::eWasOpenForRead);
}

TEST_F(OpenObject, RefusesAWriterWhileOpenForNotify) {
    open(resistor, KtDb::kForNotify);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForWrite), Orbx::eWasOpenForNotify);
}

TEST_F(OpenObject, GivesNothingWhenRefused) {
    open(resistor, KtDb::kForRead);
    KtDbObject* object = open(drawing.blockTableId(), KtDb::kForRead);
    EXPECT_EQ(ktdbOpenObject(object, resistor, KtDbObject::desc(), KtDb::kForWrite), Orbx::eWasOpenForRead);
    EXPECT_EQ(object, nullptr);
}

TEST_F(OpenObject, Permits255ReadersAndNoMore) {
    for (int i = 0; i < 255; ++i) {
        ASSERT_EQ(tryOpen(resistor, KtDb::kForRead), Orbx::eOk);
    }
    EXPECT_EQ(tryOpen(resistor, KtDb::kForRead), Orbx::eTooManyReaders);
}

TEST_F(OpenObject, PermitsNotifyBesideReadersWritersAndOtherNotifies) {
    open(resistor, KtDb::kForRead);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForNotify), Orbx::eOk);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForNotify), Orbx::eOk);
    open(drawing.blockTableId(), KtDb::kForWrite);
    EXPECT_EQ(tryOpen(drawing.blockTableId(), KtDb::kForNotify), Orbx::eOk);
}

TEST_F(OpenObject, PermitsReadersBesideNotify) {
    open(resistor, KtDb::kForNotify);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForRead), Orbx::eOk);
}

TEST_F(OpenObject, PermitsAWriterAgainOnceEveryReaderHasClosed) {
    KtDbObject* first = open(resistor, KtDb::kForRead);
    KtDbObject* second = open(resistor, KtDb::kForRead);
    close(first);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForWrite), Orbx::eWasOpenForRead);
    close(second);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForWrite), Orbx::eOk);
}

TEST_F(OpenObject, EndsTheLatestOpeningFirst) {
    KtDbObject* writer = open(resistor, KtDb::kForWrite);
    close(open(resistor, KtDb::kForNotify));
    EXPECT_EQ(tryOpen(resistor, KtDb::kForRead), Orbx::eWasOpenForWrite);
    close(writer);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForRead), Orbx::eOk);
}

TEST_F(OpenObject, EndsAReadInsideANotifyBeforeTheNotify) {
    KtDbObject* notifier = open(resistor, KtDb::kForNotify);
    close(open(resistor, KtDb::kForRead));
    EXPECT_EQ(tryOpen(resistor, KtDb::kForWrite), Orbx::eWasOpenForNotify);
    close(notifier);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForWrite), Orbx::eOk);
}

TEST_F(OpenObject, ClosesAsOftenAsItWasOpenedHoweverDeep) {
    KtDbObject* object = nullptr;
    for (int i = 0; i < 40; ++i) {
        object = open(resistor, i % 2 == 0 ? KtDb::kForNotify : KtDb::kForRead);
    }
    for (int i = 0; i < 40; ++i) {
        ASSERT_EQ(object->close(), Orbx::eOk);
    }
    EXPECT_EQ(object->close(), Orbx::eNotOpen);
}

TEST_F(OpenObject, RefusesToCloseWhatIsNotOpen) {
    KtDbObject* object = open(resistor, KtDb::kForRead);
    close(object);
    EXPECT_EQ(object->close(), Orbx::eNotOpen);
}

TEST_F(OpenObject, RefusesToCloseAnObjectWithoutAnId) {
    const std::unique_ptr<Attribute> attribute = makeUnstored();
    EXPECT_TRUE(attribute->objectId().isNull());
    EXPECT_EQ(attribute->database(), nullptr);
    EXPECT_EQ(attribute->handle(), 0U);
    EXPECT_EQ(attribute->close(), Orbx::eNotInDatabase);
    EXPECT_EQ(attribute->erase(), Orbx::eNotInDatabase);
}

TEST_F(OpenObject, ChangesAnObjectWithoutAnIdAtOnce) {
    const std::unique_ptr<Attribute> attribute = makeUnstored();
    EXPECT_EQ(attribute->setText(L"10k"), Orbx::eOk);
    EXPECT_STREQ(attribute->text(), L"10k");
}

TEST_F(OpenObject, FailsAsTheFaultSwitchSays) {
    Faults::instance().fail(HostCall::openObject, 2, Orbx::eInvalidInput);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForRead), Orbx::eOk);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForRead), Orbx::eInvalidInput);
    EXPECT_EQ(tryOpen(resistor, KtDb::kForRead), Orbx::eOk);
}

TEST_F(OpenObject, TellsAnAuditWhatIsOpenHow) {
    open(resistor, KtDb::kForRead);
    open(resistor, KtDb::kForRead);
    open(resistor, KtDb::kForNotify);
    open(drawing.blockTableId(), KtDb::kForWrite);
    const std::vector<kthost::OpenObject> found = openObjects();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].id, drawing.blockTableId());
    EXPECT_EQ(found[0].className, L"KtDbBlockTable");
    EXPECT_EQ(found[0].mode, KtDb::kForWrite);
    EXPECT_EQ(found[1].id, resistor);
    EXPECT_EQ(found[1].handle, handleOf(resistor));
    EXPECT_EQ(found[1].mode, KtDb::kForRead);
    EXPECT_EQ(found[1].count, 2U);
    EXPECT_EQ(found[2].mode, KtDb::kForNotify);
    EXPECT_EQ(found[2].count, 1U);
}

} // namespace

} // namespace kthost
