#pragma once

#include <cstddef>

/// Exported by the module under observation: orders to its own operator new.
extern "C" {

/// The k-th allocation from now on fails, and perhaps all that follow; with `k` 0 none does. They are
/// counted.
void ktdxFailMemory(std::size_t k, bool andAllAfter);
std::size_t ktdxCountMemory();
/// None fails any more, and none is counted.
void ktdxEndFailingMemory();
}
