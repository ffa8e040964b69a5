#pragma once

#include <KtDbObjectId.h>

#include <cstddef>
#include <functional>
#include <vector>

namespace kthost {

struct DatabaseContents;

/// Releases the erased objects among `candidates`, with all that they own, each with its goodbye: first every
/// goodbye, in ascending order, then the memory. Kept are those that somebody has open or for which `needed`
/// is true, what these belong to, and records that something kept refers to. Gives the number released.
std::size_t releaseObjects(DatabaseContents& contents, const std::vector<KtDbObjectId>& candidates,
                           const std::function<bool(KtDbObjectId)>& needed);

/// Releases everything, open or not, when the database goes.
void releaseAll(DatabaseContents& contents);

} // namespace kthost
