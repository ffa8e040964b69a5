#pragma once

#include <filesystem>

/// The form of a path under which this system opens the file however long the path is. Any thread.
std::filesystem::path systemPath(const std::filesystem::path& path);
