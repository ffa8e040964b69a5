#include "kthost/reader/SchematicFields.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

namespace kthost {

namespace {

constexpr std::string_view kSubSymbolName = "a sub-symbol name that ends in _UNIT_BODY";

// Takes "_N" from the end of the name.
int takeNumber(const SexprCursor& in, const SexprToken& token, std::string_view& name, int most) {
    const std::size_t bar = name.rfind('_');
    if (bar == std::string_view::npos) {
        in.fail(token, kSubSymbolName);
    }
    int number = -1;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + bar + 1, end, number);
    if (error != std::errc() || stop != end || number < 0 || number > most) {
        in.fail(token, kSubSymbolName);
    }
    name = name.substr(0, bar);
    return number;
}

// 0 means common to all units, or to all styles, and adds none.
void readSubSymbol(SexprCursor& in, LibSymbol& symbol) {
    const SexprToken token = in.atom(kSubSymbolName);
    std::string_view name = token.text;
    const int bodyStyle = takeNumber(in, token, name, kMaxBodyStyle);
    const int unit = takeNumber(in, token, name, kMaxUnit);
    symbol.unitCount = std::max(symbol.unitCount, unit);
    symbol.bodyStyleCount = std::max(symbol.bodyStyleCount, bodyStyle);
}

constexpr SexprField<LibSymbol> kLibSymbolFields[] = {
    {"power", [](SexprCursor&, LibSymbol& symbol) { symbol.isPower = true; }},
    {"extends",
     [](SexprCursor& in, LibSymbol& symbol) { symbol.extends = in.text("the name of the parent entry"); }},
    {"symbol", readSubSymbol},
};

} // namespace

void readLibSymbol(SexprCursor& in, std::vector<LibSymbol>& symbols) {
    LibSymbol symbol;
    const SexprToken name = in.atom("the name of a library symbol");
    symbol.name = SexprCursor::textOf(name);
    symbol.position = in.position(name);
    in.readFields<LibSymbol>(symbol, kLibSymbolFields);
    symbols.push_back(std::move(symbol));
}

} // namespace kthost
