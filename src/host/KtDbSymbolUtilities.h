#pragma once

#include <KtDbObjectId.h>

namespace KtDbSymbolUtilities {

class Services {
public:
    /// The null id when there is no database or it has no model space.
    virtual KtDbObjectId blockModelSpaceId(const KtDbDatabase* database) const = 0;

protected:
    ~Services() = default;
};

/// Owned by the host, for the life of the process.
const Services* servicesPtr();

} // namespace KtDbSymbolUtilities
