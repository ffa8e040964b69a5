#include "kthost/database/ReleasedIds.h"

#include "kthost/database/ObjectStore.h"

namespace kthost {

bool isReleased(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    return head == nullptr || head->object() == nullptr;
}

void dropReleasedIds(std::vector<KtDbObjectId>& ids) {
    std::erase_if(ids, isReleased);
}

} // namespace kthost
