#include "bench/drawings/Callbacks.h"

#include "bench/drawings/Require.h"

#include <array>
#include <utility>

namespace bench {

namespace {

constexpr std::size_t kHundred = 100;

volatile std::size_t lastCalled = 0;

template <std::size_t kNumber>
void callback() {
    lastCalled = kNumber; // else they might all be one function
}

using Hundred = std::array<KtRxCallback, kHundred>;

template <std::size_t kFirst, std::size_t... kNumbers>
constexpr Hundred hundredFrom(std::index_sequence<kNumbers...> /*numbers*/) {
    return {&callback<kFirst + kNumbers>...};
}

template <std::size_t... kNumbers>
std::array<Hundred, kHundred> allHundreds(std::index_sequence<kNumbers...> /*numbers*/) {
    return {hundredFrom<kNumbers * kHundred>(std::make_index_sequence<kHundred>())...};
}

} // namespace

std::vector<KtRxCallback> callbacks(std::size_t count) {
    require(count <= kHundred * kHundred, "there are 10,000 functions");
    static const auto kAll = allHundreds(std::make_index_sequence<kHundred>());
    std::vector<KtRxCallback> chosen;
    for (std::size_t i = 0; i < count; ++i) {
        chosen.push_back(kAll[i / kHundred][i % kHundred]);
    }
    return chosen;
}

} // namespace bench
