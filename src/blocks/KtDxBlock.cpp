#include "blocks/KtDxBlock.h"

#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbEvalGraph.h>
#include <KtDbSymbolUtilities.h>
#include <KtRxClass.h>

#include "blocks/KtDxBlocks.h"
#include "blocks/OpenedObject.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <tuple>
#include <utility>

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

void sortUnique(std::vector<KtDbObjectId>& ids) {
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
}

} // namespace

/// State of one rescan. Candidates and what was recorded before are in ascending order, so one walk compares
/// them.
struct KtDxBlock::Rescan {
    IdVector
        candidates;    ///< what the host lists; all of it counts as present, whether or not it can be opened
    IdVector previous; ///< what was recorded before
    IdVector used;     ///< containers met; repeats only where containers alternate
    std::size_t nextPrevious = 0;

    /// Asked in ascending order.
    bool wasRecorded(KtDbObjectId reference) {
        while (nextPrevious < previous.size() && previous[nextPrevious] < reference) {
            ++nextPrevious;
        }
        return nextPrevious < previous.size() && previous[nextPrevious] == reference;
    }

    void use(KtDbObjectId container) {
        if (used.empty() || used.back() != container) {
            used.push_back(container);
        }
    }
};

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
    Orbx::ErrorStatus status = Orbx::eMissing;
    try {
        status = block->init(owner, record);
    } catch (...) { // the host's; it passes through
        giveUp(owner, block);
        throw;
    }
    if (status != Orbx::eOk) {
        giveUp(owner, block);
    }
    return status;
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
    blockId_ = record->objectId();
    try {
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
    changed_ = false;
    needsUpdateFlag_ = true;
    owner_ = nullptr;
    blockId_ = KtDbObjectId();
    referencesByContainer_.clear();
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
    needsUpdateFlag_ = on;
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
    changed_ = on;
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

// Rescan

Orbx::ErrorStatus KtDxBlock::refresh() {
    return update(blockId_);
}

Orbx::ErrorStatus KtDxBlock::update(KtDbObjectId recordId) {
    if (owner_ == nullptr) {
        return Orbx::eMissing;
    }
    if (recordId.isNull()) {
        return Orbx::eInvalidBlockId;
    }
    try {
        if (!recordIds_.contains(recordId)) {
            recordIds_.append(recordId);
            owner_->addRepresentation(recordId, this);
        }
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    Rescan pass;
    const Orbx::ErrorStatus status = tryRescan(pass);
    if (status != Orbx::eOk && isEnabled()) {
        leaveBehind(std::move(pass.previous)); // those that the pass did not come to are recorded no more
    }
    return status;
}

Orbx::ErrorStatus KtDxBlock::tryRescan(Rescan& pass) {
    try {
        return rescan(pass);
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
}

Orbx::ErrorStatus KtDxBlock::rescan(Rescan& pass) {
    if (const Orbx::ErrorStatus status = collectCandidates(pass.candidates); status != Orbx::eOk) {
        return status;
    }
    if (const Orbx::ErrorStatus status = takeRecorded(pass.previous); status != Orbx::eOk) {
        return status;
    }
    for (const KtDbObjectId reference : pass.candidates) {
        if (const Orbx::ErrorStatus status = fileReference(reference, pass); status != Orbx::eOk) {
            return status;
        }
    }
    dropMissing(pass);
    dropUnusedContainers(pass);
    setNeedsUpdate(false);
    return Orbx::eOk;
}

/// Everything that the host lists as a reference to one of the records, living or erased, in ascending order.
Orbx::ErrorStatus KtDxBlock::collectCandidates(IdVector& candidates) const {
    KtDbObjectIdArray ids(0, 8);
    for (const KtDbObjectId recordId : recordIds_) {
        if (recordId.isErased()) {
            continue;
        }
        const OpenedObject<KtDbBlockTableRecord> record(recordId, KtDb::kForRead);
        if (!record) {
            return record.status();
        }
        if (const Orbx::ErrorStatus status = record->getBlockReferenceIds(ids, true, true);
            status != Orbx::eOk) {
            return status;
        }
        if (const Orbx::ErrorStatus status = record->getErasedBlockReferenceIds(ids); status != Orbx::eOk) {
            return status;
        }
    }
    candidates.assign(ids.begin(), ids.end());
    sortUnique(candidates);
    return Orbx::eOk;
}

/// Empties the recorded arrays into one ascending list; the containers' entries stay for now.
Orbx::ErrorStatus KtDxBlock::takeRecorded(IdVector& previous) {
    std::size_t count = 0;
    for (const auto& [container, references] : referencesByContainer_) {
        if (references == nullptr) {
            return Orbx::eMissing;
        }
        count += references->length();
    }
    previous.reserve(count);
    for (const auto& [container, references] : referencesByContainer_) {
        previous.insert(previous.end(), references->begin(), references->end());
        references->setLogicalLengthZero();
    }
    sortUnique(previous);
    return Orbx::eOk;
}

Orbx::ErrorStatus KtDxBlock::fileReference(KtDbObjectId reference, Rescan& pass) {
    const OpenedObject<KtDbBlockReference> opened(reference, KtDb::kForRead,
                                                  true); // erased ones count like others
    const bool isNew = !pass.wasRecorded(reference);
    const KtDbObjectId container = opened ? containerOf(opened->ownerId()) : KtDbObjectId();
    if (container.isNull() || !container.isValid()) {
        if (!isNew && isEnabled()) {
            leaveBehind(reference, opened.status()); // recorded no more, and still heard
        }
        return Orbx::eOk;
    }
    if (isNew) {
        setChanged(true);
    }
    if (const Orbx::ErrorStatus status = record(reference, container, pass); status != Orbx::eOk) {
        return status;
    }
    if (isNew && isEnabled()) {                         // behind the recording: what is heard has to be known
        std::ignore = attachReference(reference, true); // one that will not open is recorded all the same
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus KtDxBlock::record(KtDbObjectId reference, KtDbObjectId container, Rescan& pass) {
    pass.use(container);
    KtDbObjectIdArray* references = containerArray(container);
    if (references == nullptr) {
        return Orbx::eMissing;
    }
    references->append(reference);
    return Orbx::eOk;
}

/// The record under which a reference with this owner is filed: for the model space of an attached drawing,
/// the record of this drawing that stands for it.
KtDbObjectId KtDxBlock::containerOf(KtDbObjectId owner) const {
    const bool isForeignModelSpace = isModelSpaceBlockId(owner) && owner.database() != owner_->database();
    return isForeignModelSpace ? owner_->findXrefBlock(owner) : owner;
}

/// The container's array, made when the container is new, which is a change. Null when its entry has none.
KtDbObjectIdArray* KtDxBlock::containerArray(KtDbObjectId container) {
    auto entry = referencesByContainer_.find(container);
    if (entry == referencesByContainer_.end()) {
        setChanged(true);
        entry = referencesByContainer_.emplace(container, std::make_unique<KtDbObjectIdArray>(0, 8)).first;
    }
    return entry->second.get();
}

/// Lets go of recorded references that the host lists no more, neither as living nor as erased.
void KtDxBlock::dropMissing(const Rescan& pass) {
    IdVector missing;
    std::set_difference(pass.previous.begin(), pass.previous.end(), pass.candidates.begin(),
                        pass.candidates.end(), std::back_inserter(missing));
    for (const KtDbObjectId reference : missing) {
        setChanged(true);
        std::ignore = attachReference(reference, false); // most are released by now and cannot be opened
    }
}

void KtDxBlock::dropUnusedContainers(Rescan& pass) {
    sortUnique(pass.used);
    for (auto entry = referencesByContainer_.begin(); entry != referencesByContainer_.end();) {
        if (std::binary_search(pass.used.begin(), pass.used.end(), entry->first)) {
            ++entry;
        } else {
            setChanged(true);
            entry = referencesByContainer_.erase(entry);
        }
    }
}

// Reactors

Orbx::ErrorStatus KtDxBlock::setEnabled(bool enable) {
    if (enable == isEnabled()) {
        return Orbx::eOk;
    }
    try {
        attachReferences(enable);
    } catch (...) { // the host's; it passes through, and a monitor that is not enabled must not be heard
        attachReferences(false);
        throw;
    }
    std::ignore = KtDxEnableBase::setEnabled(enable); // storing the flag cannot fail
    if (blockId_.isNull() || !blockId_.isValid()) {
        return enable ? Orbx::eInvalidBlockId : Orbx::eOk;
    }
    if (enable && (blockId_.isErased() || blockId_.isEffectivelyErased())) {
        return Orbx::eInvalidBlockId;
    }
    return attachRecords(enable);
}

void KtDxBlock::attachReferences(bool attach) {
    for (const auto& [container, references] : referencesByContainer_) {
        if (references == nullptr) {
            return;
        }
        for (const KtDbObjectId reference : *references) {
            std::ignore =
                attachReference(reference, attach); // one that will not open must not keep the others
        }
    }
}

Orbx::ErrorStatus KtDxBlock::attachRecords(bool attach) {
    for (std::size_t i = 0; i < recordIds_.length(); ++i) {
        const OpenedObject<KtDbBlockTableRecord> record(recordIds_[i], KtDb::kForNotify, !attach);
        if (!record) {
            if (!attach) {
                leaveRecordsBehind(i, record.status());
            }
            return record.status();
        }
        if (attach) {
            std::ignore = record->addReactor(this); // a record that cannot be heard is still rescanned
        } else {
            letGo(record.get());
        }
    }
    return Orbx::eOk;
}

/// The first of them has refused; those behind it are not even asked.
void KtDxBlock::leaveRecordsBehind(std::size_t first, Orbx::ErrorStatus why) {
    leaveBehind(recordIds_[first], why);
    for (std::size_t i = first + 1; i < recordIds_.length(); ++i) {
        leaveBehind(recordIds_[i], Orbx::eOk);
    }
}

Orbx::ErrorStatus KtDxBlock::attachReference(KtDbObjectId reference, bool attach) {
    const OpenedObject<KtDbBlockReference> opened(reference, KtDb::kForNotify, true);
    if (!opened) {
        if (!attach) {
            leaveBehind(reference, opened.status());
        }
        return opened.status();
    }
    if (!attach) {
        letGo(opened.get());
        detachAttributesOf(reference);
        return Orbx::eOk;
    }
    std::ignore = opened->addReactor(this); // a reference that cannot be heard is still recorded
    const std::unique_ptr<KtDbObjectIterator> attributes(opened->attributeIterator());
    return attributes == nullptr ? Orbx::eOk : attachAttributes(reference, *attributes);
}

/// Adds to what is recorded of the reference without looking for repeats: a reference that is attached twice
/// has its attributes twice, and letting go of it once lets go of them all.
Orbx::ErrorStatus KtDxBlock::attachAttributes(KtDbObjectId reference, KtDbObjectIterator& attributes) {
    const auto entry = attributesByReference_.find(reference);
    KtDbObjectIdArray* recorded = entry == attributesByReference_.end() ? nullptr : entry->second.get();
    try {
        for (; !attributes.done(); attributes.step()) {
            attachAttribute(attributes.objectId(), reference, recorded);
        }
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    return Orbx::eOk;
}

void KtDxBlock::attachAttribute(KtDbObjectId attribute, KtDbObjectId reference,
                                KtDbObjectIdArray*& recorded) {
    if (attribute.isNull() || !attribute.isValid() || attribute.isErased() ||
        attribute.isEffectivelyErased()) {
        return;
    }
    const OpenedObject<KtDbAttribute> opened(attribute, KtDb::kForNotify, true);
    if (!opened) {
        return;
    }
    if (recorded == nullptr) {
        auto made = std::make_unique<KtDbObjectIdArray>(0, 8);
        KtDbObjectIdArray* const array = made.get();
        attributesByReference_.insert_or_assign(reference, std::move(made));
        recorded = array;
    }
    recorded->append(attribute);            // first, as it may fail: what is heard has to be known
    std::ignore = opened->addReactor(this); // an attribute that cannot be heard is let go of like others
}

void KtDxBlock::detachAttributesOf(KtDbObjectId reference) {
    const auto entry = attributesByReference_.find(reference);
    if (entry != attributesByReference_.end()) {
        detachAttributes(*entry->second);
        attributesByReference_.erase(entry);
    }
}

void KtDxBlock::detachAttributes(const KtDbObjectIdArray& attributes) {
    for (const KtDbObjectId attribute : attributes) {
        if (attribute.isNull() || !attribute.isValid()) {
            continue;
        }
        const OpenedObject<KtDbAttribute> opened(attribute, KtDb::kForNotify, true);
        if (opened) {
            letGo(opened.get());
        } else {
            leaveBehind(attribute, opened.status());
        }
    }
}

void KtDxBlock::detachAllAttributes() {
    for (const auto& [reference, attributes] : attributesByReference_) {
        detachAttributes(*attributes);
    }
    attributesByReference_.clear();
}

void KtDxBlock::letGo(const KtDbObject* object) {
    const Orbx::ErrorStatus status = object->removeReactor(this);
    const bool isGone =
        status == Orbx::eOk || status == Orbx::eKeyNotFound; // it could not be added, or twice
    if (!isGone) {
        leaveBehind(object->objectId(), status);
    }
}

/// Remembers an object that may still hold this reactor. A released one has said goodbye.
void KtDxBlock::leaveBehind(KtDbObjectId object, Orbx::ErrorStatus why) {
    if (why == Orbx::eObjectReleased) {
        return;
    }
    try {
        if (leftBehind_.size() == leftBehind_.capacity()) {
            sortUnique(leftBehind_); // what is refused again and again must not pile up
        }
        leftBehind_.push_back(object);
    } catch (const std::bad_alloc&) {
        // Two refusals at once: the object keeps a reactor that must not be remembered.
        return;
    }
}

void KtDxBlock::leaveBehind(IdVector&& objects) {
    if (leftBehind_.empty()) {
        leftBehind_ = std::move(objects); // needs no memory, for want of which the objects may be here
        return;
    }
    for (const KtDbObjectId object : objects) {
        leaveBehind(object, Orbx::eOk);
    }
}

void KtDxBlock::letGoOfLeftBehind() {
    for (const KtDbObjectId object : leftBehind_) {
        const OpenedObject<KtDbObject> opened(object, KtDb::kForNotify, true);
        if (opened) {
            std::ignore = opened->removeReactor(this); // asked for the last time
        }
    }
}

bool isModelSpaceBlockId(KtDbObjectId id) {
    if (id.isNull() || !id.isValid()) {
        return false;
    }
    const KtDbDatabase* database = id.database();
    return database != nullptr && id == KtDbSymbolUtilities::servicesPtr()->blockModelSpaceId(database);
}
