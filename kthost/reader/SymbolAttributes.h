#pragma once

#include "kthost/database/References.h"
#include "kthost/reader/Schematic.h"

#include <vector>

namespace kthost {

/// A placed symbol's properties, in their order, and behind them the flags in_bom, on_board and dnp as "yes"
/// or "no". A tag stands once: a property that has the name of a flag, or of a property before it, gets "
/// (2)" behind its own.
std::vector<AttributeText> symbolAttributes(const PlacedSymbol& symbol);

} // namespace kthost
