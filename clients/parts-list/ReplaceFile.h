#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace parts {

/// Writes a file beside the one meant and renames it: whoever reads it sees all of the old one or all of the
/// new one. On failure the old one stays and nothing is left beside it.
std::error_code replaceFile(const std::filesystem::path& file, std::string_view bytes);

} // namespace parts
