#pragma once

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

#include <string_view>

/// Edits of block definitions. Each does the whole thing: it opens what it changes, keeps it for undo and
/// closes it again. A status other than eOk means that nothing was changed: eInvalidBlockId for an id that is
/// not a living record of this drawing, eIsDependent for a record that belongs to an external reference, and
/// the status of whatever could not be opened for write. What is added or erased opens the block table for
/// modify, too.
namespace kthost {

class Database;

/// A new, empty definition. eDuplicateKey when a living record has the name; eInvalidInput for a name that is
/// empty, begins with an asterisk or holds "|".
Orbx::ErrorStatus addDefinition(Database& database, std::wstring_view name, KtDbObjectId& definition);
/// A new, empty anonymous definition: "*", the letter and the next free number, counted up for each letter.
Orbx::ErrorStatus addAnonymousDefinition(Database& database, wchar_t letter, KtDbObjectId& definition);
/// A new, empty layout. Names as for definitions, an asterisk at the start allowed.
Orbx::ErrorStatus addLayout(Database& database, std::wstring_view name, KtDbObjectId& layout);
/// A new definition with a copy of everything that lies in `source`. Reactors of the source, of the
/// references in it and of their attributes hear of their copies, in this order.
Orbx::ErrorStatus copyDefinition(Database& database, KtDbObjectId source, std::wstring_view name,
                                 KtDbObjectId& copy);
/// Erases what lies in the definition and puts copies of what lies in `source` there (nothing for the null
/// id). eSelfReference when the definition would come to contain itself.
Orbx::ErrorStatus redefine(Database& database, KtDbObjectId definition, KtDbObjectId source);
/// eDuplicateKey and eInvalidInput as for a new one; layouts and anonymous records keep their names
/// (eInvalidInput).
Orbx::ErrorStatus renameDefinition(Database& database, KtDbObjectId definition, std::wstring_view name);
/// Erases the definition and what lies in it. eStillReferenced while a reference to it lives, or, for a
/// dynamic definition, one to a representation of it; the representations go with their definition. Layouts
/// stay (eInvalidInput); an external reference is detached instead (eIsDependent).
Orbx::ErrorStatus purgeDefinition(Database& database, KtDbObjectId definition);

} // namespace kthost
