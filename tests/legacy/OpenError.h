#pragma once

#include <ExclusiveFile.h>

#include <filesystem>
#include <system_error>

/// What comes of opening the file for oneself; it is closed again at once.
inline std::error_code openError(const std::filesystem::path& path) {
    ExclusiveFile file;
    return file.open(path);
}
