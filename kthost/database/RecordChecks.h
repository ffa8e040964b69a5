#pragma once

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

#include <string_view>

namespace kthost {

struct DatabaseContents;

/// eInvalidBlockId unless the id is that of a living record of this drawing.
Orbx::ErrorStatus refusalOfRecord(const DatabaseContents& contents, KtDbObjectId id);
/// The same, and eIsDependent for what belongs to an external reference, which is not to be changed.
Orbx::ErrorStatus refusalToChangeRecord(const DatabaseContents& contents, KtDbObjectId id);
/// eInvalidInput for a name that a definition cannot have, eDuplicateKey for one that is taken.
Orbx::ErrorStatus refusalOfName(const DatabaseContents& contents, std::wstring_view name, bool layout);
/// eWrongDatabase unless the reference, or attribute of one, belongs to this drawing; the statuses of opening
/// what is not there or is erased; eNotThatKindOfClass.
Orbx::ErrorStatus refusalOfReference(const DatabaseContents& contents, KtDbObjectId id,
                                     bool openErased = false);
Orbx::ErrorStatus refusalOfAttribute(const DatabaseContents& contents, KtDbObjectId id,
                                     bool openErased = false);

} // namespace kthost
