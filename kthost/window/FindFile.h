#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace kthost {

/// What a path leads to.
struct FoundFile {
    std::filesystem::path name; ///< the same one by whatever path it is found; opens however long it is
    std::uint64_t size = 0;     ///< in bytes; of a regular file
    bool isRegular = false;
    std::filesystem::perms permissions{};
};

/// Follows links. Nothing when nothing is there, or nothing that this program may know of. Any thread.
std::optional<FoundFile> findFile(const std::filesystem::path& path);

} // namespace kthost
