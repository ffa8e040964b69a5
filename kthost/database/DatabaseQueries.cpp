#include "kthost/database/DatabaseQueries.h"

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/ReleasedIds.h"

#include <algorithm>
#include <iterator>

namespace kthost {

KtDbObjectId objectByHandle(const Database& database, std::uint64_t handle) {
    const KtDbObjectId id = ObjectStore::instance().byHandle(database.contents().slot, handle);
    return isReleased(id) ? KtDbObjectId() : id;
}

std::uint64_t handleOf(KtDbObjectId id) {
    return ObjectStore::instance().handleOf(id);
}

KtDbObjectId ownerOf(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    return head == nullptr ? KtDbObjectId() : head->owner;
}

KtDbObjectId recordByName(const Database& database, std::wstring_view name) {
    return peek<BlockTable>(database.contents().blockTable)->living(name);
}

const Database* attachedTo(const Database& database) {
    return database.contents().attachedTo;
}

std::wstring_view recordName(KtDbObjectId record) {
    const auto* found = peek<BlockTableRecord>(record);
    return found == nullptr ? std::wstring_view() : std::wstring_view(found->fields().name);
}

std::vector<KtDbObjectId> records(const Database& database, bool layouts) {
    std::vector<KtDbObjectId> found;
    for (const KtDbObjectId id : peek<BlockTable>(database.contents().blockTable)->records()) {
        const auto* record = peek<BlockTableRecord>(id);
        if (record != nullptr && !id.isErased() && record->isLayout() == layouts) {
            found.push_back(id);
        }
    }
    return found;
}

std::vector<KtDbObjectId> referencesIn(KtDbObjectId container) {
    std::vector<KtDbObjectId> found;
    if (const auto* record = peek<BlockTableRecord>(container)) {
        found.reserve(record->entities().size());
        std::copy_if(record->entities().begin(), record->entities().end(), std::back_inserter(found),
                     [](KtDbObjectId id) { return !id.isErased(); });
    }
    return found;
}

std::vector<KtDbObjectId> referencesTo(KtDbObjectId record) {
    const auto* found = peek<BlockTableRecord>(record);
    return found == nullptr ? std::vector<KtDbObjectId>() : found->references().living();
}

KtDbObjectId definitionOf(KtDbObjectId reference) {
    KtDbObjectId definition;
    withReference(reference, [&definition](const auto& found) { definition = found.blockTableRecord(); });
    return definition;
}

std::vector<AttributeView> attributesOf(KtDbObjectId reference) {
    std::vector<AttributeView> found;
    withReference(reference, [&found](const auto& owner) {
        for (std::size_t i = 0; i < owner.attributes().size(); ++i) {
            const KtDbObjectId id = owner.attributes()[i];
            const auto* attribute = peek<Attribute>(id);
            if (attribute != nullptr && !id.isErased()) {
                found.push_back({id, attribute->tag(), attribute->text()});
            }
        }
    });
    return found;
}

std::vector<KtDbObjectId> referencesByDesignator(Database& database, std::wstring_view designator) {
    return database.contents().designators.find(database, designator);
}

} // namespace kthost
