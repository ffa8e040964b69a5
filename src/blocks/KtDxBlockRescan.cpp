// How a block definition monitor brings its recorded references up to date, and decides what has changed.

#include <KtDbBlockReference.h>
#include <KtDbBlockTableRecord.h>

#include "blocks/KtDxBlock.h"
#include "blocks/KtDxBlocks.h"
#include "blocks/OpenedObject.h"
#include "blocks/RescanRoom.h"
#include "blocks/SortUnique.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <tuple>
#include <utility>

namespace {

/// A record that the owner could not take must be new again at the next update.
void addRecord(KtDbObjectIdArray& recordIds, KtDbObjectId recordId, KtDxBlocks& owner, KtDxBlock* block) {
    recordIds.append(recordId);
    try {
        owner.addRepresentation(recordId, block);
    } catch (...) {
        recordIds.setLogicalLength(recordIds.length() - 1);
        throw;
    }
}

} // namespace

/// One rescan. As long as it meets what is recorded where it is recorded, it only follows; from the first
/// difference on it files what it meets.
struct KtDxBlock::Rescan {
    explicit Rescan(RescanRoom& shared) : room(shared) { room->previous.clear(); }

    BorrowedRescanRoom room;
    std::span<const KtDbObjectId> candidates; ///< listed by the host, ascending, each once; all of it counts
                                              ///< as present, whether or not it can be opened
    std::span<const KtDbObjectId> previous;   ///< recorded before and not followed, ascending
    std::size_t nextPrevious = 0;
    bool isFollowing = true;

    /// Throws std::bad_alloc and has then changed nothing.
    void stopFollowing() {
        if (!isFollowing) {
            return;
        }
        room->recorded.appendRest(room->previous);
        previous = room->previousInOrder.ascending(room->previous);
        room->recorded.cutRest();
        isFollowing = false;
    }

    /// Adds what was followed to the rest, in the room.
    void addFollowed() const {
        IdVector& all = room->previous;
        const auto followed = candidates.first(room->recorded.followedCount());
        try {
            all.insert(all.end(), followed.begin(), followed.end());
        } catch (const std::bad_alloc&) {
            return; // the rest has to do
        }
        sortUnique(all);
    }

    /// Of a reference that was not followed. Asked in ascending order.
    bool wasRecorded(KtDbObjectId reference) {
        while (nextPrevious < previous.size() && previous[nextPrevious] < reference) {
            ++nextPrevious;
        }
        return nextPrevious < previous.size() && previous[nextPrevious] == reference;
    }
};

/// Lets an update inside a rescan of the same block find it.
class KtDxBlock::RunningRescan {
public:
    RunningRescan(Rescan*& place, Rescan& pass) : place_(place), outer_(std::exchange(place, &pass)) {}

    RunningRescan(const RunningRescan&) = delete;
    RunningRescan& operator=(const RunningRescan&) = delete;

    ~RunningRescan() { place_ = outer_; }

private:
    Rescan*& place_;
    Rescan* outer_;
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
    Rescan pass(owner_->rescanRoom());
    const Orbx::ErrorStatus status = tryRescan(pass);
    if (status != Orbx::eOk && isEnabled() && !pass.isFollowing) {
        pass.addFollowed(); // their array may be what is missing
        leaveBehind(
            std::move(pass.room->previous)); // those that the pass did not come to are recorded no more
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
    RescanRoom& room = *pass.room;
    if (const Orbx::ErrorStatus status = listReferences(room.listed); status != Orbx::eOk) {
        return status;
    }
    pass.candidates = room.listedInOrder.ascending({room.listed.begin(), room.listed.length()});
    if (running_ != nullptr) {
        running_->stopFollowing(); // the lists that it follows are about to change
    }
    if (!room.recorded.start(referencesByContainer_)) {
        return Orbx::eMissing;
    }
    const RunningRescan running(running_, pass);
    for (const KtDbObjectId reference : pass.candidates) {
        if (const Orbx::ErrorStatus status = meetReference(reference, pass); status != Orbx::eOk) {
            return status;
        }
    }
    if (!pass.isFollowing || !room.recorded.isAllFollowed()) {
        dropMissing(pass);
        dropUnusedContainers();
    }
    setNeedsUpdate(false);
    return Orbx::eOk;
}

/// Everything that the host lists as a reference to one of the records, living or erased.
Orbx::ErrorStatus KtDxBlock::listReferences(KtDbObjectIdArray& listed) const {
    listed.setLogicalLengthZero();
    for (const KtDbObjectId recordId : recordIds_) {
        if (recordId.isErased()) {
            continue;
        }
        const OpenedObject<KtDbBlockTableRecord> record(recordId, KtDb::kForRead);
        if (!record) {
            return record.status();
        }
        if (const Orbx::ErrorStatus status = record->getBlockReferenceIds(listed, true, true);
            status != Orbx::eOk) {
            return status;
        }
        if (const Orbx::ErrorStatus status = record->getErasedBlockReferenceIds(listed);
            status != Orbx::eOk) {
            return status;
        }
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus KtDxBlock::meetReference(KtDbObjectId reference, Rescan& pass) {
    RecordedOrder& recorded = pass.room->recorded;
    const OpenedObject<KtDbBlockReference> opened(reference, KtDb::kForRead,
                                                  true); // erased ones count like others
    const KtDbObjectId owner = opened ? opened->ownerId() : KtDbObjectId();
    std::uint32_t place = recorded.placeOf(owner);
    KtDbObjectId container = owner;
    if (place == IdNumbers::kNone || !recorded.isOwnContainer(place)) {
        container = containerOf(owner);
        if (container.isNull() || !container.isValid()) {
            missContainer(reference, opened.status(), pass);
            return Orbx::eOk;
        }
        place = container == owner ? recorded.noteOwnContainer(owner) : recorded.placeOf(container);
    }
    if (pass.isFollowing && place != IdNumbers::kNone && recorded.follow(place, reference)) {
        return Orbx::eOk;
    }
    return fileReference(reference, container, pass);
}

/// Of a reference that is to be found nowhere.
void KtDxBlock::missContainer(KtDbObjectId reference, Orbx::ErrorStatus why, Rescan& pass) {
    pass.stopFollowing();
    if (pass.wasRecorded(reference) && isEnabled()) {
        leaveBehind(reference, why); // recorded no more, and still heard
    }
}

Orbx::ErrorStatus KtDxBlock::fileReference(KtDbObjectId reference, KtDbObjectId container, Rescan& pass) {
    pass.stopFollowing();
    const bool isNew = !pass.wasRecorded(reference);
    if (isNew) {
        setChanged(true);
    }
    if (const Orbx::ErrorStatus status = record(reference, container); status != Orbx::eOk) {
        return status;
    }
    if (isNew && isEnabled()) {                         // behind the recording: what is heard has to be known
        std::ignore = attachReference(reference, true); // one that will not open is recorded all the same
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus KtDxBlock::record(KtDbObjectId reference, KtDbObjectId container) {
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
void KtDxBlock::dropMissing(Rescan& pass) {
    pass.stopFollowing();
    bool areAllThere = true;
    auto candidate = pass.candidates.begin();
    for (const KtDbObjectId reference : pass.previous) {
        while (candidate != pass.candidates.end() && *candidate < reference) {
            ++candidate;
        }
        if (candidate == pass.candidates.end() || *candidate != reference) {
            setChanged(true);
            std::ignore = attachReference(reference, false); // most are released by now and cannot be opened
            areAllThere = false;
        }
    }
    if (!areAllThere) {
        removeEmptyAttributes();
    }
}

/// All arrays hold what this rescan has met.
void KtDxBlock::dropUnusedContainers() {
    for (auto entry = referencesByContainer_.begin(); entry != referencesByContainer_.end();) {
        if (entry->second != nullptr && !entry->second->isEmpty()) {
            ++entry;
        } else {
            setChanged(true);
            entry = referencesByContainer_.erase(entry);
        }
    }
}
