#include "legacy/CollationRanks.h"

#include <algorithm>
#include <numeric>

namespace {

/// Keys compare unit by unit as their texts compare under the locale.
std::wstring collationKey(std::wstring text, const std::locale& locale) {
    std::use_facet<std::ctype<wchar_t>>(locale).tolower(text.data(), text.data() + text.size());
    return std::use_facet<std::collate<wchar_t>>(locale).transform(text.data(), text.data() + text.size());
}

std::vector<std::wstring> collationKeys(std::span<const std::wstring> texts, const std::locale& locale) {
    std::vector<std::wstring> keys;
    keys.reserve(texts.size());
    for (const std::wstring& text : texts) {
        keys.push_back(collationKey(text, locale));
    }
    return keys;
}

} // namespace

std::vector<std::size_t> collationRanks(std::span<const std::wstring> texts, const std::locale& locale) {
    const std::vector<std::wstring> keys = collationKeys(texts, locale);
    std::vector<std::size_t> order(texts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(),
              [&keys](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    std::vector<std::size_t> ranks(texts.size());
    for (std::size_t i = 1; i < order.size(); ++i) {
        const bool above = keys[order[i - 1]] < keys[order[i]];
        ranks[order[i]] = ranks[order[i - 1]] + (above ? 1 : 0);
    }
    return ranks;
}
