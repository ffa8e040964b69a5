// How the literal monitor brings its references up to date.

#include "bench/ModelSpace.h"
#include "bench/Opened.h"
#include "bench/literal/Block.h"
#include "bench/literal/Blocks.h"

#include <KtDbBlockReference.h>

#include <tuple>

namespace bench::literal {

Orbx::ErrorStatus Block::update(KtDbObjectId recordId) {
    if (owner_ == nullptr) {
        return Orbx::eMissing;
    }
    if (recordId.isNull()) {
        return Orbx::eInvalidBlockId;
    }
    if (!recordIds_.contains(recordId)) {
        recordIds_.append(recordId);
        owner_->addRepresentation(recordId, this);
    }
    IdSet candidates;
    if (const Orbx::ErrorStatus status = collectCandidates(candidates); status != Orbx::eOk) {
        return status;
    }
    Pass pass;
    if (const Orbx::ErrorStatus status = takePrevious(pass.previous); status != Orbx::eOk) {
        return status;
    }
    for (const KtDbObjectId reference : candidates) {
        if (const Orbx::ErrorStatus status = visit(reference, pass); status != Orbx::eOk) {
            return status;
        }
    }
    dropMissing(pass);
    dropUnused(pass);
    setNeedsUpdate(false);
    return Orbx::eOk;
}

Orbx::ErrorStatus Block::collectCandidates(IdSet& candidates) const {
    for (const KtDbObjectId id : recordIds_) {
        if (id.isErased()) {
            continue;
        }
        const Opened<KtDbBlockTableRecord> record(id, KtDb::kForRead);
        if (!record) {
            return record.status();
        }
        IdArray found(0, 8);
        if (const Orbx::ErrorStatus status = record->getBlockReferenceIds(found, true, true);
            status != Orbx::eOk) {
            return status;
        }
        if (const Orbx::ErrorStatus status = record->getErasedBlockReferenceIds(found); status != Orbx::eOk) {
            return status;
        }
        for (const KtDbObjectId reference : found) {
            candidates.insert(reference);
        }
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus Block::takePrevious(IdSet& previous) {
    for (const auto& [container, references] : referencesByContainer_) {
        if (references == nullptr) {
            return Orbx::eMissing;
        }
        for (const KtDbObjectId reference : *references) {
            previous.insert(reference);
        }
        references->setLogicalLengthZero();
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus Block::visit(KtDbObjectId reference, Pass& pass) {
    pass.seen.insert(reference);
    const Opened<KtDbBlockReference> opened(reference, KtDb::kForRead, true);
    if (!opened) {
        return Orbx::eOk;
    }
    const KtDbObjectId container = containerOf(opened->ownerId());
    if (container.isNull() || !container.isValid()) {
        return Orbx::eOk;
    }
    if (!pass.previous.contains(reference)) {
        setChanged(true);
        if (enabled_) {
            std::ignore = attachReference(reference, true); // one that will not open is recorded all the same
        }
    }
    return file(reference, container, pass);
}

KtDbObjectId Block::containerOf(KtDbObjectId owner) const {
    const bool isForeign = isModelSpace(owner) && owner.database() != owner_->database();
    return isForeign ? owner_->findXrefBlock(owner) : owner;
}

Orbx::ErrorStatus Block::file(KtDbObjectId reference, KtDbObjectId container, Pass& pass) {
    pass.used.insert(container);
    auto entry = referencesByContainer_.find(container);
    if (entry == referencesByContainer_.end()) {
        setChanged(true);
        entry = referencesByContainer_.emplace(container, newIdArray()).first;
    }
    if (entry->second == nullptr) {
        return Orbx::eMissing;
    }
    entry->second->append(reference);
    return Orbx::eOk;
}

void Block::dropMissing(const Pass& pass) {
    for (const KtDbObjectId reference : pass.previous) {
        if (!pass.seen.contains(reference)) {
            setChanged(true);
            std::ignore = attachReference(reference, false); // most have been released
        }
    }
}

void Block::dropUnused(const Pass& pass) {
    for (auto entry = referencesByContainer_.begin(); entry != referencesByContainer_.end();) {
        if (pass.used.contains(entry->first)) {
            ++entry;
        } else {
            setChanged(true);
            entry = referencesByContainer_.erase(entry);
        }
    }
}

} // namespace bench::literal
