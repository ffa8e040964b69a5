#include "DrawnTable.h"

#include "InUse.h"
#include "OpenObject.h"
#include "Refusal.h"

#include <ktdx/KtDxNotify.h>

#include <KtApDocument.h>
#include <KtDbDatabase.h>
#include <KtDbSymbolUtilities.h>
#include <KtDbTable.h>

#include <cstdint>
#include <limits>

namespace parts {

namespace {

/// Switches the keeping of undo steps off for as long as it lives.
class WithoutUndo {
public:
    explicit WithoutUndo(KtDbDatabase& database)
        : database_(database),
          before_(database.setUndoRecording(false)) {}

    WithoutUndo(const WithoutUndo&) = delete;
    WithoutUndo& operator=(const WithoutUndo&) = delete;

    ~WithoutUndo() { database_.setUndoRecording(before_); }

private:
    KtDbDatabase& database_;
    bool before_;
};

struct Size {
    std::uint32_t rows;
    std::uint32_t columns;

    bool operator==(const Size&) const = default;
};

/// The columns' names are the first row.
Size sizeOf(const PartsTable& list) {
    if (list.rows.size() >= std::numeric_limits<std::uint32_t>::max()) {
        throw Refusal(L"the list has more rows than a table can have");
    }
    return {static_cast<std::uint32_t>(list.rows.size() + 1),
            static_cast<std::uint32_t>(list.columns.size())};
}

const std::wstring& cellOf(const PartsTable& list, std::uint32_t row, std::uint32_t column) {
    return row == 0 ? list.columns[column] : list.rows[row - 1].cells[column];
}

/// Calls `differs(row, column)` for each cell whose text is not the list's, until one gives false.
template <typename Differs>
bool compareCells(const KtDbTable& table, const PartsTable& list, Differs&& differs) {
    const Size size = sizeOf(list);
    for (std::uint32_t row = 0; row < size.rows; ++row) {
        for (std::uint32_t column = 0; column < size.columns; ++column) {
            if (cellOf(list, row, column) != table.cell(row, column) && !differs(row, column)) {
                return false;
            }
        }
    }
    return true;
}

void require(Orbx::ErrorStatus status, const wchar_t* what) {
    if (status != Orbx::eOk) {
        throw Refusal(std::wstring(what) + L" (status " + std::to_wstring(status) + L")");
    }
}

/// Even to be compared, it is opened to be written in the end.
void requireOpen(KtDbObjectId id, Orbx::ErrorStatus status) {
    if (isInUse(status)) {
        throw InUse(id, KtDb::kForWrite);
    }
    require(status, L"the table cannot be opened");
}

void write(KtDbTable& table, const PartsTable& list) {
    const Size size = sizeOf(list);
    if (size != Size{table.rows(), table.columns()}) {
        require(table.setSize(size.rows, size.columns), L"the table cannot be resized");
    }
    compareCells(table, list, [&](std::uint32_t row, std::uint32_t column) {
        require(table.setCell(row, column, cellOf(list, row, column).c_str()),
                L"the table cannot be written");
        return true;
    });
}

void openAndWrite(KtDbObjectId id, const PartsTable& list) {
    const OpenObject<KtDbTable> table(id, KtDb::kForWrite);
    requireOpen(id, table.status());
    write(*table.get(), list);
}

} // namespace

DrawnTable::DrawnTable(KtApDocument& document, const Position& position, const PartsTable& list)
    : document_(&document) {
    KtDbDatabase* database = document.database();
    const KtDbObjectId modelSpace = KtDbSymbolUtilities::servicesPtr()->blockModelSpaceId(database);
    const Size size = sizeOf(list);
    require(
        ktdbCreateTable(database, modelSpace, {position.x, position.y, 0.0}, size.rows, size.columns, id_),
        L"the table cannot be drawn");
    openAndWrite(id_, list);
    record_ = OpenObject<KtDbTable>(id_)->blockTableRecord();
}

bool DrawnTable::isThere() const {
    KtArray<KtDbObjectId> tables;
    return ktdxGetKtDbTableIds(document_, &tables) != 0 && tables.contains(id_);
}

void DrawnTable::update(const PartsTable& list) const {
    if (!shows(list)) {
        const WithoutUndo scope(*document_->database());
        openAndWrite(id_, list);
    }
}

bool DrawnTable::shows(const PartsTable& list) const {
    const OpenObject<KtDbTable> table(id_);
    requireOpen(id_, table.status());
    return sizeOf(list) == Size{table->rows(), table->columns()} &&
           compareCells(*table.get(), list, [](std::uint32_t, std::uint32_t) { return false; });
}

} // namespace parts
