#pragma once

#include <filesystem>
#include <string>

namespace kthost {

/// A path as UTF-8.
std::string pathUtf8(const std::filesystem::path& path);
/// Its last part as UTF-8.
std::string fileNameOf(const std::filesystem::path& path);

} // namespace kthost
