#include "kthost/database/ReleasedIds.h"

#include "kthost/database/ObjectStore.h"

namespace kthost {

bool isReleased(KtDbObjectId id) {
    const Stub* stub = ObjectStore::instance().find(id);
    return stub == nullptr || stub->object == nullptr;
}

void dropReleasedIds(std::vector<KtDbObjectId>& ids) {
    std::erase_if(ids, isReleased);
}

} // namespace kthost
