#include "tests/scenario_modules/puppets/PuppetFunctions.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace puppets {

namespace {

using Functions = std::array<KtRxCallback, kCount>;

const Functions& ascending();

// Each has a place of its own that says where it stands, so that no two are the same code.
template <std::size_t kPlace>
void function() {
    const auto& all = ascending();
    const auto found = std::find(all.begin(), all.end(), &function<kPlace>);
    called(static_cast<std::size_t>(found - all.begin()));
}

template <std::size_t... kPlaces>
Functions sorted(std::index_sequence<kPlaces...> /*places*/) {
    Functions all{&function<kPlaces>...};
    std::sort(all.begin(), all.end(), std::less<>());
    return all;
}

const Functions& ascending() {
    static const Functions all = sorted(std::make_index_sequence<kCount>());
    return all;
}

} // namespace

KtRxCallback functionOf(std::size_t number) {
    return ascending().at(number);
}

} // namespace puppets
