#include "tests/bench/LiteralSnapshot.h"

#include "tests/model/Observer.h"

namespace {

using bench::literal::Block;
using bench::literal::Blocks;
using ktmodel::Ids;

std::map<KtDbObjectId, Ids> listsOf(const bench::literal::IdLists& lists) {
    std::map<KtDbObjectId, Ids> all;
    for (const auto& [key, array] : lists) {
        all[key] = Ids(array->begin(), array->end());
    }
    return all;
}

ktmodel::MonitorSnapshot observe(const Block& block) {
    ktmodel::MonitorSnapshot snapshot;
    snapshot.enabled = block.isEnabled();
    snapshot.changed = block.isChanged();
    snapshot.needsUpdate = block.needsUpdate();
    snapshot.recordIds = Ids(block.recordIds().begin(), block.recordIds().end());
    snapshot.references = listsOf(block.references());
    snapshot.attributes = listsOf(block.attributes());
    for (const KtRxCallback callback : block.callbacks()) {
        snapshot.callbacks.insert(ktmodel::numberOf(callback));
    }
    return snapshot;
}

ktmodel::GraphAnswer answer(Blocks& blocks, const ktmodel::GraphQuestion& question) {
    const auto& [block, container] = question;
    ktmodel::GraphAnswer answer;
    answer.direct = blocks.countReferences(block, container, false);
    answer.recursive = blocks.countReferences(block, container, true);
    answer.inModelSpace = blocks.countInstances(block, true, false);
    answer.inModelSpaceRecursive = blocks.countInstances(block, true, true);
    answer.inLayouts = blocks.countInstances(block, false, false);
    answer.inLayoutsRecursive = blocks.countInstances(block, false, true);
    answer.nested.status = blocks.collectNestedBlocks(container, false, answer.nested.blocks);
    answer.nestedRecursive.status =
        blocks.collectNestedBlocks(container, true, answer.nestedRecursive.blocks);
    answer.xrefBlock = blocks.findXrefBlock(container);
    return answer;
}

} // namespace

ktmodel::BlocksSnapshot observeLiteral(Blocks& blocks, const std::vector<ktmodel::GraphQuestion>& questions) {
    ktmodel::BlocksSnapshot snapshot;
    snapshot.enabled = blocks.isEnabled();
    snapshot.rescanNeeded = blocks.isRescanNeeded();
    snapshot.pendingChanges = blocks.hasPendingChanges();
    snapshot.modelSpace = blocks.modelSpaceId();
    snapshot.layouts = Ids(blocks.layoutIds().begin(), blocks.layoutIds().end());
    snapshot.monitoredCount = blocks.monitoredCount();
    for (const auto& [key, block] : blocks.monitors()) {
        snapshot.monitorOfKey[key] = block->blockId();
        snapshot.monitors[block->blockId()] = observe(*block);
    }
    for (const ktmodel::GraphQuestion& question : questions) {
        snapshot.answers[question] = answer(blocks, question);
    }
    return snapshot;
}
