#pragma once

#include <string>
#include <string_view>

namespace kthost {

/// The text as it can stand in a line of output: line ends become "\n", other control characters, which a
/// terminal might obey, become "?".
std::string onOneLine(std::string_view text);

} // namespace kthost
