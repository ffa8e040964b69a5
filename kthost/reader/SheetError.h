#pragma once

#include "kthost/reader/Design.h"

#include <cstddef>
#include <string>

namespace kthost {

/// Throws a ReadError that points at the file name of a sheet on a sheet. `found` begins what was found, the
/// file name follows.
[[noreturn]] void failAtSheet(const SheetFile& file, std::size_t sheet, std::string expected,
                              const std::string& found = {});

} // namespace kthost
