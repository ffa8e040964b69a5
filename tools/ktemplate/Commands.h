#pragma once

#include "tools/ktemplate/ProgressBar.h"

#include <filesystem>
#include <iosfwd>
#include <vector>

namespace ktemplate {

/// What a command returns and the program exits with.
enum class Status { sound = 0, unsound = 1, usage = 2 };

/// Where a command prints.
struct Console {
    std::ostream& out;
    std::ostream& err;
    bool showProgress = false; ///< on err
    ProgressBar::Now now = ProgressBar::Clock::now;
};

/// Prints all of a template, as JSON or for people.
Status show(const std::filesystem::path& path, bool json, const Console& console);

/// Writes the template that some JSON describes.
Status make(const std::filesystem::path& from, const std::filesystem::path& to, const Console& console);

/// Prints what clients of the module get of a template. As they cannot tell an unsound file from one in which
/// nothing is selected, that is told on `err`.
Status lists(const std::filesystem::path& path, const Console& console);

/// Tells of each file whether it is sound, and if not, where and why.
Status check(const std::vector<std::filesystem::path>& paths, const Console& console);

} // namespace ktemplate
