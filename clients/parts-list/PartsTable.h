#pragma once

#include <string>
#include <vector>

namespace parts {

struct Row {
    /// What stays the same when the row's texts change; never shown. No two rows of a table share one.
    std::wstring key;
    std::vector<std::wstring> cells; ///< one for each column of the table

    bool operator==(const Row&) const = default;
};

/// What was extracted, as it is written.
struct PartsTable {
    std::vector<std::wstring> columns;
    std::vector<Row> rows;

    bool operator==(const PartsTable&) const = default;
};

} // namespace parts
