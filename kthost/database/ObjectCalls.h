#pragma once

#include <KtArray.h>
#include <KtDbObject.h>
#include <KtDbXData.h>

#include <cstdint>

namespace kthost {

struct ObjectHead;

/// The operations that all objects share, behind the virtual functions of each.
KtDbDatabase* databaseOfObject(KtDbObjectId id);
Orbx::ErrorStatus closeObject(ObjectHead& head);
Orbx::ErrorStatus eraseObject(KtDbObjectId id, bool erasing);
Orbx::ErrorStatus addReactorTo(ObjectHead& head, KtDbObjectReactor* reactor);
Orbx::ErrorStatus removeReactorFrom(ObjectHead& head, KtDbObjectReactor* reactor);
Orbx::ErrorStatus getXDataOf(KtDbObjectId id, const wchar_t* application, KtArray<KtDbXDataItem>& items);

} // namespace kthost
