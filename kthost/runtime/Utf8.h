#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text is UTF-8 in files and wide in the host: UTF-32 where wchar_t has four bytes, UTF-16 where it has two.
namespace kthost {

/// Where the first byte lies that is not part of well-formed UTF-8 text, or npos. A zero byte counts as
/// malformed: no text file holds one, and much of what text is later passed to would end at it.
std::size_t findMalformedUtf8(std::string_view bytes) noexcept;

/// Malformed bytes become U+FFFD, one for each.
std::wstring toWide(std::string_view utf8);

/// What is not a code point becomes U+FFFD, lone surrogates included.
std::string toUtf8(std::wstring_view wide);

/// The number of code points in well-formed text.
std::size_t countCodePoints(std::string_view utf8) noexcept;

} // namespace kthost
