#pragma once

#include "kthost/database/Database.h"

#include <KtDbObjectId.h>

#include <vector>

namespace bench::limit {

/// What a monitor would have recorded of one block table record.
struct PreparedRecord {
    KtDbObjectId id;
    bool isLayout = false;
    std::vector<KtDbObjectId> references; ///< ascending
    std::vector<KtDbObjectId> containers; ///< ascending, each once
};

/// All records in table order, without opening anything.
std::vector<PreparedRecord> prepareRecords(const kthost::Database& database);

/// A released reference and the definition that it had.
struct Gone {
    KtDbObjectId definition;
    KtDbObjectId reference;
};

/// To be asked while they are still there.
std::vector<Gone> prepareGone(const std::vector<KtDbObjectId>& references);

} // namespace bench::limit
