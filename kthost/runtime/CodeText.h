#pragma once

#include <string>

namespace kthost {

/// How reports and traces name an address: the library that it lies in and the offset there, such as
/// "PartsList.kmx+0x2a10", which stays the same from run to run. Says so when the module has been unloaded.
std::string codeText(const void* address);

} // namespace kthost
