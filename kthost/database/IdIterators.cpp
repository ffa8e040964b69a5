#include "kthost/database/IdIterators.h"

#include "kthost/database/DatabaseTrace.h"
#include "kthost/database/ReferenceCalls.h"
#include "kthost/database/ReleasedIds.h"

#include <memory>

namespace kthost {

void EntityIterator::step() {
    if (!done()) {
        ++place_;
        settle();
    }
}

void EntityIterator::settle() {
    while (!done() && (*entities_)[place_].isErased()) {
        ++place_;
    }
}

bool AttributeIterator::done() const {
    return place_ >= attributes_.size();
}

void AttributeIterator::step() {
    if (!done()) {
        ++place_;
        settle();
    }
}

KtDbObjectId AttributeIterator::objectId() const {
    return done() ? KtDbObjectId() : attributes_[place_];
}

void AttributeIterator::settle() {
    while (!done() && isReleased(attributes_[place_])) {
        ++place_;
    }
}

KtDbObjectIterator* newAttributeIterator(const AttributeList& attributes) {
    const KtDbObjectId reference = attributes.reference;
    if (beginCall(HostCall::attributeIterator, "attributeIterator", reference) != Orbx::eOk) {
        return nullptr;
    }
    if (tracing()) {
        TraceLine("attributeIterator").field("id", reference);
    }
    auto iterator = std::make_unique<AttributeIterator>(attributes);
    return iterator->done() ? nullptr : iterator.release();
}

} // namespace kthost
