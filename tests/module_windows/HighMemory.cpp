#include "tests/module_windows/HighMemory.h"

#include <WindowSystem.h>

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace {

constexpr std::uintptr_t kFourGigabytes = std::uintptr_t{1} << 32;
constexpr std::uintptr_t kFirst = 0x10000; // below lies nothing that can be had
constexpr std::uintptr_t kGranularity = 0x10000;
constexpr std::size_t kMostPieces = 1'000'000;

std::uintptr_t addressOf(const void* place) {
    return reinterpret_cast<std::uintptr_t>(place);
}

/// Memory that nobody has given out has no pointer yet.
void* placeAt(std::uintptr_t address) {
    return reinterpret_cast<void*>(address); // NOLINT(performance-no-int-to-ptr): see above
}

} // namespace

HighMemory::HighMemory(std::size_t size) {
    reserved_.reserve(4096);
    pieces_.reserve(kMostPieces);
    reserveLowAddresses();
    fillLowPieces(size);
}

HighMemory::~HighMemory() {
    for (void* piece : pieces_) {
        std::free(piece);
    }
    for (void* region : reserved_) {
        VirtualFree(region, 0, MEM_RELEASE);
    }
}

void HighMemory::reserveLowAddresses() {
    MEMORY_BASIC_INFORMATION region{};
    for (std::uintptr_t at = kFirst; at < kFourGigabytes;
         at = addressOf(region.BaseAddress) + region.RegionSize) {
        if (VirtualQuery(placeAt(at), &region, sizeof region) == 0) {
            break;
        }
        const std::uintptr_t begin = (at + kGranularity - 1) / kGranularity * kGranularity;
        const std::uintptr_t end = addressOf(region.BaseAddress) + region.RegionSize;
        if (region.State == MEM_FREE && begin < end) {
            void* taken = VirtualAlloc(placeAt(begin), end - begin, MEM_RESERVE, PAGE_NOACCESS);
            if (taken != nullptr) {
                reserved_.push_back(taken);
            }
        }
    }
}

void HighMemory::fillLowPieces(std::size_t size) {
    constexpr int kEnough = 64; // of them in a row: the low ones are used up
    for (int high = 0; high < kEnough;) {
        if (pieces_.size() == kMostPieces) {
            throw std::runtime_error("the heap does not go above four gigabytes");
        }
        pieces_.push_back(std::malloc(size));
        high = addressOf(pieces_.back()) >= kFourGigabytes ? high + 1 : 0;
    }
}
