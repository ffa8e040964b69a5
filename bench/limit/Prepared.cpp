#include "bench/limit/Prepared.h"

#include "kthost/database/DatabaseQueries.h"

#include <algorithm>

namespace bench::limit {

namespace {

PreparedRecord prepareRecord(KtDbObjectId id, bool isLayout) {
    PreparedRecord record;
    record.id = id;
    record.isLayout = isLayout;
    record.references = kthost::referencesTo(id);
    for (const KtDbObjectId reference : record.references) {
        record.containers.push_back(kthost::ownerOf(reference));
    }
    std::sort(record.containers.begin(), record.containers.end());
    record.containers.erase(std::unique(record.containers.begin(), record.containers.end()),
                            record.containers.end());
    return record;
}

} // namespace

std::vector<PreparedRecord> prepareRecords(const kthost::Database& database) {
    std::vector<PreparedRecord> records;
    for (const bool layouts : {false, true}) {
        for (const KtDbObjectId id : kthost::records(database, layouts)) {
            records.push_back(prepareRecord(id, layouts));
        }
    }
    std::sort(records.begin(), records.end(),
              [](const auto& left, const auto& right) { return left.id < right.id; });
    return records;
}

std::vector<Gone> prepareGone(const std::vector<KtDbObjectId>& references) {
    std::vector<Gone> gone;
    gone.reserve(references.size());
    for (const KtDbObjectId reference : references) {
        gone.push_back({kthost::definitionOf(reference), reference});
    }
    return gone;
}

} // namespace bench::limit
