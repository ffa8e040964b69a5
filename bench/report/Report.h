#pragma once

#include "bench/harness/Figures.h"

#include <string>

namespace bench {

/// Tables for people: the columns side by side, and what they have to do with each other.
std::string textOf(const Figures& figures);

/// The same and every single sample, for programs.
std::string jsonOf(const Figures& figures);

} // namespace bench
