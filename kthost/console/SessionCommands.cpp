#include "kthost/console/SessionCommands.h"

#include "kthost/console/HostCommands.h"
#include "kthost/console/Session.h"
#include "kthost/console/Words.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Utf8.h"

#include <limits>

namespace kthost {

namespace {

constexpr const char* kNaming[] = {
    "A reference REF is named by its handle as 'list' prints it (0x2A), by the text of its Reference "
    "attribute",
    "(R7), as @N for the N-th part of the drawing by handle (a part has a designator without # in front), or "
    "as",
    "@last for the reference of the latest command. A block is named by its name, or as @N or @last for what",
    "these place. Double quotes hold blanks together; # at the beginning of a word begins a comment.",
};

std::vector<std::vector<std::string>> describeAll(Session& session) {
    std::vector<std::vector<std::string>> rows;
    for (const HostCommand& command : hostCommands()) {
        rows.push_back({toUtf8(command.usage), command.summary});
    }
    for (const auto& [name, command] : session.host().commands().commands()) {
        rows.push_back({toUtf8(command.usage), "(from a module)"});
    }
    return rows;
}

std::wstring usageOf(Session& session, const std::wstring& name) {
    if (const HostCommand* command = findHostCommand(name)) {
        return command->usage;
    }
    if (const ModuleCommand* command = session.host().commands().find(name)) {
        return command->usage;
    }
    throw CommandError("there is no command '" + toUtf8(name) + "'");
}

} // namespace

void runTick(Session& session, Words& words) {
    const std::uint32_t milliseconds = words.takeNumber("MS", 1, std::numeric_limits<std::uint32_t>::max());
    words.expectEnd();
    session.host().clock().advance(milliseconds);
    session.say("the clock is " + std::to_string(milliseconds) + " ms later");
}

void runHelp(Session& session, Words& words) {
    if (!words.atEnd()) {
        const std::wstring usage = usageOf(session, words.take("COMMAND"));
        words.expectEnd();
        session.say(toUtf8(usage));
        return;
    }
    for (const auto& row : describeAll(session)) {
        session.say(row[0]);
        session.say("    " + row[1]);
    }
    for (const char* line : kNaming) {
        session.say(line);
    }
}

void runQuit(Session& session, Words& words) {
    words.expectEnd();
    session.quit();
}

} // namespace kthost
