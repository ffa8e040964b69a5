#pragma once

#include <string>
#include <vector>

namespace kthost {

/// Rows of cells (UTF-8) as lines of aligned columns, two blanks apart, without blanks at their ends. All
/// rows have as many cells as the first.
std::vector<std::string> alignColumns(const std::vector<std::vector<std::string>>& rows);

} // namespace kthost
