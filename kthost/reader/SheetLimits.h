#pragma once

#include "kthost/reader/Design.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kthost {

/// How many places of the hierarchy there are. Counts them without listing them, and throws ReadError when
/// one of the limits of DesignReader.h is passed. `order` is that of sheetOrder; the files have `bytesRead`
/// bytes together.
std::size_t countSheetInstances(const Design& design, const std::vector<std::size_t>& order,
                                std::uint64_t bytesRead);

} // namespace kthost
