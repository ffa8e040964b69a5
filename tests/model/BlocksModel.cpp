#include "tests/model/BlocksModel.h"

#include "tests/model/GraphModel.h"
#include "tests/model/Opened.h"
#include "tests/model/Statuses.h"
#include "tests/model/Unnoticed.h"

#include <KtDbBlockTable.h>

namespace ktmodel {

BlocksModel::~BlocksModel() {
    const Unnoticed unnoticed;
    static_cast<void>(setEnabled(false)); // the table of a drawing that goes is still there
}

int BlocksModel::attach() {
    const Opened<KtDbBlockTable> table(database_.blockTableId(), KtDb::kForRead);
    if (!table) {
        return table.status();
    }
    if (const int status = table->getIdAt(L"*Model_Space", modelSpace_); status != kDone) {
        return status;
    }
    scan();
    setPendingChanges(false); // whatever it found, nobody listens yet
    return kDone;
}

int BlocksModel::setEnabled(bool enable) {
    if (enable == enabled_) {
        return kDone;
    }
    const Opened<KtDbBlockTable> table(database_.blockTableId(), KtDb::kForNotify, !enable);
    if (!table) {
        return table.status();
    }
    static_cast<void>(enable ? table->addReactor(this) : table->removeReactor(this));
    for (DefinitionModel* definition : distinct()) {
        static_cast<void>(definition->setEnabled(enable)); // one that cannot be watched is still known
    }
    if (enable && !timer_) {
        timer_.emplace(timers_, 0);
    }
    if (timer_) {
        timer_->setEnabled(enable);
    }
    enabled_ = enable;
    return kDone;
}

std::set<DefinitionModel*> BlocksModel::distinct() const {
    std::set<DefinitionModel*> all;
    for (const auto& [key, definition] : definitions_) {
        all.insert(definition.get());
    }
    return all;
}

void BlocksModel::setRescanNeeded(bool needed) {
    rescanNeeded_ = needed;
    if (!needed) {
        for (DefinitionModel* definition : distinct()) {
            definition->setNeedsUpdate(false);
        }
    }
}

void BlocksModel::setPendingChanges(bool pending) {
    pendingChanges_ = pending;
    if (!pending) {
        for (DefinitionModel* definition : distinct()) {
            definition->setChanged(false);
        }
    }
}

void BlocksModel::openedForModify(const KtDbObject* /*object*/) {
    setRescanNeeded(true);
}

bool BlocksModel::scanIfNeeded(bool force) {
    if (!force && (!rescanNeeded_ || !enabled_)) {
        return false;
    }
    scan();
    propagate();
    return true;
}

/// A change of a definition may change how often the blocks inside it occur. Inside it means inside the
/// definition itself: whether what lies in a representation of it alone counts, nothing says.
void BlocksModel::propagate() {
    if (!pendingChanges_) {
        return;
    }
    IdSet nested;
    for (const auto& [key, definition] : definitions_) {
        if (definition->state().changed) {
            nested.merge(nestedBlocks(*this, definition->id(), true).blocks);
        }
    }
    for (const KtDbObjectId id : nested) {
        if (const auto entry = definitions_.find(id); entry != definitions_.end()) {
            entry->second->setChanged(true);
        }
    }
}

std::optional<std::set<CallbackNumber>> BlocksModel::takeCallbacks() {
    if (!pendingChanges_) {
        return std::nullopt;
    }
    std::set<CallbackNumber> callbacks;
    for (DefinitionModel* definition : distinct()) {
        if (definition->state().changed) {
            definition->setChanged(false);
            callbacks.insert(definition->state().callbacks.begin(), definition->state().callbacks.end());
        }
    }
    return callbacks;
}

void BlocksModel::addCallback(const KtArray<KtDbObjectId>& ids, CallbackNumber callback) {
    for (const KtDbObjectId id : ids) {
        if (const auto entry = definitions_.find(id); entry != definitions_.end()) {
            entry->second->addCallback(callback);
        }
    }
}

void BlocksModel::removeCallback(CallbackNumber callback) {
    for (DefinitionModel* definition : distinct()) {
        definition->removeCallback(callback);
    }
}

bool BlocksModel::hasCallbacks() const {
    for (const auto& [id, definition] : definitions_) {
        if (!definition->state().callbacks.empty()) {
            return true;
        }
    }
    return false;
}

const DefinitionModel* BlocksModel::definition(KtDbObjectId record) const {
    const auto entry = definitions_.find(record);
    return entry == definitions_.end() ? nullptr : entry->second.get();
}

BlocksSnapshot BlocksModel::snapshot() const {
    BlocksSnapshot snapshot;
    snapshot.enabled = enabled_;
    snapshot.rescanNeeded = rescanNeeded_;
    snapshot.pendingChanges = pendingChanges_;
    snapshot.modelSpace = modelSpace_;
    snapshot.layouts = layouts_;
    snapshot.monitoredCount = monitoredCount_;
    for (const auto& [id, definition] : definitions_) {
        snapshot.monitorOfKey[id] = definition->id();
        snapshot.monitors[definition->id()] = definition->state();
    }
    if (timer_) {
        snapshot.timer = timer_->state();
    }
    return snapshot;
}

} // namespace ktmodel
