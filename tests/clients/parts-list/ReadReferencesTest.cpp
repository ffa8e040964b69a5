#include "ReadReferences.h"

#include "InUse.h"
#include "OpenObject.h"

#include "kthost/database/Attributes.h"
#include "kthost/database/Database.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/References.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Faults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>

#include <memory>
#include <optional>

namespace parts {

namespace {

using testing::ElementsAre;

/// A drawing with a block R, placed twice with a value, and a reader that has read both.
class ReadReferences : public testing::Test {
protected:
    ReadReferences() {
        EXPECT_EQ(kthost::addDefinition(database_, L"R", definition_), Orbx::eOk);
        first_ = insert(L"1k");
        second_ = insert(L"2k");
        reader_.read({definition_});
    }

    KtDbObjectId insert(const wchar_t* value) {
        KtDbObjectId id;
        kthost::NewReference reference;
        reference.definition = definition_;
        reference.container = database_.modelSpaceId();
        reference.attributes = {{L"Value", value}};
        EXPECT_EQ(kthost::insertReference(database_, reference, id), Orbx::eOk);
        return id;
    }

    void setValue(KtDbObjectId reference, const wchar_t* text) {
        EXPECT_EQ(kthost::setAttributeText(database_, reference, L"Value", text), Orbx::eOk);
    }

    std::vector<std::wstring> values() {
        std::vector<std::wstring> texts;
        for (const PlacedReference* reference : reader_.read({definition_})) {
            texts.emplace_back(attributeText(*reference, L"Value"));
        }
        return texts;
    }

    std::size_t openingsOfReading() {
        kthost::Faults::instance().reset();
        reader_.read({definition_});
        return kthost::Faults::instance().calls(kthost::HostCall::openObject);
    }

    kthost::Host host_;
    kthost::Database database_{L"plan"};
    KtDbObjectId definition_;
    KtDbObjectId first_;
    KtDbObjectId second_;
    ReferenceReader reader_;
};

TEST_F(ReadReferences, GivesThemRecordByRecord) {
    KtDbObjectId other;
    ASSERT_EQ(kthost::addDefinition(database_, L"C", other), Orbx::eOk);
    const PlacedReferences references = reader_.read({other, definition_});
    ASSERT_EQ(references.size(), 2U);
    EXPECT_EQ(references[0]->id, first_);
    EXPECT_EQ(references[1]->id, second_);
}

TEST_F(ReadReferences, OpensNoneThatItKnows) {
    EXPECT_EQ(openingsOfReading(), 1U); // the record, which lists them
}

TEST_F(ReadReferences, ReadsAgainWhatItIsToForget) {
    setValue(first_, L"3k");
    setValue(second_, L"4k");
    EXPECT_TRUE(reader_.forget(first_));
    EXPECT_THAT(values(), ElementsAre(L"3k", L"2k"));
}

TEST_F(ReadReferences, OpensOnlyWhatItIsToForget) {
    reader_.forget(first_);
    EXPECT_EQ(openingsOfReading(),
              4U); // the record, the reference, its attribute, and for its name the record
}

TEST_F(ReadReferences, ReadsEverythingAgainWhenItIsToForgetAll) {
    setValue(first_, L"3k");
    setValue(second_, L"4k");
    reader_.forgetAll();
    EXPECT_THAT(values(), ElementsAre(L"3k", L"4k"));
}

TEST_F(ReadReferences, ReadsOneThatIsNew) {
    insert(L"5k");
    EXPECT_THAT(values(), ElementsAre(L"1k", L"2k", L"5k"));
}

TEST_F(ReadReferences, LeavesOutOneThatIsErased) {
    ASSERT_EQ(kthost::eraseReference(database_, first_), Orbx::eOk);
    EXPECT_THAT(values(), ElementsAre(L"2k"));
}

TEST_F(ReadReferences, DoesNotKnowAnyMoreWhatIsListedNoMore) {
    ASSERT_EQ(kthost::eraseReference(database_, first_), Orbx::eOk);
    values();
    ASSERT_EQ(kthost::restoreReference(database_, first_), Orbx::eOk);
    EXPECT_FALSE(reader_.forget(first_));
    EXPECT_TRUE(reader_.forget(second_));
}

TEST_F(ReadReferences, GoesOnWhereItWasKeptFromReading) {
    setValue(first_, L"3k");
    reader_.forget(first_);
    {
        const OpenObject<KtDbBlockReference> held(first_, KtDb::kForWrite);
        EXPECT_THROW(reader_.read({definition_}), InUse);
    }
    EXPECT_THAT(values(), ElementsAre(L"3k", L"2k"));
}

} // namespace

} // namespace parts
