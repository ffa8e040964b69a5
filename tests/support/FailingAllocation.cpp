#include "tests/support/FailingAllocation.h"

#include <cstdlib>
#include <new>

namespace {

struct Order {
    std::size_t left = 0; // allocations up to and including the one that fails; 0 when none does
    std::size_t size = FailingAllocation::kAnySize;
    bool carriedOut = false;
};

Order order;

bool mustFail(std::size_t size) noexcept {
    if (order.left == 0 || (order.size != FailingAllocation::kAnySize && order.size != size)) {
        return false;
    }
    --order.left;
    order.carriedOut = order.left == 0;
    return order.carriedOut;
}

void* give(std::size_t size) noexcept {
    return mustFail(size) ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* giveOrThrow(std::size_t size) {
    void* memory = give(size);
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

// All forms are replaced, so that whatever gives memory out and whatever takes it back belong together.

void* operator new(std::size_t size) {
    return giveOrThrow(size);
}

void* operator new[](std::size_t size) {
    return giveOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return give(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return give(size);
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
