// How a block definition monitor brings its recorded references up to date, and decides what has changed.

#include <KtDbBlockReference.h>
#include <KtDbBlockTableRecord.h>

#include "blocks/KtDxBlock.h"
#include "blocks/KtDxBlocks.h"
#include "blocks/OpenedObject.h"
#include "blocks/SortUnique.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>
#include <tuple>
#include <utility>

namespace {

/// Needs no memory, for want of which the last may have to go: what lies beyond the length stays where it is.
void removeLast(KtDbObjectIdArray& ids) {
    const std::size_t left = ids.length() - 1;
    ids.setLogicalLengthZero();
    for (std::size_t i = 0; i < left; ++i) {
        ids.append(ids[i]);
    }
}

/// A record that the owner could not take must be new again at the next update.
void addRecord(KtDbObjectIdArray& recordIds, KtDbObjectId recordId, KtDxBlocks& owner, KtDxBlock* block) {
    recordIds.append(recordId);
    try {
        owner.addRepresentation(recordId, block);
    } catch (...) {
        removeLast(recordIds);
        throw;
    }
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
            addRecord(recordIds_, recordId, *owner_, this);
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
