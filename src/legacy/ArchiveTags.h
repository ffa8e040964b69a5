#pragma once

#include <cstdint>

/// The numbers that archives are made of; docs/template-format.md says how they fit together.
inline constexpr std::uint16_t kNewClassTag = 0xFFFF;
inline constexpr std::uint16_t kBigTag = 0x7FFF;
inline constexpr std::uint16_t kClassBit = 0x8000;
inline constexpr std::uint32_t kBigClassBit = 0x80000000;
inline constexpr std::uint16_t kMostClassNameBytes = 63;

inline constexpr std::uint8_t kLongLength = 0xFF; ///< a length of two bytes or more follows
inline constexpr std::uint16_t kUtf16Marker = 0xFFFE;
inline constexpr std::uint16_t kLongerThan16Bits = 0xFFFF;
inline constexpr std::uint32_t kLongerThan32Bits = 0xFFFFFFFF;
