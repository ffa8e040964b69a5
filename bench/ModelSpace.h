#pragma once

#include <KtDbObjectId.h>
#include <KtDbSymbolUtilities.h>

namespace bench {

/// Whether that is the model space of its own drawing.
inline bool isModelSpace(KtDbObjectId id) {
    if (id.isNull() || !id.isValid() || id.database() == nullptr) {
        return false;
    }
    return id == KtDbSymbolUtilities::servicesPtr()->blockModelSpaceId(id.database());
}

} // namespace bench
