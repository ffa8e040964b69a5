#pragma once

#include "kthost/audit/TraceIds.h"

#include <string>

namespace kthost {

/// What people know an object by, also one that has been erased or released.
TracedObject describeObject(KtDbObjectId id);
/// The same in words (UTF-8), such as "KtDbBlockTableRecord 2A R_0603".
std::string objectText(KtDbObjectId id);

} // namespace kthost
