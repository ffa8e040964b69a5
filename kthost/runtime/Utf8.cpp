#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <type_traits>

namespace kthost {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;
constexpr char32_t kFirstBeyondBasicPlane = 0x10000;
constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kFirstLowSurrogate = 0xDC00;
constexpr char32_t kLastSurrogate = 0xDFFF;
constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

struct Decoded {
    char32_t codePoint;
    std::size_t length; // in bytes or units; 0 for what is malformed
};

constexpr Decoded kMalformed{kReplacement, 0};

bool isSurrogate(char32_t codePoint) {
    return codePoint >= kFirstSurrogate && codePoint <= kLastSurrogate;
}

bool isLowSurrogate(char32_t codePoint) {
    return isSurrogate(codePoint) && codePoint >= kFirstLowSurrogate;
}

bool isHighSurrogate(char32_t codePoint) {
    return isSurrogate(codePoint) && codePoint < kFirstLowSurrogate;
}

char32_t joinSurrogates(char32_t high, char32_t low) {
    return kFirstBeyondBasicPlane + ((high - kFirstSurrogate) << 10U) + (low - kFirstLowSurrogate);
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The length that the first byte promises; 0 for a byte that can begin nothing.
std::size_t promisedLength(unsigned char first) {
    if (first < 0x80U) {
        return 1;
    }
    if (first < 0xC2U || first > 0xF4U) {
        return 0;
    }
    return first < 0xE0U ? 2 : first < 0xF0U ? 3 : 4;
}

// Overlong forms, surrogates and what lies beyond the last code point are not text.
bool isShortestForm(char32_t codePoint, std::size_t length) {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, kFirstBeyondBasicPlane};
    return codePoint >= kSmallest[length] && codePoint <= kLastCodePoint && !isSurrogate(codePoint);
}

Decoded decode(std::string_view bytes, std::size_t at) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const std::size_t length = promisedLength(first);
    if (length == 1) {
        return {first, 1};
    }
    if (length == 0 || length > bytes.size() - at) {
        return kMalformed;
    }
    char32_t codePoint = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(bytes[at + i])) {
            return kMalformed;
        }
        codePoint = codePoint << 6U | (static_cast<unsigned char>(bytes[at + i]) & 0x3FU);
    }
    return isShortestForm(codePoint, length) ? Decoded{codePoint, length} : kMalformed;
}

void appendWide(std::wstring& wide, char32_t codePoint) {
    if (kWideIsUtf16 && codePoint >= kFirstBeyondBasicPlane) {
        const char32_t offset = codePoint - kFirstBeyondBasicPlane;
        wide += static_cast<wchar_t>(kFirstSurrogate + (offset >> 10U));
        wide += static_cast<wchar_t>(kFirstLowSurrogate + (offset & 0x3FFU));
    } else {
        wide += static_cast<wchar_t>(codePoint);
    }
}

char32_t unitAt(std::wstring_view wide, std::size_t at) {
    using Unit = std::conditional_t<kWideIsUtf16, std::uint16_t, std::uint32_t>;
    return at < wide.size() ? static_cast<Unit>(wide[at]) : 0;
}

Decoded decodeWide(std::wstring_view wide, std::size_t at) {
    const char32_t unit = unitAt(wide, at);
    if (kWideIsUtf16 && isHighSurrogate(unit) && isLowSurrogate(unitAt(wide, at + 1))) {
        return {joinSurrogates(unit, unitAt(wide, at + 1)), 2};
    }
    return {unit > kLastCodePoint || isSurrogate(unit) ? kReplacement : unit, 1};
}

char continuation(char32_t codePoint, unsigned shift) {
    return static_cast<char>(0x80U | (codePoint >> shift & 0x3FU));
}

void appendUtf8(std::string& utf8, char32_t codePoint) {
    if (codePoint < 0x80U) {
        utf8 += static_cast<char>(codePoint);
    } else if (codePoint < 0x800U) {
        utf8 += {static_cast<char>(0xC0U | codePoint >> 6U), continuation(codePoint, 0)};
    } else if (codePoint < kFirstBeyondBasicPlane) {
        utf8 += {static_cast<char>(0xE0U | codePoint >> 12U), continuation(codePoint, 6),
                 continuation(codePoint, 0)};
    } else {
        utf8 += {static_cast<char>(0xF0U | codePoint >> 18U), continuation(codePoint, 12),
                 continuation(codePoint, 6), continuation(codePoint, 0)};
    }
}

} // namespace

std::size_t findMalformedUtf8(std::string_view bytes) noexcept {
    for (std::size_t at = 0; at < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        const std::size_t length = byte - 1U < 0x7FU ? 1 : byte == 0 ? 0 : decode(bytes, at).length;
        if (length == 0) {
            return at;
        }
        at += length;
    }
    return std::string_view::npos;
}

std::wstring toWide(std::string_view utf8) {
    std::wstring wide;
    wide.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const Decoded decoded = decode(utf8, at);
        appendWide(wide, decoded.codePoint);
        at += std::max<std::size_t>(decoded.length, 1);
    }
    return wide;
}

std::string toUtf8(std::wstring_view wide) {
    std::string utf8;
    utf8.reserve(wide.size());
    for (std::size_t at = 0; at < wide.size();) {
        const Decoded decoded = decodeWide(wide, at);
        appendUtf8(utf8, decoded.codePoint);
        at += decoded.length;
    }
    return utf8;
}

std::size_t countCodePoints(std::string_view utf8) noexcept {
    return utf8.size() - static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), isContinuation));
}

} // namespace kthost
