#pragma once

#include <string_view>

namespace kthost {

class Session;

/// Does what a line (UTF-8) says. Throws CommandError when it cannot be done.
void performLine(Session& session, std::string_view line);

} // namespace kthost
