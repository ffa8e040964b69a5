#include "bench/harness/Allocations.h"

#include <malloc.h>

#include <cstddef>
#include <cstdlib>
#include <new>

namespace bench {

namespace {

bool counting = false;
Allocations counted;

std::int64_t sizeOf(void* memory) {
    return static_cast<std::int64_t>(malloc_usable_size(memory) + sizeof(std::size_t));
}

void* give(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (counting && memory != nullptr) {
        ++counted.count;
        counted.bytesKept += sizeOf(memory);
    }
    return memory;
}

void* giveOrThrow(std::size_t size) {
    void* memory = give(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void takeBack(void* memory) {
    if (counting && memory != nullptr) {
        counted.bytesKept -= sizeOf(memory);
    }
    std::free(memory);
}

} // namespace

void countAllocations(bool on) {
    counting = on;
}

const Allocations& allocationsCounted() {
    return counted;
}

} // namespace bench

// All forms are replaced, so that whatever gives memory out and whatever takes it back belong together.

void* operator new(std::size_t size) {
    return bench::giveOrThrow(size);
}

void* operator new[](std::size_t size) {
    return bench::giveOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return bench::give(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return bench::give(size);
}

void operator delete(void* memory) noexcept {
    bench::takeBack(memory);
}

void operator delete[](void* memory) noexcept {
    bench::takeBack(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    bench::takeBack(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    bench::takeBack(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    bench::takeBack(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
    bench::takeBack(memory);
}
