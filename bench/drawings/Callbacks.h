#pragma once

#include <KtRxCallback.h>

#include <cstddef>
#include <vector>

namespace bench {

/// So many different functions that do nothing, 10,000 at most.
std::vector<KtRxCallback> callbacks(std::size_t count);

} // namespace bench
