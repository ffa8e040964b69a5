#include "bench/literal/Blocks.h"

#include "bench/Opened.h"

#include <KtApDocument.h>
#include <KtDbBlockTable.h>

#include <set>
#include <tuple>

namespace bench::literal {

Blocks::~Blocks() {
    std::ignore = setEnabled(false); // the table of an open drawing is there
    std::set<Block*> distinct;
    for (const auto& [key, block] : monitors_) {
        distinct.insert(block);
    }
    monitors_.clear();
    for (Block* block : distinct) {
        delete block;
    }
}

KtDbDatabase* Blocks::database() const {
    return document_ == nullptr ? nullptr : document_->database();
}

Orbx::ErrorStatus Blocks::attachDocument(KtApDocument* document) {
    document_ = document;
    const KtDbDatabase* drawing = database();
    if (drawing == nullptr) {
        return Orbx::eMissing;
    }
    const Opened<KtDbBlockTable> table(drawing->blockTableId(), KtDb::kForRead);
    if (!table) {
        return table.status();
    }
    if (const Orbx::ErrorStatus status = table->getIdAt(L"*Model_Space", modelSpaceId_);
        status != Orbx::eOk) {
        return status;
    }
    std::ignore = scanBlockTable(); // scanned again when a client comes
    setPendingChanges(false);
    return Orbx::eOk;
}

Orbx::ErrorStatus Blocks::setEnabled(bool enable) {
    if (enable == enabled_) {
        return Orbx::eOk;
    }
    const KtDbDatabase* drawing = database();
    if (drawing == nullptr) {
        return Orbx::eMissing;
    }
    const Opened<KtDbBlockTable> table(drawing->blockTableId(), KtDb::kForNotify, !enable);
    if (!table) {
        return table.status();
    }
    std::ignore = enable ? table->addReactor(this) : table->removeReactor(this); // need not succeed
    for (const auto& [key, block] : monitors_) {
        if (block != nullptr) {
            std::ignore = block->setEnabled(enable); // one that cannot follow must not keep the others
        }
    }
    if (enable && timer_ == nullptr) {
        timer_ = std::make_unique<Timer>(timers_, 0);
    }
    if (timer_ != nullptr) {
        timer_->setEnabled(enable);
        enable ? timer_->add(this) : timer_->remove(this);
    }
    enabled_ = enable;
    return Orbx::eOk;
}

void Blocks::openedForModify(const KtDbObject* /*object*/) {
    setRescanNeeded(true);
}

void Blocks::timerElapsed() {
    update(false, true);
}

void Blocks::update(bool force, bool notify) {
    if (!force && (!rescanNeeded_ || !enabled_)) {
        return;
    }
    std::ignore = scanBlockTable(); // what was found is propagated
    propagateChanges();
    if (notify) {
        notifyBlockReferenceMonitors();
    }
}

void Blocks::propagateChanges() {
    if (!pendingChanges_) {
        return;
    }
    IdSet nested;
    for (const auto& [key, block] : monitors_) {
        if (block == nullptr) {
            return;
        }
        if (block->isChanged()) {
            std::ignore = collectNestedBlocks(block->blockId(), true, nested); // no entry is empty
        }
    }
    for (const KtDbObjectId id : nested) {
        const auto entry = monitors_.find(id);
        if (entry == monitors_.end()) {
            continue;
        }
        if (entry->second == nullptr) {
            return;
        }
        entry->second->setChanged(true);
    }
}

void Blocks::notifyBlockReferenceMonitors() {
    if (!pendingChanges_) {
        return;
    }
    Callbacks callbacks;
    for (const auto& [key, block] : monitors_) {
        if (block == nullptr) {
            return;
        }
        if (block->isChanged()) {
            block->setChanged(false);
            callbacks.insert(block->callbacks().begin(), block->callbacks().end());
        }
    }
    for (const KtRxCallback callback : callbacks) {
        ktrxCall(callback);
    }
    setPendingChanges(false);
}

void Blocks::setRescanNeeded(bool on) {
    rescanNeeded_ = on;
    if (on) {
        return;
    }
    for (const auto& [key, block] : monitors_) {
        if (block == nullptr) {
            return;
        }
        block->setNeedsUpdate(false);
    }
}

void Blocks::setPendingChanges(bool on) {
    pendingChanges_ = on;
    if (on) {
        return;
    }
    for (const auto& [key, block] : monitors_) {
        if (block == nullptr) {
            return;
        }
        block->setChanged(false);
    }
}

Orbx::ErrorStatus Blocks::attachBlockReferenceMonitor(KtRxCallback callback, const IdArray& ids) {
    if (callback == nullptr) {
        return Orbx::eMissing;
    }
    for (const KtDbObjectId id : ids) {
        const auto entry = monitors_.find(id);
        if (entry == monitors_.end()) {
            continue;
        }
        if (entry->second == nullptr) {
            return Orbx::eMissing;
        }
        entry->second->addCallback(callback);
    }
    return Orbx::eOk;
}

} // namespace bench::literal
