#include "kthost/reader/OccurrenceFinder.h"

namespace kthost {

namespace {

SymbolOccurrence occurrence(std::size_t place, const PlacedSymbol& symbol, const SymbolInstance* entry) {
    if (entry != nullptr) {
        return {place, entry->reference, entry->unit};
    }
    const std::wstring* const reference = findProperty(symbol.properties, L"Reference");
    return {place, reference == nullptr ? std::wstring() : *reference, symbol.unit};
}

} // namespace

OccurrenceFinder::OccurrenceFinder(const Design& design)
    : design_(&design),
      placesOfFile_(design.files.size()),
      rootInstances_(indexByPath(design.files[0].schematic.symbolInstances)) {
    for (std::size_t place = 0; place < design.instances.size(); ++place) {
        placesOfFile_[design.instances[place].file].push_back(place);
    }
}

OccurrenceFinder::InstanceByPath OccurrenceFinder::indexByPath(const std::vector<SymbolInstance>& instances) {
    InstanceByPath byPath;
    byPath.reserve(instances.size());
    for (const SymbolInstance& instance : instances) {
        byPath.insert_or_assign(instance.path, &instance);
    }
    return byPath;
}

std::vector<SymbolOccurrence> OccurrenceFinder::find(std::size_t file, const PlacedSymbol& symbol) const {
    const InstanceByPath own = indexByPath(symbol.instances);
    std::vector<SymbolOccurrence> occurrences;
    occurrences.reserve(placesOfFile_[file].size());
    for (const std::size_t place : placesOfFile_[file]) {
        const auto entry = own.find(design_->instances[place].path);
        occurrences.push_back(
            occurrence(place, symbol,
                       entry != own.end() ? entry->second : findInRoot(design_->instances[place], symbol)));
    }
    return occurrences;
}

// The root of version 6 leaves its own uuid out of the path and ends it with the symbol's.
const SymbolInstance* OccurrenceFinder::findInRoot(const SheetInstance& place,
                                                   const PlacedSymbol& symbol) const {
    if (rootInstances_.empty()) {
        return nullptr;
    }
    const std::size_t rootLength = design_->instances[0].path.size();
    const std::wstring path = place.path.substr(rootLength) + L"/" + symbol.uuid;
    const auto entry = rootInstances_.find(path);
    return entry == rootInstances_.end() ? nullptr : entry->second;
}

} // namespace kthost
