#include "tests/faults/ModuleMemory.h"

#include <link.h>
#include <unwind.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace modulememory {

namespace {

kthost::AddressRange moduleRange;

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

} // namespace

void setModule(const kthost::AddressRange& range) {
    moduleRange = range;
}

bool isAskedForByModule(const void* caller) {
    if (moduleRange.contains(caller)) {
        return true;
    }
    return standardLibrary().contains(caller) && moduleRange.contains(callerOfStandardLibrary());
}

} // namespace modulememory
