#include "kthost/console/HistoryCommands.h"

#include "kthost/console/Session.h"
#include "kthost/console/StatusText.h"
#include "kthost/console/Words.h"
#include "kthost/database/Database.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/runtime/Utf8.h"

#include <cstdint>
#include <limits>

namespace kthost {

namespace {

struct Direction {
    const wchar_t* command;
    const char* doing;
    std::size_t (UndoHistory::*steps)() const;
    const std::wstring& (UndoHistory::*name)() const;
    Orbx::ErrorStatus (UndoHistory::*step)();
    Orbx::ErrorStatus (UndoHistory::*back)();
};

constexpr Direction kUndo{
    L"undo",           "undone", &UndoHistory::undoable, &UndoHistory::undoName, &UndoHistory::undo,
    &UndoHistory::redo};
constexpr Direction kRedo{
    L"redo",           "redone", &UndoHistory::redoable, &UndoHistory::redoName, &UndoHistory::redo,
    &UndoHistory::undo};

void walkBack(UndoHistory& history, const Direction& direction, std::uint32_t count) {
    while (count-- > 0) {
        require((history.*direction.back)(), "the steps before cannot be put back");
    }
}

/// All the steps, or none.
std::string walk(UndoHistory& history, const Direction& direction, std::uint32_t count) {
    std::string names;
    std::uint32_t step = 0;
    while (step < count) {
        const std::wstring name = (history.*direction.name)();
        const Orbx::ErrorStatus status = (history.*direction.step)();
        if (status != Orbx::eOk) {
            walkBack(history, direction, step);
        }
        ++step;
        require(status, "'" + toUtf8(name) + "' cannot be " + direction.doing);
        names += (names.empty() ? "" : ", ") + toUtf8(name);
    }
    return names;
}

void run(Session& session, Words& words, const Direction& direction) {
    constexpr std::uint32_t kMost = std::numeric_limits<std::int32_t>::max();
    const std::uint32_t count = words.atEnd() ? 1 : words.takeNumber("N", 1, kMost);
    words.expectEnd();
    std::string names;
    session.walkSteps(direction.command, [&](Database& database) {
        UndoHistory& history = database.history();
        const std::size_t steps = (history.*direction.steps)();
        if (steps < count) {
            throw CommandError(std::to_string(steps) + (steps == 1 ? " step" : " steps") + " can be " +
                               direction.doing);
        }
        names = walk(history, direction, count);
    });
    session.say(std::string(direction.doing) + " " + names);
}

} // namespace

void runUndo(Session& session, Words& words) {
    run(session, words, kUndo);
}

void runRedo(Session& session, Words& words) {
    run(session, words, kRedo);
}

void runRecording(Session& session, Words& words) {
    const bool on = words.takeIf(L"on");
    if (!on) {
        words.expect(L"off");
    }
    words.expectEnd();
    if (session.isTogether()) {
        throw CommandError("not now: a step is being kept");
    }
    session.drawing().setUndoRecording(on);
    session.say(on ? "changes are kept for undo" : "changes are not kept for undo");
}

void runForget(Session& session, Words& words) {
    words.expectEnd();
    session.walkSteps(L"forget", [](Database& database) {
        if (database.history().isRecordingStep()) {
            throw CommandError("a step is being kept");
        }
        database.releaseErased();
    });
    session.say("forgot the steps, and let go of what is erased");
}

} // namespace kthost
