#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kthost {

/// The lines of comma-separated text (RFC 4180), each split into its fields.
std::vector<std::vector<std::string>> readCsv(std::string_view csv);

} // namespace kthost
