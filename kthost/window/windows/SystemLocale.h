#pragma once

#include <WindowSystem.h>

#include <locale>

namespace kthost {

/// The system's order of texts and its lower case, with one of its encodings of 8-bit text. The standard
/// library here knows none of them under any locale's name.
std::locale systemLocale(UINT codePage);

} // namespace kthost
