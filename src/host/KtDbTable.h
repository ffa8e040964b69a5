#pragma once

#include <KtDbBlockReference.h>

#include <cstdint>

/// A table entity: a block reference whose definition is an anonymous record that the host draws from the
/// cells.
class KtDbTable : public KtDbBlockReference {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    virtual std::uint32_t rows() const = 0;
    virtual std::uint32_t columns() const = 0;
    /// Text of a cell; empty outside the table. Stays until the cell is changed.
    virtual const wchar_t* cell(std::uint32_t row, std::uint32_t column) const = 0;
    /// Texts that stay inside are kept. Needs the table open for write.
    virtual Orbx::ErrorStatus setSize(std::uint32_t rows, std::uint32_t columns) = 0;
    virtual Orbx::ErrorStatus setCell(std::uint32_t row, std::uint32_t column, const wchar_t* text) = 0;
};

/// Draws a new table in a container: an anonymous record "*T1", "*T2", ... and one reference to it, whose id
/// is given back. The container must not be open.
Orbx::ErrorStatus ktdbCreateTable(KtDbDatabase* database, KtDbObjectId container, const KtGePoint3d& position,
                                  std::uint32_t rows, std::uint32_t columns, KtDbObjectId& table);
