#include "tables/TableQueries.h"

#include <KtDbBlockTableRecord.h>
#include <ktdx/KtDxNotify.h>

#include "app/KtDxApplication.h"
#include "app/KtDxDocument.h"
#include "blocks/KtDbBlockTableIter.h"
#include "blocks/OpenedObject.h"

#include <new>

namespace {

using IdArray = KtArray<KtDbObjectId>;

KtDbDatabase* databaseOf(KtApDocument* document) {
    const KtDxDocument* record = document == nullptr ? nullptr : documentRecord(document, true);
    return record == nullptr ? nullptr : record->database();
}

/// The drawing's own table blocks, in block-table order.
void appendTableBlocks(const KtDbDatabase& database, IdArray& ids) {
    for (KtDbBlockTableIter records(database); !records.done(); records.step()) {
        const OpenedObject<KtDbBlockTableRecord> record = records.open();
        if (record && !record->isDependent() && isTableBlock(record.get())) {
            ids.append(record->objectId());
        }
    }
}

void appendReferences(KtDbObjectId blockId, IdArray& ids) {
    const OpenedObject<KtDbBlockTableRecord> record(blockId, KtDb::kForRead);
    IdArray references; // apart from `ids`, which a list that breaks off must not reach
    if (record && record->getBlockReferenceIds(references, true, true) == Orbx::eOk) {
        ids.append(references);
    }
}

} // namespace

bool isTableBlock(const KtDbBlockTableRecord* record) {
    if (record == nullptr || !record->isAnonymous()) {
        return false;
    }
    const wchar_t* name = nullptr;
    if (record->getName(name) != Orbx::eOk || name == nullptr) {
        return false;
    }
    return name[0] != L'\0' && name[1] == L'T';
}

std::int32_t ktdxGetBlockRecordIdsOfKtDbTables(KtApDocument* document, KtArray<KtDbObjectId>* ids) {
    const KtDbDatabase* database = ids == nullptr ? nullptr : databaseOf(document);
    if (database == nullptr) {
        return 0;
    }
    IdArray found;
    try {
        appendTableBlocks(*database, found);
        ids->append(found);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return 1;
}

std::int32_t ktdxGetKtDbTableIds(KtApDocument* document, KtArray<KtDbObjectId>* ids) {
    if (document == nullptr || ids == nullptr) {
        return 0;
    }
    IdArray blockIds;
    if (ktdxGetBlockRecordIdsOfKtDbTables(document, &blockIds) == 0) {
        return 0;
    }
    IdArray found;
    try {
        for (const KtDbObjectId blockId : blockIds) {
            appendReferences(blockId, found);
        }
        ids->append(found);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return 1;
}
