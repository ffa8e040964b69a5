#pragma once

#include <KtDbObjectId.h>
#include <KtDbSymbolUtilities.h>

/// True exactly when the id is that of the model space of its own database. Asked of the container of every
/// reference, and therefore inline.
inline bool isModelSpaceBlockId(KtDbObjectId id) {
    if (id.isNull() || !id.isValid()) {
        return false;
    }
    const KtDbDatabase* database = id.database();
    return database != nullptr && id == KtDbSymbolUtilities::servicesPtr()->blockModelSpaceId(database);
}
