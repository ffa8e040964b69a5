#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace kthost {

class Console;

/// How the lines of a script are read and answered for.
struct ScriptOptions {
    std::string name;       ///< what errors call the script, UTF-8
    bool keepGoing = false; ///< go on behind a line that cannot be done
    bool echo = false;      ///< print each line that holds a command before its output
    bool prompt = false;    ///< ask for each line
};

enum class ScriptResult : std::uint8_t { done, failed };

/// Runs lines until the script ends, one of them quits the host or, unless told to keep going, one cannot be
/// done. Why goes to `err` with the script's name and the line's number.
ScriptResult runScript(Console& console, std::istream& lines, std::ostream& out, std::ostream& err,
                       const ScriptOptions& options);

} // namespace kthost
