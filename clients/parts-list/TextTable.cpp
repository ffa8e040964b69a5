#include "TextTable.h"

#include <algorithm>
#include <cstddef>

namespace parts {

namespace {

constexpr std::size_t kWidest = 32;

/// False for the second half of a character that takes two units where text is UTF-16.
bool beginsCharacter(wchar_t unit) {
    return sizeof unit > 2 || unit < 0xDC00 || unit > 0xDFFF;
}

std::size_t countCharacters(const std::wstring& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

/// The first `count` characters of a text that has more.
std::wstring firstCharacters(const std::wstring& text, std::size_t count) {
    std::size_t end = 0;
    for (; count > 0 || !beginsCharacter(text[end]); ++end) {
        count -= beginsCharacter(text[end]) ? 1U : 0U;
    }
    return text.substr(0, end);
}

std::wstring shorten(const std::wstring& cell) {
    std::wstring text = countCharacters(cell) > kWidest ? firstCharacters(cell, kWidest - 1) + L"…" : cell;
    std::replace_if(
        text.begin(), text.end(), [](wchar_t character) { return character < L' '; }, L' ');
    return text;
}

std::vector<std::wstring> shorten(const std::vector<std::wstring>& cells) {
    std::vector<std::wstring> texts(cells.size());
    std::transform(cells.begin(), cells.end(), texts.begin(),
                   [](const std::wstring& cell) { return shorten(cell); });
    return texts;
}

std::vector<std::size_t> measure(const std::vector<std::vector<std::wstring>>& lines) {
    std::vector<std::size_t> widths(lines.front().size());
    for (const auto& line : lines) {
        for (std::size_t column = 0; column < line.size(); ++column) {
            widths[column] = std::max(widths[column], countCharacters(line[column]));
        }
    }
    return widths;
}

std::wstring join(const std::vector<std::wstring>& cells, const std::vector<std::size_t>& widths) {
    std::wstring line;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        line += cells[column];
        line.append(widths[column] - countCharacters(cells[column]) + 2, L' ');
    }
    line.erase(line.find_last_not_of(L' ') + 1);
    return line;
}

} // namespace

std::vector<std::wstring> toLines(const PartsTable& table) {
    std::vector<std::vector<std::wstring>> cells{shorten(table.columns)};
    cells.reserve(table.rows.size() + 1);
    for (const Row& row : table.rows) {
        cells.push_back(shorten(row.cells));
    }
    const std::vector<std::size_t> widths = measure(cells);
    std::vector<std::wstring> lines;
    lines.reserve(cells.size());
    for (const auto& line : cells) {
        lines.push_back(join(line, widths));
    }
    return lines;
}

} // namespace parts
