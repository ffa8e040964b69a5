#pragma once

#include <cstdint>

namespace kthost {

enum class StandardStream : std::uint8_t { input, output, error };

/// True when somebody sits at the other end.
bool isTerminal(StandardStream stream);

} // namespace kthost
