#pragma once

#include <locale>
#include <string>
#include <string_view>

/// Text in the 8-bit encoding of a locale, as wide text. It never fails: a byte that is not text in that
/// encoding becomes the character of the byte's own value (U+0080 to U+00FF). So different bytes stay
/// different, and a Western European file read under another encoding comes out right.
std::wstring wideFromCodePage(std::string_view bytes, const std::locale& locale);
