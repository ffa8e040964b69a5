#include "tests/loaded_legacy_windows/counted/CountedExports.h"

#include "tests/legacy/CountedMemory.h"

std::size_t ktdxCurrentBytes() {
    return counted_memory::current();
}

void ktdxFailAfter(std::size_t allocations) {
    counted_memory::failAfter(allocations);
}

bool ktdxCancelFailure() {
    return counted_memory::cancelFailure();
}
