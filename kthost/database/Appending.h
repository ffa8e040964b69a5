#pragma once

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/ObjectAccess.h"

#include <KtGe.h>

#include <string_view>
#include <utility>

/// Puts new objects into a drawing and into the lists of what they belong to. A new object has no reactors,
/// so it is entered closed, and only its owner's reactors have something to hear.
namespace kthost {

/// What a record is that has a name and nothing else.
RecordState namedRecord(std::wstring_view name);
/// Not kept for undo; nothing is sent.
KtDbObjectId enterRecord(DatabaseContents& contents, RecordState state, bool layout);
/// Opens the block table for modify. The statuses are those of opening it.
Orbx::ErrorStatus appendRecord(DatabaseContents& contents, RecordState state, bool layout, KtDbObjectId& id);

/// The reference is open for write, and its change announced.
KtDbObjectId appendAttributeTo(DatabaseContents& contents, KtDbObjectId reference, std::wstring_view tag,
                               std::wstring_view text);
KtDbObjectId appendGraphTo(DatabaseContents& contents, BlockTableRecord& record);

/// The container is open for write, and its change announced.
template <class T, class... Arguments>
KtDbObjectId appendReferenceTo(DatabaseContents& contents, BlockTableRecord& container,
                               KtDbObjectId definition, Arguments&&... arguments);

void enterReference(DatabaseContents& contents, BlockTableRecord& container, KtDbObjectId definition,
                    KtDbObjectId reference);

template <class T, class... Arguments>
KtDbObjectId appendReferenceTo(DatabaseContents& contents, BlockTableRecord& container,
                               KtDbObjectId definition, Arguments&&... arguments) {
    const KtDbObjectId id =
        makeObject<T>(contents, container.objectId(), definition, std::forward<Arguments>(arguments)...);
    enterReference(contents, container, definition, id);
    return id;
}

} // namespace kthost
