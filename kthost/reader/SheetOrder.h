#pragma once

#include "kthost/reader/Design.h"

#include <cstddef>
#include <vector>

namespace kthost {

/// The files of the design in an order in which each comes after all that name it, the root first. Throws
/// ReadError when there is none because a file contains itself.
std::vector<std::size_t> sheetOrder(const Design& design);

} // namespace kthost
