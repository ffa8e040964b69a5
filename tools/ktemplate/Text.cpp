#include "tools/ktemplate/Text.h"

#include "legacy/Utf16.h"

#include <fmt/format.h>

#include <cstdint>
#include <iterator>

namespace ktemplate {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint32_t kLastCodePoint = 0x10FFFF;

constexpr bool isSurrogate(std::uint32_t point) {
    return point >= 0xD800 && point <= 0xDFFF;
}

constexpr bool isControl(std::uint32_t point) {
    return point < 0x20 || (point >= 0x7F && point < 0xA0);
}

/// Line and paragraph separators, and the marks that turn the direction of writing: invisible, and not
/// harmless.
constexpr bool isInvisible(std::uint32_t point) {
    return (point >= 0x200B && point <= 0x200F) || (point >= 0x2028 && point <= 0x202E) ||
           (point >= 0x2066 && point <= 0x2069) || point == 0xFEFF;
}

void appendUtf8(std::uint32_t point, std::string& to) {
    const auto put = [&to](std::uint32_t byte) {
        to.push_back(static_cast<char>(static_cast<unsigned char>(byte)));
    };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xC0 | (point >> 6));
        put(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        put(0xE0 | (point >> 12));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    } else {
        put(0xF0 | (point >> 18));
        put(0x80 | ((point >> 12) & 0x3F));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    }
}

/// Calls `use` for each code point of UTF-16, lone surrogates included.
template <typename Use>
void forEachCodePoint(std::u16string_view units, Use use) {
    for (std::size_t i = 0; i < units.size(); ++i) {
        const std::uint32_t unit = units[i];
        const bool pair = unit >= 0xD800 && unit < 0xDC00 && i + 1 < units.size() && units[i + 1] >= 0xDC00 &&
                          units[i + 1] <= 0xDFFF;
        use(pair ? 0x10000 + ((unit & 0x3FF) << 10) + (units[i + 1] & 0x3FFU) : unit);
        i += pair ? 1 : 0;
    }
}

/// What the first byte of a character says of it.
struct Lead {
    std::size_t length;
    std::uint32_t bits;
    std::uint32_t least; ///< below it, the character has a shorter form
};

constexpr Lead leadOf(unsigned char byte) {
    if (byte < 0x80) {
        return {1, byte, 0};
    }
    if (byte >= 0xC0 && byte < 0xE0) {
        return {2, byte & 0x1FU, 0x80};
    }
    if (byte >= 0xE0 && byte < 0xF0) {
        return {3, byte & 0x0FU, 0x800};
    }
    if (byte >= 0xF0 && byte < 0xF8) {
        return {4, byte & 0x07U, 0x10000};
    }
    return {0, 0, 0};
}

/// The first character, or the replacement for its first byte; cuts off what it took.
std::uint32_t takeCodePoint(std::string_view& utf8) {
    const Lead lead = leadOf(static_cast<unsigned char>(utf8.front()));
    std::uint32_t point = lead.bits;
    bool sound = lead.length != 0 && lead.length <= utf8.size();
    for (std::size_t i = 1; sound && i < lead.length; ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        sound = (byte & 0xC0U) == 0x80U;
        point = (point << 6) | (byte & 0x3FU);
    }
    sound = sound && point >= lead.least && point <= kLastCodePoint && !isSurrogate(point);
    utf8.remove_prefix(sound ? lead.length : 1);
    return sound ? point : kReplacement;
}

void appendWide(std::uint32_t point, std::wstring& to) {
    if (sizeof(wchar_t) == 2 && point > 0xFFFF) {
        to.push_back(static_cast<wchar_t>(0xD800 + ((point - 0x10000) >> 10)));
        to.push_back(static_cast<wchar_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
        return;
    }
    to.push_back(static_cast<wchar_t>(point));
}

void appendForJson(std::uint32_t point, std::string& to) {
    if (point == '"' || point == '\\') {
        to.push_back('\\');
    }
    if (point < 0x20 || isSurrogate(point)) {
        fmt::format_to(std::back_inserter(to), "\\u{:04x}", point);
    } else {
        appendUtf8(point, to);
    }
}

void appendForDisplay(std::uint32_t point, std::string& to) {
    if (isControl(point) || isSurrogate(point) || isInvisible(point)) {
        fmt::format_to(std::back_inserter(to), "\\u{{{:x}}}", point);
        return;
    }
    if (point == '\\') {
        to.push_back('\\');
    }
    appendUtf8(point, to);
}

} // namespace

std::wstring wideFromUtf8(std::string_view utf8) {
    std::wstring text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        appendWide(takeCodePoint(utf8), text);
    }
    return text;
}

std::string displayText(std::wstring_view text) {
    std::string shown;
    forEachCodePoint(utf16FromWide(text), [&shown](std::uint32_t point) { appendForDisplay(point, shown); });
    return shown;
}

std::string displayBytes(std::string_view bytes) {
    return displayText(wideFromUtf8(bytes));
}

std::string jsonString(std::wstring_view text) {
    std::string json = "\"";
    forEachCodePoint(utf16FromWide(text), [&json](std::uint32_t point) { appendForJson(point, json); });
    json += '"';
    return json;
}

} // namespace ktemplate
