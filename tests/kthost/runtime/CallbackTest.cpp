#include <KtRxCallback.h>

#include "kthost/runtime/CallbackLedger.h"
#include "kthost/runtime/ModuleCode.h"
#include "kthost/runtime/ModuleLoader.h"
#include "tests/kthost/modules/TestModules.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace kthost {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

int calls = 0;
std::string runningInside;

void countCall() {
    ++calls;
    runningInside = ModuleCodeScope::innermost()->text();
}

void throwError() {
    throw std::runtime_error("no more paper");
}

class Callback : public testing::Test {
protected:
    void SetUp() override { calls = 0; }

    KtRxCallback callbackOfCarelessModule() {
        return exportedFunction<KtRxCallback()>(modules, "CarelessModule.kmx", "carelessGetCallback")();
    }

    ModuleLoader modules;
};

TEST_F(Callback, IsCalledOnce) {
    ktrxCall(countCall);
    EXPECT_EQ(calls, 1);
}

TEST_F(Callback, CountsAsRunningModuleCode) {
    ktrxCall(countCall);
    EXPECT_EQ(runningInside, "a callback");
    EXPECT_EQ(ModuleCodeScope::innermost(), nullptr);
}

TEST_F(Callback, PassesOnWhatItThrows) {
    EXPECT_THROW(ktrxCall(throwError), std::runtime_error);
    EXPECT_EQ(ModuleCodeScope::innermost(), nullptr);
}

TEST_F(Callback, IsNothingWhenNull) {
    EXPECT_NO_THROW(ktrxCall(nullptr));
}

TEST_F(Callback, IsCalledInAModule) {
    ASSERT_TRUE(modules.load(testModule("CarelessModule.kmx")));
    ktrxCall(callbackOfCarelessModule());
    EXPECT_EQ(exportedFunction<int()>(modules, "CarelessModule.kmx", "carelessCallbackCalls")(), 1);
}

TEST_F(Callback, IsNotMadeIntoAnUnloadedModuleAndSaysSo) {
    ASSERT_TRUE(modules.load(testModule("CarelessModule.kmx")));
    const KtRxCallback callback = callbackOfCarelessModule();
    ASSERT_TRUE(modules.unload("CarelessModule.kmx"));
    testing::internal::CaptureStderr();
    ktrxCall(callback);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("was not made: CarelessModule.kmx has been unloaded"));
}

TEST_F(Callback, IsMadeAgainOnceTheModuleIsBack) {
    ASSERT_TRUE(modules.load(testModule("CarelessModule.kmx")));
    ASSERT_TRUE(modules.unload("CarelessModule.kmx"));
    ASSERT_TRUE(modules.load(testModule("CarelessModule.kmx")));
    ktrxCall(callbackOfCarelessModule());
    EXPECT_EQ(exportedFunction<int()>(modules, "CarelessModule.kmx", "carelessCallbackCalls")(), 1);
}

class Ledger : public testing::Test {
protected:
    std::vector<KtRxCallback> held() const {
        std::vector<KtRxCallback> callbacks;
        ledger.inspect([&callbacks](const KtApDocument*, KtRxCallback one) { callbacks.push_back(one); });
        return callbacks;
    }

    // Documents are compared by their addresses and never followed.
    KtApDocument* first = reinterpret_cast<KtApDocument*>(&places_[0]);
    KtApDocument* second = reinterpret_cast<KtApDocument*>(&places_[8]);
    CallbackLedger ledger;

private:
    alignas(8) char places_[16]{};
};

TEST_F(Ledger, HoldsWhatWasNoted) {
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, true);
    EXPECT_THAT(held(), ElementsAre(countCall));
}

TEST_F(Ledger, LetsGoOfWhatIsNoLongerHeld) {
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, true);
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, false);
    EXPECT_EQ(ledger.size(), 0U);
}

TEST_F(Ledger, HoldsOnceWhatIsNotedTwiceInOneList) {
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, true);
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, true);
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, false);
    EXPECT_EQ(ledger.size(), 0U);
}

TEST_F(Ledger, KeepsWhatTwoListsHoldUntilBothLetGo) {
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, true);
    ktrxNoteCallback(first, KtRxCallbackList::blockReferences, countCall, true);
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, false);
    EXPECT_THAT(held(), ElementsAre(countCall));
}

TEST_F(Ledger, IgnoresLettingGoOfWhatIsNotHeld) {
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, false);
    EXPECT_EQ(ledger.size(), 0U);
}

TEST_F(Ledger, ForgetsADocumentWithAllThatWasHeldForIt) {
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, countCall, true);
    ktrxNoteCallback(first, KtRxCallbackList::idleTimer, throwError, true);
    ktrxNoteCallback(second, KtRxCallbackList::idleTimer, throwError, true);
    ktrxForgetCallbacks(first);
    EXPECT_THAT(held(), ElementsAre(throwError));
}

TEST(CallbackLedgerEnd, NotesNothingWithoutALedger) {
    EXPECT_NO_THROW(ktrxNoteCallback(nullptr, KtRxCallbackList::idleTimer, countCall, true));
}

} // namespace
} // namespace kthost
