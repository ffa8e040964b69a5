#pragma once

#include "kthost/database/ReferenceObject.h"

#include <KtDbTable.h>

#include <string>
#include <vector>

namespace kthost {

class Table final : public ReferenceObject<KtDbTable> {
public:
    Table(KtDbObjectId definition, const KtGePoint3d& position, std::uint32_t rows, std::uint32_t columns);

    std::uint32_t rows() const override { return rows_; }

    std::uint32_t columns() const override { return columns_; }

    const wchar_t* cell(std::uint32_t row, std::uint32_t column) const override;
    /// eInvalidInput for a size of more than kMaxCells cells.
    Orbx::ErrorStatus setSize(std::uint32_t rows, std::uint32_t columns) override;
    /// eOutOfRange outside the table; eInvalidInput for a null text.
    Orbx::ErrorStatus setCell(std::uint32_t row, std::uint32_t column, const wchar_t* text) override;

    ObjectState state() const;
    void exchangeState(ObjectState& state);

    static constexpr std::uint64_t kMaxCells = std::uint64_t{1} << 26U; // two gigabytes of empty cells

private:
    bool holds(std::uint32_t row, std::uint32_t column) const { return row < rows_ && column < columns_; }

    std::size_t indexOf(std::uint32_t row, std::uint32_t column) const {
        return std::size_t{row} * columns_ + column;
    }

    std::uint32_t rows_;
    std::uint32_t columns_;
    std::vector<std::wstring> cells_; // row by row
};

} // namespace kthost
