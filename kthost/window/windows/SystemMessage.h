#pragma once

#include <WindowSystem.h>

#include <string>

namespace kthost {

/// The system's words for one of its error codes, in UTF-8 and without a line break.
std::string systemMessage(DWORD code);

} // namespace kthost
