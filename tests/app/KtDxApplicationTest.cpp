#include "app/KtDxApplication.h"

#include "app/KtDxDocument.h"
#include "kthost/runtime/CallbackLedger.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/HostTrace.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <tuple>
#include <utility>

namespace {

/// The application there was when the host was last told to forget the callbacks of a document.
const KtDxApplication* applicationAtForgetting = nullptr;

} // namespace

// The module's objects find this before the host's.
void ktrxForgetCallbacks(KtApDocument* document) {
    applicationAtForgetting = gApplication;
    kthost::CallbackLedger::current()->forget(document);
}

namespace {

using kthost::HostCall;
using testing::IsEmpty;

/// Before any test can have had an idle check.
const UINT kMessageAtTheStart = gIdleCheckMessage;

class Application : public ApplicationTest {
protected:
    void notify(KtApDocument* document, const wchar_t* command) {
        application_->documentLockModeChanged(document, KtAp::kWrite, KtAp::kNotLocked, KtAp::kNotLocked,
                                              command);
    }

    std::size_t posted() { return host_.loop().queue().size(); }
};

TEST_F(Application, IsEnabledAttachedAndWithAutoCreateFromTheStart) {
    EXPECT_TRUE(application_->isEnabled());
    EXPECT_TRUE(application_->isReactorAttached());
    EXPECT_TRUE(application_->isAutoCreate());
    EXPECT_TRUE(hears(application_.get()));
}

TEST_F(Application, HasNoMessageBeforeTheFirstIdleCheck) {
    EXPECT_EQ(kMessageAtTheStart, 0U);
}

TEST_F(Application, EntersItselfAsTheApplication) {
    EXPECT_EQ(gApplication, application_.get());
}

TEST_F(Application, IsThereUntilItsRecordsAreGone) {
    const KtDxApplication* application = application_.get();
    applicationAtForgetting = nullptr;
    application_.reset();
    EXPECT_EQ(applicationAtForgetting, application);
}

TEST_F(Application, LeavesTheDocumentManagerOnce) {
    const HostTrace trace;
    application_.reset();
    EXPECT_EQ(trace.count("document manager reactor remove"), 1U);
}

TEST_F(Application, HasARecordForEveryDocumentThatWasOpenAtItsStart) {
    EXPECT_NE(application_->getData(&document_, false), nullptr);
}

TEST_F(Application, MakesARecordForEveryDocumentThatIsCreated) {
    EXPECT_NE(application_->getData(&open(L"later"), false), nullptr);
}

TEST_F(Application, StartsWithoutADocumentManagerAndAttachesAtTheFirstRecord) {
    application_.reset();
    faults().fail(HostCall::documentManager, 1, Orbx::eInvalidInput, true);
    application_ = std::make_unique<KtDxApplication>();
    faults().reset();
    EXPECT_TRUE(application_->isEnabled());
    EXPECT_FALSE(application_->isReactorAttached());
    application_->getData(&document_, true);
    EXPECT_TRUE(application_->isReactorAttached());
}

TEST_F(Application, AttachesOnceAtItsStart) {
    application_.reset();
    const auto calls = faults().calls(HostCall::documentIterator);
    application_ = std::make_unique<KtDxApplication>();
    // One for all documents, one for the purge behind the one record that was made.
    EXPECT_EQ(faults().calls(HostCall::documentIterator), calls + 2);
}

TEST_F(Application, PostsAnIdleCheckWhenACommandEnds) {
    ASSERT_TRUE(host_.documents().runCommand(document_, L"set", [this](kthost::Document&) {
        EXPECT_EQ(posted(), 0U);
        return kthost::CommandResult::done;
    }));
    ASSERT_EQ(posted(), 1U);
    const MSG& message = host_.loop().queue().front();
    EXPECT_EQ(message.hwnd, host_.window().handle());
    EXPECT_EQ(message.message, RegisterWindowMessageW(L"WM_KTDX_IDLE_CHECK"));
    EXPECT_EQ(message.wParam, reinterpret_cast<WPARAM>(static_cast<KtApDocument*>(&document_)));
    EXPECT_EQ(message.lParam, 0);
}

TEST_F(Application, PostsOncePerCommandEnd) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(host_.documents().runCommand(
            document_, L"nothing", [](kthost::Document&) { return kthost::CommandResult::done; }));
    }
    EXPECT_EQ(posted(), 3U);
}

TEST_F(Application, PostsAlsoWhenTheCommandFailed) {
    EXPECT_FALSE(host_.documents().runCommand(
        document_, L"nothing", [](kthost::Document&) { return kthost::CommandResult::failed; }));
    EXPECT_EQ(posted(), 1U);
}

TEST_F(Application, LooksAtTheFirstCharacterOfTheCommandNameOnly) {
    notify(&document_, L"#");
    notify(&document_, L"##");
    notify(&document_, L"#set");
    EXPECT_EQ(posted(), 3U);
}

TEST_F(Application, PostsNothingForANullCommandName) {
    notify(&document_, nullptr);
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, PostsNothingForAnEmptyCommandName) {
    notify(&document_, L"");
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, PostsNothingForACommandNameThatBeginsWithAnythingElse) {
    notify(&document_, L"set");
    notify(&document_, L" #set");
    notify(&document_, L"s#");
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, PostsNothingForANullDocument) {
    host_.documents().setCurrent(nullptr);
    notify(nullptr, L"#set");
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, PostsNothingForADocumentThatIsNotCurrent) {
    open(L"other");
    notify(&document_, L"#set");
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, PostsNothingWhenNoDocumentIsCurrent) {
    host_.documents().setCurrent(nullptr);
    notify(&document_, L"#set");
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, PostsNothingWithoutADocumentManager) {
    faults().fail(HostCall::documentManager, 1, Orbx::eInvalidInput);
    notify(&document_, L"#set");
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, PostsNothingWithoutTheApplicationPointer) {
    gApplication = nullptr;
    notify(&document_, L"#set");
    gApplication = application_.get();
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, PostsNothingForADocumentWithoutARecordAndMakesNone) {
    application_->removeData(&document_);
    notify(&document_, L"#set");
    EXPECT_EQ(posted(), 0U);
    EXPECT_EQ(application_->getData(&document_, false), nullptr);
}

TEST_F(Application, PostsNothingForADocumentWhoseRecordIsDisabled) {
    std::ignore = application_->getData(&document_, false)->setEnabled(false);
    notify(&document_, L"#set");
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, PostsNothingWithoutAThread) {
    host_.window().setThreadKnown(false);
    notify(&document_, L"#set");
    EXPECT_EQ(posted(), 0U);
    EXPECT_EQ(gIdleCheckMessage, 0U); // nor was the message registered
}

TEST_F(Application, PostsNothingWithoutAMainWindow) {
    host_.window().setPresent(false);
    notify(&document_, L"#set");
    EXPECT_EQ(posted(), 0U);
    EXPECT_EQ(gIdleCheckMessage, 0U);
}

TEST_F(Application, RegistersTheMessageAtTheFirstPosting) {
    EXPECT_EQ(gIdleCheckMessage, 0U);
    notify(&document_, L"set");
    EXPECT_EQ(gIdleCheckMessage, 0U);
    notify(&document_, L"#set");
    EXPECT_EQ(gIdleCheckMessage, RegisterWindowMessageW(L"WM_KTDX_IDLE_CHECK"));
}

TEST_F(Application, UsesTheMessageIdThatItHasRegistered) {
    gIdleCheckMessage = 0xC123;
    notify(&document_, L"#set");
    EXPECT_EQ(gIdleCheckMessage, 0xC123U);
    EXPECT_EQ(host_.loop().queue().front().message, 0xC123U);
}

TEST_F(Application, DestroysAllRecordsWhenDisabled) {
    EXPECT_EQ(application_->setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(application_->isEnabled());
    EXPECT_FALSE(hears(application_.get()));
    EXPECT_EQ(application_->getData(&document_, false), nullptr);
}

TEST_F(Application, MakesARecordForEveryOpenDocumentWhenEnabledAgain) {
    std::ignore = application_->setEnabled(false);
    kthost::Document& other = open(L"other");
    EXPECT_EQ(application_->setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(application_->isEnabled());
    EXPECT_TRUE(hears(application_.get()));
    EXPECT_NE(application_->getData(&document_, false), nullptr);
    EXPECT_NE(application_->getData(&other, false), nullptr);
}

TEST_F(Application, MakesMissingRecordsWhenEnabledTwice) {
    application_->removeData(&document_);
    EXPECT_EQ(application_->setEnabled(true), Orbx::eOk);
    EXPECT_NE(application_->getData(&document_, false), nullptr);
}

TEST_F(Application, IsSwitchedWithStatusOkAlsoWithoutADocumentManager) {
    faults().fail(HostCall::documentManager, 1, Orbx::eInvalidInput, true);
    EXPECT_EQ(application_->setEnabled(false), Orbx::eOk);
    faults().reset();
    EXPECT_FALSE(application_->isEnabled());
    EXPECT_TRUE(application_->isReactorAttached());
}

TEST_F(Application, PostsNothingWhileDisabled) {
    KtDxEnableBase& enabling = *application_;
    std::ignore = enabling.KtDxEnableBase::setEnabled(false); // the flag alone: the records stay
    ASSERT_NE(application_->getData(&document_, false), nullptr);
    notify(&document_, L"#set");
    EXPECT_EQ(posted(), 0U);
}

TEST_F(Application, LeavesTheDocumentManagerAndClearsThePointerWhenItIsDestroyed) {
    const KtApDocManagerReactor* reactor = application_.get();
    application_.reset();
    EXPECT_FALSE(hears(reactor));
    EXPECT_EQ(gApplication, nullptr);
}

TEST_F(Application, IsDestroyedWholeThroughItsSecondBase) {
    KtDxEnableBase* enabling = application_.release();
    delete enabling;
    EXPECT_EQ(gApplication, nullptr);
}

TEST_F(Application, HasDocumentsWithoutARecordWhenThereIsNoApplication) {
    application_.reset();
    EXPECT_EQ(documentRecord(&document_, true), nullptr);
}

class WatchedApplication : public KtDxApplication {
public:
    bool isEnabled() const override { return saysItIsOn && KtDxApplication::isEnabled(); }

    KtDxDocument* getData(KtApDocument* document, bool create) override {
        return record == nullptr ? KtDxApplication::getData(document, create) : record;
    }

    Orbx::ErrorStatus setReactorAttached(bool attach) override {
        ++attaching;
        return KtDxApplication::setReactorAttached(attach);
    }

    bool saysItIsOn = true;
    KtDxDocument* record = nullptr;
    int attaching = 0;
};

class OverriddenApplication : public ModuleTest {
protected:
    std::size_t postedAtCommandEnd() {
        application_.documentLockModeChanged(&document_, KtAp::kWrite, KtAp::kNotLocked, KtAp::kNotLocked,
                                             L"#set");
        return host_.loop().queue().size();
    }

    kthost::Document& other_ = open(L"other");
    kthost::Document& document_ = open(L"plan");
    WatchedApplication application_;
};

TEST_F(OverriddenApplication, IsAskedWhetherItIsEnabled) {
    application_.saysItIsOn = false;
    EXPECT_EQ(postedAtCommandEnd(), 0U);
}

TEST_F(OverriddenApplication, PostsNothingForARecordOfAnotherDocument) {
    KtDxDocument record(&other_);
    application_.record = &record;
    EXPECT_EQ(postedAtCommandEnd(), 0U);
    application_.record = nullptr;
    EXPECT_EQ(postedAtCommandEnd(), 1U);
}

TEST_F(OverriddenApplication, PostsNothingForANullDocumentWhateverItsRecord) {
    KtDxDocument record(nullptr);
    application_.record = &record;
    host_.documents().setCurrent(nullptr);
    application_.documentLockModeChanged(nullptr, KtAp::kWrite, KtAp::kNotLocked, KtAp::kNotLocked, L"#set");
    EXPECT_THAT(host_.loop().queue(), IsEmpty());
}

TEST_F(OverriddenApplication, AttachesAsTheRegistryDoesWhenSwitched) {
    std::ignore = application_.setEnabled(false);
    std::ignore = application_.setEnabled(true);
    EXPECT_EQ(application_.attaching, 0);
    EXPECT_TRUE(hears(&application_));
}

} // namespace
