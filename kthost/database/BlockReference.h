#pragma once

#include "kthost/database/ReferenceObject.h"

namespace kthost {

class BlockReference final : public ReferenceObject<KtDbBlockReference> {
public:
    using ReferenceObject::ReferenceObject;

    ObjectState state() const { return ReferenceState{position()}; }

    void exchangeState(ObjectState& state) { exchangePosition(std::get<ReferenceState>(state).position); }
};

} // namespace kthost
