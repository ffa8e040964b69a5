#pragma once

#include "kthost/database/Database.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <vector>

namespace bench {

/// Looks for schematics below a folder. They are known by the number of references that they have; of two
/// with the same number one is taken, and those with none are left out.
void findRealDrawings(const std::filesystem::path& folder);

/// Ascending. Empty when none were looked for.
std::vector<std::size_t> sizesOfRealDrawings();

/// One of those sizes.
std::unique_ptr<kthost::Database> readRealDrawing(std::size_t size);

} // namespace bench
