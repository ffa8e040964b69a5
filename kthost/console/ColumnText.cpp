#include "kthost/console/ColumnText.h"

#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <cstddef>

namespace kthost {

namespace {

std::vector<std::size_t> measure(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths(rows.empty() ? 0 : rows.front().size());
    for (const auto& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], countCodePoints(row[column]));
        }
    }
    return widths;
}

std::string align(const std::vector<std::string>& row, const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
        line += row[column];
        line.append(widths[column] - countCodePoints(row[column]) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

} // namespace

std::vector<std::string> alignColumns(const std::vector<std::vector<std::string>>& rows) {
    const std::vector<std::size_t> widths = measure(rows);
    std::vector<std::string> lines;
    lines.reserve(rows.size());
    for (const auto& row : rows) {
        lines.push_back(align(row, widths));
    }
    return lines;
}

} // namespace kthost
