#pragma once

#include <KtDbObjectId.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What people ask about a drawing. Nothing here opens an object, so it works whoever has what open.
namespace kthost {

class Database;

/// The drawing that this one was read for, as an attached one, whether or not it is attached still; null for
/// any other.
const Database* attachedTo(const Database& database);

/// The object with that number, erased ones included; null when there is none or it is released.
KtDbObjectId objectByHandle(const Database& database, std::uint64_t handle);
/// 0 for an id that is not valid or whose database is closed.
std::uint64_t handleOf(KtDbObjectId id);
/// Owner of the object, released ones included; null for the block table and for ids that are not valid.
KtDbObjectId ownerOf(KtDbObjectId id);

/// Living record of that name (compared as the block table does); null when there is none.
KtDbObjectId recordByName(const Database& database, std::wstring_view name);
/// Name of a record; empty for anything else and for a released one. Stays until the record is renamed.
std::wstring_view recordName(KtDbObjectId record);
/// Living records in table order; `layouts` chooses between layouts and all others.
std::vector<KtDbObjectId> records(const Database& database, bool layouts);
/// Living references that lie in a record, in drawing order.
std::vector<KtDbObjectId> referencesIn(KtDbObjectId container);
/// Living references to a record, ascending.
std::vector<KtDbObjectId> referencesTo(KtDbObjectId record);
/// Record that a reference places; null for anything else.
KtDbObjectId definitionOf(KtDbObjectId reference);

struct AttributeView {
    KtDbObjectId id;
    std::wstring_view tag; ///< both stay until the attribute is changed
    std::wstring_view text;
};

/// Living attributes of a reference, in order.
std::vector<AttributeView> attributesOf(KtDbObjectId reference);

/// Living references whose living attribute "Reference" has that text, ascending. The first question reads
/// the whole drawing; from then on an index is kept.
std::vector<KtDbObjectId> referencesByDesignator(Database& database, std::wstring_view designator);

/// Text that tells everything about the drawing's state that edits, undo and redo can change, one object a
/// line in ascending order, for comparing states in tests and audits.
std::wstring dumpDatabase(const Database& database);

} // namespace kthost
