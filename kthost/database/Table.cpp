#include "kthost/database/Table.h"

#include "kthost/database/Changes.h"

#include <algorithm>

namespace kthost {

Table::Table(KtDbObjectId definition, const KtGePoint3d& position, std::uint32_t rows, std::uint32_t columns)
    : ReferenceObject(definition, position),
      rows_(rows),
      columns_(columns),
      cells_(std::size_t{rows} * columns) {}

const wchar_t* Table::cell(std::uint32_t row, std::uint32_t column) const {
    return holds(row, column) ? cells_[indexOf(row, column)].c_str() : L"";
}

Orbx::ErrorStatus Table::setSize(std::uint32_t rows, std::uint32_t columns) {
    if (std::uint64_t{rows} * columns > kMaxCells) {
        return Orbx::eInvalidInput;
    }
    if (const Orbx::ErrorStatus status = beginStateChange(objectId()); status != Orbx::eOk) {
        return status;
    }
    std::vector<std::wstring> cells(std::size_t{rows} * columns);
    for (std::uint32_t row = 0; row < std::min(rows, rows_); ++row) {
        for (std::uint32_t column = 0; column < std::min(columns, columns_); ++column) {
            cells[std::size_t{row} * columns + column] = std::move(cells_[indexOf(row, column)]);
        }
    }
    cells_ = std::move(cells);
    rows_ = rows;
    columns_ = columns;
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
        cells_[indexOf(row, column)] = text;
    }
    return status;
}

ObjectState Table::state() const {
    return TableState{position(), rows_, columns_, cells_};
}

void Table::exchangeState(ObjectState& state) {
    auto& other = std::get<TableState>(state);
    exchangePosition(other.position);
    std::swap(rows_, other.rows);
    std::swap(columns_, other.columns);
    cells_.swap(other.cells);
}

} // namespace kthost
