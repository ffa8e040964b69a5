// Here the memory that is counted is the loaded module's, and it is the module that counts it.

#include "tests/legacy/CountedMemory.h"

#include "kthost/documents/Host.h"
#include "tests/loaded_legacy_windows/counted/CountedExports.h"

namespace {

template <typename Function>
Function exported(const char* name) {
    return reinterpret_cast<Function>(kthost::Host::current()->modules().exportOf(KTDX_LOADED_MODULE, name));
}

} // namespace

namespace counted_memory {

std::size_t current() {
    return exported<decltype(&ktdxCurrentBytes)>("ktdxCurrentBytes")();
}

void failAfter(std::size_t allocations) {
    exported<decltype(&ktdxFailAfter)>("ktdxFailAfter")(allocations);
}

bool cancelFailure() {
    return exported<decltype(&ktdxCancelFailure)>("ktdxCancelFailure")();
}

} // namespace counted_memory
