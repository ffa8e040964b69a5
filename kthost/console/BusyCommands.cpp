#include "kthost/console/BusyCommands.h"

#include "kthost/console/Session.h"
#include "kthost/console/Words.h"
#include "kthost/documents/Host.h"

#include <cstdint>

namespace kthost {

namespace {

constexpr std::uint32_t kMostPending = 1'000'000;
constexpr const wchar_t* kLockName = L"lock";
constexpr const wchar_t* kUnlockName = L"#lock";

bool takeOnOrOff(Words& words) {
    const bool on = words.takeIf(L"on");
    if (!on) {
        words.expect(L"off");
    }
    words.expectEnd();
    return on;
}

} // namespace

void runTyping(Session& session, Words& words) {
    const bool waits = takeOnOrOff(words);
    session.host().window().setInputWaiting(waits);
    session.say(waits ? "input waits" : "no input waits");
}

void runDialog(Session& session, Words& words) {
    const bool open = takeOnOrOff(words);
    session.document().setDialogOpen(open);
    session.say(open ? "a dialog is open" : "no dialog is open");
}

void runPending(Session& session, Words& words) {
    const std::uint32_t count = words.takeNumber("N", 0, kMostPending);
    words.expectEnd();
    session.document().setPendingInputCount(static_cast<int>(count));
    session.say("inputs that commands have yet to take: " + std::to_string(count));
}

void runLock(Session& session, Words& words) {
    const bool elsewhere = words.takeIf(L"elsewhere");
    words.expectEnd();
    session.host().documents().lock(session.document(), KtAp::kWrite, kLockName,
                                    elsewhere ? LockContext::other : LockContext::own);
    session.say(elsewhere ? "locked from elsewhere" : "locked");
}

void runUnlock(Session& session, Words& words) {
    words.expectEnd();
    if (!session.host().documents().unlock(session.document(), kUnlockName)) {
        throw CommandError("the document is not locked");
    }
    session.say("unlocked");
}

} // namespace kthost
