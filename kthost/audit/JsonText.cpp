#include "kthost/audit/JsonText.h"

#include "kthost/runtime/Utf8.h"

#include <cstdint>
#include <type_traits>

namespace kthost {

namespace {

constexpr std::uint32_t kFirstSurrogate = 0xD800;
constexpr std::uint32_t kFirstLowSurrogate = 0xDC00;
constexpr std::uint32_t kLastSurrogate = 0xDFFF;
constexpr std::uint32_t kLastCodePoint = 0x10FFFF;

void appendEscape(std::string& line, std::uint32_t unit) {
    constexpr const char* digits = "0123456789abcdef";
    line += "\\u";
    for (const unsigned shift : {12U, 8U, 4U, 0U}) {
        line += digits[(unit >> shift) & 0xF];
    }
}

// Widened without a sign, whatever wchar_t is here.
std::uint32_t unitOf(wchar_t character) {
    return static_cast<std::make_unsigned_t<wchar_t>>(character);
}

bool isSurrogate(std::uint32_t unit) {
    return kFirstSurrogate <= unit && unit <= kLastSurrogate;
}

// Where wchar_t has two bytes, two surrogates together are one character.
bool isPair(std::wstring_view text, std::size_t i) {
    if (sizeof(wchar_t) != 2 || i + 1 >= text.size()) {
        return false;
    }
    const auto high = unitOf(text[i]);
    const auto low = unitOf(text[i + 1]);
    return isSurrogate(high) && high < kFirstLowSurrogate && isSurrogate(low) && low >= kFirstLowSurrogate;
}

// True for what may not stand in a JSON string as it is; it is written then.
bool appendSpecial(std::string& line, std::uint32_t unit) {
    if (unit == '"' || unit == '\\') {
        line += '\\';
        line += static_cast<char>(unit);
        return true;
    }
    if (unit < 0x20 || unit == 0x7F || isSurrogate(unit)) {
        appendEscape(line, unit);
        return true;
    }
    return false;
}

} // namespace

void appendJson(std::string& line, std::wstring_view text) {
    line.reserve(line.size() + text.size() + 2);
    line += '"';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto unit = unitOf(text[i]);
        const std::size_t length = isPair(text, i) ? 2 : 1;
        if (length == 2 || !appendSpecial(line, unit)) {
            line += toUtf8(unit > kLastCodePoint ? L"\uFFFD" : text.substr(i, length));
        }
        i += length - 1;
    }
    line += '"';
}

void appendJson(std::string& line, std::string_view utf8) {
    appendJson(line, toWide(utf8));
}

} // namespace kthost
