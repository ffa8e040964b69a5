#pragma once

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

namespace kthost {

/// Erases or restores an object that is open for write, with its notifications. eWasErased when it is erased
/// already, or when its owner or its definition is; eOk, and nothing done, when it is not erased and to be
/// restored; eNotInDatabase when its appending is undone; eDuplicateKey when a living record has its name;
/// eSelfReference when a record would come to contain itself.
Orbx::ErrorStatus changeErased(KtDbObjectId id, bool erasing);
/// Why `changeErased` would not restore it.
Orbx::ErrorStatus refusalToRestore(KtDbObjectId id);

} // namespace kthost
