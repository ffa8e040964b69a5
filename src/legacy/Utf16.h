#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Between the UTF-16 of the file and the wide text of this platform: the same code units where wchar_t has
/// two bytes, code points where it has four. A surrogate without its other half stays what it is, as a
/// wchar_t of its own value, and is written as that again. UTF-16 cannot tell two adjacent halves from the
/// character that they make up, so where wchar_t has four bytes, a high one followed by a low one is read
/// back as that one character.

/// A wchar_t that is no Unicode value at all (above U+10FFFF) becomes U+FFFD.
std::u16string utf16FromWide(std::wstring_view text);

/// Whole little-endian code units as as many characters, where that is easily done: false, and what `to` has
/// got is worth nothing, when one of them is U+8000 or above, as surrogates are.
bool widenLower(std::span<const unsigned char> bytes, wchar_t* to);

/// Takes the file's little-endian code units piece by piece, since a pair may lie across two pieces.
class Utf16Decoder {
public:
    /// `bytes` holds whole code units.
    void append(std::span<const unsigned char> bytes, std::wstring& text);
    /// No more is coming.
    void finish(std::wstring& text);

private:
    void appendUnit(std::uint16_t unit, std::wstring& text);

    std::uint16_t high_ = 0; ///< the half that waits for the other one; 0 for none
};
