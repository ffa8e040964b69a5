#include "tests/model/ModelSpace.h"

#include <KtDbSymbolUtilities.h>

namespace ktmodel {

bool isModelSpace(KtDbObjectId id) {
    if (id.isNull() || !id.isValid() || id.database() == nullptr) {
        return false;
    }
    return KtDbSymbolUtilities::servicesPtr()->blockModelSpaceId(id.database()) == id;
}

} // namespace ktmodel
