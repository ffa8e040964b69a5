#include "bench/contenders/LiteralContender.h"

namespace bench {

bool LiteralContender::attach(const KtArray<KtDbObjectId>& definitions, KtRxCallback callback) {
    return application_.attach(document_, definitions, callback);
}

bool LiteralContender::update(bool force, bool notify) {
    return application_.update(document_, force, notify);
}

bool LiteralContender::attachTimer(KtRxCallback callback) {
    return application_.attachTimer(document_, callback);
}

void LiteralContender::markChanged(const Ids& definitions) {
    for (const KtDbObjectId definition : definitions) {
        blocks().monitors().at(definition)->setChanged(true);
    }
}

void LiteralContender::propagate() {
    blocks().propagateChanges();
}

void LiteralContender::forgetChanges() {
    blocks().setPendingChanges(false);
}

std::uint64_t LiteralContender::countInstances(const Ids& definitions, bool modelSpaceOnly) {
    std::uint64_t total = 0;
    for (const KtDbObjectId definition : definitions) {
        total += blocks().countInstances(definition, modelSpaceOnly, true);
    }
    return total;
}

bool LiteralContender::appendTables(KtArray<KtDbObjectId>& records, KtArray<KtDbObjectId>& tables) {
    return application_.appendTableRecords(document_, records) &&
           application_.appendTables(document_, tables);
}

} // namespace bench
