#pragma once

#include "PartsTable.h"

#include <cstddef>

namespace parts {

struct TableDiff {
    std::size_t rows = 0; ///< in the later table
    std::size_t added = 0;
    std::size_t changed = 0;
    std::size_t removed = 0;

    bool isEmpty() const { return added + changed + removed == 0; }

    bool operator==(const TableDiff&) const = default;
};

/// Rows are matched by key and their cells by the column's name. A column that one of the tables lacks counts
/// as empty there, so an attribute that appears on one reference changes one row and not all of them. Takes
/// time proportional to the two tables.
TableDiff compareTables(const PartsTable& before, const PartsTable& after);

} // namespace parts
