#pragma once

#include <string>
#include <string_view>

namespace ktemplate {

/// Text of UTF-8 as wide text. A byte that is no text becomes U+FFFD.
std::wstring wideFromUtf8(std::string_view utf8);

/// Wide text for a terminal: UTF-8, with what a terminal would obey or hide (control characters, surrogates
/// without their other half) spelled out as \u{...}, and with backslashes doubled.
std::string displayText(std::wstring_view text);

/// The same for bytes that somebody else has chosen and that need not be text.
std::string displayBytes(std::string_view bytes);

/// A JSON string, quotes included. A surrogate without its other half becomes an escape, which is JSON by its
/// grammar; not every program reads it.
std::string jsonString(std::wstring_view text);

} // namespace ktemplate
