// How a block definition monitor brings its recorded references up to date, and decides what has changed.

#include <KtDbBlockReference.h>
#include <KtDbBlockTableRecord.h>

#include "blocks/KtDxBlock.h"
#include "blocks/KtDxBlocks.h"
#include "blocks/ModelSpace.h"
#include "blocks/OpenedObject.h"
#include "blocks/RescanRoom.h"
#include "blocks/SortUnique.h"

#include <algorithm>
#include <array>
#include <cstddef>
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
    std::size_t followed = 0;                 ///< of the candidates, from the first on
    std::size_t nextPrevious = 0;
    bool isFollowing = true;
    bool isAlone = true; ///< neither inside another of the same block nor with one inside it

    /// Of those recorded before and not followed, ascending.
    const IdVector& previous() const { return room->previous; }

    /// Adds what was followed to the rest, in the room.
    void addFollowed() const {
        IdVector& all = room->previous;
        const auto ids = candidates.first(followed);
        try {
            all.insert(all.end(), ids.begin(), ids.end());
        } catch (const std::bad_alloc&) {
            return; // the rest has to do
        }
        sortUnique(all);
    }

    /// Of a reference that was not followed. Asked in ascending order.
    bool wasRecorded(KtDbObjectId reference) {
        const IdVector& ids = previous();
        while (nextPrevious < ids.size() && ids[nextPrevious] < reference) {
            ++nextPrevious;
        }
        return nextPrevious < ids.size() && ids[nextPrevious] == reference;
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
        if (recordId != blockId_ && !recordIds_.contains(recordId)) {
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

/// The record under which a reference with this owner is filed: for the model space of an attached drawing,
/// the record of this drawing that stands for it.
inline KtDbObjectId KtDxBlock::containerOf(KtDbObjectId owner) const {
    const bool isForeignModelSpace = isModelSpaceBlockId(owner) && owner.database() != owner_->database();
    return isForeignModelSpace ? owner_->findXrefBlock(owner) : owner;
}

/// Where an opened reference lies: the null id when that is nowhere.
struct KtDxBlock::Whereabouts {
    KtDbObjectId container;
    Orbx::ErrorStatus status; ///< of its opening
};

inline KtDxBlock::Whereabouts KtDxBlock::whereaboutsOf(const OpenedObject<KtDbBlockReference>& opened) const {
    const KtDbObjectId container = opened ? containerOf(opened->ownerId()) : KtDbObjectId();
    const bool isSomewhere = !container.isNull() && container.isValid();
    return {isSomewhere ? container : KtDbObjectId(), opened.status()};
}

inline Orbx::ErrorStatus KtDxBlock::meetReference(KtDbObjectId reference, const Whereabouts& found,
                                                  Rescan& pass) {
    if (found.container.isNull()) {
        missContainer(reference, found.status, pass);
        return Orbx::eOk;
    }
    if (pass.isFollowing && recordedOrder_.isAt(pass.followed, reference, found.container)) {
        ++pass.followed;
        return Orbx::eOk;
    }
    return fileReference(reference, found.container, pass);
}

/// An enabled monitor attaches to a new reference while it is open.
inline Orbx::ErrorStatus KtDxBlock::meetEach(Rescan& pass) {
    for (const KtDbObjectId reference : pass.candidates) {
        const OpenedObject<KtDbBlockReference> opened(reference, KtDb::kForRead,
                                                      true); // erased ones count like others
        if (const Orbx::ErrorStatus status = meetReference(reference, whereaboutsOf(opened), pass);
            status != Orbx::eOk) {
            return status;
        }
    }
    return Orbx::eOk;
}

/// Any other asks the host for nothing in between. References lie far apart in memory: of several that are
/// opened right after one another the processor waits for all at once.
Orbx::ErrorStatus KtDxBlock::meetTogether(Rescan& pass) {
    std::array<Whereabouts, 8> found;
    for (std::span<const KtDbObjectId> rest = pass.candidates; !rest.empty();) {
        const auto next = rest.first(std::min(found.size(), rest.size()));
        for (std::size_t i = 0; i < next.size(); ++i) {
            found[i] = whereaboutsOf(OpenedObject<KtDbBlockReference>(next[i], KtDb::kForRead, true));
        }
        for (std::size_t i = 0; i < next.size(); ++i) {
            if (const Orbx::ErrorStatus status = meetReference(next[i], found[i], pass);
                status != Orbx::eOk) {
                return status;
            }
        }
        rest = rest.subspan(next.size());
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus KtDxBlock::rescan(Rescan& pass) {
    RescanRoom& room = *pass.room;
    if (const Orbx::ErrorStatus status = listReferences(room.listed); status != Orbx::eOk) {
        return status;
    }
    const std::span<const KtDbObjectId> listed{room.listed.begin(), room.listed.length()};
    const bool isAsRecorded = recordedOrder_.hasReferences(listed); // and then in order
    pass.candidates = isAsRecorded ? listed : room.listedInOrder.ascending(listed);
    if (running_ != nullptr) {
        stopFollowing(*running_); // the lists that it follows are about to change
        running_->isAlone = pass.isAlone = false;
    }
    if (isOrderDoubtful_ && !checkOrder(pass)) {
        return Orbx::eMissing;
    }
    const RunningRescan running(running_, pass);
    const Orbx::ErrorStatus status = isEnabled() ? meetEach(pass) : meetTogether(pass);
    if (status != Orbx::eOk) {
        return status;
    }
    if (!pass.isFollowing || pass.followed != recordedOrder_.size()) {
        dropMissing(pass);
        dropUnusedContainers();
        settleOrder(pass);
    }
    setNeedsUpdate(false);
    return Orbx::eOk;
}

/// False when a container has no array.
bool KtDxBlock::checkOrder(Rescan& pass) {
    const bool hasAllArrays = std::none_of(referencesByContainer_.begin(), referencesByContainer_.end(),
                                           [](const auto& entry) { return entry.second == nullptr; });
    if (!hasAllArrays) {
        return false;
    }
    if (recordedOrder_.isOf(referencesByContainer_)) {
        isOrderDoubtful_ = false;
    } else {
        forgetOrder(pass);
    }
    return true;
}

/// Goes by the arrays themselves: nothing is followed.
void KtDxBlock::forgetOrder(Rescan& pass) {
    for (const auto& [container, references] : referencesByContainer_) {
        pass.room->previous.insert(pass.room->previous.end(), references->begin(), references->end());
    }
    sortUnique(pass.room->previous);
    recordedOrder_.reserve(pass.candidates.size());
    recordedOrder_.cut(0);
    for (const auto& [container, references] : referencesByContainer_) {
        references->setLogicalLengthZero();
    }
    pass.isFollowing = false;
}

/// Throws std::bad_alloc and has then changed nothing.
void KtDxBlock::stopFollowing(Rescan& pass) {
    if (!pass.isFollowing) {
        return;
    }
    recordedOrder_.appendRest(pass.followed, pass.room->previous);
    recordedOrder_.reserve(pass.candidates.size());
    if (!pass.previous().empty()) {
        cutContainers(pass.previous().front());
    }
    recordedOrder_.cut(pass.followed);
    recordedOrder_.unsettle();
    isOrderDoubtful_ = true; // the next rescan checks it
    pass.isFollowing = false;
}

/// Where one rescan runs inside another, both file what they meet, and the order has references twice.
void KtDxBlock::settleOrder(const Rescan& pass) {
    if (pass.isAlone) {
        recordedOrder_.settle(referencesByContainer_); // the doubt stays: somebody may have looked meanwhile
    }
}

/// Forgets the references from this one on.
void KtDxBlock::cutContainers(KtDbObjectId first) {
    for (const auto& [container, references] : referencesByContainer_) {
        const KtDbObjectId* const end = std::lower_bound(references->begin(), references->end(), first);
        references->setLogicalLength(static_cast<std::size_t>(end - references->begin()));
    }
}

/// The only record of most blocks is the definition: then the list of records need not be read.
std::span<const KtDbObjectId> KtDxBlock::records() const {
    return recordIds_.length() == 1 ? std::span(&blockId_, 1)
                                    : std::span(recordIds_.begin(), recordIds_.length());
}

/// Everything that the host lists as a reference to one of the records, living or erased.
Orbx::ErrorStatus KtDxBlock::listReferences(KtDbObjectIdArray& listed) const {
    listed.setLogicalLengthZero();
    for (const KtDbObjectId recordId : records()) {
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

/// Of a reference that is to be found nowhere.
void KtDxBlock::missContainer(KtDbObjectId reference, Orbx::ErrorStatus why, Rescan& pass) {
    stopFollowing(pass);
    if (pass.wasRecorded(reference) && isEnabled()) {
        leaveBehind(reference, why); // recorded no more, and still heard
    }
}

Orbx::ErrorStatus KtDxBlock::fileReference(KtDbObjectId reference, KtDbObjectId container, Rescan& pass) {
    stopFollowing(pass);
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
    recordedOrder_.append(reference, container);
    return Orbx::eOk;
}

/// The container's array, made when the container is new, which is a change. Null when its entry has none.
KtDbObjectIdArray* KtDxBlock::containerArray(KtDbObjectId container) {
    auto entry = referencesByContainer_.find(container);
    if (entry == referencesByContainer_.end()) {
        setChanged(true);
        entry = referencesByContainer_
                    .emplace(container, std::make_unique<KtDbObjectIdArray>(2, 8)) // most hold one or two
                    .first;
    }
    return entry->second.get();
}

/// Lets go of recorded references that the host lists no more, neither as living nor as erased.
void KtDxBlock::dropMissing(Rescan& pass) {
    stopFollowing(pass);
    bool areAllThere = true;
    auto candidate = pass.candidates.begin();
    for (const KtDbObjectId reference : pass.previous()) {
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
