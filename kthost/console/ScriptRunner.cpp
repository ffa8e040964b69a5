#include "kthost/console/ScriptRunner.h"

#include "kthost/console/Console.h"
#include "kthost/console/OneLine.h"

#include <cstddef>
#include <exception>
#include <istream>
#include <ostream>

namespace kthost {

namespace {

constexpr const char* kPrompt = "kthost> ";

bool holdsCommand(const std::string& line) {
    const std::size_t first = line.find_first_not_of(" \t\r");
    return first != std::string::npos && line[first] != '#';
}

class ScriptRun {
public:
    ScriptRun(Console& console, std::ostream& out, std::ostream& err, const ScriptOptions& options)
        : console_(console),
          out_(out),
          err_(err),
          options_(options) {}

    bool nextLine(std::istream& lines) {
        if (options_.prompt) {
            out_ << kPrompt << std::flush;
        }
        ++number_;
        return static_cast<bool>(std::getline(lines, line_));
    }

    /// False when the line cannot be done.
    bool runLine() {
        if (options_.echo && holdsCommand(line_)) {
            out_ << "> " << onOneLine(line_.substr(0, line_.find_last_not_of('\r') + 1)) << '\n';
        }
        try {
            console_.run(line_);
            out_.flush();
            return true;
        } catch (const std::exception& error) {
            out_.flush(); // what went before comes before
            err_ << options_.name << ':' << number_ << ": " << onOneLine(error.what()) << std::endl;
            return false;
        }
    }

private:
    Console& console_;
    std::ostream& out_;
    std::ostream& err_;
    const ScriptOptions& options_;
    std::string line_;
    std::size_t number_ = 0;
};

} // namespace

ScriptResult runScript(Console& console, std::istream& lines, std::ostream& out, std::ostream& err,
                       const ScriptOptions& options) {
    ScriptRun run(console, out, err, options);
    ScriptResult result = ScriptResult::done;
    while (!console.session().isQuitting() && run.nextLine(lines)) {
        if (!run.runLine()) {
            result = ScriptResult::failed;
            if (!options.keepGoing && !options.prompt) {
                break;
            }
        }
    }
    return result;
}

} // namespace kthost
