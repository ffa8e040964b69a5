#include "tests/legacy/CountedMemory.h"

#include "tests/legacy/HeapSize.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

std::size_t currentBytes = 0;
std::size_t peakBytes = 0;
std::size_t timesGiven = 0;
std::size_t allocationsLeft = kNever;

bool mustFail() {
    if (allocationsLeft == kNever) {
        return false;
    }
    if (allocationsLeft > 0) {
        --allocationsLeft;
        return false;
    }
    allocationsLeft = kNever;
    return true;
}

/// Null when it fails.
void* tryToGive(std::size_t size) noexcept {
    void* memory = mustFail() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr) {
        currentBytes += heapSize(memory);
        peakBytes = std::max(peakBytes, currentBytes);
        ++timesGiven;
    }
    return memory;
}

void* give(std::size_t size) {
    void* given = tryToGive(size);
    if (given == nullptr) {
        throw std::bad_alloc();
    }
    return given;
}

void takeBack(void* given) noexcept {
    if (given != nullptr) {
        currentBytes -= heapSize(given);
        std::free(given);
    }
}

} // namespace

void* operator new(std::size_t size) {
    return give(size);
}

void* operator new[](std::size_t size) {
    return give(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return tryToGive(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return tryToGive(size);
}

void operator delete(void* given) noexcept {
    takeBack(given);
}

void operator delete[](void* given) noexcept {
    takeBack(given);
}

void operator delete(void* given, std::size_t /*size*/) noexcept {
    takeBack(given);
}

void operator delete[](void* given, std::size_t /*size*/) noexcept {
    takeBack(given);
}

void operator delete(void* given, const std::nothrow_t& /*tag*/) noexcept {
    takeBack(given);
}

void operator delete[](void* given, const std::nothrow_t& /*tag*/) noexcept {
    takeBack(given);
}

namespace counted_memory {

std::size_t current() {
    return currentBytes;
}

std::size_t peak() {
    return peakBytes;
}

void resetPeak() {
    peakBytes = currentBytes;
}

std::size_t allocations() {
    return timesGiven;
}

void failAfter(std::size_t allocations) {
    allocationsLeft = allocations;
}

bool cancelFailure() {
    const bool left = allocationsLeft != kNever;
    allocationsLeft = kNever;
    return left;
}

} // namespace counted_memory
