#pragma once

#include <KtDbObjectId.h>

namespace ktmodel {

/// Whether the id is that of the model space of its own drawing, whichever drawing that is.
bool isModelSpace(KtDbObjectId id);

} // namespace ktmodel
