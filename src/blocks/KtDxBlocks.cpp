#include "blocks/KtDxBlocks.h"

#include <KtDbBlockTable.h>
#include <KtDbDatabase.h>

#include "app/KtDxDocument.h"
#include "blocks/OpenedObject.h"
#include "notify/KtDxTimer.h"

#include <memory>
#include <new>
#include <tuple>
#include <utility>

namespace {

constexpr const wchar_t* kModelSpace = L"*Model_Space";

} // namespace

Orbx::ErrorStatus KtDxBlocks::create(KtDxDocument* document, KtDxBlocks*& blocks) {
    blocks = nullptr;
    std::unique_ptr<KtDxBlocks> made(new (std::nothrow) KtDxBlocks);
    if (made == nullptr) {
        return Orbx::eMissing;
    }
    const Orbx::ErrorStatus status = made->attachDocument(document);
    if (status == Orbx::eOk) {
        blocks = made.release();
    }
    return status;
}

KtDxBlocks::KtDxBlocks() = default;

KtDxBlocks::~KtDxBlocks() {
    std::ignore = KtDxBlocks::setEnabled(false); // what it left undone is done below
    stopHearing();
    KtDxBlocks::reset();
}

// Binding to a drawing

Orbx::ErrorStatus KtDxBlocks::attachDocument(KtDxDocument* document) {
    reset();
    document_ = document;
    const KtDbDatabase* drawing = database(); // null without a document, too
    if (drawing == nullptr) {
        return Orbx::eMissing;
    }
    const OpenedObject<KtDbBlockTable> blockTable(drawing->blockTableId(), KtDb::kForRead);
    if (!blockTable) {
        return blockTable.status();
    }
    const Orbx::ErrorStatus status = blockTable->getIdAt(kModelSpace, modelSpaceId_);
    if (status == Orbx::eOk) {
        std::ignore = scanBlockTable(); // what could not be scanned now is scanned when a client attaches
        setPendingChanges(false);
    }
    return status;
}

void KtDxBlocks::reset() {
    document_ = nullptr;
    modelSpaceId_ = KtDbObjectId();
    monitoredCount_ = 0;
    destroyMonitors();
    layoutIds_.setLogicalLengthZero();
    setRescanNeeded(true);
    setPendingChanges(false);
    destroyTimer();
}

void KtDxBlocks::destroyMonitors() {
    BlockMonitors monitors;
    monitors.swap(blockMonitors_); // first, so that nothing finds a monitor while it goes
    for (auto& [key, monitor] : monitors) {
        if (monitor != nullptr && !monitor->claimForDestruction()) {
            monitor = nullptr;
        }
    }
    for (const auto& [key, monitor] : monitors) {
        delete monitor;
    }
}

void KtDxBlocks::destroyTimer() {
    if (timer_ == nullptr) {
        return;
    }
    std::ignore = timer_->setEnabled(false); // it is destroyed next either way
    timer_->remove(this);
    delete std::exchange(timer_, nullptr);
}

KtDbDatabase* KtDxBlocks::database() const {
    return document_ == nullptr ? nullptr : document_->database();
}

// Enabling

Orbx::ErrorStatus KtDxBlocks::setEnabled(bool enable) {
    if (enable == isEnabled()) {
        return Orbx::eOk;
    }
    const KtDbDatabase* drawing = database();
    if (drawing == nullptr) {
        return Orbx::eMissing;
    }
    const OpenedObject<KtDbBlockTable> blockTable(drawing->blockTableId(), KtDb::kForNotify, !enable);
    if (!blockTable) {
        return blockTable.status();
    }
    hearBlockTable(*blockTable.get(), enable);
    enableMonitors(enable);
    if (const Orbx::ErrorStatus status = enableTimer(enable); status != Orbx::eOk) {
        return status; // the block table is heard already; the next attempt finds it so
    }
    return KtDxEnableBase::setEnabled(enable);
}

void KtDxBlocks::hearBlockTable(const KtDbBlockTable& blockTable, bool hear) {
    const KtDbObjectId id = blockTable.objectId();
    if (hear) {
        if (heardTable_ != id) {
            stopHearing(); // the table of a drawing that was left while enabled
        }
        heardTable_ = id;
        std::ignore = blockTable.addReactor(this); // without it the monitors' own notifications remain
        return;
    }
    const Orbx::ErrorStatus status = blockTable.removeReactor(this);
    if (heardTable_ == id && (status == Orbx::eOk || status == Orbx::eKeyNotFound)) {
        heardTable_ = KtDbObjectId();
    }
}

void KtDxBlocks::enableMonitors(bool enable) {
    for (const auto& [key, monitor] : blockMonitors_) {
        if (monitor != nullptr) {
            std::ignore = monitor->setEnabled(enable); // one that cannot follow must not keep the others
        }
    }
}

Orbx::ErrorStatus KtDxBlocks::enableTimer(bool enable) {
    if (enable && timer_ == nullptr) {
        timer_ = new (std::nothrow) KtDxTimer(document_, 0);
        if (timer_ == nullptr) {
            return Orbx::eMissing;
        }
    }
    if (timer_ == nullptr) {
        return Orbx::eOk;
    }
    std::ignore = timer_->setEnabled(enable); // it is asked again whenever a timer of the document is enabled
    if (enable) {
        return timer_->add(this);
    }
    timer_->remove(this);
    return Orbx::eOk;
}

/// Lets go of the block table that is heard still, where enabling or disabling got stuck half-way or a reset
/// came between.
void KtDxBlocks::stopHearing() {
    if (heardTable_.isNull()) {
        return;
    }
    const OpenedObject<KtDbBlockTable> blockTable(heardTable_, KtDb::kForNotify, true);
    if (blockTable) {
        hearBlockTable(*blockTable.get(), false);
    }
}

void KtDxBlocks::openedForModify(const KtDbObject* /*object*/) {
    setRescanNeeded(true);
}

// Marks

bool KtDxBlocks::isRescanNeeded() const {
    return rescanNeeded_;
}

void KtDxBlocks::setRescanNeeded(bool on) {
    rescanNeeded_ = on;
    if (on) {
        return;
    }
    for (auto entry = blockMonitors_.begin(); entry != blockMonitors_.end() && marks_.needsUpdate != 0;
         ++entry) {
        if (entry->second == nullptr) {
            return;
        }
        entry->second->setNeedsUpdate(false);
    }
}

bool KtDxBlocks::hasPendingChanges() const {
    return pendingChanges_;
}

void KtDxBlocks::setPendingChanges(bool on) {
    pendingChanges_ = on;
    if (on) {
        return;
    }
    for (auto entry = blockMonitors_.begin(); entry != blockMonitors_.end() && marks_.changed != 0; ++entry) {
        if (entry->second == nullptr) {
            return;
        }
        entry->second->setChanged(false);
    }
}

// Clients

Orbx::ErrorStatus KtDxBlocks::attachBlockReferenceMonitor(KtRxCallback callback,
                                                          const KtDbObjectIdArray& blockIds) {
    if (callback == nullptr) {
        return Orbx::eMissing;
    }
    try {
        for (const KtDbObjectId id : blockIds) {
            const auto entry = blockMonitors_.find(id);
            if (entry == blockMonitors_.end()) {
                continue;
            }
            if (entry->second == nullptr) {
                return Orbx::eMissing;
            }
            entry->second->addCallback(callback);
        }
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    return Orbx::eOk;
}

void KtDxBlocks::detachBlockReferenceMonitor(KtRxCallback callback) {
    if (callback == nullptr) {
        return;
    }
    for (const auto& [key, monitor] : blockMonitors_) {
        if (monitor == nullptr) {
            return;
        }
        monitor->removeCallback(callback);
    }
}

Orbx::ErrorStatus KtDxBlocks::collectBlockReferenceMonitors(KtDxCallbackSet& callbacks) {
    try {
        for (const auto& [key, monitor] : blockMonitors_) {
            if (monitor == nullptr) {
                return Orbx::eMissing;
            }
            callbacks.insert(monitor->callbacks()->begin(), monitor->callbacks()->end());
        }
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    return Orbx::eOk;
}
