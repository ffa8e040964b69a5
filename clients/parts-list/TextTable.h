#pragma once

#include "PartsTable.h"

#include <string>
#include <vector>

namespace parts {

/// The table as lines of aligned columns for a console, the columns' names first. Cells are cut to 32
/// characters and lose their line ends; the file has them whole.
std::vector<std::wstring> toLines(const PartsTable& table);

} // namespace parts
