#include "TouchListener.h"

#include "OpenObject.h"

#include "kthost/database/Attributes.h"
#include "kthost/database/Database.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/OpenObjects.h"
#include "kthost/database/References.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Faults.h"
#include "tests/support/FailingAllocation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

namespace parts {

namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// A drawing with a block R, placed once with a value, and a listener.
class TouchListening : public testing::Test {
protected:
    TouchListening() {
        EXPECT_EQ(kthost::addDefinition(*database_, L"R", definition_), Orbx::eOk);
        reference_ = insert();
    }

    KtDbObjectId insert() {
        KtDbObjectId id;
        kthost::NewReference reference;
        reference.definition = definition_;
        reference.container = database_->modelSpaceId();
        reference.attributes = {{L"Value", L"1k"}};
        EXPECT_EQ(kthost::insertReference(*database_, reference, id), Orbx::eOk);
        return id;
    }

    void setValue(const wchar_t* text) {
        EXPECT_EQ(kthost::setAttributeText(*database_, reference_, L"Value", text), Orbx::eOk);
    }

    void move() { EXPECT_EQ(kthost::moveReference(*database_, reference_, {3.0, 3.0, 0.0}), Orbx::eOk); }

    kthost::Host host_;
    std::unique_ptr<kthost::Database> database_ = std::make_unique<kthost::Database>(L"plan");
    KtDbObjectId definition_;
    KtDbObjectId reference_;
    std::optional<TouchListener> listener_{std::in_place};
};

TEST_F(TouchListening, HearsNothingOfWhatItWasNotGiven) {
    move();
    EXPECT_FALSE(listener_->isTouched());
}

TEST_F(TouchListening, HearsAReferenceMove) {
    listener_->listenTo({reference_});
    EXPECT_FALSE(listener_->isTouched());
    move();
    EXPECT_TRUE(listener_->isTouched());
}

TEST_F(TouchListening, HearsAnAttributeOfAReferenceChange) {
    listener_->listenTo({reference_});
    setValue(L"2k");
    EXPECT_TRUE(listener_->isTouched());
}

TEST_F(TouchListening, HearsSomethingBeingPlacedInARecord) {
    listener_->listenTo({database_->modelSpaceId()});
    insert();
    EXPECT_TRUE(listener_->isTouched());
}

TEST_F(TouchListening, DoesNotTakeAMoveInsideARecordForATouchOfTheRecord) {
    listener_->listenTo({database_->modelSpaceId()});
    move();
    EXPECT_FALSE(listener_->isTouched());
}

TEST_F(TouchListening, ForgetsUntilTheNextTouch) {
    listener_->listenTo({reference_});
    move();
    listener_->forget();
    EXPECT_FALSE(listener_->isTouched());
    setValue(L"2k");
    EXPECT_TRUE(listener_->isTouched());
}

TEST_F(TouchListening, NamesTheReferenceThatWasMoved) {
    listener_->listenTo({reference_, insert()});
    move();
    EXPECT_THAT(listener_->touched(), UnorderedElementsAre(reference_));
}

TEST_F(TouchListening, NamesTheReferenceWhoseAttributeHasChanged) {
    listener_->listenTo({reference_, insert()});
    setValue(L"2k");
    EXPECT_THAT(listener_->touched(), UnorderedElementsAre(reference_));
}

TEST_F(TouchListening, NamesTheRecordThatSomethingWasPlacedIn) {
    listener_->listenTo({database_->modelSpaceId(), reference_});
    insert();
    EXPECT_THAT(listener_->touched(), Contains(database_->modelSpaceId()));
}

TEST_F(TouchListening, NamesNothingThatWasForgotten) {
    listener_->listenTo({reference_});
    move();
    listener_->forget();
    EXPECT_THAT(listener_->touched(), IsEmpty());
}

TEST_F(TouchListening, IsNotCompleteWithoutOneThatDoesNotOpen) {
    const KtDbObjectId other = insert();
    listener_->listenTo({reference_, other});
    EXPECT_TRUE(listener_->isComplete());
    const KtDbObjectId erased = insert();
    ASSERT_EQ(kthost::eraseReference(*database_, erased), Orbx::eOk);
    listener_->listenTo({reference_, other, erased});
    EXPECT_FALSE(listener_->isComplete());
}

TEST_F(TouchListening, IsNotCompleteWhenOneIsReleased) {
    listener_->listenTo({reference_});
    ASSERT_EQ(kthost::eraseReference(*database_, reference_), Orbx::eOk);
    database_->releaseErased();
    EXPECT_FALSE(listener_->isComplete());
}

TEST_F(TouchListening, WithoutMemoryForATouchIsNotComplete) {
    listener_->listenTo({reference_});
    const OpenObject<KtDbObject> object(reference_);
    {
        const FailingAllocation none;
        EXPECT_NO_THROW(listener_->openedForModify(object.get()));
    }
    EXPECT_TRUE(listener_->isTouched());
    EXPECT_FALSE(listener_->isComplete());
}

TEST_F(TouchListening, WithoutMemoryForListeningLeavesNothingBehind) {
    const std::vector<KtDbObjectId> objects{reference_, insert(), insert()};
    bool hasFailed = true;
    for (std::size_t k = 1; hasFailed; ++k) {
        listener_.emplace();
        std::vector<KtDbObjectId> asked = objects;
        const FailingAllocation one(k);
        try {
            listener_->listenTo(std::move(asked));
        } catch (const std::bad_alloc&) {
            EXPECT_FALSE(listener_->isComplete()) << k;
        }
        hasFailed = one.hasFailed();
        listener_.reset();
        EXPECT_TRUE(kthost::attachedReactors().empty()) << k;
    }
}

TEST_F(TouchListening, LeavesErasedOnesForLater) {
    ASSERT_EQ(kthost::eraseReference(*database_, reference_), Orbx::eOk);
    listener_->listenTo({reference_});
    ASSERT_EQ(kthost::restoreReference(*database_, reference_), Orbx::eOk);
    EXPECT_FALSE(listener_->isTouched());
    listener_->listenTo({reference_});
    setValue(L"2k");
    EXPECT_TRUE(listener_->isTouched());
}

TEST_F(TouchListening, ListensToEachOnce) {
    listener_->listenTo({reference_, database_->modelSpaceId(), reference_});
    listener_->listenTo({reference_});
    EXPECT_EQ(kthost::attachedReactors().size(), 2U);
}

TEST_F(TouchListening, DoesNotOpenTheSameOnesAgain) {
    listener_->listenTo({reference_});
    kthost::Faults::instance().reset();
    listener_->listenTo({reference_});
    EXPECT_EQ(kthost::Faults::instance().calls(kthost::HostCall::openObject), 0U);
}

TEST_F(TouchListening, ListensToOneThatIsNewAmongTheSame) {
    listener_->listenTo({database_->modelSpaceId()});
    listener_->listenTo({database_->modelSpaceId(), reference_});
    setValue(L"2k");
    EXPECT_TRUE(listener_->isTouched());
}

TEST_F(TouchListening, LetsGoOfAllOfThemInTheEnd) {
    listener_->listenTo({reference_, database_->modelSpaceId()});
    listener_.reset();
    EXPECT_TRUE(kthost::attachedReactors().empty());
}

TEST_F(TouchListening, LetsGoOfErasedOnesToo) {
    listener_->listenTo({reference_});
    ASSERT_EQ(kthost::eraseReference(*database_, reference_), Orbx::eOk);
    listener_.reset();
    EXPECT_TRUE(kthost::attachedReactors().empty());
}

TEST_F(TouchListening, OutlivesTheDrawing) {
    listener_->listenTo({reference_, database_->modelSpaceId()});
    database_.reset();
    listener_.reset(); // has nothing to let go of
    EXPECT_TRUE(kthost::attachedReactors().empty());
}

} // namespace

} // namespace parts
