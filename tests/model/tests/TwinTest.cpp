#include "tests/model/Twin.h"

#include "app/KtDxApplication.h"
#include "blocks/KtDxBlocks.h"
#include "kthost/database/Attributes.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/ExternalReferences.h"
#include "kthost/database/References.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/documents/Host.h"
#include "tests/model/Observer.h"
#include "tests/model/Opened.h"

#include <ktdx/KtDxNotify.h>

#include <KtDbBlockReference.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ktmodel;
using namespace kthost;
using testing::HasSubstr;

namespace {

void must(Orbx::ErrorStatus status) {
    EXPECT_EQ(status, Orbx::eOk);
}

std::function<void()> onFirst;
std::function<void()> onSecond;

void first() {
    if (onFirst) {
        onFirst();
    }
}

void second() {
    if (onSecond) {
        onSecond();
    }
}

/// A host with the module and the model beside it, and the drawing "plan" with the definitions "R" and "S".
class TwinTest : public testing::Test {
protected:
    TwinTest() {
        gIdleCheckMessage = 0;
        host_.clock().set(1000);
    }

    ~TwinTest() override {
        onFirst = {};
        onSecond = {};
    }

    KtDbObjectId define(const std::wstring& name) {
        KtDbObjectId id;
        EXPECT_EQ(addDefinition(drawing(), name, id), Orbx::eOk);
        return id;
    }

    KtDbObjectId place(KtDbObjectId definition, KtDbObjectId container = {}) {
        KtDbObjectId id;
        const KtDbObjectId where = container.isNull() ? drawing().modelSpaceId() : container;
        EXPECT_EQ(insertReference(drawing(), {definition, where, {}, {{L"A", L"1"}}, {}}, id), Orbx::eOk);
        return id;
    }

    void attach(KtRxCallback callback, const KtArray<KtDbObjectId>& ids) {
        EXPECT_TRUE(ktdxBlockReferenceMonitorAttach(&document_, &ids, callback));
    }

    /// A command that does this, the idle check behind it, and what differs then.
    std::string command(const std::function<void()>& edit) {
        const CommandOutcome outcome = host_.documents().runCommand(document_, L"edit", [&](Document&) {
            edit();
            return CommandResult::done;
        });
        EXPECT_EQ(outcome.result, CommandResult::done) << outcome.reason;
        return idle();
    }

    std::string idle() {
        host_.clock().advance(1);
        host_.loop().pump();
        return difference();
    }

    std::string difference() { return twin_->difference({{L"plan", allQuestions(observe(), L"plan")}}); }

    Database& drawing() { return *document_.database(); }

    Host host_;
    Document& document_ = host_.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    KtDbObjectId r_ = define(L"R");
    KtDbObjectId s_ = define(L"S");
    std::unique_ptr<KtDxApplication> application_ = std::make_unique<KtDxApplication>();
    std::unique_ptr<Twin> twin_ = std::make_unique<Twin>();
};

TEST_F(TwinTest, AgreesBeforeAnythingIsAsked) {
    EXPECT_EQ(difference(), "");
    EXPECT_EQ(command([] {}), "");
}

TEST_F(TwinTest, AgreesOnWhatClientsOfPlacedBlocksAreTold) {
    place(r_, s_);
    attach(first, {r_});
    attach(second, {s_});
    EXPECT_EQ(idle(), "");
    EXPECT_EQ(command([this] { place(s_), place(r_); }), "");
    EXPECT_EQ(command([this] { must(moveReference(drawing(), referencesTo(r_).at(0), {1, 2, 3})); }), "");
}

TEST_F(TwinTest, AgreesOnErasingUndoAndReleasing) {
    attach(first, {r_});
    const KtDbObjectId reference = place(r_);
    EXPECT_EQ(command([&] { must(eraseReference(drawing(), reference)); }), "");
    EXPECT_EQ(drawing().history().undo(), Orbx::eOk);
    EXPECT_EQ(command([] {}), "");
    EXPECT_EQ(command([&] { must(eraseReference(drawing(), reference)); }), "");
    drawing().releaseErased();
    EXPECT_EQ(Opened<KtDbBlockReference>(reference, KtDb::kForRead, true).status(), Orbx::eObjectReleased);
    EXPECT_EQ(difference(), "");
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, true));
    EXPECT_EQ(difference(), "");
}

TEST_F(TwinTest, AgreesWhenAReferenceIsOpenForWriteDuringAForcedUpdate) {
    const KtDbObjectId reference = place(r_);
    attach(first, {r_});
    {
        const Opened<KtDbBlockReference> opened(reference, KtDb::kForWrite);
        EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, true));
        EXPECT_EQ(difference(), "");
    }
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, true));
    EXPECT_EQ(difference(), "");
    ktdxBlockReferenceMonitorDetach(&document_, first);
    EXPECT_EQ(difference(), "");
}

TEST_F(TwinTest, AgreesWhenAReferenceThatIsWatchedIsOpenForWriteWhileTheLastClientLeaves) {
    const KtDbObjectId reference = place(r_);
    attach(first, {r_});
    const Opened<KtDbBlockReference> opened(reference, KtDb::kForWrite);
    EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, true));
    ktdxBlockReferenceMonitorDetach(&document_, first);
    EXPECT_EQ(difference(), "");
}

TEST_F(TwinTest, AgreesWhenTheBlockTableIsOpenForWriteDuringAForcedUpdate) {
    place(r_);
    attach(first, {r_});
    {
        const Opened<KtDbObject> table(drawing().blockTableId(), KtDb::kForWrite);
        EXPECT_TRUE(ktdxUpdateBlockGraph(&document_, true, true));
        EXPECT_EQ(difference(), "");
    }
    EXPECT_EQ(command([] {}), "");
}

TEST_F(TwinTest, AgreesOnDynamicDefinitions) {
    attach(first, {r_});
    KtDbObjectId older;
    EXPECT_EQ(command([&] { must(addAnonymousDefinition(drawing(), L'U', older)); }), "");
    EXPECT_EQ(command([&] { must(makeDynamic(drawing(), r_)); }), "");
    EXPECT_EQ(command([&] { must(adoptRepresentation(drawing(), r_, L"old", older)); }), "");
    KtDbObjectId younger;
    EXPECT_EQ(command([&] { must(addRepresentation(drawing(), r_, L"new", younger)); }), "");
    EXPECT_EQ(command([&] { place(older), place(younger), place(s_, younger); }), "");
    ktdxBlockReferenceMonitorDetach(&document_, first);
    attach(second, {s_});
    EXPECT_EQ(command([&] { must(eraseReference(drawing(), referencesTo(older).at(0))); }), "");
}

TEST_F(TwinTest, AgreesOnAnAttachedDrawing) {
    const auto load = [] {
        auto other = std::make_unique<Database>(L"other");
        KtDbObjectId block;
        EXPECT_EQ(addDefinition(*other, L"P", block), Orbx::eOk);
        KtDbObjectId reference;
        EXPECT_EQ(insertReference(*other, {block, other->modelSpaceId(), {}, {}, {}}, reference), Orbx::eOk);
        return other;
    };
    KtDbObjectId record;
    attach(first, {r_});
    EXPECT_EQ(command([&] { must(attachDrawing(drawing(), L"OTHER", load, record)); }), "");
    attach(first, {record, recordByName(drawing(), L"OTHER|P")});
    EXPECT_EQ(command([&] { place(record); }), "");
    EXPECT_EQ(command([&] { must(reloadDrawing(drawing(), record)); }), "");
    EXPECT_EQ(command([&] { must(detachDrawing(drawing(), record)); }), "");
    EXPECT_EQ(drawing().history().undo(), Orbx::eOk);
    EXPECT_EQ(command([] {}), "");
}

TEST_F(TwinTest, AgreesOnWhatCallbacksDo) {
    attach(first, {r_});
    attach(second, {s_});
    onFirst = [this] {
        place(s_);
        ktdxUpdateBlockGraph(&document_, true, true);
        onFirst = {};
    };
    onSecond = [this] { ktdxBlockReferenceMonitorDetach(&document_, second); };
    EXPECT_EQ(command([this] { place(r_), place(s_); }), "");
    EXPECT_EQ(command([this] { place(r_), place(s_); }), "");
}

TEST_F(TwinTest, AgreesOnCallbacksThatThrow) {
    attach(first, {r_});
    attach(second, {r_});
    ktdxDocTimerAttach(&document_, first, 0, 1);
    ktdxDocTimerAttach(&document_, second, 0, 1);
    EXPECT_EQ(command([] {}), "");
    onFirst = onSecond = [] { throw std::runtime_error("thrown on purpose"); };
    place(r_);
    EXPECT_THROW(command([] {}), std::runtime_error);
    onFirst = onSecond = {};
    EXPECT_EQ(difference(), "");
    EXPECT_EQ(command([] {}), "");
}

TEST_F(TwinTest, AgreesOnIdleClients) {
    EXPECT_EQ(ktdxDocTimerAttach(&document_, first, 100, 1), 1);
    EXPECT_EQ(command([] {}), "");
    onFirst = [this] {
        const KtArray<KtDbObjectId> ids{r_};
        ktdxBlockReferenceMonitorAttach(&document_, &ids, first);
        ktdxDocTimerAttach(&document_, second, 0, 1);
    };
    host_.clock().advance(100);
    EXPECT_EQ(command([this] { place(r_); }), "");
    EXPECT_EQ(ktdxDocTimerAttach(&document_, first, 0xFFFFFFFF, 0), 1);
    EXPECT_EQ(command([this] { place(r_); }), "");
}

TEST_F(TwinTest, AgreesOnSeveralDocuments) {
    attach(first, {r_});
    Document& other = host_.documents().create(L"other", std::make_unique<Database>(L"other"));
    EXPECT_EQ(difference(), "");
    EXPECT_EQ(command([this] { place(r_); }), ""); // plan is not current: nothing is posted
    EXPECT_TRUE(ktdxUpdateBlockGraph(&other, false, false));
    EXPECT_EQ(difference(), "");
    ASSERT_TRUE(host_.documents().close(other));
    EXPECT_EQ(command([] {}), "");
    ASSERT_TRUE(host_.documents().close(document_));
    EXPECT_EQ(difference(), "");
    EXPECT_EQ(host_.report().findings, std::vector<std::string>());
}

TEST_F(TwinTest, AgreesWhenADefinitionIsErasedWhileItIsWatchedAndRestored) {
    attach(first, {r_, s_});
    place(r_, s_);
    EXPECT_EQ(command([this] { must(purgeDefinition(drawing(), s_)); }), "");
    EXPECT_EQ(drawing().history().undo(), Orbx::eOk);
    EXPECT_EQ(command([this] { place(s_); }), "");
    EXPECT_EQ(command([this] { must(redefine(drawing(), s_, {})); }), "");
}

TEST_F(TwinTest, SeesAMarkThatTheModuleSetByItself) {
    attach(first, {r_});
    application_->getData(&document_, false)->blocks()->setRescanNeeded(true);
    EXPECT_THAT(difference(), HasSubstr("plan: blocks: rescan needed: expected no, is yes"));
}

TEST_F(TwinTest, SeesAReactorThatTheModuleLost) {
    attach(first, {r_});
    const KtDxBlocks* blocks = application_->getData(&document_, false)->blocks();
    const Opened<KtDbObject> record(r_, KtDb::kForNotify);
    ASSERT_EQ(record->removeReactor(blocks->blockMonitors().at(r_)), Orbx::eOk);
    EXPECT_THAT(difference(), HasSubstr("reactors on"));
}

TEST_F(TwinTest, SeesACallThatTheModuleDidNotMake) {
    attach(first, {r_});
    application_->getData(&document_, false)->blocks()->detachBlockReferenceMonitor(first);
    place(r_);
    EXPECT_THAT(command([] {}), HasSubstr("callbacks called: expected"));
}

// What lies in a representation alone is not inside its definition: the definition's own references are
// followed.
TEST_F(TwinTest, AgreesThatABlockInARepresentationAloneIsNotReachedThroughItsDefinition) {
    must(makeDynamic(drawing(), r_));
    KtDbObjectId representation;
    must(addRepresentation(drawing(), r_, L"one", representation));
    place(s_, representation);
    attach(first, {s_});
    int calls = 0;
    onFirst = [&calls] { ++calls; };
    EXPECT_EQ(command([&] { place(representation); }), "");
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(command([&] { place(s_, r_), place(representation); }), "");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(command([&] { place(representation); }), "");
    EXPECT_EQ(calls, 2);
}

} // namespace
