#pragma once

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

namespace kthost {

/// What has to happen before an object changes. Each gives eNotOpenForWrite, and nothing may be changed,
/// unless the object is open for write; eOk for the null id, the id of an object that is in no database. The
/// first since the opening sends opened-for-modify.

/// Something appended to the object or erased from it: nothing to keep.
Orbx::ErrorStatus beginChange(KtDbObjectId object);
/// Its state, as undo keeps it.
Orbx::ErrorStatus beginStateChange(KtDbObjectId object);
Orbx::ErrorStatus beginXDataChange(KtDbObjectId object);

/// Erases or restores an object without asking whether it may be, and brings the lists that count it up to
/// date. Nothing is sent.
void setErased(KtDbObjectId object, bool erased);

} // namespace kthost
