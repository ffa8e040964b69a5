#include "TableDiff.h"

#include <string_view>
#include <unordered_map>

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

Index indexRows(const PartsTable& table) {
    Index rows;
    rows.reserve(table.rows.size());
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        rows.try_emplace(table.rows[row].key, row);
    }
    return rows;
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

} // namespace

TableDiff compareTables(const PartsTable& before, const PartsTable& after) {
    const Index earlierRows = indexRows(before);
    const std::vector<std::size_t> inBefore = findColumns(after, before);
    const std::vector<std::size_t> inAfter = findColumns(before, after);
    TableDiff diff{.rows = after.rows.size()};
    std::size_t kept = 0;
    for (const Row& row : after.rows) {
        const auto found = earlierRows.find(row.key);
        if (found == earlierRows.end()) {
            ++diff.added;
            continue;
        }
        ++kept;
        const Row& earlier = before.rows[found->second];
        if (!agree(row, earlier, inBefore) || !agree(earlier, row, inAfter)) {
            ++diff.changed;
        }
    }
    diff.removed = before.rows.size() - kept;
    return diff;
}

} // namespace parts
