#pragma once

#include "kthost/reader/ReadProgress.h"

#include <filesystem>
#include <memory>
#include <string>

namespace kthost {

class Database;

/// Reads a schematic into a drawing of that name. Throws CommandError when it cannot be read.
std::unique_ptr<Database> readDrawing(const std::filesystem::path& file, std::wstring name,
                                      ReadProgress* progress);

} // namespace kthost
