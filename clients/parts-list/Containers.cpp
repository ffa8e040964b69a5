#include "Containers.h"

#include "DrawingIds.h"
#include "PlacedReference.h"
#include "ReadObject.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbSymbolUtilities.h>

#include <unordered_set>

namespace parts {

namespace {

const KtDbDatabase* attachedDrawing(KtDbObjectId record) {
    const ReadObject<KtDbBlockTableRecord> opened(record);
    return opened && opened->isFromExternalReference() ? opened->externalDatabase() : nullptr;
}

} // namespace

Containers::Containers(const KtDbDatabase& database) : database_(&database) {
    addExternalSpaces(database);
}

void Containers::addExternalSpaces(const KtDbDatabase& first) {
    const KtDbSymbolUtilities::Services* services = KtDbSymbolUtilities::servicesPtr();
    std::vector<const KtDbDatabase*> waiting{&first};
    std::unordered_set<const KtDbDatabase*> seen{&first};
    while (!waiting.empty()) {
        const KtDbDatabase* database = waiting.back();
        waiting.pop_back();
        for (const KtDbObjectId record : listRecords(*database)) {
            const KtDbDatabase* attached = attachedDrawing(record);
            if (attached != nullptr && seen.insert(attached).second) {
                recordOfSpace_.emplace(services->blockModelSpaceId(attached), record);
                waiting.push_back(attached);
            }
        }
    }
}

KtDbObjectId Containers::resolve(KtDbObjectId container) const {
    const auto found = recordOfSpace_.find(container);
    return found == recordOfSpace_.end() ? container : found->second;
}

const std::wstring& Containers::name(KtDbObjectId container) {
    const KtDbObjectId record = resolve(container);
    const auto [place, isNew] = names_.try_emplace(record);
    if (isNew) {
        place->second = recordName(record);
    }
    return place->second;
}

bool Containers::isLayout(KtDbObjectId container) const {
    const ReadObject<KtDbBlockTableRecord> record(container);
    return record && record->isLayout() && record->database() == database_;
}

std::vector<Placement> Containers::placements(KtDbObjectId container) const {
    std::vector<Placement> placements;
    KtArray<KtDbObjectId> ids;
    const ReadObject<KtDbBlockTableRecord> record(container);
    if (!record || record->getBlockReferenceIds(ids) != Orbx::eOk) {
        return placements;
    }
    placements.reserve(ids.length());
    for (const KtDbObjectId id : ids) {
        const ReadObject<KtDbBlockReference> reference(id);
        if (reference) {
            placements.push_back({handleText(reference->handle()), resolve(reference->ownerId())});
        }
    }
    return placements;
}

} // namespace parts
