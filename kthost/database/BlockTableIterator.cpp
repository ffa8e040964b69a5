#include "kthost/database/BlockTableIterator.h"

#include "kthost/database/DatabaseTrace.h"
#include "kthost/database/ReleasedIds.h"

namespace kthost {

void BlockTableIterator::start(bool atBeginning, bool skipErased) {
    if (tracing()) {
        TraceLine("start")
            .field("id", table_)
            .field("atBeginning", atBeginning)
            .field("skipErased", skipErased);
    }
    startAt(atBeginning, skipErased);
}

void BlockTableIterator::startAt(bool atBeginning, bool skipErased) {
    place_ = atBeginning ? 0 : records_->size() - 1; // wraps beyond the end when there is none
    settle(atBeginning, skipErased);
}

bool BlockTableIterator::done() const {
    return place_ >= records_->size();
}

Orbx::ErrorStatus BlockTableIterator::getRecordId(KtDbObjectId& id) const {
    id = KtDbObjectId();
    if (const Orbx::ErrorStatus fault = beginCall(HostCall::getRecordId, "getRecordId", table_);
        fault != Orbx::eOk) {
        return fault;
    }
    if (done()) {
        return Orbx::eOutOfRange;
    }
    id = (*records_)[place_];
    return Orbx::eOk;
}

void BlockTableIterator::step(bool forward, bool skipErased) {
    if (!done()) {
        place_ += forward ? std::size_t{1} : ~std::size_t{0}; // one back from the first is beyond the end
        settle(forward, skipErased);
    }
}

void BlockTableIterator::settle(bool forward, bool skipErased) {
    const std::size_t onward = forward ? std::size_t{1} : ~std::size_t{0};
    while (!done() && (isReleased((*records_)[place_]) || (skipErased && (*records_)[place_].isErased()))) {
        place_ += onward;
    }
}

} // namespace kthost
