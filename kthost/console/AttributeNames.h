#pragma once

#include <KtDbObjectId.h>

#include "kthost/database/DatabaseQueries.h"

#include <string>

namespace kthost {

/// The living attribute of a reference with that tag. A tag that nothing has is a slip of the pen: throws
/// CommandError.
AttributeView requireAttribute(KtDbObjectId reference, const std::wstring& tag);
/// The same for an erased one, the latest of several.
KtDbObjectId requireErasedAttribute(KtDbObjectId reference, const std::wstring& tag);

} // namespace kthost
