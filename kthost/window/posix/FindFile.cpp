#include "kthost/window/FindFile.h"

#include <system_error>

namespace kthost {

namespace fs = std::filesystem;

std::optional<FoundFile> findFile(const fs::path& path) {
    std::error_code error;
    FoundFile found{.name = fs::canonical(path, error)};
    if (error) {
        return std::nullopt;
    }
    const fs::file_status status = fs::status(found.name, error);
    found.isRegular = fs::is_regular_file(status);
    found.permissions = status.permissions();
    if (!error && found.isRegular) {
        found.size = fs::file_size(found.name, error);
    }
    return error ? std::nullopt : std::optional(std::move(found));
}

} // namespace kthost
