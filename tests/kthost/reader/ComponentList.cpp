#include "tests/kthost/reader/ComponentList.h"

#include "kthost/reader/OccurrenceFinder.h"
#include "kthost/runtime/Utf8.h"

#include <algorithm>

namespace kthost::test {

namespace {

bool isPower(const Schematic& schematic, const PlacedSymbol& symbol) {
    return std::any_of(
        schematic.libSymbols.begin(), schematic.libSymbols.end(),
        [&symbol](const LibSymbol& each) { return each.isPower && each.name == symbol.libEntryName(); });
}

std::wstring propertyOf(const PlacedSymbol& symbol, const wchar_t* name) {
    const std::wstring* const text = findProperty(symbol.properties, name);
    return text == nullptr ? std::wstring() : *text;
}

void add(Component& component, const PlacedSymbol& symbol, int unit, const std::wstring& sheet) {
    if (component.units.empty()) {
        component.value = propertyOf(symbol, L"Value");
        component.footprint = propertyOf(symbol, L"Footprint");
        component.libId = symbol.libId;
        component.isInBom = symbol.isInBom;
        component.isOnBoard = symbol.isOnBoard;
        component.isDnp = symbol.isDnp;
    }
    component.units.insert(unit);
    component.sheets.insert(sheet);
}

template <typename Items, typename Text>
std::string join(const Items& items, const char* separator, const Text& text) {
    std::string joined;
    for (const auto& item : items) {
        joined += joined.empty() ? "" : separator;
        joined += text(item);
    }
    return joined;
}

std::string lineOf(const std::wstring& reference, const Component& component) {
    const auto flag = [](bool isSet) { return std::string(isSet ? "1" : "0"); };
    const std::string fields[] = {
        toUtf8(reference),
        toUtf8(component.value),
        toUtf8(component.footprint),
        toUtf8(component.libId),
        join(component.units, ",", [](int unit) { return std::to_string(unit); }),
        flag(component.isInBom),
        flag(component.isOnBoard),
        flag(component.isDnp),
        join(component.sheets, " | ", [](const std::wstring& sheet) { return toUtf8(sheet); }),
    };
    return join(fields, "\t", [](const std::string& field) { return field; });
}

} // namespace

ComponentMap componentsOf(const Design& design) {
    ComponentMap components;
    const OccurrenceFinder finder(design);
    for (std::size_t file = 0; file < design.files.size(); ++file) {
        for (const PlacedSymbol& symbol : design.files[file].schematic.symbols) {
            if (isPower(design.files[file].schematic, symbol)) {
                continue;
            }
            for (const SymbolOccurrence& each : finder.find(file, symbol)) {
                if (!each.reference.starts_with(L'#')) {
                    add(components[each.reference], symbol, each.unit, design.instances[each.instance].names);
                }
            }
        }
    }
    return components;
}

std::vector<std::string> linesOf(const ComponentMap& components) {
    std::vector<std::string> lines;
    lines.reserve(components.size());
    for (const auto& [reference, component] : components) {
        lines.push_back(lineOf(reference, component));
    }
    return lines;
}

} // namespace kthost::test
