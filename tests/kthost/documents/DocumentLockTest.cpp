#include "kthost/documents/DocumentManager.h"

#include "tests/kthost/documents/RecordingReactor.h"

#include <gmock/gmock.h>

namespace kthost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DocumentLock : public testing::Test {
protected:
    // The tests' reactors are gone before the manager announces its end.
    void TearDown() override {
        manager.reactors().removeWhere([](const CodeOrigin&) { return true; });
    }

    DocumentManager manager;
    RecordingReactor reactor;
    Document& plan = manager.create(L"plan", nullptr);
};

TEST_F(DocumentLock, IsNotThereAtFirst) {
    EXPECT_EQ(plan.lockMode(), KtAp::kNotLocked);
    EXPECT_EQ(plan.lockMode(true), KtAp::kNotLocked);
}

TEST_F(DocumentLock, IsTheModeOfTheOnlyLock) {
    manager.lock(plan, KtAp::kNone, L"palette");
    EXPECT_EQ(plan.lockMode(), KtAp::kNone);
}

TEST_F(DocumentLock, OfAnotherContextCountsOnlyWhenAskedFor) {
    manager.lock(plan, KtAp::kWrite, L"palette", LockContext::other);
    EXPECT_EQ(plan.lockMode(), KtAp::kNotLocked);
    EXPECT_EQ(plan.lockMode(true), KtAp::kWrite);
}

TEST_F(DocumentLock, ForWritingIsStrongerThanOneForReading) {
    manager.lock(plan, KtAp::kWrite, L"palette");
    manager.lock(plan, KtAp::kRead, L"query");
    EXPECT_EQ(plan.lockMode(), KtAp::kWrite);
}

TEST_F(DocumentLock, ForReadingIsStrongerThanNone) {
    manager.lock(plan, KtAp::kRead, L"query");
    manager.lock(plan, KtAp::kNone, L"palette");
    EXPECT_EQ(plan.lockMode(), KtAp::kRead);
}

TEST_F(DocumentLock, IsGivenBackInTheOppositeOrder) {
    manager.lock(plan, KtAp::kRead, L"query");
    manager.lock(plan, KtAp::kAutoWrite, L"palette");
    EXPECT_EQ(plan.lockMode(), KtAp::kAutoWrite);
    EXPECT_TRUE(manager.unlock(plan, L"#palette"));
    EXPECT_EQ(plan.lockMode(), KtAp::kRead);
    EXPECT_TRUE(manager.unlock(plan, L"#query"));
    EXPECT_EQ(plan.lockMode(), KtAp::kNotLocked);
}

TEST_F(DocumentLock, CannotBeGivenBackWhenThereIsNone) {
    manager.addReactor(&reactor);
    EXPECT_FALSE(manager.unlock(plan, L"#palette"));
    EXPECT_THAT(reactor.heard, IsEmpty());
}

TEST_F(DocumentLock, OfAnotherContextIsAnnouncedAsTheOverallMode) {
    manager.addReactor(&reactor);
    manager.lock(plan, KtAp::kWrite, L"palette", LockContext::other);
    EXPECT_THAT(reactor.heard,
                ElementsAre(L"lock will change plan 2 2 4 palette", L"lock changed plan 2 2 4 palette"));
}

TEST_F(DocumentLock, IsNotYetInForceWhenItsChangeIsForetold) {
    class Looking : public KtApDocManagerReactor {
    public:
        void documentLockModeWillChange(KtApDocument* document, KtAp::DocLockMode, KtAp::DocLockMode,
                                        KtAp::DocLockMode, const wchar_t*) override {
            before = document->lockMode();
        }

        void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode, KtAp::DocLockMode,
                                     KtAp::DocLockMode, const wchar_t*) override {
            after = document->lockMode();
        }

        KtAp::DocLockMode before = KtAp::kNone;
        KtAp::DocLockMode after = KtAp::kNone;
    } looking;

    manager.addReactor(&looking);
    manager.lock(plan, KtAp::kWrite, L"palette");
    EXPECT_EQ(looking.before, KtAp::kNotLocked);
    EXPECT_EQ(looking.after, KtAp::kWrite);
}

} // namespace
} // namespace kthost
