#pragma once

#include <string>
#include <typeinfo>

namespace kthost {

/// The name of a C++ type as people write it, as far as the compiler that built the host tells.
std::string readableTypeName(const std::type_info& type);

} // namespace kthost
