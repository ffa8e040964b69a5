#pragma once

#include <WindowSystem.h>

#include <string_view>
#include <vector>

namespace kthost {

/// The libraries and the program that are in memory, as far as they are linked against the library that this
/// function lies in.
std::vector<HMODULE> imagesLinkedAgainstHost();

/// Has a library or program call `replacement` where it is linked to call a function of that name of another
/// library. Nothing happens where it does not import one.
void redirectImport(HMODULE image, std::string_view name, const void* replacement);

} // namespace kthost
