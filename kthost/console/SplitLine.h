#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kthost {

/// The words of a command line (UTF-8). Blanks separate them. Double quotes, anywhere in a word, hold blanks
/// and hash marks together; two double quotes inside them stand for one. A hash mark at the beginning of a
/// word makes the rest of the line a comment. A carriage return at the end is dropped. Throws CommandError
/// for quotes that are not closed and for text that is not UTF-8.
std::vector<std::wstring> splitLine(std::string_view line);

} // namespace kthost
