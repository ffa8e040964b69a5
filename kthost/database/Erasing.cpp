#include "kthost/database/Erasing.h"

#include "kthost/database/Changes.h"
#include "kthost/database/Nesting.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/ObjectAccess.h"

namespace kthost {

namespace {

Orbx::ErrorStatus refusalToPlaceAgain(KtDbObjectId definition, KtDbObjectId container) {
    if (definition.isErased()) {
        return Orbx::eWasErased;
    }
    return wouldContainItself(definition, container) ? Orbx::eSelfReference : Orbx::eOk;
}

Orbx::ErrorStatus refusalToName(const BlockTableRecord& record) {
    const BlockTable* table = peek<BlockTable>(record.ownerId());
    return table->living(record.fields().name).isNull() ? Orbx::eOk : Orbx::eDuplicateKey;
}

} // namespace

Orbx::ErrorStatus refusalToRestore(KtDbObjectId id) {
    const ObjectHead& head = *ObjectStore::instance().find(id);
    if (head.unappended) {
        return Orbx::eNotInDatabase;
    }
    if (!head.erased) {
        return Orbx::eOk;
    }
    if (head.owner.isEffectivelyErased()) {
        return Orbx::eWasErased;
    }
    if (const auto* record = peek<BlockTableRecord>(id)) {
        return refusalToName(*record);
    }
    Orbx::ErrorStatus refusal = Orbx::eOk;
    withReference(id, [&](const auto& reference) {
        refusal = refusalToPlaceAgain(reference.blockTableRecord(), head.owner);
    });
    return refusal;
}

Orbx::ErrorStatus changeErased(KtDbObjectId id, bool erasing) {
    const ObjectHead& head = *ObjectStore::instance().find(id);
    if (!head.writing) {
        return Orbx::eNotOpenForWrite;
    }
    if (erasing && head.erased) {
        return Orbx::eWasErased;
    }
    if (!erasing) {
        const Orbx::ErrorStatus refusal = refusalToRestore(id);
        if (refusal != Orbx::eOk || !head.erased) {
            return refusal;
        }
    }
    const Orbx::ErrorStatus status = beginChange(id);
    if (status == Orbx::eOk) {
        setErased(id, erasing);
        notifyErased(id, erasing);
    }
    return status;
}

} // namespace kthost
