// What KtDxBlocks answers about blocks inside blocks.

#include <KtDbBlockTableRecord.h>
#include <KtDbDatabase.h>

#include "blocks/BlockNesting.h"
#include "blocks/KtDbBlockTableIter.h"
#include "blocks/KtDxBlocks.h"
#include "blocks/ModelSpace.h"

#include <new>
#include <vector>

namespace {

/// False also when there is no memory: counting then answers as where something is missing.
bool isFirstVisit(KtDbObjectId block, KtDbObjectIdSet& visited) {
    try {
        return visited.insert(block).second;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

std::uint32_t countDirect(const KtDxBlock::References& references, KtDbObjectId container) {
    const auto entry = references.find(container);
    const bool isThere = entry != references.end() && entry->second != nullptr;
    return isThere ? static_cast<std::uint32_t>(entry->second->length()) : 0;
}

void followNesting(const BlockNesting& nesting, KtDbObjectId container, bool recursive,
                   KtDbObjectIdSet& nested, KtDbObjectIdSet& visited) {
    std::vector<KtDbObjectId> toVisit{container}; // not recursion: drawings nest as deep as they like
    while (!toVisit.empty()) {
        const KtDbObjectId current = toVisit.back();
        toVisit.pop_back();
        nesting.forEachBlockIn(current, [&](KtDbObjectId block) {
            if (block == current) {
                return;
            }
            nested.insert(block);
            if (recursive && visited.insert(block).second) {
                toVisit.push_back(block);
            }
        });
    }
}

} // namespace

Orbx::ErrorStatus KtDxBlocks::collectNestedBlocks(KtDbObjectId container, bool recursive,
                                                  KtDbObjectIdSet& nested) {
    KtDbObjectIdSet visited;
    return collectNestedBlocks(container, recursive, nested, visited);
}

Orbx::ErrorStatus KtDxBlocks::collectNestedBlocks(KtDbObjectId container, bool recursive,
                                                  KtDbObjectIdSet& nested, KtDbObjectIdSet& visited) {
    try {
        if (!visited.insert(container).second) {
            return Orbx::eOk;
        }
        nesting_.update(blockMonitors_);
        followNesting(nesting_, container, recursive, nested, visited);
        return nesting_.isComplete() ? Orbx::eOk : Orbx::eMissing;
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
}

std::uint32_t KtDxBlocks::countReferences(KtDbObjectId block, KtDbObjectId container, bool recursive) {
    KtDbObjectIdSet visited;
    return countReferences(block, container, recursive, visited);
}

std::uint32_t KtDxBlocks::countReferences(KtDbObjectId block, KtDbObjectId container, bool recursive,
                                          KtDbObjectIdSet& visited) {
    const auto entry = blockMonitors_.find(block);
    if (entry == blockMonitors_.end() || !blockMonitors_.contains(container)) {
        return 0;
    }
    if (recursive && !isFirstVisit(block, visited)) {
        return 0;
    }
    KtDxBlock* monitor = entry->second;
    const KtDxBlock::References* references = monitor == nullptr ? nullptr : monitor->references();
    if (references == nullptr) {
        return 0;
    }
    return recursive ? countInTwoLevels(*references, container, visited)
                     : countDirect(*references, container);
}

std::uint32_t KtDxBlocks::countInTwoLevels(const KtDxBlock::References& references, KtDbObjectId container,
                                           KtDbObjectIdSet& visited) {
    std::uint32_t total = 0; // unsigned: counts beyond 32 bits wrap around
    for (const auto& [recordedContainer, ids] : references) {
        const KtDbObjectId holder = countedContainer(recordedContainer);
        const bool counts = !holder.isNull() && holder.isValid() && !holder.isErased() &&
                            !holder.isEffectivelyErased() && ids != nullptr && !ids->isEmpty();
        if (!counts) {
            continue;
        }
        const auto length = static_cast<std::uint32_t>(ids->length());
        // Not recursive on purpose: what is placed deeper than inside the container's own blocks does not
        // count.
        total += holder == container ? length : length * countReferences(holder, container, false, visited);
    }
    return total;
}

/// The record under which a container counts in this drawing: model space of an attached drawing counts as
/// the record that stands for that drawing.
KtDbObjectId KtDxBlocks::countedContainer(KtDbObjectId container) const {
    const bool isForeign = isModelSpaceBlockId(container) && container.database() != database();
    return isForeign ? findXrefBlock(container) : container;
}

std::uint32_t KtDxBlocks::countInstances(KtDbObjectId block, bool modelSpaceOnly, bool recursive) {
    if (modelSpaceOnly) {
        return countReferences(block, modelSpaceId_, recursive);
    }
    std::uint32_t total = 0;
    for (const KtDbObjectId layout : layoutIds_) {
        total += countReferences(block, layout, recursive);
    }
    return total;
}

KtDbObjectId KtDxBlocks::findXrefBlock(KtDbObjectId id) const {
    const KtDbDatabase* own = database();
    const KtDbDatabase* foreign = id.database();
    if (own == nullptr || foreign == own) {
        return {};
    }
    for (KtDbBlockTableIter records(*own); !records.done(); records.step()) {
        const OpenedObject<KtDbBlockTableRecord> record = records.open();
        if (record && record->isFromExternalReference() && record->externalDatabase(false) == foreign) {
            return record->objectId();
        }
    }
    return {};
}
