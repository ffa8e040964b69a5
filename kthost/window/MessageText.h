#pragma once

#include <WindowSystem.h>

#include <string>

namespace kthost {

/// How a trace names a message: by the name that it was registered under, otherwise by its number.
std::wstring messageText(UINT message);

} // namespace kthost
