#pragma once

#include <cstdint>

/// The 64-bit finaliser of the splitmix generator: every bit of the input reaches every bit of the result.
inline std::uint64_t mixedBits(std::uint64_t value) noexcept {
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31);
}
