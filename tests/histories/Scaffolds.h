#pragma once

#include "tests/histories/Drawn.h"
#include "tests/histories/Shrink.h"

#include <string>

namespace histories {

/// How much a drawing begins with. Large ones have containers of every kind beyond the sizes at which they
/// change how they work.
enum class Size { small, medium, large };

/// Lines that make the drawing that a history begins with: a few shapes of nesting, at random.
History scaffold(Drawn& drawn, Size size, const std::string& drawingsFolder);

} // namespace histories
