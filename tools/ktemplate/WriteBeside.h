#pragma once

#include <filesystem>
#include <string_view>

namespace ktemplate {

/// Puts the bytes into the file of that name, whole or not at all: they are written to a new file beside it,
/// which then takes its name. What was there under that name stays until then. Throws std::runtime_error,
/// having removed the new file.
void writeBeside(const std::filesystem::path& path, std::string_view bytes);

} // namespace ktemplate
