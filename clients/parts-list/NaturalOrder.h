#pragma once

#include <compare>
#include <string_view>

namespace parts {

/// The order in which people list designators: runs of digits count as numbers, so R2 comes before R10, and
/// leading zeros decide only between texts that are equal otherwise. Everything else goes by character. It is
/// a total order: equal means the same text.
std::strong_ordering naturalOrder(std::wstring_view left, std::wstring_view right);

struct NaturalLess {
    using is_transparent = void;

    bool operator()(std::wstring_view left, std::wstring_view right) const {
        return std::is_lt(naturalOrder(left, right));
    }
};

} // namespace parts
