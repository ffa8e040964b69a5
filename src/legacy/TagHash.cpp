#include "legacy/TagHash.h"

#include <bit>
#include <chrono>

namespace {

/// From what differs between two runs: the time, and where the system has put the program and its stack.
std::uint64_t makeSeed(const void* inProgram) noexcept {
    const auto now = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    return mixedBits(now) ^ mixedBits(reinterpret_cast<std::uintptr_t>(inProgram)) ^
           std::rotl(mixedBits(reinterpret_cast<std::uintptr_t>(&now)), 32);
}

} // namespace

const KeyedHash TagHash::kOfThisRun(makeSeed(&kOfThisRun));
