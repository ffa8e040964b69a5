#pragma once

#include <KtDbObjectId.h>
#include <KtDbObjectIterator.h>

namespace kthost {

class IdRun;

/// Behind the virtual functions of references; null when there is no attribute.
KtDbObjectIterator* newAttributeIterator(KtDbObjectId reference, const IdRun& attributes);

} // namespace kthost
