#pragma once

#include "Options.h"
#include "PartsTable.h"

#include <KtDbObjectId.h>

#include <vector>

class KtDbDatabase;

namespace parts {

class ReferenceReader;

/// What of a drawing goes into a list.
struct Selection {
    std::vector<KtDbObjectId> definitions;
    RowKind kind = RowKind::reference;
    std::vector<Condition> conditions;
    std::vector<std::wstring> tags; ///< the attribute columns; empty for all tags that occur
    KtDbObjectId ownTable;          ///< the reference that draws the list itself is not part of it
};

/// Extracts a list from a drawing. Throws InUse when somebody has open for writing what has to be read. Takes
/// time proportional to what it reads, and sorting the rows.
///  - by reference: a row for each block reference, with the columns Block, Container and Handle, by block
///    and handle;
///  - by occurrence: a row for every way in which a reference comes to lie in a layout, with the columns
///    Reference, Unit, Block, Container, Handle and Path, in the natural order of their designators;
///  - by component: occurrences with one designator are one row, with the columns Reference, Block and Units
///    (the numbers of those that are placed); those without a designator and those whose designator begins
///    with # are left out. Block and attributes are those of the first occurrence.
/// A column for each attribute tag follows. Throws std::length_error for more occurrences than can be listed.
/// References that the reader knows are not opened.
PartsTable extractParts(const KtDbDatabase& database, const Selection& selection, ReferenceReader& reader);
/// The same with a reader that knows nothing.
PartsTable extractParts(const KtDbDatabase& database, const Selection& selection);

} // namespace parts
