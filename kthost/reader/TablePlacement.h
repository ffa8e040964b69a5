#pragma once

#include "kthost/reader/Schematic.h"

#include <KtDbObjectId.h>

namespace kthost {

class Database;

/// Draws the table in the container. The host's tables know no merged cells: the text stands in the first
/// cell of those that are merged, the others are empty.
void placeTable(Database& database, KtDbObjectId container, const SchematicTable& table);

} // namespace kthost
