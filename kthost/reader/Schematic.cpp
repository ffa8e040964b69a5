#include "kthost/reader/Schematic.h"

#include <algorithm>

namespace kthost {

const std::wstring* findProperty(const std::vector<SchematicProperty>& properties, const wchar_t* name) {
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [name](const SchematicProperty& each) { return each.name == name; });
    return found == properties.end() ? nullptr : &found->text;
}

} // namespace kthost
