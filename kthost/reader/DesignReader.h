#pragma once

#include "kthost/reader/Design.h"
#include "kthost/reader/ReadProgress.h"

#include <cstddef>
#include <filesystem>

namespace kthost {

/// Sheets below the root are nested at most so deep.
inline constexpr std::size_t kMaxSheetDepth = 32;

/// Sheets that name each other multiply: a few dozen small files could stand for more sheets than there is
/// memory.
inline constexpr std::size_t kMaxSheetInstances = 20'000;
inline constexpr std::size_t kMaxSymbolOccurrences = 4'000'000;

/// Reads the root sheet and every sheet file below it, each once, found relative to the sheet that names it.
/// Throws ReadError, and nothing is kept, when a file is refused, missing, contains itself directly or
/// through others, or when one of the limits above is passed.
Design readDesign(const std::filesystem::path& root, ReadProgress* progress = nullptr);

} // namespace kthost
