#include "kthost/console/Console.h"

#include "kthost/console/HostCommands.h"
#include "kthost/console/PerformLine.h"
#include "kthost/documents/Host.h"
#include "kthost/documents/PrintSink.h"
#include "kthost/runtime/Utf8.h"

#include <exception>
#include <ostream>

namespace kthost {

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
        performLine(session_, line);
    } catch (...) {
        failure = std::current_exception();
    }
    session_.host().loop().pump(); // a command that failed has ended too
    if (failure) {
        std::rethrow_exception(failure);
    }
}

} // namespace kthost
