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

/// The same for what is said of each place: uuids and names of all sheets that lead there, and what its
/// symbols are called. An editor writes some hundred bytes into a file for each symbol in each place, which
/// take a third of that here; so much is free, and so much comes with each byte of the files.
inline constexpr std::size_t kMaxExpandedCharacters = 8'000'000;
inline constexpr std::size_t kMaxExpandedCharactersPerByte = 4;

/// Reads the root sheet and every sheet file below it, each once, found relative to the sheet that names it.
/// Throws ReadError, and nothing is kept, when a file is refused, missing, contains itself directly or
/// through others, or when one of the limits above is passed.
Design readDesign(const std::filesystem::path& root, ReadProgress* progress = nullptr);

} // namespace kthost
