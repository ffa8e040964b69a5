#include "legacy/CodePage.h"

#include <algorithm>
#include <array>
#include <cwchar>

namespace {

using Encoding = std::codecvt<wchar_t, char, std::mbstate_t>;

/// The facet looks through all that it is given before it converts the first character, so it is given
/// little; no encoding's character is nearly as long.
constexpr std::size_t kSlice = 256;

/// Appends what of `bytes` is text; the number of bytes used.
std::size_t appendText(std::string_view bytes, const Encoding& encoding, std::wstring& text) {
    std::array<wchar_t, kSlice> converted{};
    std::mbstate_t state{};
    const char* next = bytes.data();
    wchar_t* end = converted.data();
    encoding.in(state, bytes.data(), bytes.data() + bytes.size(), next, converted.data(),
                converted.data() + converted.size(), end);
    text.append(converted.data(), end);
    return static_cast<std::size_t>(next - bytes.data());
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
