#pragma once

#include "Options.h"
#include "PartsTable.h"

#include <KtDbObjectId.h>

class KtApDocument;

namespace parts {

/// The table entity in which a drawing shows its own list.
class DrawnTable {
public:
    /// Draws a new table in model space, as part of the running command. Throws Refusal.
    DrawnTable(KtApDocument& document, const Position& position, const PartsTable& list);

    /// The reference that places the table.
    KtDbObjectId id() const { return id_; }

    /// The anonymous record that the table is drawn through.
    KtDbObjectId record() const { return record_; }

    /// False once the user has erased the table, until it is restored.
    bool isThere() const;
    /// Writes the cells that differ, and nothing when none does: what is written opens the table for modify,
    /// and whoever watches it hears of that. The user's undo steps stay what they were. Throws InUse, and
    /// Refusal when the table cannot be opened at all.
    void update(const PartsTable& list) const;
    /// True when every cell is as `update` would write it.
    bool shows(const PartsTable& list) const;

private:
    KtApDocument* document_;
    KtDbObjectId id_;
    KtDbObjectId record_;
};

} // namespace parts
