#include "tests/support/FailingAllocation.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>
#include <span>

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
std::atomic<std::size_t> living = 0; // whatever thread

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
    void* memory = mustFail(size, caller) ? nullptr : std::malloc(size == 0 ? 1 : size);
    living += memory != nullptr ? 1 : 0;
    return memory;
}

struct Given {
    unsigned char* bytes = nullptr;
    std::size_t size = 0;
};

struct Kept {
    bool on = false;
    std::size_t count = 0;
    std::array<Given, KeptGivenBack::kMost> memory{};
};

constexpr unsigned char kGivenBack = 0xDD;

Kept keptBlocks;

bool keep(void* memory, std::size_t size) {
    if (memory == nullptr || !keptBlocks.on || keptBlocks.count == keptBlocks.memory.size()) {
        return false;
    }
    std::memset(memory, kGivenBack, size);
    keptBlocks.memory.at(keptBlocks.count++) = {static_cast<unsigned char*>(memory), size};
    return true;
}

void takeBack(void* memory) {
    living -= memory != nullptr ? 1 : 0;
    std::free(memory);
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

std::size_t livingAllocations() {
    return living;
}

KeptGivenBack::KeptGivenBack() {
    keptBlocks.count = 0;
    keptBlocks.on = true;
}

KeptGivenBack::~KeptGivenBack() {
    keptBlocks.on = false;
    for (const Given& given : std::span(keptBlocks.memory).first(keptBlocks.count)) {
        takeBack(given.bytes);
    }
}

std::size_t KeptGivenBack::count() const {
    return keptBlocks.count;
}

bool KeptGivenBack::isUntouched() const {
    const auto given = std::span(keptBlocks.memory).first(keptBlocks.count);
    return std::all_of(given.begin(), given.end(), [](const Given& each) {
        return std::all_of(each.bytes, each.bytes + each.size,
                           [](unsigned char value) { return value == kGivenBack; });
    });
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

std::size_t allocationsIn(const std::function<void()>& action) {
    const FailingFiltered counting([](const void*) { return true; }, 0);
    action();
    return FailingFiltered::count();
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
    takeBack(memory);
}

void operator delete[](void* memory) noexcept {
    takeBack(memory);
}

void operator delete(void* memory, std::size_t size) noexcept {
    if (!keep(memory, size)) {
        takeBack(memory);
    }
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    takeBack(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    takeBack(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
    takeBack(memory);
}
