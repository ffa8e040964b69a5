#pragma once

#include "kthost/window/SharedLibrary.h"

/// Tells the allocations of the module under test from those of the host and of the tests: by the code that
/// asks for the memory, and where that is the standard library's, by the code that has called it.
namespace modulememory {

/// The module's place in memory; empty when it is not loaded.
void setModule(const kthost::AddressRange& range);

/// True for the module's. An AllocationFilter.
bool isAskedForByModule(const void* caller);

} // namespace modulememory
