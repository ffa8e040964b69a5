#include "legacy/Utf16.h"

namespace {

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;
constexpr std::uint32_t kFirstOfPlanes = 0x10000;
constexpr std::uint32_t kLastCodePoint = 0x10FFFF;
constexpr std::uint32_t kHalfBits = 10;
constexpr std::uint32_t kHalfMask = 0x3FF;
constexpr unsigned kFirstOfUpperHalf = 0x8000;
constexpr std::uint16_t kFirstHigh = 0xD800;
constexpr std::uint16_t kFirstLow = 0xDC00;
constexpr char16_t kReplacement = 0xFFFD;

constexpr bool isHigh(std::uint16_t unit) {
    return unit >= kFirstHigh && unit < kFirstLow;
}

constexpr bool isLow(std::uint16_t unit) {
    return unit >= kFirstLow && unit <= (kFirstLow | kHalfMask);
}

constexpr wchar_t joined(std::uint16_t high, std::uint16_t low) {
    return static_cast<wchar_t>(kFirstOfPlanes + ((high & kHalfMask) << kHalfBits) + (low & kHalfMask));
}

void appendCodePoint(std::uint32_t point, std::u16string& units) {
    if (point < kFirstOfPlanes) {
        units.push_back(static_cast<char16_t>(point));
    } else if (point <= kLastCodePoint) {
        const std::uint32_t offset = point - kFirstOfPlanes;
        units.push_back(static_cast<char16_t>(kFirstHigh | (offset >> kHalfBits)));
        units.push_back(static_cast<char16_t>(kFirstLow | (offset & kHalfMask)));
    } else {
        units.push_back(kReplacement);
    }
}

} // namespace

std::u16string utf16FromWide(std::wstring_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (const wchar_t character : text) {
        appendCodePoint(static_cast<std::uint32_t>(character), units);
    }
    return units;
}

bool widenLower(std::span<const unsigned char> bytes, wchar_t* to) {
    unsigned seen = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto unit = static_cast<std::uint16_t>(bytes[i] | (bytes[i + 1] << 8));
        seen |= unit;
        to[i / 2] = static_cast<wchar_t>(unit);
    }
    return seen < kFirstOfUpperHalf;
}

void Utf16Decoder::append(std::span<const unsigned char> bytes, std::wstring& text) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        appendUnit(static_cast<std::uint16_t>(bytes[i] | (bytes[i + 1] << 8)), text);
    }
}

void Utf16Decoder::appendUnit(std::uint16_t unit, std::wstring& text) {
    if (high_ != 0 && isLow(unit)) {
        text.push_back(joined(high_, unit));
        high_ = 0;
        return;
    }
    finish(text);
    if (!kWideIsUtf16 && isHigh(unit)) {
        high_ = unit;
    } else {
        text.push_back(static_cast<wchar_t>(unit));
    }
}

void Utf16Decoder::finish(std::wstring& text) {
    if (high_ != 0) {
        text.push_back(static_cast<wchar_t>(high_));
        high_ = 0;
    }
}
