#pragma once

#include "kthost/reader/Design.h"

namespace kthost {

/// Lists the places of the hierarchy in `design.instances`, from the files and what they name. Throws
/// ReadError when a file contains itself or a limit of DesignReader.h is passed; both are known before
/// anything is listed.
void expandHierarchy(Design& design);

} // namespace kthost
