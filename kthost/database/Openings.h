#pragma once

#include <KtDb.h>
#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

namespace kthost {

struct ObjectHead;

/// Why the object cannot be opened in that mode; eOk when it can. Erased objects can.
Orbx::ErrorStatus refusalToOpen(const ObjectHead& head, KtDb::OpenMode mode);
/// Opens the object, which has to be there and permit it.
void beginOpening(ObjectHead& head, KtDb::OpenMode mode);
/// Ends the latest opening: sends what is to be sent and keeps changes for undo. eNotOpen when there is none.
Orbx::ErrorStatus endOpening(ObjectHead& head);
/// The same for an object that may be gone meanwhile.
Orbx::ErrorStatus endOpening(KtDbObjectId id);
/// The mode that `endOpening` would end, which there has to be.
KtDb::OpenMode latestMode(const ObjectHead& head);

} // namespace kthost
