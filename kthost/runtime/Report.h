#pragma once

#include <string_view>

namespace kthost {

/// Tells people, on standard error, of something that went wrong in a module and that the host survived. One
/// line, UTF-8.
void report(std::string_view line);

} // namespace kthost
