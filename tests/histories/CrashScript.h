#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace histories {

/// The lines of the history being played, in a file that is there while it is played: what a crash leaves is
/// a script that leads to it.
class CrashScript {
public:
    CrashScript();
    CrashScript(const CrashScript&) = delete;
    CrashScript& operator=(const CrashScript&) = delete;

    ~CrashScript() { discard(); }

    /// About to be played.
    void add(const std::string& line) { stream_ << line << std::endl; }

    /// The same for all that this process plays.
    const std::filesystem::path& file() const { return file_; }

    /// It ended, well or not.
    void discard();

private:
    std::filesystem::path file_;
    std::ofstream stream_;
};

} // namespace histories
