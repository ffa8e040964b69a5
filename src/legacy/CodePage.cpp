#include "legacy/CodePage.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <span>

namespace {

using Encoding = std::codecvt<wchar_t, char, std::mbstate_t>;

/// The facet looks through all that it is given before it converts the first character, so it is given
/// little; no encoding's character is nearly as long.
constexpr std::size_t kSlice = 256;

/// What of some bytes is text.
struct Converted {
    std::span<const wchar_t> text;
    std::size_t bytesUsed;
    bool complete; ///< no character is cut off at the end
};

/// At most as many characters as there is room for.
Converted convert(std::string_view bytes, const Encoding& encoding, std::span<wchar_t> room) {
    std::mbstate_t state{};
    const char* next = bytes.data();
    wchar_t* end = room.data();
    const auto result = encoding.in(state, bytes.data(), bytes.data() + bytes.size(), next, room.data(),
                                    room.data() + room.size(), end);
    return {{room.data(), end},
            static_cast<std::size_t>(next - bytes.data()),
            result == Encoding::error || std::mbsinit(&state) != 0};
}

bool isBeyondUnicode(char32_t character) {
    return character > 0x10FFFF;
}

/// Some facets still know the old forms of UTF-8 with up to six bytes. What these say cannot be written
/// again, so it is no text: the conversion is repeated up to the first of them.
Converted cutBeyondUnicode(const Converted& converted, std::string_view bytes, const Encoding& encoding,
                           std::span<wchar_t> room) {
    const auto found = std::find_if(converted.text.begin(), converted.text.end(), [](wchar_t character) {
        return isBeyondUnicode(static_cast<char32_t>(character));
    });
    return found == converted.text.end()
               ? converted
               : convert(bytes, encoding,
                         room.first(static_cast<std::size_t>(found - converted.text.begin())));
}

/// Appends what of the front of `bytes` is text; the number of bytes used. A character that is cut off counts
/// as used by the facet, so it is left out by giving less.
std::size_t appendText(std::string_view bytes, const Encoding& encoding, std::wstring& text) {
    std::array<wchar_t, kSlice> room{};
    for (; !bytes.empty(); bytes.remove_suffix(1)) {
        const Converted converted = convert(bytes, encoding, room);
        if (converted.complete) {
            const Converted valid = cutBeyondUnicode(converted, bytes, encoding, room);
            text.append(valid.text.data(), valid.text.size());
            return valid.bytesUsed;
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
