#pragma once

#include "kthost/database/ObjectState.h"
#include "kthost/database/ReferenceObject.h"

#include <KtDbTable.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace kthost {

class Table final : public ReferenceObject<KtDbTable> {
public:
    Table(KtDbObjectId definition, TableState state)
        : ReferenceObject(definition),
          state_(std::make_unique<TableState>(std::move(state))) {}

    KtGePoint3d position() const override { return state_->position; }

    /// Has to be open for write.
    Orbx::ErrorStatus setPosition(const KtGePoint3d& position);

    std::uint32_t rows() const override { return state_->rows; }

    std::uint32_t columns() const override { return state_->columns; }

    const wchar_t* cell(std::uint32_t row, std::uint32_t column) const override;
    /// eInvalidInput for a size of more than kMaxCells cells.
    Orbx::ErrorStatus setSize(std::uint32_t rows, std::uint32_t columns) override;
    /// eOutOfRange outside the table; eInvalidInput for a null text.
    Orbx::ErrorStatus setCell(std::uint32_t row, std::uint32_t column, const wchar_t* text) override;

    ObjectState state() const { return *state_; }

    void exchangeState(ObjectState& state) { std::swap(*state_, std::get<TableState>(state)); }

    static constexpr std::uint64_t kMaxCells = std::uint64_t{1} << 26U; // two gigabytes of empty cells

private:
    bool holds(std::uint32_t row, std::uint32_t column) const { return row < rows() && column < columns(); }

    std::size_t indexOf(std::uint32_t row, std::uint32_t column) const {
        return std::size_t{row} * columns() + column;
    }

    std::unique_ptr<TableState> state_; // there are few tables, and it is large
};

} // namespace kthost
