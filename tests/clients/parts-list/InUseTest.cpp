#include "InUse.h"

#include "OpenObject.h"
#include "PlacedReference.h"
#include "ReadObject.h"

#include "kthost/database/Database.h"
#include "kthost/database/Definitions.h"
#include "kthost/documents/Host.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockTableRecord.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace parts {

namespace {

/// A drawing with a block R that somebody has open in one way or another.
class BlockInUse : public testing::Test {
protected:
    BlockInUse() { EXPECT_EQ(kthost::addDefinition(*database_, L"R", block_), Orbx::eOk); }

    void open(KtDb::OpenMode mode) { opened_.emplace(block_, mode); }

    kthost::Host host_;
    std::unique_ptr<kthost::Database> database_ = std::make_unique<kthost::Database>(L"plan");
    KtDbObjectId block_;
    std::optional<OpenObject<KtDbObject>> opened_;
};

TEST_F(BlockInUse, ForWritingCannotBeRead) {
    open(KtDb::kForWrite);
    EXPECT_THROW(ReadObject<KtDbObject>{block_}, InUse);
}

TEST_F(BlockInUse, ForReadingCanBeRead) {
    open(KtDb::kForRead);
    EXPECT_TRUE(ReadObject<KtDbObject>(block_));
}

TEST_F(BlockInUse, IsNotWhatOneOfAnotherClassOrNoneIs) {
    EXPECT_FALSE(ReadObject<KtDbBlockReference>(block_));
    EXPECT_FALSE(ReadObject<KtDbBlockTableRecord>(KtDbObjectId()));
}

TEST_F(BlockInUse, IsNamedByItsHandle) {
    open(KtDb::kForWrite);
    const std::wstring handle = handleText(opened_->get()->handle());
    EXPECT_EQ(InUse(block_, KtDb::kForRead).reason(),
              L"the list cannot be read from the drawing while 0x" + handle + L" is open elsewhere");
}

TEST_F(BlockInUse, IsOverWhenItIsClosed) {
    open(KtDb::kForWrite);
    const InUse inUse(block_, KtDb::kForRead);
    EXPECT_FALSE(inUse.isOver());
    opened_.reset();
    EXPECT_TRUE(inUse.isOver());
}

TEST_F(BlockInUse, ForReadingIsNotOverForWhoWantsToWrite) {
    open(KtDb::kForRead);
    EXPECT_FALSE(InUse(block_, KtDb::kForWrite).isOver());
    EXPECT_TRUE(InUse(block_, KtDb::kForRead).isOver());
}

TEST_F(BlockInUse, ForNotificationIsNotOverForWhoWantsToWrite) {
    open(KtDb::kForNotify);
    EXPECT_FALSE(InUse(block_, KtDb::kForWrite).isOver());
}

TEST_F(BlockInUse, IsOverWhenTheDrawingHasGone) {
    const InUse inUse(block_, KtDb::kForRead);
    database_.reset();
    EXPECT_TRUE(inUse.isOver());
}

} // namespace

} // namespace parts
