#include "kthost/audit/Trace.h"
#include "kthost/console/Console.h"
#include "kthost/console/ProgressBar.h"
#include "kthost/console/ScriptRunner.h"
#include "kthost/documents/Host.h"
#include "kthost/window/ProgramStart.h"
#include "kthost/window/Terminal.h"

#include <SystemPath.h>

#include <CLI/CLI.hpp>
#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

enum ExitStatus : int { kDone = 0, kLineFailed = 1, kUsage = 2, kAuditFailed = 3 };

struct Arguments {
    std::vector<std::string> modules;
    std::vector<std::string> drawings;
    std::string script;
    std::string trace;
    bool keepGoing = false;
};

std::filesystem::path toPath(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

void declare(CLI::App& app, Arguments& arguments) {
    app.add_option("--load", arguments.modules,
                   "Load a module before anything else; may be given several times")
        ->type_name("FILE")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false); // what follows the file is a drawing
    app.add_option("--script", arguments.script, "Run the commands in a file, or those on standard input (-)")
        ->type_name("FILE|-");
    app.add_option("--trace", arguments.trace,
                   "Write a line of JSON for every command, host call, notification, message and callback")
        ->type_name("FILE");
    app.add_flag("--keep-going", arguments.keepGoing, "Go on behind a line that cannot be done");
    app.set_version_flag("--version", std::string("kthost ") + KTHOST_VERSION);
    app.add_option("drawing", arguments.drawings, "Schematics to open, each in a document of its own")
        ->type_name("DRAWING");
    app.footer("Without a script, commands are read from standard input, with a prompt on a terminal;\n"
               "'help' lists them. Exit status: 0 all done, 1 a line could not be done, 2 wrong usage,\n"
               "3 the audit found something left behind.");
}

/// A word as a command line takes it.
std::string quoted(const std::string& word) {
    std::string text = "\"";
    for (const char byte : word) {
        text.append(byte == '"' ? 2 : 1, byte);
    }
    return text + "\"";
}

/// What the arguments ask for, as command lines.
std::string openingLines(const Arguments& arguments) {
    std::string lines;
    for (const std::string& module : arguments.modules) {
        lines += "load " + quoted(module) + "\n";
    }
    for (const std::string& drawing : arguments.drawings) {
        lines += "open " + quoted(drawing) + "\n";
    }
    return lines;
}

class Program {
public:
    explicit Program(const Arguments& arguments) : arguments_(arguments) {
        if (kthost::isTerminal(kthost::StandardStream::error)) {
            progress_.emplace(std::cerr);
        }
    }

    int run(std::istream& script) {
        kthost::Host host;
        const bool done = runAll(host, script);
        const kthost::AuditReport& report = host.end();
        for (const std::string& finding : report.findings) {
            fmt::print("audit: {}\n", finding);
        }
        if (report.clean()) {
            fmt::print("audit: clean\n");
        }
        return !report.clean() ? kAuditFailed : done ? kDone : kLineFailed;
    }

private:
    bool runAll(kthost::Host& host, std::istream& script) {
        kthost::Console console(host, std::cout, progress_ ? &*progress_ : nullptr);
        std::istringstream opening(openingLines(arguments_));
        const bool opened = runLines(console, opening, {.name = "kthost", .keepGoing = arguments_.keepGoing});
        if (!opened && !arguments_.keepGoing) {
            return false;
        }
        return runLines(console, script, scriptOptions()) && opened;
    }

    static bool runLines(kthost::Console& console, std::istream& lines,
                         const kthost::ScriptOptions& options) {
        return kthost::runScript(console, lines, std::cout, std::cerr, options) == kthost::ScriptResult::done;
    }

    kthost::ScriptOptions scriptOptions() const {
        const bool isInput = arguments_.script.empty() || arguments_.script == "-";
        return {.name = isInput ? "standard input" : arguments_.script,
                .keepGoing = arguments_.keepGoing,
                .echo = !arguments_.script.empty(),
                .prompt = arguments_.script.empty() && kthost::isTerminal(kthost::StandardStream::input)};
    }

    const Arguments& arguments_;
    std::optional<kthost::ProgressBar> progress_;
};

int refuseUsage(const std::string& reason) {
    fmt::print(stderr, "kthost: {}\nRun kthost --help for its usage.\n", reason);
    return kUsage;
}

int runProgram(const Arguments& arguments) {
    std::ifstream file;
    const bool isFile = !arguments.script.empty() && arguments.script != "-";
    if (isFile) {
        file.open(systemPath(toPath(arguments.script)));
    }
    if (isFile && !file) {
        return refuseUsage("the script '" + arguments.script + "' cannot be read");
    }
    if (!arguments.trace.empty() && !kthost::openTrace(toPath(arguments.trace))) {
        return refuseUsage("the trace '" + arguments.trace + "' cannot be written");
    }
    Program program(arguments);
    const int status = program.run(isFile ? static_cast<std::istream&>(file) : std::cin);
    kthost::closeTrace();
    return status;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words = kthost::startProgram(argc, argv);
    std::reverse(words.begin(), words.end()); // the parser takes them from the back
    Arguments arguments;
    CLI::App app("A headless CAD host that loads run-time modules and runs commands on schematics", "kthost");
    app.allow_windows_style_options(false); // a word that begins with "/" is a path
    declare(app, arguments);
    try {
        app.parse(std::move(words));
    } catch (const CLI::Success& success) { // help or version
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        return refuseUsage(error.what());
    }
    return runProgram(arguments);
}
