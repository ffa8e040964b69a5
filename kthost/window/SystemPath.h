#pragma once

#include <filesystem>

namespace kthost {

/// The form of a path under which this system opens the file however long the path is.
std::filesystem::path systemPath(const std::filesystem::path& path);

} // namespace kthost
