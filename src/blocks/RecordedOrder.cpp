#include "blocks/RecordedOrder.h"

#include <algorithm>

bool RecordedOrder::hasReferences(std::span<const KtDbObjectId> ids) const {
    return std::equal(places_.begin(), places_.end(), ids.begin(), ids.end(),
                      [](const Place& place, KtDbObjectId id) { return place.reference == id; });
}

void RecordedOrder::appendRest(std::size_t first, std::vector<KtDbObjectId>& rest) const {
    rest.reserve(rest.size() + places_.length() - first);
    for (std::size_t i = first; i < places_.length(); ++i) {
        rest.push_back(places_[i].reference);
    }
}
