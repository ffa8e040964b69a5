#include "kthost/database/ReferenceList.h"

#include "kthost/database/ObjectStore.h"

#include <algorithm>

namespace kthost {

namespace {

using Ids = std::vector<KtDbObjectId>;

void sortUnique(Ids& ids) {
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
}

/// Takes the ids out that were touched and puts those in that belong in now, all ascending.
void exchange(Ids& ids, const Ids& touched, const Ids& belonging) {
    auto next = touched.begin();
    std::erase_if(ids, [&](KtDbObjectId id) {
        next = std::find_if(next, touched.end(), [id](KtDbObjectId each) { return each >= id; });
        return next != touched.end() && *next == id;
    });
    const auto added = ids.insert(ids.end(), belonging.begin(), belonging.end());
    std::inplace_merge(ids.begin(), added, ids.end());
}

} // namespace

void ReferenceList::touch(KtDbObjectId reference) {
    if (touched_.size() == touched_.capacity()) { // what comes and goes unasked for must not pile up
        sortUnique(touched_);
        touched_.reserve(2 * touched_.size() + 1);
    }
    touched_.push_back(reference);
}

void ReferenceList::sortOut() const {
    sortUnique(touched_);
    Ids living;
    Ids erased;
    for (const KtDbObjectId id : touched_) {
        ObjectHead* head = ObjectStore::instance().find(id);
        if (head != nullptr && !head->released) {
            (head->erased ? erased : living).push_back(id);
        }
    }
    exchange(living_, touched_, living);
    exchange(erased_, touched_, erased);
    touched_ = Ids();
}

} // namespace kthost
