#pragma once

#include "kthost/database/ObjectState.h"
#include "kthost/database/XData.h"

#include <optional>

namespace kthost {

/// What an object was before its first change since it was opened for write. There is one from that change on
/// until the object is closed.
struct WriteSession {
    bool wasErased = false;
    std::optional<ObjectState> stateBefore; ///< once the state is about to change
    std::optional<XData> xdataBefore;       ///< once extended data is about to change
};

} // namespace kthost
