#pragma once

#include "legacy/CEattMain.h"
#include "tools/ktemplate/ProgressBar.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace ktemplate {

/// What keeps a file from being a sound template.
struct Problem {
    std::optional<std::uint64_t>
        offset;        ///< of the byte where the reading broke off; none when the file did not open
    std::string entry; ///< which field of which entry, counted from 1; empty without an offset
    std::string reason;
};

/// A template with all its blocks and attributes, selected or not, or the reason why there is none.
struct TemplateFile {
    std::unique_ptr<CEattMain> contents; ///< null when there is a problem
    std::uint64_t ignoredBytes = 0;      ///< after the last block
    std::optional<Problem> problem;
};

/// Reads a template through the module's own reader.
TemplateFile readTemplateFile(const std::filesystem::path& path, ProgressBar& progress);

/// One line for people, which begins with the file's name.
std::string describe(const std::filesystem::path& path, const Problem& problem);

/// A file's name for people, with "/" between folders on every system.
std::string displayName(const std::filesystem::path& path);

} // namespace ktemplate
