#pragma once

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

namespace kthost {

/// Opens the container and the reference, erases or restores the reference, and closes both.
Orbx::ErrorStatus changeReferenceErased(KtDbObjectId reference, bool erasing);

} // namespace kthost
