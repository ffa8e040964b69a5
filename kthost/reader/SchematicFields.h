#pragma once

#include "kthost/reader/Schematic.h"
#include "kthost/reader/SexprCursor.h"

/// The readers of the parts of a sheet file. Each is called when the head of its list has been read, and
/// appends to the target what the list holds.
namespace kthost {

void readLibSymbol(SexprCursor& in, std::vector<LibSymbol>& symbols);
void readPlacedSymbol(SexprCursor& in, Schematic& schematic);
void readSheet(SexprCursor& in, Schematic& schematic);
void readTable(SexprCursor& in, Schematic& schematic);

/// Returns the token of the text.
SexprToken readProperty(SexprCursor& in, std::vector<SchematicProperty>& properties);

/// One `path` list with a reference and a unit.
void readSymbolInstance(SexprCursor& in, std::vector<SymbolInstance>& instances);

SchematicPoint readPoint(SexprCursor& in, std::string_view what);

/// A coordinate or a length. The editor keeps them as 32-bit counts of 100 nm; a file that holds more is
/// damaged.
inline constexpr double kMaxCoordinate = 214748.3647;

inline constexpr int kMaxUnit = 9999;
inline constexpr int kMaxBodyStyle = 99;

/// Gives the entries that extend others what they have from them. Throws ReadError when a parent is missing
/// or an entry extends itself.
void resolveExtends(const SourceText& source, std::vector<LibSymbol>& symbols);

} // namespace kthost
