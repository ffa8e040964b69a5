#pragma once

#include "kthost/reader/Design.h"

#include <cstdint>

namespace kthost {

/// Lists the places of the hierarchy in `design.instances`, from the files and what they name. Throws
/// ReadError when a file contains itself or a limit of DesignReader.h is passed; both are known before
/// anything is listed. The files have `bytesRead` bytes together.
void expandHierarchy(Design& design, std::uint64_t bytesRead);

} // namespace kthost
