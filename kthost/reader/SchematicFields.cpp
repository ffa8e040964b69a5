#include "kthost/reader/SchematicFields.h"

#include <utility>

namespace kthost {

namespace {

constexpr SexprField<SymbolInstance> kInstanceFields[] = {
    {"reference",
     [](SexprCursor& in, SymbolInstance& instance) { instance.reference = in.text("a reference"); }},
    {"unit",
     [](SexprCursor& in, SymbolInstance& instance) {
         instance.unit = static_cast<int>(in.integer("a unit", 1, kMaxUnit));
     }},
};

} // namespace

SexprToken readProperty(SexprCursor& in, std::vector<SchematicProperty>& properties) {
    SexprToken name = in.atom("a property name");
    if (name.kind == SexprTokenKind::Word && name.text == "private") {
        name = in.atom("a property name");
    }
    SchematicProperty& property = properties.emplace_back();
    property.name = SexprCursor::textOf(name);
    const SexprToken text = in.atom("a property text");
    property.text = SexprCursor::textOf(text);
    return text;
}

void readSymbolInstance(SexprCursor& in, std::vector<SymbolInstance>& instances) {
    SymbolInstance instance;
    instance.path = in.text("a path of sheets");
    in.readFields<SymbolInstance>(instance, kInstanceFields);
    instances.push_back(std::move(instance));
}

SchematicPoint readPoint(SexprCursor& in, std::string_view what) {
    const double x = in.number(what, -kMaxCoordinate, kMaxCoordinate);
    const double y = in.number(what, -kMaxCoordinate, kMaxCoordinate);
    return {x, y};
}

} // namespace kthost
