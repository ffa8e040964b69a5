#pragma once

#include <KtDbObjectId.h>

#include <algorithm>
#include <vector>

/// Puts ids in ascending order, each once.
inline void sortUnique(std::vector<KtDbObjectId>& ids) {
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
}
