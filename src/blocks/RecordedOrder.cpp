#include "blocks/RecordedOrder.h"

bool RecordedOrder::start(const RecordedReferences& references) {
    containers_.start(references.size());
    places_.clear();
    places_.reserve(references.size());
    recorded_ = 0;
    followed_ = 0;
    hasUnused_ = false;
    for (const auto& [container, array] : references) {
        if (array == nullptr) {
            return false;
        }
        __builtin_prefetch(array->begin()); // the arrays lie apart, and all of them are looked at soon
        containers_.enter(container);
        places_.push_back({array.get(), array->begin(), array->end(), false});
        recorded_ += array->length();
        hasUnused_ = hasUnused_ || array->isEmpty();
    }
    return true;
}

std::uint32_t RecordedOrder::noteOwnContainer(KtDbObjectId record) {
    const std::uint32_t place = containers_.enter(record);
    if (place >= places_.size()) {
        places_.resize(containers_.size());
    }
    places_[place].isOwnContainer = true;
    return place;
}

void RecordedOrder::appendRest(std::vector<KtDbObjectId>& rest) const {
    rest.reserve(rest.size() + recorded_ - followed_);
    for (const Place& place : places_) {
        rest.insert(rest.end(), place.next, place.end);
    }
}

void RecordedOrder::cutRest() {
    for (Place& place : places_) {
        if (place.array != nullptr) {
            place.array->setLogicalLength(static_cast<std::size_t>(place.next - place.array->begin()));
        }
        place.next = place.end = nullptr;
    }
}
