#pragma once

#include <KtDbObjectIterator.h>

namespace kthost {

struct AttributeList;

/// Behind the virtual functions of references; null when there is no attribute.
KtDbObjectIterator* newAttributeIterator(const AttributeList& attributes);

} // namespace kthost
