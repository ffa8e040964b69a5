#include "kthost/database/Placement.h"

#include "kthost/database/ReleasedIds.h"

#include <algorithm>
#include <memory>

namespace kthost {

Placement::~Placement() {
    if (isListed()) {
        delete list();
    }
}

Placement::List* Placement::list() const {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): one word holds either, told apart by its lowest bit
    return reinterpret_cast<List*>(static_cast<std::uintptr_t>(word_ & ~kListed));
}

KtDbObjectId Placement::definition() const {
    return isListed() ? list()->definition : KtDbObjectId(word_ >> kIdShift);
}

Placement::List& Placement::makeList(KtDbObjectId reference) {
    if (!isListed()) {
        auto made = std::make_unique<List>();
        made->definition = definition();
        made->attributes.reserve(following() + 1);
        for (std::size_t i = 0; i < following(); ++i) {
            made->attributes.push_back(attribute(reference, i));
        }
        word_ = reinterpret_cast<std::uintptr_t>(made.release()) | kListed;
    }
    return *list();
}

void Placement::append(KtDbObjectId reference, KtDbObjectId attribute) {
    const bool follows = attribute.asUnsigned() == reference.asUnsigned() + 1 + following();
    if (!isListed() && follows && following() < kMostFollowing) {
        word_ += std::uint64_t{1} << kCountShift;
    } else {
        makeList(reference).attributes.push_back(attribute);
    }
}

void Placement::dropReleased(KtDbObjectId reference) {
    bool anyGone = false;
    for (std::size_t i = 0; i < attributeCount(); ++i) {
        anyGone = anyGone || isReleased(attribute(reference, i));
    }
    if (anyGone) {
        dropReleasedIds(makeList(reference).attributes);
    }
}

} // namespace kthost
