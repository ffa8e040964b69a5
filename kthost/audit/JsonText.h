#pragma once

#include <string>
#include <string_view>

namespace kthost {

/// Appends a JSON string with its quotes. Control characters and surrogates that stand alone are escaped, so
/// the result is UTF-8 on one line whatever the text holds.
void appendJson(std::string& line, std::wstring_view text);
/// The same for UTF-8; malformed bytes become U+FFFD.
void appendJson(std::string& line, std::string_view utf8);

} // namespace kthost
