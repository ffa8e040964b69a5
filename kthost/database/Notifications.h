#pragma once

#include <KtDbObjectId.h>

/// Each sends one notification to the reactors of one object. A reactor may open the object for notify and,
/// where its own opening permits, for read; it may add and remove reactors. For an object without reactors
/// they cost next to nothing.
namespace kthost {

void notifyCancelled(KtDbObjectId id);
void notifyCopied(KtDbObjectId id, KtDbObjectId copy);
void notifyErased(KtDbObjectId id, bool erasing);
void notifyGoodbye(KtDbObjectId id);
void notifyOpenedForModify(KtDbObjectId id);
void notifyModified(KtDbObjectId id);
/// Sent to the reactors of the object's owner, if it has one.
void notifySubObjectModified(KtDbObjectId id);
void notifyModifyUndone(KtDbObjectId id);
void notifyModifiedXData(KtDbObjectId id);
void notifyUnappended(KtDbObjectId id);
void notifyReappended(KtDbObjectId id);
/// The object is closed meanwhile: reactors may open it in any way.
void notifyObjectClosed(KtDbObjectId id);

} // namespace kthost
