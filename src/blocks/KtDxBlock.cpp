#include "blocks/KtDxBlock.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbEvalGraph.h>
#include <KtRxClass.h>

#include "blocks/KtDxBlocks.h"
#include "blocks/OpenedObject.h"

#include <cstddef>
#include <new>
#include <tuple>

namespace {

constexpr const wchar_t* kDynamicBlockGraph = L"ORBX_ENHANCEDBLOCK";

bool isExactlyBlockTableRecord(const KtDbObject* object) {
    return object->isA() == KtDbBlockTableRecord::desc();
}

bool isDynamicDefinition(const KtDbBlockTableRecord* record) {
    KtDbEvalGraph* graph = nullptr;
    const bool found =
        KtDbEvalGraph::getGraph(graph, record, kDynamicBlockGraph, KtDb::kForRead) == Orbx::eOk;
    const OpenedObject<KtDbEvalGraph> closedAtOnce(graph);
    return found;
}

const KtDbBlockRepresentation* representationProtocol() {
    KtRxObject* extension = KtDbBlockReference::desc()->queryX(KtDbBlockRepresentation::desc());
    const bool usable =
        extension != nullptr && extension->isA()->isDerivedFrom(KtDbBlockRepresentation::desc());
    return usable ? static_cast<const KtDbBlockRepresentation*>(extension) : nullptr;
}

/// Without an owner nobody counts the monitors that bear it.
void setMark(bool& mark, bool on, std::size_t* count) {
    if (mark == on) {
        return; // and most of what lies in the caches stays as it is
    }
    mark = on;
    if (count == nullptr) {
        return;
    }
    if (on) {
        ++*count;
    } else {
        --*count;
    }
}

} // namespace

/// Representations are entered in the owner's map before anything can fail.
void KtDxBlock::giveUp(KtDxBlocks* owner, std::unique_ptr<KtDxBlock>& block) {
    if (owner != nullptr) {
        owner->forgetRepresentations(block.get());
    }
    block.reset();
}

Orbx::ErrorStatus KtDxBlock::create(KtDxBlocks* owner, const KtDbBlockTableRecord* record,
                                    std::unique_ptr<KtDxBlock>& block) {
    block.reset(new (std::nothrow) KtDxBlock);
    if (block == nullptr) {
        return Orbx::eMissing;
    }
    try {
        const Orbx::ErrorStatus status = block->init(owner, record);
        if (status != Orbx::eOk) {
            giveUp(owner, block);
        }
        return status;
    } catch (...) { // the host's; it passes through
        giveUp(owner, block);
        throw;
    }
}

KtDxBlock::~KtDxBlock() {
    reset();
    detachAllAttributes();
    letGoOfLeftBehind();
}

Orbx::ErrorStatus KtDxBlock::init(KtDxBlocks* owner, const KtDbBlockTableRecord* record) {
    reset();
    if (record == nullptr || owner == nullptr) {
        return Orbx::eMissing;
    }
    owner_ = owner;
    ++owner_->marks().needsUpdate; // borne from the start
    blockId_ = record->objectId();
    try {
        if (recordIds_.isEmpty()) {
            recordIds_.setPhysicalLength(1); // most blocks have no further ones
        }
        recordIds_.append(blockId_);
        if (isDynamicDefinition(record)) {
            findRepresentations();
        }
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    if (const Orbx::ErrorStatus status = refresh(); status != Orbx::eOk) {
        return status;
    }
    std::ignore =
        setEnabled(owner->isEnabled()); // a record that will not open now is tried at the next enabling
    return Orbx::eOk;
}

void KtDxBlock::findRepresentations() {
    const KtDbBlockRepresentation* protocol = representationProtocol();
    KtDbObjectIdArray representations(0, 8);
    if (protocol == nullptr || protocol->getRepresentations(blockId_, representations) != Orbx::eOk) {
        return; // the definition is then watched alone; its representations may still join it at a scan
    }
    recordIds_.append(representations);
    for (const KtDbObjectId representation : representations) {
        owner_->addRepresentation(representation, this);
    }
}

void KtDxBlock::reset() {
    std::ignore = setEnabled(false); // what will not open is remembered and tried once more at the end
    KtDxBlock::setChanged(false);
    KtDxBlock::setNeedsUpdate(false);
    needsUpdateFlag_ = true;
    owner_ = nullptr;
    blockId_ = KtDbObjectId();
    referencesByContainer_.clear();
    recordedOrder_.cut(0);
    recordedOrder_.settle(referencesByContainer_);
    callbackSet_.clear();
}

// Notifications

void KtDxBlock::copied(const KtDbObject* object, const KtDbObject* /*copy*/) {
    setNeedsUpdate(true);
    if (!isExactlyBlockTableRecord(object)) {
        setChanged(true);
    }
}

void KtDxBlock::goodbye(const KtDbObject* object) {
    std::ignore = object->removeReactor(this); // the object is going either way
}

void KtDxBlock::openedForModify(const KtDbObject* object) {
    setNeedsUpdate(true);
    const bool isOwnDefinition = isExactlyBlockTableRecord(object) &&
                                 !static_cast<const KtDbBlockTableRecord*>(object)->isFromExternalReference();
    if (!isOwnDefinition) {
        setChanged(true);
    }
}

// Marks and callbacks

KtDxBlock::References* KtDxBlock::references() {
    isOrderDoubtful_ = true; // they can be changed now
    return &referencesByContainer_;
}

bool KtDxBlock::needsUpdate() const {
    return needsUpdateFlag_;
}

void KtDxBlock::setNeedsUpdate(bool on) {
    if (on && owner_ == nullptr) {
        return;
    }
    if (on) {
        owner_->setRescanNeeded(true);
    }
    setMark(needsUpdateFlag_, on, owner_ == nullptr ? nullptr : &owner_->marks().needsUpdate);
}

bool KtDxBlock::isChanged() const {
    return changed_;
}

void KtDxBlock::setChanged(bool on) {
    if (on && owner_ == nullptr) {
        return;
    }
    if (on) {
        owner_->setPendingChanges(true);
    }
    setMark(changed_, on, owner_ == nullptr ? nullptr : &owner_->marks().changed);
}

KtDxCallbackSet* KtDxBlock::callbacks() {
    return &callbackSet_;
}

void KtDxBlock::addCallback(KtRxCallback callback) {
    if (callback != nullptr) {
        callbackSet_.insert(callback);
    }
}

void KtDxBlock::removeCallback(KtRxCallback callback) {
    if (callback != nullptr) {
        callbackSet_.erase(callback);
    }
}
