// How the block table monitor finds the definitions of a drawing and gives each its monitor.

#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbDatabase.h>
#include <KtRxClass.h>

#include "blocks/KtDbBlockTableIter.h"
#include "blocks/KtDxBlocks.h"
#include "blocks/OpenedObject.h"

#include <memory>
#include <new>
#include <tuple>

namespace {

/// The dynamic definition that one of the record's references says it represents; the null id when the first
/// that can say anything says none. Erased references are asked too.
KtDbObjectId representedDefinition(const KtDbBlockTableRecord* record, KtDbObjectIdArray& references) {
    references.setLogicalLengthZero();
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

} // namespace

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

/// The key that decides whether a monitor known already takes the record.
KtDbObjectId KtDxBlocks::keyOf(const KtDbBlockTableRecord* record, KtDbObjectId id) {
    KtDbObjectId definition;
    if (record->isAnonymous()) {
        const BorrowedRescanRoom room(rescanRoom_);
        definition = representedDefinition(record, room->listed);
    }
    return definition.isNull() ? id : definition;
}

/// The key decides only whether a known monitor takes the record; a new monitor is always entered under the
/// record's own id. So a representation that comes before its definition gets a monitor of its own, on
/// purpose; one that comes after joins the definition's.
Orbx::ErrorStatus KtDxBlocks::scanRecord(const KtDbBlockTableRecord* record) {
    const KtDbObjectId id = record->objectId();
    if (record->isLayout()) {
        layoutIds_.append(id);
    }
    const auto known = blockMonitors_.find(keyOf(record, id));
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
    std::ignore = monitor->update(id); // it keeps what it knew, until it is looked at again
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
