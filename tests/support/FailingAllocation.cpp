#include "tests/support/FailingAllocation.h"

#include <cstdlib>
#include <new>

namespace {

struct Order {
    std::size_t left = 0; // allocations up to and including the one that fails; 0 when none does
    std::size_t size = FailingAllocation::kAnySize;
    bool carriedOut = false;
};

struct FilteredOrder {
    AllocationFilter filter = nullptr; // null when nothing is ordered
    std::size_t first = 0;             // number of the one that fails; 0 when none does
    bool andAllAfter = false;
    std::size_t count = 0;
};

Order order;
FilteredOrder filteredOrder;

bool filteredMustFail(const void* caller) {
    FilteredOrder& filtered = filteredOrder;
    if (filtered.filter == nullptr || !filtered.filter(caller)) {
        return false;
    }
    ++filtered.count;
    return filtered.first != 0 &&
           (filtered.count == filtered.first || (filtered.andAllAfter && filtered.count > filtered.first));
}

bool mustFail(std::size_t size, const void* caller) {
    if (filteredMustFail(caller)) {
        return true;
    }
    if (order.left == 0 || (order.size != FailingAllocation::kAnySize && order.size != size)) {
        return false;
    }
    --order.left;
    order.carriedOut = order.left == 0;
    return order.carriedOut;
}

void* give(std::size_t size, const void* caller) {
    return mustFail(size, caller) ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* giveOrThrow(std::size_t size, const void* caller) {
    void* memory = give(size, caller);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

FailingAllocation::FailingAllocation(std::size_t k, std::size_t size) {
    order = {k, size, false};
}

FailingAllocation::~FailingAllocation() {
    order = {};
}

bool FailingAllocation::hasFailed() const {
    return order.carriedOut;
}

FailingFiltered::FailingFiltered(AllocationFilter filter, std::size_t k, bool andAllAfter) {
    filteredOrder = {filter, k, andAllAfter, 0};
}

FailingFiltered::~FailingFiltered() {
    filteredOrder = {};
}

std::size_t FailingFiltered::count() {
    return filteredOrder.count;
}

// All forms are replaced, so that whatever gives memory out and whatever takes it back belong together.

void* operator new(std::size_t size) {
    return giveOrThrow(size, __builtin_return_address(0));
}

void* operator new[](std::size_t size) {
    return giveOrThrow(size, __builtin_return_address(0));
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return give(size, __builtin_return_address(0));
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return give(size, __builtin_return_address(0));
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
    std::free(memory);
}
