#include "blocks/KtDxBlocks.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbBlockTable.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbDatabase.h>
#include <KtRxClass.h>

#include "app/KtDxDocument.h"
#include "blocks/BlockNesting.h"
#include "blocks/KtDbBlockTableIter.h"
#include "blocks/OpenedObject.h"
#include "notify/KtDxTimer.h"

#include <algorithm>
#include <memory>
#include <new>
#include <tuple>
#include <utility>

namespace {

constexpr const wchar_t* kModelSpace = L"*Model_Space";

/// The dynamic definition that one of the record's references says it represents; the null id when the first
/// that can say anything says none. Erased references are asked too.
KtDbObjectId representedDefinition(const KtDbBlockTableRecord* record) {
    KtDbObjectIdArray references(0, 8);
    if (record->getBlockReferenceIds(references, true, true) != Orbx::eOk) {
        return {};
    }
    for (const KtDbObjectId id : references) {
        const OpenedObject<KtDbBlockReference> reference(id, KtDb::kForNotify, true);
        if (!reference) {
            continue;
        }
        const KtRxObject* extension = reference->queryX(KtDbBlockRepresentation::desc());
        if (extension != nullptr && extension->isA()->isDerivedFrom(KtDbBlockRepresentation::desc())) {
            return static_cast<const KtDbBlockRepresentation*>(extension)->originalBlockTableRecord(
                reference.get());
        }
    }
    return {};
}

/// The key that decides whether a monitor known already takes the record.
KtDbObjectId keyOf(const KtDbBlockTableRecord* record) {
    const KtDbObjectId definition = record->isAnonymous() ? representedDefinition(record) : KtDbObjectId();
    return definition.isNull() ? record->objectId() : definition;
}

/// Lets the nesting queries use one picture for as long as it lives.
class SharedNesting {
public:
    SharedNesting(const BlockNesting*& place, const BlockNesting& nesting) : place_(place) {
        place_ = &nesting;
    }

    SharedNesting(const SharedNesting&) = delete;
    SharedNesting& operator=(const SharedNesting&) = delete;

    ~SharedNesting() { place_ = nullptr; }

private:
    const BlockNesting*& place_;
};

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
    if (document == nullptr) {
        return Orbx::eMissing;
    }
    document_ = document;
    const KtDbDatabase* drawing = database();
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

// Scanning

Orbx::ErrorStatus KtDxBlocks::scanBlockTable() {
    try {
        return scanAllRecords();
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
}

Orbx::ErrorStatus KtDxBlocks::scanAllRecords() {
    const KtDbDatabase* drawing = database();
    if (drawing == nullptr) {
        return Orbx::eMissing;
    }
    layoutIds_.setLogicalLengthZero();
    monitoredCount_ = 0;
    KtDbBlockTableIter records(*drawing);
    if (records.status() != Orbx::eOk) {
        return records.status();
    }
    for (; !records.done(); records.step()) {
        const OpenedObject<KtDbBlockTableRecord> record = records.open();
        if (!record) {
            continue;
        }
        if (const Orbx::ErrorStatus status = scanRecord(record.get()); status != Orbx::eOk) {
            return status;
        }
    }
    setRescanNeeded(false);
    return Orbx::eOk;
}

/// The key decides only whether a known monitor takes the record; a new monitor is always entered under the
/// record's own id. So a representation that comes before its definition gets a monitor of its own, on
/// purpose; one that comes after joins the definition's.
Orbx::ErrorStatus KtDxBlocks::scanRecord(const KtDbBlockTableRecord* record) {
    if (record->isLayout()) {
        layoutIds_.append(record->objectId());
    }
    const auto known = blockMonitors_.find(keyOf(record));
    if (known == blockMonitors_.end()) {
        KtDxBlock* made = nullptr;
        if (createBlockMonitor(made, record) == Orbx::eOk) {
            ++monitoredCount_;
        }
        return Orbx::eOk;
    }
    KtDxBlock* monitor = known->second;
    if (monitor == nullptr) {
        return Orbx::eMissing;
    }
    std::ignore = monitor->update(record->objectId()); // it keeps what it knew, until it is looked at again
    ++monitoredCount_;
    return Orbx::eOk;
}

Orbx::ErrorStatus KtDxBlocks::createBlockMonitor(KtDxBlock*& block, const KtDbBlockTableRecord* record) {
    block = nullptr;
    if (record == nullptr) {
        return Orbx::eMissing;
    }
    const KtDbObjectId id = record->objectId();
    const auto present = blockMonitors_.find(id);
    if (present != blockMonitors_.end() && present->second != nullptr) {
        return Orbx::eDuplicateRecordId;
    }
    std::unique_ptr<KtDxBlock> made;
    if (const Orbx::ErrorStatus status = KtDxBlock::create(this, record, made); status != Orbx::eOk) {
        return status;
    }
    try {
        blockMonitors_.insert_or_assign(id, made.get());
    } catch (const std::bad_alloc&) {
        forgetRepresentations(made.get());
        return Orbx::eMissing;
    }
    block = made.release(); // its keys own it
    return Orbx::eOk;
}

void KtDxBlocks::addRepresentation(KtDbObjectId id, KtDxBlock* block) {
    blockMonitors_.emplace(id, block);
}

void KtDxBlocks::forgetRepresentations(const KtDxBlock* block) {
    for (const KtDbObjectId id : block->recordIds()) {
        const auto entry = blockMonitors_.find(id);
        if (entry != blockMonitors_.end() && entry->second == block) {
            blockMonitors_.erase(entry);
        }
    }
}

// Idle processing

void KtDxBlocks::timerElapsed() {
    update(false, true);
}

void KtDxBlocks::update(bool force, bool notify) {
    if (!force && (!isRescanNeeded() || !isEnabled())) {
        return;
    }
    std::ignore = scanBlockTable(); // what was found is worth propagating even if the scan stopped short
    propagateChanges();
    if (notify) {
        notifyBlockReferenceMonitors();
    }
}

void KtDxBlocks::propagateChanges() {
    if (!hasPendingChanges()) {
        return;
    }
    KtDbObjectIdSet nested;
    if (collectNestedInChanged(nested) == Orbx::eOk) {
        markChanged(nested);
    } else if (!hasEmptyEntry()) {
        markAllChanged(); // no memory: rather a call too many than one too few
    }
}

/// eMissing at an empty entry, and when there is no memory.
Orbx::ErrorStatus KtDxBlocks::collectNestedInChanged(KtDbObjectIdSet& nested) {
    if (hasEmptyEntry()) {
        return Orbx::eMissing;
    }
    try {
        const BlockNesting nesting(blockMonitors_);
        const SharedNesting sharing(nesting_, nesting);
        KtDbObjectIdSet visited; // shared: what one changed block has led to, the next need not follow again
        for (const auto& [key, monitor] : blockMonitors_) {
            const Orbx::ErrorStatus status =
                monitor->isChanged() ? collectNestedBlocks(monitor->blockId(), true, nested, visited)
                                     : Orbx::eOk;
            if (status != Orbx::eOk) {
                return status;
            }
        }
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    return Orbx::eOk;
}

bool KtDxBlocks::hasEmptyEntry() const {
    return std::any_of(blockMonitors_.begin(), blockMonitors_.end(),
                       [](const auto& entry) { return entry.second == nullptr; });
}

void KtDxBlocks::markChanged(const KtDbObjectIdSet& blocks) {
    for (const KtDbObjectId id : blocks) {
        const auto entry = blockMonitors_.find(id);
        if (entry == blockMonitors_.end()) {
            continue;
        }
        if (entry->second == nullptr) {
            return;
        }
        entry->second->setChanged(true);
    }
}

void KtDxBlocks::markAllChanged() {
    for (const auto& [key, monitor] : blockMonitors_) {
        if (monitor != nullptr) {
            monitor->setChanged(true);
        }
    }
}

void KtDxBlocks::notifyBlockReferenceMonitors() {
    if (!hasPendingChanges() || hasEmptyEntry()) {
        return;
    }
    KtDxCallbackSet
        callbacks; // gathered before any is called: what a callback attaches or detaches counts next time
    try {
        takeCallbacksOfChanged(callbacks);
    } catch (const std::bad_alloc&) {
        markAllChanged(); // whose marks are gone cannot be told any more
        setRescanNeeded(true);
        return;
    }
    const std::exception_ptr thrown = callEach(callbacks);
    setPendingChanges(false);
    if (thrown != nullptr) {
        std::rethrow_exception(thrown);
    }
}

/// Clears the marks of the changed blocks.
void KtDxBlocks::takeCallbacksOfChanged(KtDxCallbackSet& callbacks) {
    for (const auto& [key, monitor] : blockMonitors_) {
        if (monitor->isChanged()) {
            monitor->setChanged(false);
            callbacks.insert(monitor->callbacks()->begin(), monitor->callbacks()->end());
        }
    }
}

/// What the first callback that threw has thrown. The others are called all the same: their marks are gone,
/// so this is their only call for what has changed.
std::exception_ptr KtDxBlocks::callEach(const KtDxCallbackSet& callbacks) {
    std::exception_ptr thrown;
    for (const KtRxCallback callback : callbacks) {
        try {
            ktrxCall(callback);
        } catch (...) {
            thrown = thrown == nullptr ? std::current_exception() : thrown;
        }
    }
    return thrown;
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
    for (const auto& [key, monitor] : blockMonitors_) {
        if (monitor == nullptr) {
            return;
        }
        monitor->setNeedsUpdate(false);
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
    for (const auto& [key, monitor] : blockMonitors_) {
        if (monitor == nullptr) {
            return;
        }
        monitor->setChanged(false);
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
