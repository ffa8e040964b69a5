#pragma once

#include "tests/kthost/reader/BuiltDrawing.h"
#include "tests/kthost/reader/ComponentList.h"

namespace kthost::test {

/// The components that a drawing holds, found in the drawing alone: from its references, their attributes and
/// their extended data. Without what has a designator that begins with "#".
ComponentMap componentsIn(BuiltDrawing& drawing);

} // namespace kthost::test
