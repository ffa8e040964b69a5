#include "tests/model/GraphModel.h"

#include "tests/model/BlocksModel.h"
#include "tests/model/ModelSpace.h"

namespace ktmodel {

namespace {

void collectNested(const BlocksModel& blocks, KtDbObjectId container, bool recursive, IdSet& found,
                   IdSet& visited) {
    if (!visited.insert(container).second) {
        return;
    }
    for (const auto& [key, definition] : blocks.definitions()) {
        if (definition->id() == container || !definition->state().references.contains(container)) {
            continue;
        }
        found.insert(definition->id());
        if (recursive) {
            collectNested(blocks, definition->id(), true, found, visited);
        }
    }
}

/// A drawing's model space is represented, in another drawing, by the record that stands for it.
KtDbObjectId containerHere(const BlocksModel& blocks, KtDbObjectId container) {
    const bool foreign = isModelSpace(container) && container.database() != blocks.database();
    return foreign ? blocks.findXrefBlock(container) : container;
}

bool isThere(KtDbObjectId id) {
    return !id.isNull() && id.isValid() && !id.isErased() && !id.isEffectivelyErased();
}

std::uint32_t countDirect(const BlocksModel& blocks, KtDbObjectId block, KtDbObjectId container) {
    const DefinitionModel* definition = blocks.definition(block);
    if (definition == nullptr || blocks.definition(container) == nullptr) {
        return 0;
    }
    const auto entry = definition->state().references.find(container);
    return entry == definition->state().references.end() ? 0
                                                         : static_cast<std::uint32_t>(entry->second.size());
}

} // namespace

NestedAnswer nestedBlocks(const BlocksModel& blocks, KtDbObjectId container, bool recursive) {
    NestedAnswer answer;
    IdSet visited;
    collectNested(blocks, container, recursive, answer.blocks, visited);
    return answer;
}

std::uint32_t countReferences(const BlocksModel& blocks, KtDbObjectId block, KtDbObjectId container,
                              bool recursive) {
    if (!recursive) {
        return countDirect(blocks, block, container);
    }
    if (blocks.definition(block) == nullptr || blocks.definition(container) == nullptr) {
        return 0;
    }
    std::uint32_t total = 0;
    for (const auto& [recorded, references] : blocks.definition(block)->state().references) {
        const KtDbObjectId between = containerHere(blocks, recorded);
        if (!isThere(between)) {
            continue;
        }
        const std::uint32_t times = between == container ? 1 : countDirect(blocks, between, container);
        total += static_cast<std::uint32_t>(references.size()) * times;
    }
    return total;
}

std::uint32_t countInstances(const BlocksModel& blocks, KtDbObjectId block, bool modelSpaceOnly,
                             bool recursive) {
    if (modelSpaceOnly) {
        return countReferences(blocks, block, blocks.modelSpace(), recursive);
    }
    std::uint32_t total = 0;
    for (const KtDbObjectId layout : blocks.layouts()) {
        total += countReferences(blocks, block, layout, recursive);
    }
    return total;
}

GraphAnswer answer(const BlocksModel& blocks, const GraphQuestion& question) {
    const auto& [block, container] = question;
    GraphAnswer answer;
    answer.direct = countReferences(blocks, block, container, false);
    answer.recursive = countReferences(blocks, block, container, true);
    answer.inModelSpace = countInstances(blocks, block, true, false);
    answer.inModelSpaceRecursive = countInstances(blocks, block, true, true);
    answer.inLayouts = countInstances(blocks, block, false, false);
    answer.inLayoutsRecursive = countInstances(blocks, block, false, true);
    answer.nested = nestedBlocks(blocks, container, false);
    answer.nestedRecursive = nestedBlocks(blocks, container, true);
    answer.xrefBlock = blocks.findXrefBlock(container);
    return answer;
}

} // namespace ktmodel
