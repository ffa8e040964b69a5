#pragma once

#include "bench/harness/Column.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace bench {

/// What one column came to in one row.
struct Measured {
    std::vector<double> samples; ///< processor time of one pass, nanoseconds, a repetition each
    bool isCounted = false;      ///< whether the next two are known
    double allocations = 0;      ///< of one pass
    double bytesKept = 0;        ///< after one pass more than before it

    double median() const;
    /// Half the distance between the fastest and the slowest repetition, over the median.
    double spread() const;
};

/// One workload at one size, the columns side by side.
struct Figure {
    std::string family;
    std::string workload;
    std::string element;
    std::size_t size = 0;
    double elements = 0;
    std::array<Measured, kColumns.size()> columns;

    const Measured& of(Column column) const { return columns[static_cast<std::size_t>(column)]; }

    Measured& of(Column column) { return columns[static_cast<std::size_t>(column)]; }

    bool has(Column column) const { return !of(column).samples.empty(); }

    double timePerElement(Column column) const { return of(column).median() / elements; }

    /// Median over median. Empty where one of them was not measured, or took no time.
    std::optional<double> ratio(Column of, Column to) const;
    /// What the literal column takes beyond the limit, over what this one takes beyond it. Empty where one of
    /// them was not measured, or this one takes nothing beyond it.
    std::optional<double> bookkeepingRatio() const;
};

/// In the order in which they were begun.
using Figures = std::vector<Figure>;

/// Null when that was not measured.
const Figure* find(const Figures& figures, const std::string& workload, std::size_t size);

} // namespace bench
