#include "kthost/database/Table.h"

#include "kthost/database/Changes.h"

#include <algorithm>

namespace kthost {

const wchar_t* Table::cell(std::uint32_t row, std::uint32_t column) const {
    return holds(row, column) ? state_->cells[indexOf(row, column)].c_str() : L"";
}

Orbx::ErrorStatus Table::setSize(std::uint32_t rows, std::uint32_t columns) {
    if (std::uint64_t{rows} * columns > kMaxCells) {
        return Orbx::eInvalidInput;
    }
    if (const Orbx::ErrorStatus status = beginStateChange(objectId()); status != Orbx::eOk) {
        return status;
    }
    std::vector<std::wstring> cells(std::size_t{rows} * columns);
    for (std::uint32_t row = 0; row < std::min(rows, state_->rows); ++row) {
        for (std::uint32_t column = 0; column < std::min(columns, state_->columns); ++column) {
            cells[std::size_t{row} * columns + column] = std::move(state_->cells[indexOf(row, column)]);
        }
    }
    state_->cells = std::move(cells);
    state_->rows = rows;
    state_->columns = columns;
    return Orbx::eOk;
}

Orbx::ErrorStatus Table::setCell(std::uint32_t row, std::uint32_t column, const wchar_t* text) {
    if (text == nullptr) {
        return Orbx::eInvalidInput;
    }
    if (!holds(row, column)) {
        return Orbx::eOutOfRange;
    }
    const Orbx::ErrorStatus status = beginStateChange(objectId());
    if (status == Orbx::eOk) {
        state_->cells[indexOf(row, column)] = text;
    }
    return status;
}

Orbx::ErrorStatus Table::setPosition(const KtGePoint3d& position) {
    const Orbx::ErrorStatus status = beginStateChange(objectId());
    if (status == Orbx::eOk) {
        state_->position = position;
    }
    return status;
}

} // namespace kthost
