#include "legacy/CodePage.h"

#include <algorithm>
#include <array>
#include <cwchar>

namespace {

using Encoding = std::codecvt<wchar_t, char, std::mbstate_t>;

/// The facet looks through all that it is given before it converts the first character, so it is given
/// little; no encoding's character is nearly as long.
constexpr std::size_t kSlice = 256;

/// What of some bytes is text.
struct Converted {
    std::array<wchar_t, kSlice> text{};
    std::size_t length = 0;
    std::size_t bytesUsed = 0;
    bool complete = false; ///< no character is cut off at the end
};

/// At most `limit` characters.
void convert(std::string_view bytes, const Encoding& encoding, std::size_t limit, Converted& converted) {
    std::mbstate_t state{};
    const char* next = bytes.data();
    wchar_t* end = converted.text.data();
    const auto result = encoding.in(state, bytes.data(), bytes.data() + bytes.size(), next,
                                    converted.text.data(), converted.text.data() + limit, end);
    converted.length = static_cast<std::size_t>(end - converted.text.data());
    converted.bytesUsed = static_cast<std::size_t>(next - bytes.data());
    converted.complete = result == Encoding::error || std::mbsinit(&state) != 0;
}

bool isBeyondUnicode(char32_t character) {
    return character > 0x10FFFF;
}

/// Some facets still know the old forms of UTF-8 with up to six bytes. What these say cannot be written
/// again, so it is no text: the conversion is repeated up to the first of them.
void cutBeyondUnicode(std::string_view bytes, const Encoding& encoding, Converted& converted) {
    const auto* const begin = converted.text.data();
    const auto* const end = begin + converted.length;
    const auto* const found = std::find_if(
        begin, end, [](wchar_t character) { return isBeyondUnicode(static_cast<char32_t>(character)); });
    if (found != end) {
        convert(bytes, encoding, static_cast<std::size_t>(found - begin), converted);
    }
}

/// Appends what of the front of `bytes` is text; the number of bytes used. A character that is cut off counts
/// as used by the facet, so it is left out by giving less.
std::size_t appendText(std::string_view bytes, const Encoding& encoding, std::wstring& text) {
    Converted converted;
    for (; !bytes.empty(); bytes.remove_suffix(1)) {
        convert(bytes, encoding, kSlice, converted);
        if (converted.complete) {
            cutBeyondUnicode(bytes, encoding, converted);
            text.append(converted.text.data(), converted.length);
            return converted.bytesUsed;
        }
    }
    return 0;
}

} // namespace

std::wstring wideFromCodePage(std::string_view bytes, const std::locale& locale) {
    const auto& encoding = std::use_facet<Encoding>(locale);
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        std::size_t used = appendText(bytes.substr(0, std::min(bytes.size(), kSlice)), encoding, text);
        if (used == 0) {
            text.push_back(static_cast<wchar_t>(static_cast<unsigned char>(bytes.front())));
            used = 1;
        }
        bytes.remove_prefix(used);
    }
    return text;
}
