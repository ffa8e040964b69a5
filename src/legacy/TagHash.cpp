#include "legacy/TagHash.h"

#include <bit>
#include <chrono>
#include <cstdint>

namespace {

/// The 64-bit finaliser of the splitmix generator: every bit of the input reaches every bit of the result.
std::uint64_t mixed(std::uint64_t value) noexcept {
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31);
}

/// From what differs between two runs: the time, and where the system has put the program and its stack.
std::uint64_t makeSeed() noexcept {
    static const int kSomewhere = 0;
    const int here = 0;
    const auto now = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    return mixed(now) ^ mixed(reinterpret_cast<std::uintptr_t>(&kSomewhere)) ^
           std::rotl(mixed(reinterpret_cast<std::uintptr_t>(&here)), 32);
}

} // namespace

const std::uint64_t TagHash::kSeed = makeSeed();
const std::uint64_t TagHash::kFactor = mixed(~kSeed) | 1U;
