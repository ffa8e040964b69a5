#include "tests/model/DefinitionModel.h"

#include "tests/model/BlocksModel.h"
#include "tests/model/ModelSpace.h"
#include "tests/model/Opened.h"
#include "tests/model/Statuses.h"
#include "tests/model/Unnoticed.h"

#include <KtArray.h>
#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbEvalGraph.h>
#include <KtDbObjectIterator.h>
#include <KtRxClass.h>

#include <algorithm>
#include <memory>

namespace ktmodel {

namespace {

bool isRecord(const KtDbObject& object) {
    return object.isA() == KtDbBlockTableRecord::desc();
}

bool isDynamic(const KtDbBlockTableRecord& record) {
    KtDbEvalGraph* graph = nullptr;
    if (KtDbEvalGraph::getGraph(graph, &record, L"ORBX_ENHANCEDBLOCK", KtDb::kForRead) != Orbx::eOk) {
        return false;
    }
    static_cast<void>(graph->close()); // it is open
    return true;
}

Ids representationsOf(KtDbObjectId definition) {
    KtArray<KtDbObjectId> ids;
    const KtRxObject* extension = KtDbBlockReference::desc()->queryX(KtDbBlockRepresentation::desc());
    if (extension == nullptr || !extension->isKindOf(KtDbBlockRepresentation::desc()) ||
        static_cast<const KtDbBlockRepresentation*>(extension)->getRepresentations(definition, ids) !=
            Orbx::eOk) {
        return {};
    }
    return {ids.begin(), ids.end()};
}

bool isGone(KtDbObjectId id) {
    return id.isErased() || id.isEffectivelyErased();
}

template <class Map>
IdSet keysOf(const Map& map) {
    IdSet keys;
    for (const auto& [key, value] : map) {
        keys.insert(key);
    }
    return keys;
}

} // namespace

DefinitionModel::~DefinitionModel() {
    const Unnoticed unnoticed;
    static_cast<void>(setEnabled(false)); // whatever it could not reach is found below
    for (const auto& [reference, attributes] : state_.attributes) {
        unwatchAttributes(attributes);
    }
    unwatchWhatIsLeft();
}

int DefinitionModel::init(BlocksModel& owner, const KtDbBlockTableRecord& record) {
    owner_ = &owner;
    id_ = record.objectId();
    state_.needsUpdate = true;
    state_.recordIds = {id_};
    if (isDynamic(record)) {
        addRepresentations();
    }
    const int status = update(id_);
    if (status == kDone) {
        static_cast<void>(
            setEnabled(owner.isEnabled())); // a definition that cannot be watched is still known
    }
    return status;
}

void DefinitionModel::addRepresentations() {
    const Ids representations = representationsOf(id_);
    state_.recordIds.insert(state_.recordIds.end(), representations.begin(), representations.end());
    for (const KtDbObjectId representation : representations) {
        owner_->addRepresentation(representation, *this);
    }
}

/// Looks at all references again: what is new, or no longer listed at all, is a change.
int DefinitionModel::update(KtDbObjectId record) {
    if (record.isNull()) {
        return kInvalidBlock;
    }
    if (std::ranges::find(state_.recordIds, record) == state_.recordIds.end()) {
        state_.recordIds.push_back(record);
        owner_->addRepresentation(record, *this);
    }
    IdSet candidates;
    if (const int status = collectCandidates(candidates); status != kDone) {
        return status;
    }
    const IdSet previous = recordedReferences();
    std::map<KtDbObjectId, Ids> found;
    for (const KtDbObjectId reference : candidates) {
        const KtDbObjectId container = containerOf(reference);
        if (container.isNull() || !container.isValid()) {
            continue; // passed over, and not taken for one that has gone
        }
        found[container].push_back(reference);
        if (!previous.contains(reference)) {
            setChanged(true);
            if (state_.enabled) {
                watchReference(reference);
            }
        }
    }
    for (const KtDbObjectId reference : previous) {
        if (!candidates.contains(reference)) {
            setChanged(true);
            forgetReference(reference);
        }
    }
    takeOver(found);
    return kDone;
}

/// A container that got its first reference, or lost its last, is a change.
void DefinitionModel::takeOver(const std::map<KtDbObjectId, Ids>& found) {
    if (keysOf(found) != keysOf(state_.references)) {
        setChanged(true);
    }
    state_.references = found;
    setNeedsUpdate(false);
}

/// Living references and erased ones that can come back.
int DefinitionModel::collectCandidates(IdSet& candidates) const {
    KtArray<KtDbObjectId> all;
    for (const KtDbObjectId id : state_.recordIds) {
        if (id.isErased()) {
            continue;
        }
        const Opened<KtDbBlockTableRecord> record(id, KtDb::kForRead);
        if (!record) {
            return record.status();
        }
        if (const int status = record->getBlockReferenceIds(all, true, true); status != kDone) {
            return status;
        }
        if (const int status = record->getErasedBlockReferenceIds(all); status != kDone) {
            return status;
        }
    }
    candidates.insert(all.begin(), all.end());
    return kDone;
}

IdSet DefinitionModel::recordedReferences() const {
    IdSet all;
    for (const auto& [container, references] : state_.references) {
        all.insert(references.begin(), references.end());
    }
    return all;
}

/// Null when the reference cannot be opened or lies in a foreign drawing that has no record here.
KtDbObjectId DefinitionModel::containerOf(KtDbObjectId reference) const {
    const Opened<KtDbBlockReference> opened(reference, KtDb::kForRead, true);
    if (!opened) {
        return {};
    }
    const KtDbObjectId container = opened->ownerId();
    return isForeignModelSpace(container) ? owner_->findXrefBlock(container) : container;
}

bool DefinitionModel::isForeignModelSpace(KtDbObjectId container) const {
    return isModelSpace(container) && container.database() != owner_->database();
}

int DefinitionModel::setEnabled(bool enable) {
    if (state_.enabled == enable) {
        return kDone;
    }
    for (const KtDbObjectId reference : recordedReferences()) {
        enable ? watchReference(reference) : forgetReference(reference);
    }
    state_.enabled = enable;
    if (id_.isNull() || !id_.isValid() || (enable && isGone(id_))) {
        return enable ? kInvalidBlock : kDone;
    }
    return watchRecords(enable);
}

/// Stops at the first record that cannot be opened; an erased one cannot be watched, only let go.
int DefinitionModel::watchRecords(bool watching) {
    for (const KtDbObjectId id : state_.recordIds) {
        const Opened<KtDbBlockTableRecord> record(id, KtDb::kForNotify, !watching);
        if (!record) {
            return record.status();
        }
        watching ? watch(*record) : unwatch(*record);
    }
    return kDone;
}

/// A reference that is watched a second time has its attributes recorded a second time.
void DefinitionModel::watchReference(KtDbObjectId reference) {
    const Opened<KtDbBlockReference> opened(reference, KtDb::kForNotify, true);
    if (!opened) {
        return;
    }
    watch(*opened);
    const std::unique_ptr<KtDbObjectIterator> attributes(opened->attributeIterator());
    if (attributes != nullptr) {
        watchAttributes(reference, *attributes);
    }
}

void DefinitionModel::watchAttributes(KtDbObjectId reference, KtDbObjectIterator& attributes) {
    for (; !attributes.done(); attributes.step()) {
        const KtDbObjectId id = attributes.objectId();
        if (id.isNull() || !id.isValid() || isGone(id)) {
            continue;
        }
        if (const Opened<KtDbAttribute> attribute(id, KtDb::kForNotify, true); attribute) {
            watch(*attribute);
            state_.attributes[reference].push_back(id);
        }
    }
}

/// The attributes of a reference that has left memory stay recorded.
void DefinitionModel::forgetReference(KtDbObjectId reference) {
    const Opened<KtDbBlockReference> opened(reference, KtDb::kForNotify, true);
    if (!opened) {
        return;
    }
    unwatch(*opened);
    if (const auto entry = state_.attributes.find(reference); entry != state_.attributes.end()) {
        unwatchAttributes(entry->second);
        state_.attributes.erase(entry);
    }
}

void DefinitionModel::unwatchAttributes(const Ids& attributes) {
    for (const KtDbObjectId id : attributes) {
        if (const Opened<KtDbAttribute> attribute(id, KtDb::kForNotify, true); attribute) {
            unwatch(*attribute);
        }
    }
}

void DefinitionModel::setChanged(bool on) {
    if (on) {
        owner_->setPendingChanges(true);
    }
    state_.changed = on;
}

void DefinitionModel::setNeedsUpdate(bool on) {
    if (on) {
        owner_->setRescanNeeded(true);
    }
    state_.needsUpdate = on;
}

void DefinitionModel::copied(const KtDbObject* object, const KtDbObject* /*copy*/) {
    const Unnoticed unnoticed;
    setNeedsUpdate(true);
    if (!isRecord(*object)) {
        setChanged(true);
    }
}

/// A definition that is edited asks for a look at it; what changed for clients is found then. The record of
/// an attached drawing says nothing more later.
void DefinitionModel::openedForModify(const KtDbObject* object) {
    const Unnoticed unnoticed;
    setNeedsUpdate(true);
    if (!isRecord(*object) || static_cast<const KtDbBlockTableRecord*>(object)->isFromExternalReference()) {
        setChanged(true);
    }
}

void DefinitionModel::goodbye(const KtDbObject* object) {
    const Unnoticed unnoticed;
    unwatch(*object);
}

void DefinitionModel::watch(const KtDbObject& object) {
    if (object.addReactor(this) == Orbx::eOk) {
        watched_.insert(object.objectId());
    }
}

void DefinitionModel::unwatch(const KtDbObject& object) {
    static_cast<void>(object.removeReactor(this)); // it need not be there
    watched_.erase(object.objectId());
}

/// A monitor that has gone must be nowhere.
void DefinitionModel::unwatchWhatIsLeft() {
    for (const KtDbObjectId id : IdSet(watched_)) {
        if (const Opened<KtDbObject> object(id, KtDb::kForNotify, true); object) {
            unwatch(*object);
        }
    }
}

} // namespace ktmodel
