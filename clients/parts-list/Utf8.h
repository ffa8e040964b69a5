#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace parts {

/// What is not a character (a lone surrogate, a value beyond the last plane) becomes U+FFFD: files are always
/// valid UTF-8.
std::string toUtf8(std::wstring_view text);
/// For system messages, which come in bytes. What is not UTF-8 becomes U+FFFD.
std::wstring fromUtf8(std::string_view bytes);
std::filesystem::path toPath(std::wstring_view text);

} // namespace parts
