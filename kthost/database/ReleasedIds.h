#pragma once

#include <KtDbObjectId.h>

#include <vector>

namespace kthost {

/// True once the object's memory has gone.
bool isReleased(KtDbObjectId id);
/// Takes the ids of released objects out of a list.
void dropReleasedIds(std::vector<KtDbObjectId>& ids);

} // namespace kthost
