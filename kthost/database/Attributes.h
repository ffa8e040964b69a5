#pragma once

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

#include <string_view>

/// Edits of the attributes of a reference. Tags are compared exactly. Each does the whole thing, undo
/// included; a status other than eOk (those of opening, eWrongDatabase) means that nothing was changed.
namespace kthost {

class Database;

/// Sets the text of the first living attribute with the tag. A reference that has none gets one, at the end,
/// as typing a value into an empty field would.
Orbx::ErrorStatus setAttributeText(Database& database, KtDbObjectId reference, std::wstring_view tag,
                                   std::wstring_view text);
/// Appends one whether or not the tag is there; opens the reference for modify.
Orbx::ErrorStatus appendAttribute(Database& database, KtDbObjectId reference, std::wstring_view tag,
                                  std::wstring_view text, KtDbObjectId& attribute);
/// Both open the reference for modify, too.
Orbx::ErrorStatus eraseAttribute(Database& database, KtDbObjectId attribute);
Orbx::ErrorStatus restoreAttribute(Database& database, KtDbObjectId attribute);

} // namespace kthost
