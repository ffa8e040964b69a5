#include "kthost/reader/SymbolAttributes.h"

#include "kthost/reader/UniqueNames.h"

#include <array>

namespace kthost {

std::vector<AttributeText> symbolAttributes(const PlacedSymbol& symbol) {
    const auto yesOrNo = [](bool flag) { return flag ? L"yes" : L"no"; };
    const std::array<AttributeText, 3> flags{{{L"in_bom", yesOrNo(symbol.isInBom)},
                                              {L"on_board", yesOrNo(symbol.isOnBoard)},
                                              {L"dnp", yesOrNo(symbol.isDnp)}}};
    UniqueNames tags(UniqueNames::Case::matters);
    for (const AttributeText& flag : flags) {
        tags.take(flag.tag);
    }
    std::vector<AttributeText> attributes;
    attributes.reserve(symbol.properties.size() + flags.size());
    for (const SchematicProperty& property : symbol.properties) {
        attributes.push_back({tags.take(property.name), property.text});
    }
    attributes.insert(attributes.end(), flags.begin(), flags.end());
    return attributes;
}

} // namespace kthost
