#pragma once

#include <cstdint>

namespace kthost {

/// Numbered as descriptors are.
enum class StandardStream : std::uint8_t { input = 0, output = 1, error = 2 };

/// True when somebody sits at the other end.
bool isTerminal(StandardStream stream);

} // namespace kthost
