#include "DrawingIds.h"

#include "ReadObject.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbBlockTable.h>
#include <KtDbDatabase.h>
#include <KtRxClass.h>

#include <memory>
#include <unordered_set>

namespace parts {

namespace {

const KtDbBlockRepresentation* representationProtocol() {
    KtRxObject* extension = KtDbBlockReference::desc()->queryX(KtDbBlockRepresentation::desc());
    return extension != nullptr && extension->isKindOf(KtDbBlockRepresentation::desc())
               ? static_cast<const KtDbBlockRepresentation*>(extension)
               : nullptr;
}

KtArray<KtDbObjectId> representationsOf(const KtDbBlockRepresentation* protocol, KtDbObjectId definition) {
    KtArray<KtDbObjectId> ids;
    if (protocol != nullptr && protocol->getRepresentations(definition, ids) != Orbx::eOk) {
        ids.setLogicalLengthZero(); // not a dynamic definition
    }
    return ids;
}

template <typename Visit>
void forEachRecord(const KtDbDatabase& database, Visit visit) {
    const ReadObject<KtDbBlockTable> table(database.blockTableId());
    KtDbBlockTableIterator* walk = nullptr;
    if (!table || table->newIterator(walk) != Orbx::eOk) {
        return;
    }
    const std::unique_ptr<KtDbBlockTableIterator> owned(walk);
    for (; !walk->done(); walk->step()) {
        KtDbObjectId record;
        if (walk->getRecordId(record) == Orbx::eOk) {
            visit(record);
        }
    }
}

} // namespace

std::vector<KtDbObjectId> listRecords(const KtDbDatabase& database) {
    std::vector<KtDbObjectId> records;
    forEachRecord(database, [&](KtDbObjectId record) { records.push_back(record); });
    return records;
}

bool hasRecords(const KtDbDatabase& database, const std::vector<KtDbObjectId>& records) {
    auto expected = records.begin();
    bool areSame = true;
    forEachRecord(database, [&](KtDbObjectId record) {
        areSame = areSame && expected != records.end() && *expected++ == record;
    });
    return areSame && expected == records.end();
}

KtDbObjectId findRecord(const KtDbDatabase& database, const std::wstring& name) {
    KtDbObjectId record;
    const ReadObject<KtDbBlockTable> table(database.blockTableId());
    if (!table || table->getIdAt(name.c_str(), record) != Orbx::eOk) {
        return {};
    }
    return record;
}

std::vector<KtDbObjectId> withRepresentations(const std::vector<KtDbObjectId>& definitions) {
    const KtDbBlockRepresentation* protocol = representationProtocol();
    std::vector<KtDbObjectId> records;
    std::unordered_set<KtDbObjectId> seen;
    const auto take = [&](KtDbObjectId id) {
        if (!id.isErased() && seen.insert(id).second) {
            records.push_back(id);
        }
    };
    for (const KtDbObjectId definition : definitions) {
        take(definition);
        if (!definition.isErased()) {
            const KtArray<KtDbObjectId> representations = representationsOf(protocol, definition);
            std::for_each(representations.begin(), representations.end(), take);
        }
    }
    return records;
}

std::wstring recordName(KtDbObjectId record) {
    const ReadObject<KtDbSymbolTableRecord> opened(record);
    const wchar_t* name = nullptr;
    if (!opened || opened->getName(name) != Orbx::eOk || name == nullptr) {
        return {};
    }
    return name;
}

} // namespace parts
