// The literal queries for table entities.

#include "bench/BlockTableWalk.h"
#include "bench/literal/Application.h"

namespace bench::literal {

namespace {

bool isTableBlock(const KtDbBlockTableRecord& record) {
    const wchar_t* name = nullptr;
    return record.isAnonymous() && record.getName(name) == Orbx::eOk && name != nullptr && name[0] != L'\0' &&
           name[1] == L'T';
}

} // namespace

bool Application::appendTableRecords(KtApDocument* document, IdArray& ids) {
    const DocumentRecord* record = findOrMake(document);
    if (record == nullptr) {
        return false;
    }
    walkBlockTable(*record->document->database(), [&ids](const KtDbBlockTableRecord& found) {
        if (!found.isDependent() && isTableBlock(found)) {
            ids.append(found.objectId());
        }
        return true;
    });
    return true;
}

bool Application::appendTables(KtApDocument* document, IdArray& ids) {
    IdArray blockIds(0, 8);
    if (!appendTableRecords(document, blockIds)) {
        return false;
    }
    for (const KtDbObjectId id : blockIds) {
        const Opened<KtDbBlockTableRecord> record(id, KtDb::kForRead);
        IdArray references(0, 8);
        if (record && record->getBlockReferenceIds(references, true, true) == Orbx::eOk) {
            ids.append(references);
        }
    }
    return true;
}

} // namespace bench::literal
