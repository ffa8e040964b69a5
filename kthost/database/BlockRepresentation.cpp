#include "kthost/database/BlockRepresentation.h"

#include "kthost/database/DatabaseTrace.h"
#include "kthost/database/ObjectAccess.h"

#include <KtRxClass.h>

namespace kthost {

KtDbObjectId BlockRepresentation::originalBlockTableRecord(const KtDbBlockReference* reference) const {
    const KtDbObjectId id = reference == nullptr ? KtDbObjectId() : reference->objectId();
    if (reference == nullptr ||
        beginCall(HostCall::originalBlockTableRecord, "originalBlockTableRecord", id) != Orbx::eOk) {
        return {};
    }
    const auto* record = peek<BlockTableRecord>(reference->blockTableRecord());
    const KtDbObjectId original = record == nullptr ? KtDbObjectId() : record->fields().represents;
    if (tracing()) {
        TraceLine("originalBlockTableRecord").field("id", id).field("original", original);
    }
    return original;
}

Orbx::ErrorStatus BlockRepresentation::getRepresentations(KtDbObjectId definition,
                                                          KtArray<KtDbObjectId>& ids) const {
    if (const Orbx::ErrorStatus fault =
            beginCall(HostCall::getRepresentations, "getRepresentations", definition);
        fault != Orbx::eOk) {
        return fault;
    }
    const auto* record = peek<BlockTableRecord>(definition);
    if (record == nullptr) {
        return traceCall("getRepresentations", definition, Orbx::eInvalidBlockId);
    }
    for (const KtDbObjectId id : record->representations()) {
        const auto* each = peek<BlockTableRecord>(id);
        if (each != nullptr && !id.isErased() && each->fields().represents == definition) {
            ids.append(id);
        }
    }
    return traceCall("getRepresentations", definition, Orbx::eOk);
}

void registerBlockRepresentation() {
    static BlockRepresentation extension;
    KtDbBlockReference::desc()->addX(KtDbBlockRepresentation::desc(), &extension);
}

} // namespace kthost
