#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace program {

/// What a program is given. Text is UTF-8.
struct Given {
    std::vector<std::string> arguments = {};
    std::string input = {};                              ///< what it reads from its standard input
    std::map<std::string, std::string> environment = {}; ///< added to that of this process
};

struct Outcome {
    int status = 0; ///< that it exits with; -1 when it ends in another way
    std::string output;
    std::string errors;
};

/// Runs a program in a folder that is there, and waits for its end. What it reads and writes lies in that
/// folder's files stdin, stdout and stderr. `program` is a path, without the system's suffix for programs.
/// Throws std::runtime_error when it cannot be run.
Outcome run(const std::filesystem::path& program, const std::filesystem::path& folder, const Given& given);

} // namespace program
