#pragma once

#include "PartsTable.h"

#include <string>

namespace parts {

/// The table in the comma-separated form of RFC 4180: a header line, lines that end in CR LF, fields quoted
/// where they hold a comma, a quote or a line end. UTF-8 without a byte-order mark.
std::string toCsv(const PartsTable& table);

} // namespace parts
