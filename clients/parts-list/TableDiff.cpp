#include "TableDiff.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace parts {

namespace {

using Index = std::unordered_map<std::wstring_view, std::size_t>;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

Index indexColumns(const PartsTable& table) {
    Index columns;
    columns.reserve(table.columns.size());
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        columns.try_emplace(table.columns[column], column);
    }
    return columns;
}

/// For each column of `of`: where `in` has it, or kNone.
std::vector<std::size_t> findColumns(const PartsTable& of, const PartsTable& in) {
    const Index index = indexColumns(in);
    std::vector<std::size_t> places(of.columns.size(), kNone);
    for (std::size_t column = 0; column < places.size(); ++column) {
        const auto found = index.find(of.columns[column]);
        places[column] = found == index.end() ? kNone : found->second;
    }
    return places;
}

bool agree(const Row& row, const Row& other, const std::vector<std::size_t>& places) {
    for (std::size_t column = 0; column < row.cells.size(); ++column) {
        const std::size_t place = places[column];
        if (place == kNone ? !row.cells[column].empty() : row.cells[column] != other.cells[place]) {
            return false;
        }
    }
    return true;
}

using Rows = std::span<const Row>;

Index indexRows(Rows rows) {
    Index index;
    index.reserve(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        index.try_emplace(rows[row].key, row);
    }
    return index;
}

/// Tells the differences of two tables' rows.
class RowDiff {
public:
    RowDiff(const PartsTable& before, const PartsTable& after)
        : hasSameColumns_(before.columns == after.columns),
          inBefore_(findColumns(after, before)),
          inAfter_(findColumns(before, after)) {}

    /// Takes the first rows of both as long as they have the same keys; gives their number.
    std::size_t addCommonFirst(Rows before, Rows after) {
        const std::size_t most = std::min(before.size(), after.size());
        std::size_t row = 0;
        for (; row < most && before[row].key == after[row].key; ++row) {
            compare(before[row], after[row]);
        }
        return row;
    }

    /// The same for the last ones.
    std::size_t addCommonLast(Rows before, Rows after) {
        const std::size_t most = std::min(before.size(), after.size());
        std::size_t rows = 0;
        for (; rows < most; ++rows) {
            const Row& earlier = before[before.size() - 1 - rows];
            const Row& row = after[after.size() - 1 - rows];
            if (earlier.key != row.key) {
                break;
            }
            compare(earlier, row);
        }
        return rows;
    }

    void add(Rows before, Rows after) {
        const Index earlier = indexRows(before);
        std::size_t kept = 0;
        for (const Row& row : after) {
            const auto found = earlier.find(row.key);
            if (found == earlier.end()) {
                ++diff_.added;
                continue;
            }
            ++kept;
            compare(before[found->second], row);
        }
        diff_.removed += before.size() - kept;
    }

    const TableDiff& diff() const { return diff_; }

private:
    void compare(const Row& earlier, const Row& row) {
        const bool isSame = hasSameColumns_ ? earlier.cells == row.cells
                                            : agree(row, earlier, inBefore_) && agree(earlier, row, inAfter_);
        if (!isSame) {
            ++diff_.changed;
        }
    }

    bool hasSameColumns_;
    std::vector<std::size_t> inBefore_;
    std::vector<std::size_t> inAfter_;
    TableDiff diff_;
};

} // namespace

/// Most rows keep their places between those that come and go, and need not be looked for.
TableDiff compareTables(const PartsTable& before, const PartsTable& after) {
    RowDiff rows(before, after);
    Rows earlier = before.rows;
    Rows later = after.rows;
    const std::size_t first = rows.addCommonFirst(earlier, later);
    earlier = earlier.subspan(first);
    later = later.subspan(first);
    const std::size_t last = rows.addCommonLast(earlier, later);
    rows.add(earlier.first(earlier.size() - last), later.first(later.size() - last));
    TableDiff diff = rows.diff();
    diff.rows = after.rows.size();
    return diff;
}

} // namespace parts
