#include "bench/contenders/ModuleContender.h"

#include <ktdx/KtDxNotify.h>

namespace bench {

ModuleContender::ModuleContender(kthost::Document& document) : document_(document) {
    gIdleCheckMessage = 0; // as in a module that has just been loaded
    application_ = std::make_unique<KtDxApplication>();
}

bool ModuleContender::attach(const KtArray<KtDbObjectId>& definitions, KtRxCallback callback) {
    return ktdxBlockReferenceMonitorAttach(&document_, &definitions, callback);
}

bool ModuleContender::update(bool force, bool notify) {
    return ktdxUpdateBlockGraph(&document_, force, notify);
}

bool ModuleContender::attachTimer(KtRxCallback callback) {
    return ktdxDocTimerAttach(&document_, callback, 0, 1) != 0;
}

KtDxBlocks& ModuleContender::blocks() const {
    return *documentRecord(&document_, true)->blocks();
}

void ModuleContender::markChanged(const Ids& definitions) {
    for (const KtDbObjectId definition : definitions) {
        blocks().blockMonitors().at(definition)->setChanged(true);
    }
}

void ModuleContender::propagate() {
    blocks().propagateChanges();
}

void ModuleContender::forgetChanges() {
    blocks().setPendingChanges(false);
}

std::uint64_t ModuleContender::countInstances(const Ids& definitions, bool modelSpaceOnly) {
    std::uint64_t total = 0;
    for (const KtDbObjectId definition : definitions) {
        total += blocks().countInstances(definition, modelSpaceOnly, true);
    }
    return total;
}

bool ModuleContender::appendTables(KtArray<KtDbObjectId>& records, KtArray<KtDbObjectId>& tables) {
    return ktdxGetBlockRecordIdsOfKtDbTables(&document_, &records) != 0 &&
           ktdxGetKtDbTableIds(&document_, &tables) != 0;
}

} // namespace bench
