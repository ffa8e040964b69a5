#include "NaturalOrder.h"

#include <algorithm>
#include <cstdint>

namespace parts {

namespace {

bool isDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

/// Takes a run of digits off the front.
std::wstring_view takeDigits(std::wstring_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto length = static_cast<std::size_t>(end - text.begin());
    const std::wstring_view digits = text.substr(0, length);
    text.remove_prefix(length);
    return digits;
}

std::wstring_view withoutZeros(std::wstring_view digits) {
    return digits.substr(std::min(digits.find_first_not_of(L'0'), digits.size()));
}

/// Digits of any length, compared by value.
std::strong_ordering numberOrder(std::wstring_view left, std::wstring_view right) {
    left = withoutZeros(left);
    right = withoutZeros(right);
    return left.size() != right.size() ? left.size() <=> right.size() : left.compare(right) <=> 0;
}

/// Where a unit stands in the order of characters. Halves of characters beyond the basic plane, where text is
/// UTF-16, stand behind all others; their own values would put them in front of some.
std::uint32_t rankOf(wchar_t unit) {
    const auto value = static_cast<char32_t>(unit);
    const bool isHalf = sizeof unit == 2 && value >= 0xD800 && value <= 0xDFFF;
    return isHalf ? value + 0x10000 : value;
}

/// The first difference by value; both texts lose what was equal.
std::strong_ordering stepOrder(std::wstring_view& left, std::wstring_view& right) {
    if (isDigit(left.front()) && isDigit(right.front())) {
        return numberOrder(takeDigits(left), takeDigits(right));
    }
    const std::strong_ordering order = rankOf(left.front()) <=> rankOf(right.front());
    left.remove_prefix(1);
    right.remove_prefix(1);
    return order;
}

} // namespace

std::strong_ordering naturalOrder(std::wstring_view left, std::wstring_view right) {
    std::wstring_view restLeft = left;
    std::wstring_view restRight = right;
    while (!restLeft.empty() && !restRight.empty()) {
        const std::strong_ordering order = stepOrder(restLeft, restRight);
        if (std::is_neq(order)) {
            return order;
        }
    }
    const std::strong_ordering order = restLeft.size() <=> restRight.size();
    return std::is_neq(order) ? order : left.compare(right) <=> 0;
}

} // namespace parts
