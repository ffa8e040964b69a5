#pragma once

#include <string>

namespace bench {

/// What the figures were measured on.
std::string machineText();

} // namespace bench
