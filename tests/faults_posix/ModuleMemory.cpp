// One operator new serves all: the module's allocations are told by the code that asks for the memory, and
// where that is the standard library's, by the code that has called it.

#include "tests/faults/ModuleMemory.h"

#include "tests/support/FailingAllocation.h"

#include <link.h>
#include <unwind.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>

namespace modulememory {

namespace {

kthost::AddressRange moduleRange;
std::optional<FailingFiltered> order;

int takeIfStandardLibrary(dl_phdr_info* library, std::size_t /*size*/, void* into) {
    if (std::strstr(library->dlpi_name, "libstdc++") == nullptr) {
        return 0;
    }
    auto& range = *static_cast<kthost::AddressRange*>(into);
    range.begin = library->dlpi_addr;
    for (int i = 0; i < library->dlpi_phnum; ++i) {
        const auto& segment = library->dlpi_phdr[i];
        range.end = std::max(range.end, library->dlpi_addr + segment.p_vaddr + segment.p_memsz);
    }
    return 1;
}

const kthost::AddressRange& standardLibrary() {
    static const kthost::AddressRange range = [] {
        kthost::AddressRange found;
        dl_iterate_phdr(&takeIfStandardLibrary, &found);
        return found;
    }();
    return range;
}

const void* addressOf(_Unwind_Context* frame) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the unwinder knows addresses as numbers
    return reinterpret_cast<const void*>(_Unwind_GetIP(frame));
}

struct Search {
    bool isInLibrary = false; // its frames have been met, and so what follows has called it
    const void* caller = nullptr;
};

_Unwind_Reason_Code lookAt(_Unwind_Context* frame, void* into) {
    auto& search = *static_cast<Search*>(into);
    const void* address = addressOf(frame);
    if (standardLibrary().contains(address)) {
        search.isInLibrary = true;
        return _URC_NO_REASON;
    }
    if (!search.isInLibrary) {
        return _URC_NO_REASON; // the allocator itself
    }
    search.caller = address;
    return _URC_END_OF_STACK;
}

const void* callerOfStandardLibrary() {
    Search search;
    _Unwind_Backtrace(&lookAt, &search);
    return search.caller;
}

/// Must not allocate.
bool isAskedForByModule(const void* caller) {
    if (moduleRange.contains(caller)) {
        return true;
    }
    return standardLibrary().contains(caller) && moduleRange.contains(callerOfStandardLibrary());
}

} // namespace

void setModule(const kthost::SharedLibrary& module) {
    moduleRange = module.range();
}

Failing::Failing(std::size_t k, bool andAllAfter) {
    order.emplace(&isAskedForByModule, k, andAllAfter);
}

Failing::~Failing() {
    order.reset();
}

std::size_t Failing::count() {
    return FailingFiltered::count();
}

} // namespace modulememory
