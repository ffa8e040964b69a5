#include "kthost/database/BlockTableRecord.h"

#include "kthost/database/Changes.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseTrace.h"
#include "kthost/database/ExternalDrawing.h"
#include "kthost/database/IdIterators.h"
#include "kthost/database/Nesting.h"
#include "kthost/database/ObjectAccess.h"

#include <algorithm>

namespace kthost {

namespace {

void append(const std::vector<KtDbObjectId>& found, KtArray<KtDbObjectId>& ids) {
    if (ids.physicalLength() < ids.length() + found.size()) {
        ids.setPhysicalLength(ids.length() + found.size());
    }
    for (const KtDbObjectId id : found) {
        ids.append(id);
    }
}

/// Ids of one drawing each, so that the whole is ascending within it.
std::vector<KtDbObjectId> nestedReferences(KtDbObjectId record) {
    std::vector<KtDbObjectId> found;
    for (const KtDbObjectId placed : recordAndContainers(record)) {
        const auto& direct = peek<BlockTableRecord>(placed)->references().living();
        found.insert(found.end(), direct.begin(), direct.end());
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

const BlockTableRecord* BlockTableRecord::mirrored() const {
    return peek<BlockTableRecord>(contents_->state.mirrors);
}

const ReferenceList& BlockTableRecord::references() const {
    const BlockTableRecord* other = mirrored();
    return other == nullptr ? contents_->references : other->references();
}

Orbx::ErrorStatus BlockTableRecord::getName(const wchar_t*& name) const {
    name = nullptr;
    if (const Orbx::ErrorStatus fault = beginCall(HostCall::getName, "getName", objectId());
        fault != Orbx::eOk) {
        return fault;
    }
    name = contents_->state.name.c_str();
    return Orbx::eOk;
}

bool BlockTableRecord::isFromExternalReference() const {
    const BlockTableRecord* other = mirrored();
    return other == nullptr ? contents_->state.drawing != nullptr : other->isFromExternalReference();
}

KtDbDatabase* BlockTableRecord::externalDatabase(bool load) {
    if (tracing()) {
        TraceLine("externalDatabase").field("id", objectId()).field("load", load);
    }
    return attachedDatabase();
}

KtDbDatabase* BlockTableRecord::attachedDatabase() const {
    if (const auto* other = peek<BlockTableRecord>(contents_->state.mirrors)) {
        return other->attachedDatabase();
    }
    return contents_->state.drawing == nullptr ? nullptr : contents_->state.drawing->database.get();
}

Orbx::ErrorStatus BlockTableRecord::getBlockReferenceIds(KtArray<KtDbObjectId>& ids, bool directOnly,
                                                         bool forceValidity) const {
    const Orbx::ErrorStatus status = Faults::instance().next(HostCall::getBlockReferenceIds);
    if (status == Orbx::eOk && directOnly) { // valid whether or not that is forced
        append(references().living(), ids);
    } else if (status == Orbx::eOk) {
        const BlockTableRecord* other = mirrored();
        append(nestedReferences(other == nullptr ? objectId() : other->objectId()), ids);
    }
    if (tracing()) {
        TraceLine("getBlockReferenceIds")
            .field("id", objectId())
            .field("directOnly", directOnly)
            .field("forceValidity", forceValidity)
            .field("status", status);
    }
    return status;
}

Orbx::ErrorStatus BlockTableRecord::getErasedBlockReferenceIds(KtArray<KtDbObjectId>& ids) const {
    if (const Orbx::ErrorStatus fault =
            beginCall(HostCall::getErasedBlockReferenceIds, "getErasedBlockReferenceIds", objectId());
        fault != Orbx::eOk) {
        return fault;
    }
    append(references().erased(), ids);
    return traceCall("getErasedBlockReferenceIds", objectId(), Orbx::eOk);
}

KtDbObjectIterator* BlockTableRecord::entityIterator() const {
    if (beginCall(HostCall::entityIterator, "entityIterator", objectId()) != Orbx::eOk) {
        return nullptr;
    }
    if (tracing()) {
        TraceLine("entityIterator").field("id", objectId());
    }
    return new EntityIterator(contents_->entities);
}

Orbx::ErrorStatus BlockTableRecord::setFields(RecordState fields) {
    const Orbx::ErrorStatus status = beginStateChange(objectId());
    if (status == Orbx::eOk) {
        ObjectState other = std::move(fields);
        exchangeState(other);
    }
    return status;
}

void BlockTableRecord::exchangeState(ObjectState& state) {
    auto& other = std::get<RecordState>(state);
    if (auto* table = peek<BlockTable>(ownerId()); table != nullptr && other.name != contents_->state.name) {
        table->rename(objectId(), contents_->state.name, other.name);
    }
    std::swap(contents_->state, other);
}

} // namespace kthost
