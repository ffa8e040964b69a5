#pragma once

#include "bench/contenders/Contender.h"
#include "kthost/database/Database.h"

#include <cstddef>

namespace bench {

/// Model space, paper space, and layouts added until there are so many.
Ids makeLayouts(kthost::Database& database, std::size_t count);

} // namespace bench
