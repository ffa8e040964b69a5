#pragma once

#include "kthost/database/Placement.h"

#include <KtDbObjectIterator.h>

#include <vector>

namespace kthost {

/// Living entities of a record, by place: what is appended meanwhile is met too.
class EntityIterator final : public KtDbObjectIterator {
public:
    explicit EntityIterator(const std::vector<KtDbObjectId>& entities) : entities_(&entities) { settle(); }

    bool done() const override { return place_ >= entities_->size(); }

    void step() override;

    KtDbObjectId objectId() const override { return done() ? KtDbObjectId() : (*entities_)[place_]; }

private:
    void settle();

    const std::vector<KtDbObjectId>* entities_; // the record's own
    std::size_t place_ = 0;
};

/// Attributes of a reference, erased ones too, by place.
class AttributeIterator final : public KtDbObjectIterator {
public:
    explicit AttributeIterator(AttributeList attributes) : attributes_(attributes) { settle(); }

    bool done() const override;
    void step() override;
    KtDbObjectId objectId() const override;

private:
    void settle();

    AttributeList attributes_;
    std::size_t place_ = 0;
};

} // namespace kthost
