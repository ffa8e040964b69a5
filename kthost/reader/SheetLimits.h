#pragma once

#include "kthost/reader/Design.h"

#include <cstddef>
#include <vector>

namespace kthost {

/// How many places of the hierarchy there are. Counts them without listing them, and throws ReadError when
/// one of the limits of DesignReader.h is passed. `order` is that of sheetOrder.
std::size_t countSheetInstances(const Design& design, const std::vector<std::size_t>& order);

} // namespace kthost
