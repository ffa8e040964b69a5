// What the literal monitor of the block table answers about blocks inside blocks.

#include "bench/BlockTableWalk.h"
#include "bench/ModelSpace.h"
#include "bench/literal/Blocks.h"

namespace bench::literal {

Orbx::ErrorStatus Blocks::collectNestedBlocks(KtDbObjectId container, bool recursive, IdSet& nested) {
    IdSet visited;
    return collectNestedBlocks(container, recursive, nested, visited);
}

Orbx::ErrorStatus Blocks::collectNestedBlocks(KtDbObjectId container, bool recursive, IdSet& nested,
                                              IdSet& visited) {
    if (!visited.insert(container).second) {
        return Orbx::eOk;
    }
    for (const auto& [key, block] : monitors_) {
        if (block == nullptr) {
            return Orbx::eMissing;
        }
        if (block->blockId() == container || !block->references().contains(container)) {
            continue;
        }
        nested.insert(block->blockId());
        if (recursive) {
            const Orbx::ErrorStatus status = collectNestedBlocks(block->blockId(), true, nested, visited);
            if (status != Orbx::eOk) {
                return status;
            }
        }
    }
    return Orbx::eOk;
}

std::uint32_t Blocks::countReferences(KtDbObjectId block, KtDbObjectId container, bool recursive) {
    IdSet visited;
    return countReferences(block, container, recursive, visited);
}

std::uint32_t Blocks::countReferences(KtDbObjectId block, KtDbObjectId container, bool recursive,
                                      IdSet& visited) {
    if (!monitors_.contains(block) || !monitors_.contains(container)) {
        return 0;
    }
    if (recursive && !visited.insert(block).second) {
        return 0;
    }
    const Block* monitor = monitors_[block];
    if (monitor == nullptr) {
        return 0;
    }
    if (!recursive) {
        const auto entry = monitor->references().find(container);
        const bool found = entry != monitor->references().end() && entry->second != nullptr;
        return found ? static_cast<std::uint32_t>(entry->second->length()) : 0;
    }
    std::uint32_t total = 0;
    for (const auto& [recorded, references] : monitor->references()) {
        const bool isForeign = isModelSpace(recorded) && recorded.database() != database();
        const KtDbObjectId holder = isForeign ? findXrefBlock(recorded) : recorded;
        if (holder.isNull() || !holder.isValid() || holder.isErased() || holder.isEffectivelyErased() ||
            references == nullptr || references->isEmpty()) {
            continue;
        }
        const auto length = static_cast<std::uint32_t>(references->length());
        total += holder == container ? length : length * countReferences(holder, container, false, visited);
    }
    return total;
}

std::uint32_t Blocks::countInstances(KtDbObjectId block, bool modelSpaceOnly, bool recursive) {
    if (modelSpaceOnly) {
        return countReferences(block, modelSpaceId_, recursive);
    }
    std::uint32_t total = 0;
    for (const KtDbObjectId layout : layoutIds_) {
        total += countReferences(block, layout, recursive);
    }
    return total;
}

KtDbObjectId Blocks::findXrefBlock(KtDbObjectId id) const {
    const KtDbDatabase* own = database();
    const KtDbDatabase* foreign = id.database();
    KtDbObjectId found;
    if (own == nullptr || foreign == own) {
        return found;
    }
    walkBlockTable(*own, [&](KtDbBlockTableRecord& record) {
        if (record.isFromExternalReference() && record.externalDatabase(false) == foreign) {
            found = record.objectId();
        }
        return found.isNull();
    });
    return found;
}

} // namespace bench::literal
