#pragma once

#include <cstddef>

/// Exported by a module that counts its own memory: counted_memory, as it has it.
extern "C" {

std::size_t ktdxCurrentBytes();
void ktdxFailAfter(std::size_t allocations);
bool ktdxCancelFailure();
}
