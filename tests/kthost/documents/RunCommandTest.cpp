#include "kthost/documents/DocumentManager.h"

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/runtime/ModuleCode.h"
#include "tests/kthost/documents/RecordingReactor.h"

#include <KtDbObject.h>
#include <KtEd.h>

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace kthost {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

CommandResult doNothing(Document& /*document*/) {
    return CommandResult::done;
}

class Command : public testing::Test {
protected:
    Command()
        : plan(manager.create(L"plan", std::make_unique<Database>(L"plan"))),
          empty(manager.create(L"empty", nullptr)) {}

    // The tests' reactors are gone before the manager announces its end.
    void TearDown() override {
        manager.reactors().removeWhere([](const CodeOrigin&) { return true; });
    }

    static CommandResult defineGate(Document& document) {
        KtDbObjectId id;
        return addDefinition(*document.database(), L"GATE", id) == Orbx::eOk ? CommandResult::done
                                                                             : CommandResult::failed;
    }

    bool hasGate() const { return !recordByName(*plan.database(), L"GATE").isNull(); }

    DocumentManager manager;
    RecordingReactor reactor;
    Document& plan;
    Document& empty;
};

TEST_F(Command, LocksItsDocumentForWritingFromBeginningToEnd) {
    KtAp::DocLockMode inside = KtAp::kNone;
    EXPECT_TRUE(manager.runCommand(plan, L"set", [&inside](Document& document) {
        inside = document.lockMode();
        return CommandResult::done;
    }));
    EXPECT_EQ(inside, KtAp::kWrite);
    EXPECT_EQ(plan.lockMode(), KtAp::kNotLocked);
}

TEST_F(Command, AnnouncesItsNameAtTheBeginningAndWithAHashAtTheEnd) {
    manager.addReactor(&reactor);
    EXPECT_TRUE(manager.runCommand(plan, L"set", doNothing));
    EXPECT_THAT(reactor.heard,
                ElementsAre(L"lock will change plan 2 4 4 set", L"lock changed plan 2 4 4 set",
                            L"lock will change plan 4 2 2 #set", L"lock changed plan 4 2 2 #set"));
}

TEST_F(Command, AnnouncesItsEndWhenItFails) {
    manager.addReactor(&reactor);
    EXPECT_FALSE(manager.runCommand(plan, L"set", [](Document&) { return CommandResult::failed; }));
    EXPECT_THAT(reactor.heard, Contains(L"lock changed plan 4 2 2 #set"));
}

TEST_F(Command, AnnouncesItsEndWhenItIsCancelled) {
    manager.addReactor(&reactor);
    EXPECT_FALSE(manager.runCommand(plan, L"set", [](Document&) { return CommandResult::cancelled; }));
    EXPECT_THAT(reactor.heard, Contains(L"lock changed plan 4 2 2 #set"));
}

TEST_F(Command, AnnouncesItsEndWhenItThrows) {
    manager.addReactor(&reactor);
    EXPECT_FALSE(manager.runCommand(plan, L"set", [](Document&) -> CommandResult { throw 1; }));
    EXPECT_THAT(reactor.heard, Contains(L"lock changed plan 4 2 2 #set"));
}

TEST_F(Command, RunsInsideItsLock) {
    manager.addReactor(&reactor);
    std::vector<std::wstring> heardBefore;
    EXPECT_TRUE(manager.runCommand(plan, L"set", [&](Document&) {
        heardBefore = reactor.heard;
        return CommandResult::done;
    }));
    EXPECT_THAT(heardBefore, ElementsAre(L"lock will change plan 2 4 4 set", L"lock changed plan 2 4 4 set"));
}

TEST_F(Command, IsActiveWhileItRunsOnly) {
    bool inside = false;
    EXPECT_FALSE(ktedCommandActive());
    EXPECT_TRUE(manager.runCommand(plan, L"set", [&inside](Document&) {
        inside = ktedCommandActive();
        return CommandResult::done;
    }));
    EXPECT_TRUE(inside);
    EXPECT_FALSE(ktedCommandActive());
}

TEST_F(Command, LeavesItsDocumentAndNoOtherUnquiescent) {
    bool itsOwn = true;
    bool other = false;
    EXPECT_TRUE(manager.runCommand(plan, L"set", [&](Document& document) {
        itsOwn = document.isQuiescent();
        other = empty.isQuiescent();
        return CommandResult::done;
    }));
    EXPECT_FALSE(itsOwn);
    EXPECT_TRUE(other);
    EXPECT_TRUE(plan.isQuiescent());
}

TEST_F(Command, HasEndedWhenItsEndIsAnnounced) {
    class Looking : public KtApDocManagerReactor {
    public:
        void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode, KtAp::DocLockMode,
                                     KtAp::DocLockMode, const wchar_t* name) override {
            if (*name == L'#') {
                activeAtEnd = ktedCommandActive();
                quiescentAtEnd = document->isQuiescent();
            }
        }

        bool activeAtEnd = true;
        bool quiescentAtEnd = false;
    } looking;

    manager.addReactor(&looking);
    EXPECT_TRUE(manager.runCommand(plan, L"set", doNothing));
    EXPECT_FALSE(looking.activeAtEnd);
    EXPECT_TRUE(looking.quiescentAtEnd);
}

TEST_F(Command, IsOneUndoStepOfItsName) {
    EXPECT_TRUE(manager.runCommand(plan, L"define", defineGate));
    ASSERT_EQ(plan.database()->history().undoable(), 1U);
    EXPECT_EQ(plan.database()->history().undoName(), L"define");
}

TEST_F(Command, KeepsItsChangesWhenDone) {
    EXPECT_TRUE(manager.runCommand(plan, L"define", defineGate));
    EXPECT_TRUE(hasGate());
}

TEST_F(Command, LosesItsChangesWhenItFails) {
    EXPECT_FALSE(manager.runCommand(plan, L"define", [](Document& document) {
        defineGate(document);
        return CommandResult::failed;
    }));
    EXPECT_FALSE(hasGate());
}

TEST_F(Command, LosesItsChangesWhenItIsCancelled) {
    EXPECT_FALSE(manager.runCommand(plan, L"define", [](Document& document) {
        defineGate(document);
        return CommandResult::cancelled;
    }));
    EXPECT_FALSE(hasGate());
}

TEST_F(Command, LosesItsChangesWhenItThrows) {
    EXPECT_FALSE(manager.runCommand(plan, L"define", [](Document& document) -> CommandResult {
        defineGate(document);
        throw std::runtime_error("no");
    }));
    EXPECT_FALSE(hasGate());
}

TEST_F(Command, LosesItsChangesBeforeItsEndIsAnnounced) {
    class Looking : public KtApDocManagerReactor {
    public:
        void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode, KtAp::DocLockMode,
                                     KtAp::DocLockMode, const wchar_t* name) override {
            if (*name == L'#') {
                gateAtEnd = !recordByName(hostDatabase(*document->database()), L"GATE").isNull();
            }
        }

        bool gateAtEnd = true;
    } looking;

    manager.addReactor(&looking);
    EXPECT_FALSE(manager.runCommand(plan, L"define", [](Document& document) {
        defineGate(document);
        return CommandResult::failed;
    }));
    EXPECT_FALSE(looking.gateAtEnd);
}

TEST_F(Command, SaysWhenItsChangesCannotBeTakenBack) {
    KtDbObject* gate = nullptr;
    const CommandOutcome outcome = manager.runCommand(plan, L"define", [&gate](Document& document) {
        defineGate(document);
        EXPECT_EQ(ktdbOpenObject(gate, recordByName(*document.database(), L"GATE"), KtDb::kForWrite),
                  Orbx::eOk);
        return CommandResult::failed;
    });
    EXPECT_THAT(outcome.reason, HasSubstr("could not be taken back"));
    ASSERT_NE(gate, nullptr);
    EXPECT_EQ(gate->close(), Orbx::eOk);
}

TEST_F(Command, ThatUndoesMakesNoUndoStep) {
    EXPECT_TRUE(manager.runCommand(plan, L"define", defineGate));
    EXPECT_TRUE(manager.runCommand(
        plan, L"undo",
        [](Document& document) {
            return document.database()->history().undo() == Orbx::eOk ? CommandResult::done
                                                                      : CommandResult::failed;
        },
        CommandUndo::none));
    EXPECT_FALSE(hasGate());
    EXPECT_EQ(plan.database()->history().redoable(), 1U);
}

TEST_F(Command, RunsInADocumentWithoutDrawing) {
    EXPECT_TRUE(manager.runCommand(empty, L"set", doNothing));
}

TEST_F(Command, GivesTheReasonThatItFailedFor) {
    EXPECT_EQ(manager
                  .runCommand(plan, L"set",
                              [](Document&) {
                                  ktedFail(L"R7 has no attribute Vol\u00FCme");
                                  return CommandResult::failed;
                              })
                  .reason,
              "R7 has no attribute Vol\xC3\xBCme");
}

TEST_F(Command, GivesWhatItThrewAsTheReason) {
    EXPECT_EQ(manager
                  .runCommand(plan, L"set",
                              [](Document&) -> CommandResult { throw std::runtime_error("out of paper"); })
                  .reason,
              "out of paper");
}

TEST_F(Command, GivesSomeReasonWhenItFailsWithout) {
    EXPECT_EQ(manager.runCommand(plan, L"set", [](Document&) { return CommandResult::failed; }).reason,
              "it gave no reason");
}

TEST_F(Command, GivesNoReasonWhenItIsDone) {
    EXPECT_EQ(manager
                  .runCommand(plan, L"set",
                              [](Document&) {
                                  ktedFail(L"thought better of it");
                                  return CommandResult::done;
                              })
                  .reason,
              "");
}

TEST_F(Command, DoesNotInheritAReasonFromTheOneBefore) {
    EXPECT_FALSE(manager.runCommand(plan, L"set", [](Document&) {
        ktedFail(L"first");
        return CommandResult::failed;
    }));
    EXPECT_EQ(manager.runCommand(plan, L"set", [](Document&) { return CommandResult::failed; }).reason,
              "it gave no reason");
}

TEST_F(Command, TakesAReasonWithoutEffectWhenNoneRuns) {
    EXPECT_NO_THROW(ktedFail(L"nobody asked"));
    EXPECT_NO_THROW(ktedFail(nullptr));
}

TEST_F(Command, IsRefusedInsideAnotherAndAnnouncesNothing) {
    CommandOutcome inner;
    EXPECT_TRUE(manager.runCommand(plan, L"outer", [&](Document&) {
        manager.addReactor(&reactor);
        inner = manager.runCommand(empty, L"inner", doNothing);
        manager.removeReactor(&reactor);
        return CommandResult::done;
    }));
    EXPECT_EQ(inner.result, CommandResult::failed);
    EXPECT_EQ(inner.reason, "inner cannot be run while the command outer is running");
    EXPECT_THAT(reactor.heard, IsEmpty());
}

TEST_F(Command, CanBeRunInsideACallback) {
    const ModuleCodeScope running(ModuleCodeKind::callback, "");
    EXPECT_TRUE(manager.runCommand(plan, L"set", doNothing));
}

TEST_F(Command, KeepsDocumentsFromBeingClosed) {
    HostResult result;
    EXPECT_TRUE(manager.runCommand(plan, L"set", [&](Document&) {
        result = manager.close(empty);
        return CommandResult::done;
    }));
    EXPECT_EQ(result.status, Orbx::eNotNow);
    EXPECT_EQ(result.reason, "empty cannot be closed while the command set is running");
}

TEST_F(Command, LeavesNothingLockedWhenAReactorThrows) {
    class Throwing : public KtApDocManagerReactor {
    public:
        void documentLockModeChanged(KtApDocument*, KtAp::DocLockMode, KtAp::DocLockMode, KtAp::DocLockMode,
                                     const wchar_t*) override {
            throw std::runtime_error("not today");
        }
    } throwing;

    manager.addReactor(&throwing);
    EXPECT_THROW(static_cast<void>(manager.runCommand(plan, L"set", doNothing)), std::runtime_error);
    EXPECT_EQ(plan.lockMode(), KtAp::kNotLocked);
    EXPECT_TRUE(plan.isQuiescent());
    EXPECT_FALSE(ktedCommandActive());
}

} // namespace
} // namespace kthost
