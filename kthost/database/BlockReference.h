#pragma once

#include "kthost/database/Changes.h"
#include "kthost/database/ObjectState.h"
#include "kthost/database/ReferenceObject.h"

#include <utility>

namespace kthost {

class BlockReference final : public ReferenceObject<KtDbBlockReference> {
public:
    BlockReference(KtDbObjectId definition, const KtGePoint3d& position)
        : ReferenceObject(definition),
          position_(position) {}

    KtGePoint3d position() const override { return position_; }

    /// Has to be open for write.
    Orbx::ErrorStatus setPosition(const KtGePoint3d& position) {
        const Orbx::ErrorStatus status = beginStateChange(objectId());
        if (status == Orbx::eOk) {
            position_ = position;
        }
        return status;
    }

    ObjectState state() const { return ReferenceState{position_}; }

    void exchangeState(ObjectState& state) { std::swap(position_, std::get<ReferenceState>(state).position); }

private:
    KtGePoint3d position_;
};

} // namespace kthost
