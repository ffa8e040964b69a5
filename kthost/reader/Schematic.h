#pragma once

#include "kthost/reader/ReadError.h"

#include <cstdint>
#include <string>
#include <vector>

/// One sheet file of a schematic in memory: plain values, as they stand in the file, with the format's
/// defaults where the file is silent. Text is wide. Lengths are in millimetres, y points down, angles are in
/// degrees.
namespace kthost {

struct SchematicPoint {
    double x = 0;
    double y = 0;

    bool operator==(const SchematicPoint&) const = default;
};

struct SchematicProperty {
    std::wstring name;
    std::wstring text;

    bool operator==(const SchematicProperty&) const = default;
};

/// The symbol's reference and unit in one place of the hierarchy.
struct SymbolInstance {
    std::wstring path; ///< of uuids: in a symbol "/ROOT/SHEET…", in a version 6 root "/SHEET…/SYMBOL"
    std::wstring reference;
    int unit = 1;

    bool operator==(const SymbolInstance&) const = default;
};

/// An entry of lib_symbols. An entry that extends another has that one's units, styles and power flag.
struct LibSymbol {
    std::wstring name;    ///< "Library:Name" as a rule
    std::wstring extends; ///< the name of the parent entry as written, empty without one
    bool isPower = false;
    int unitCount = 1;
    int bodyStyleCount = 1;
    SourcePosition position; ///< of the name

    bool operator==(const LibSymbol&) const = default;
};

struct PlacedSymbol {
    std::wstring libId;
    std::wstring libName; ///< empty, or the name of the entry to use in place of libId
    SchematicPoint position;
    double angle = 0;
    bool isMirroredX = false; ///< about the x axis
    bool isMirroredY = false;
    int unit = 1; ///< of one of the instances; see OccurrenceFinder for all
    int bodyStyle = 1;
    bool isInBom = true;
    bool isOnBoard = true;
    bool isDnp = false; ///< not to be populated
    std::wstring uuid;
    std::vector<SchematicProperty> properties; ///< in the file's order
    std::vector<SymbolInstance> instances;     ///< in the file's order, stale ones included

    const std::wstring& libEntryName() const noexcept { return libName.empty() ? libId : libName; }

    bool operator==(const PlacedSymbol&) const = default;
};

struct SheetPage {
    std::wstring path;
    std::wstring page;

    bool operator==(const SheetPage&) const = default;
};

/// A sheet on a sheet. The properties of name and file are called "Sheetname" and "Sheetfile" whatever
/// version wrote them.
struct SheetSymbol {
    std::wstring name;
    std::wstring file; ///< relative to the folder of the sheet that this one lies on, as written
    SourcePosition filePosition;
    SchematicPoint position;
    SchematicPoint size;
    std::wstring uuid;
    std::vector<SchematicProperty> properties; ///< in the file's order, name and file included
    std::vector<SheetPage> pages;

    bool operator==(const SheetSymbol&) const = default;
};

struct TableCell {
    std::wstring text;
    int columnSpan = 1; ///< 0 for a cell that a merged cell covers
    int rowSpan = 1;

    bool operator==(const TableCell&) const = default;
};

struct SchematicTable {
    int columnCount = 0;
    SchematicPoint position; ///< of the first cell
    std::vector<double> columnWidths;
    std::vector<double> rowHeights;
    std::vector<TableCell> cells; ///< row by row, whole rows

    bool operator==(const SchematicTable&) const = default;
};

struct Schematic {
    std::int64_t version = 0; ///< a date, 20231120 for instance
    std::wstring uuid;
    std::vector<LibSymbol> libSymbols;
    std::vector<PlacedSymbol> symbols;
    std::vector<SheetSymbol> sheets;
    std::vector<SchematicTable> tables;
    std::vector<SymbolInstance> symbolInstances; ///< version 6 keeps those of a whole design in its root

    bool operator==(const Schematic&) const = default;
};

/// The text of the property of that name, or nothing.
const std::wstring* findProperty(const std::vector<SchematicProperty>& properties, const wchar_t* name);

} // namespace kthost
