#include "kthost/reader/SchematicReader.h"

#include "kthost/reader/SchematicFields.h"

#include <utility>

namespace kthost {

namespace {

constexpr std::string_view kSchematicFile = "a schematic that begins with (kicad_sch";
constexpr std::int64_t kLatestDate = 99991231;

// The whole of the document under the reader, and who is told how far it has come.
struct Underway {
    Schematic schematic;
    const OffsetListener* listener;
};

void tell(const SexprCursor& in, const Underway& underway) {
    if (*underway.listener) {
        (*underway.listener)(in.offset());
    }
}

void readVersion(SexprCursor& in, Underway& underway) {
    underway.schematic.version = in.integer("a format version", kOldestSchematicVersion, kLatestDate);
}

constexpr SexprField<Underway> kLibraryFields[] = {{"symbol", [](SexprCursor& in, Underway& underway) {
                                                        readLibSymbol(in, underway.schematic.libSymbols);
                                                        tell(in, underway);
                                                    }}};

constexpr SexprField<std::vector<SymbolInstance>> kSymbolInstancesFields[] = {{"path", readSymbolInstance}};

template <void (*Read)(SexprCursor&, Schematic&)>
void readPart(SexprCursor& in, Underway& underway) {
    Read(in, underway.schematic);
    tell(in, underway);
}

constexpr SexprField<Underway> kSchematicFields[] = {
    {"symbol", readPart<readPlacedSymbol>},
    {"sheet", readPart<readSheet>},
    {"table", readPart<readTable>},
    {"lib_symbols",
     [](SexprCursor& in, Underway& underway) { in.readFields<Underway>(underway, kLibraryFields); }},
    {"version", readVersion},
    {"uuid", [](SexprCursor& in, Underway& underway) { underway.schematic.uuid = in.text("a uuid"); }},
    {"symbol_instances",
     [](SexprCursor& in, Underway& underway) {
         in.readFields<std::vector<SymbolInstance>>(underway.schematic.symbolInstances,
                                                    kSymbolInstancesFields);
     }},
};

} // namespace

Schematic readSchematic(const SourceText& source, const OffsetListener& listener) {
    SexprCursor in(source);
    Underway underway{{}, &listener};
    in.openDocument("kicad_sch", kSchematicFile);
    in.readFields<Underway>(underway, kSchematicFields);
    in.closeDocument();
    if (underway.schematic.version == 0) {
        source.fail(0, "a schematic with a version", "one without");
    }
    resolveExtends(source, underway.schematic.libSymbols);
    return std::move(underway.schematic);
}

} // namespace kthost
