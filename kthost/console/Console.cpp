#include "kthost/console/Console.h"

#include "kthost/console/HostCommands.h"
#include "kthost/console/SplitLine.h"
#include "kthost/console/Words.h"
#include "kthost/documents/Host.h"
#include "kthost/documents/PrintSink.h"
#include "kthost/runtime/Utf8.h"

#include <exception>
#include <ostream>
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
    const CommandOutcome outcome =
        runModuleCommand(session.host().documents(), session.document(), command, words);
    if (!outcome) {
        throw CommandError(outcome.reason);
    }
}

} // namespace

Console::Console(Host& host, std::ostream& out, ReadProgress* progress) : session_(host, out, progress) {
    setPrintSink([this](std::wstring_view line) { session_.say(toUtf8(line)); });
    for (const HostCommand& command : hostCommands()) {
        host.commands().reserve(command.name);
    }
}

Console::~Console() {
    setPrintSink({});
}

void Console::run(std::string_view line) {
    std::exception_ptr failure;
    try {
        perform(line);
    } catch (...) {
        failure = std::current_exception();
    }
    session_.host().loop().pump(); // a command that failed has ended too
    if (failure) {
        std::rethrow_exception(failure);
    }
}

void Console::perform(std::string_view line) {
    std::vector<std::wstring> words = splitLine(line);
    if (words.empty()) {
        return;
    }
    const std::wstring name = words.front();
    words.erase(words.begin());
    if (const HostCommand* command = findHostCommand(name)) {
        runHostCommand(session_, *command, std::move(words));
    } else if (const ModuleCommand* brought = session_.host().commands().find(name)) {
        runModuleLine(session_, *brought, words);
    } else {
        throw CommandError("there is no command '" + toUtf8(name) + "'; 'help' lists them");
    }
}

} // namespace kthost
