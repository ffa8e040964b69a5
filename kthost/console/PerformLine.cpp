#include "kthost/console/PerformLine.h"

#include "kthost/console/HostCommands.h"
#include "kthost/console/Session.h"
#include "kthost/console/SplitLine.h"
#include "kthost/console/Words.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Utf8.h"

#include <string>
#include <utility>
#include <vector>

namespace kthost {

namespace {

void runHostCommand(Session& session, const HostCommand& command, std::vector<std::wstring> words) {
    try {
        Words rest(std::move(words));
        command.run(session, rest);
    } catch (const UsageError& error) {
        throw CommandError(std::string(error.what()) + "; usage: " + toUtf8(command.usage));
    }
}

void runModuleLine(Session& session, const ModuleCommand& command, const std::vector<std::wstring>& words) {
    if (session.isTogether()) {
        if (session.document().database() != nullptr) {
            session.joinTogether(session.drawing());
        }
        if (callModuleCommand(session.document(), command, words) != CommandResult::done) {
            throw CommandError(""); // the command that it is part of knows what the module said
        }
        return;
    }
    const CommandOutcome outcome =
        runModuleCommand(session.host().documents(), session.document(), command, words);
    if (!outcome) {
        throw CommandError(outcome.reason);
    }
}

} // namespace

void performLine(Session& session, std::string_view line) {
    std::vector<std::wstring> words = splitLine(line);
    if (words.empty()) {
        return;
    }
    const std::wstring name = words.front();
    words.erase(words.begin());
    if (const HostCommand* command = findHostCommand(name)) {
        runHostCommand(session, *command, std::move(words));
    } else if (const ModuleCommand* brought = session.host().commands().find(name)) {
        runModuleLine(session, *brought, words);
    } else {
        throw CommandError("there is no command '" + toUtf8(name) + "'; 'help' lists them");
    }
}

} // namespace kthost
