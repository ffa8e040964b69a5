#pragma once

#include "kthost/database/XData.h"

#include <KtDbObjectId.h>
#include <KtGe.h>
#include <OrbxErrorStatus.h>

#include <string>
#include <vector>

/// Edits of block references. Each does the whole thing: it opens what it changes, keeps it for undo and
/// closes it again. A status other than eOk means that nothing was changed. What appends, erases or restores
/// a reference opens its container for modify, too.
namespace kthost {

class Database;

struct AttributeText {
    std::wstring tag;
    std::wstring text;
};

struct NewReference {
    KtDbObjectId definition;
    KtDbObjectId container;
    KtGePoint3d position;
    std::vector<AttributeText> attributes; ///< in this order
    std::vector<XDataValue> occurrences;   ///< extended data under kKtDbOccurrences; none when empty
};

/// eInvalidBlockId when the definition or the container is not a living record of this drawing, or the
/// definition a layout; eIsDependent when either belongs to an external reference (its record itself can be
/// placed, but holds nothing); eSelfReference when the container would come to contain itself.
Orbx::ErrorStatus insertReference(Database& database, const NewReference& reference, KtDbObjectId& id);

/// The others give eWrongDatabase for a reference of another drawing, that of an attached one included, and
/// what opening it gives.
Orbx::ErrorStatus moveReference(Database& database, KtDbObjectId reference, const KtGePoint3d& position);
/// A copy, with its living attributes and extended data, in the same container. Reactors of the reference and
/// of the copied attributes hear `copied`, in this order, once the whole copy is in the drawing. The copy of
/// a table is drawn through an anonymous record of its own.
Orbx::ErrorStatus copyReference(Database& database, KtDbObjectId reference, const KtGePoint3d& position,
                                KtDbObjectId& copy);
Orbx::ErrorStatus eraseReference(Database& database, KtDbObjectId reference);
/// eOk, and nothing done, when it is not erased. eWasErased when its container or its definition is erased;
/// eSelfReference when the container would come to contain itself; eNotInDatabase when its appending is
/// undone (redo brings it back).
Orbx::ErrorStatus restoreReference(Database& database, KtDbObjectId reference);

} // namespace kthost
