#include "kthost/database/ReferenceList.h"

#include "kthost/database/ObjectStore.h"

#include <algorithm>
#include <iterator>

namespace kthost {

void ReferenceList::settle() const {
    if (settled_) {
        return;
    }
    std::vector<KtDbObjectId> all;
    all.reserve(living_.size() + erased_.size());
    std::merge(living_.begin(), living_.end(), erased_.begin(), erased_.end(), std::back_inserter(all));
    living_.clear();
    erased_.clear();
    for (const KtDbObjectId id : all) {
        const Stub* stub = ObjectStore::instance().find(id);
        if (stub != nullptr && stub->object != nullptr) {
            (stub->erased != 0 ? erased_ : living_).push_back(id);
        }
    }
    settled_ = true;
}

} // namespace kthost
