#include "kthost/reader/PathText.h"

#include "kthost/runtime/Utf8.h"

namespace kthost {

// By way of UTF-8: the narrow and wide conversions of a path depend on the locale or on the system.
std::wstring pathText(const std::filesystem::path& path) {
    const std::u8string utf8 = path.generic_u8string();
    return toWide(std::string(utf8.begin(), utf8.end()));
}

std::filesystem::path pathOf(std::wstring_view text) {
    const std::string utf8 = toUtf8(text);
    return {std::u8string(utf8.begin(), utf8.end())};
}

} // namespace kthost
