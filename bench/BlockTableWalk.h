#pragma once

#include "bench/Opened.h"

#include <KtDbBlockTable.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbDatabase.h>

#include <memory>
#include <tuple>

namespace bench {

/// Calls `visit` with each living record that can be opened for reading, in table order, until one visit
/// gives false.
template <class Visit>
void walkBlockTable(const KtDbDatabase& database, Visit visit) {
    const Opened<KtDbBlockTable> table(database.blockTableId(), KtDb::kForRead);
    KtDbBlockTableIterator* made = nullptr;
    if (!table || table->newIterator(made) != Orbx::eOk) {
        return;
    }
    const std::unique_ptr<KtDbBlockTableIterator> records(made);
    for (records->start(true, true); !records->done(); records->step(true, true)) {
        KtDbObjectId id;
        std::ignore = records->getRecordId(id); // the null id does not open
        const Opened<KtDbBlockTableRecord> record(id, KtDb::kForRead);
        if (record && !visit(*record.get())) {
            return;
        }
    }
}

} // namespace bench
