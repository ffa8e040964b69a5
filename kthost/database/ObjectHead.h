#pragma once

#include "kthost/database/ReactorSlot.h"

#include <KtDbObjectId.h>

namespace kthost {

/// What every object of a drawing carries inside; the rest is in its stub.
struct ObjectHead {
    KtDbObjectId id; ///< null while the object is not in a database
    ReactorSlot reactors;
};

} // namespace kthost
