#include "kthost/reader/SheetHierarchy.h"

#include "kthost/reader/SheetLimits.h"
#include "kthost/reader/SheetOrder.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace kthost {

namespace {

SheetInstance rootInstance(const Design& design) {
    return {0, L"/" + design.files[0].schematic.uuid, L"/", 0, 0};
}

SheetInstance childInstance(const Design& design, std::size_t parentIndex, std::size_t sheet) {
    const SheetInstance& parent = design.instances[parentIndex];
    const SheetFile& file = design.files[parent.file];
    const SheetSymbol& symbol = file.schematic.sheets[sheet];
    return {file.children[sheet], parent.path + L"/" + symbol.uuid,
            (parentIndex == 0 ? parent.names : parent.names + L"/") + symbol.name, parentIndex, sheet};
}

} // namespace

void expandHierarchy(Design& design, std::uint64_t bytesRead) {
    design.instances.reserve(countSheetInstances(design, sheetOrder(design), bytesRead));
    std::vector<SheetInstance> pending{rootInstance(design)};
    while (!pending.empty()) {
        const std::size_t index = design.instances.size();
        const SheetInstance& instance = design.instances.emplace_back(std::move(pending.back()));
        pending.pop_back();
        for (std::size_t sheet = design.files[instance.file].children.size(); sheet-- > 0;) {
            pending.push_back(childInstance(design, index, sheet));
        }
    }
}

} // namespace kthost
