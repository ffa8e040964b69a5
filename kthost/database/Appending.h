#pragma once

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/ObjectAccess.h"

#include <KtGe.h>

#include <memory>
#include <string_view>

/// Puts new objects into a drawing and into the lists of what they belong to. A new object has no reactors,
/// so it is entered closed, and only its owner's reactors have something to hear.
namespace kthost {

/// Not kept for undo; nothing is sent.
KtDbObjectId enterRecord(DatabaseContents& contents, std::unique_ptr<BlockTableRecord> record);
/// Opens the block table for modify. The statuses are those of opening it.
Orbx::ErrorStatus appendRecord(DatabaseContents& contents, std::unique_ptr<BlockTableRecord> record,
                               KtDbObjectId& id);

/// The reference is open for write, and its change announced.
KtDbObjectId appendAttributeTo(DatabaseContents& contents, KtDbObjectId reference, std::wstring_view tag,
                               std::wstring_view text);
KtDbObjectId appendGraphTo(DatabaseContents& contents, BlockTableRecord& record);

/// The container is open for write, and its change announced.
template <class T>
KtDbObjectId appendReferenceTo(DatabaseContents& contents, BlockTableRecord& container,
                               std::unique_ptr<T> reference);

void enterReference(DatabaseContents& contents, BlockTableRecord& container, KtDbObjectId definition,
                    KtDbObjectId reference);

template <class T>
KtDbObjectId appendReferenceTo(DatabaseContents& contents, BlockTableRecord& container,
                               std::unique_ptr<T> reference) {
    const KtDbObjectId definition = reference->blockTableRecord();
    const KtDbObjectId id = adopt(contents, std::move(reference), container.objectId());
    enterReference(contents, container, definition, id);
    return id;
}

} // namespace kthost
