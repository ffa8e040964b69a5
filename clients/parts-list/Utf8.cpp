#include "Utf8.h"

#include <cstddef>
#include <cstdint>

namespace parts {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLast = 0x10FFFF;

bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// The character at `position`, which moves behind it. Wide characters are 2 bytes on some systems, so pairs
/// are joined on all of them.
char32_t nextCharacter(std::wstring_view text, std::size_t& position) {
    const auto unit = static_cast<char32_t>(text[position++]);
    if (isHighSurrogate(unit) && position < text.size() &&
        isLowSurrogate(static_cast<char32_t>(text[position]))) {
        const auto low = static_cast<char32_t>(text[position++]);
        return 0x10000 + ((unit - 0xD800) << 10U) + (low - 0xDC00);
    }
    return isHighSurrogate(unit) || isLowSurrogate(unit) || unit > kLast ? kReplacement : unit;
}

char tail(char32_t bits) {
    return static_cast<char>(0x80U | (bits & 0x3FU));
}

void appendUtf8(std::string& bytes, char32_t character) {
    if (character < 0x80) {
        bytes += static_cast<char>(character);
    } else if (character < 0x800) {
        bytes += static_cast<char>(0xC0U | (character >> 6U));
        bytes += tail(character);
    } else if (character < 0x10000) {
        bytes += static_cast<char>(0xE0U | (character >> 12U));
        bytes += tail(character >> 6U);
        bytes += tail(character);
    } else {
        bytes += static_cast<char>(0xF0U | (character >> 18U));
        bytes += tail(character >> 12U);
        bytes += tail(character >> 6U);
        bytes += tail(character);
    }
}

void appendWide(std::wstring& text, char32_t character) {
    if (sizeof(wchar_t) == 2 && character >= 0x10000) {
        text += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10U));
        text += static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FFU));
    } else {
        text += static_cast<wchar_t>(character);
    }
}

struct Lead {
    std::size_t tails;
    char32_t bits;
    char32_t least; // below it the sequence is longer than it need be
};

Lead readLead(unsigned char byte) {
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {3, byte & 0x07U, 0x10000};
    }
    if (byte >= 0xE0 && byte < 0xF0) {
        return {2, byte & 0x0FU, 0x800};
    }
    if (byte >= 0xC2 && byte < 0xE0) {
        return {1, byte & 0x1FU, 0x80};
    }
    return {0, byte < 0x80 ? byte : kReplacement, 0};
}

char32_t nextCharacter(std::string_view bytes, std::size_t& position) {
    const Lead lead = readLead(static_cast<unsigned char>(bytes[position++]));
    char32_t character = lead.bits;
    for (std::size_t tail = 0; tail < lead.tails; ++tail) {
        if (position == bytes.size() || (static_cast<unsigned char>(bytes[position]) & 0xC0U) != 0x80U) {
            return kReplacement;
        }
        character = (character << 6U) | (static_cast<unsigned char>(bytes[position++]) & 0x3FU);
    }
    const bool surrogate = isHighSurrogate(character) || isLowSurrogate(character);
    return character < lead.least || character > kLast || surrogate ? kReplacement : character;
}

} // namespace

std::string toUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        appendUtf8(bytes, nextCharacter(text, position));
    }
    return bytes;
}

std::wstring fromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t position = 0; position < bytes.size();) {
        appendWide(text, nextCharacter(bytes, position));
    }
    return text;
}

std::filesystem::path toPath(std::wstring_view text) {
    const std::string bytes = toUtf8(text);
    return {std::u8string(bytes.begin(), bytes.end())};
}

} // namespace parts
