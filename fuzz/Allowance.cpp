#include "fuzz/Allowance.h"

#include "fuzz/Require.h"

#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <iostream>

namespace {

// What was allocated before an input begins may be freed by it, so the count may fall below zero.
std::ptrdiff_t allocated = 0;
std::ptrdiff_t mostAllocated = 0;
bool counting = false;

void countAllocation(const volatile void* /*memory*/, std::size_t size) {
    if (counting) {
        allocated += static_cast<std::ptrdiff_t>(size);
        mostAllocated = std::max(mostAllocated, allocated);
    }
}

void countRelease(const volatile void* memory) {
    if (counting && memory != nullptr) {
        allocated -= static_cast<std::ptrdiff_t>(__sanitizer_get_allocated_size(
            const_cast<const void*>(memory))); // the hook's type, not the function's
    }
}

} // namespace

Allowance::Allowance(std::size_t bytes, double seconds)
    : bytes_(bytes),
      seconds_(seconds),
      begun_(std::clock()) {
    static const int kInstalled = __sanitizer_install_malloc_and_free_hooks(&countAllocation, &countRelease);
    require(kInstalled != 0, "allocations can be counted");
    allocated = 0;
    mostAllocated = 0;
    counting = true;
}

Allowance::~Allowance() {
    counting = false;
    const double seconds = static_cast<double>(std::clock() - begun_) / CLOCKS_PER_SEC;
    const auto most = static_cast<std::size_t>(std::max<std::ptrdiff_t>(mostAllocated, 0));
    if (most > bytes_ || seconds > seconds_) {
        std::cerr << "took " << most << " bytes of " << bytes_ << " and " << seconds << " s of " << seconds_
                  << '\n';
    }
    require(most <= bytes_, "the input takes no more memory than its size explains");
    require(seconds <= seconds_, "the input takes no longer than its size explains");
}
