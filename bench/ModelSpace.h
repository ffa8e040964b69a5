#pragma once

#include <KtDbObjectId.h>
#include <KtDbSymbolUtilities.h>

namespace bench {

/// Whether that is the model space of its own drawing.
inline bool isModelSpace(KtDbObjectId id) {
    if (id.isNull() || !id.isValid()) {
        return false;
    }
    const KtDbDatabase* database = id.database();
    return database != nullptr && id == KtDbSymbolUtilities::servicesPtr()->blockModelSpaceId(database);
}

} // namespace bench
