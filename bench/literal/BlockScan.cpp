// How the literal monitor of the block table finds the definitions.

#include "bench/BlockTableWalk.h"
#include "bench/Opened.h"
#include "bench/literal/Blocks.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtRxClass.h>

#include <memory>
#include <tuple>

namespace bench::literal {

namespace {

/// What the first of the record's references that can say it says; the null id for none.
KtDbObjectId representedDefinition(const KtDbBlockTableRecord& record) {
    IdArray references(0, 8);
    if (record.getBlockReferenceIds(references, true, true) != Orbx::eOk) {
        return {};
    }
    for (const KtDbObjectId id : references) {
        const Opened<KtDbBlockReference> reference(id, KtDb::kForNotify, true);
        if (!reference) {
            continue;
        }
        const KtRxObject* extension = reference->queryX(KtDbBlockRepresentation::desc());
        if (extension != nullptr && extension->isA()->isDerivedFrom(KtDbBlockRepresentation::desc())) {
            const auto* protocol = static_cast<const KtDbBlockRepresentation*>(extension);
            return protocol->originalBlockTableRecord(reference.get());
        }
    }
    return {};
}

} // namespace

Orbx::ErrorStatus Blocks::scanBlockTable() {
    const KtDbDatabase* drawing = database();
    if (drawing == nullptr) {
        return Orbx::eMissing;
    }
    layoutIds_.setLogicalLengthZero();
    monitoredCount_ = 0;
    Orbx::ErrorStatus status = Orbx::eOk;
    walkBlockTable(*drawing, [&](const KtDbBlockTableRecord& record) {
        status = scanRecord(record);
        return status == Orbx::eOk;
    });
    if (status == Orbx::eOk) {
        setRescanNeeded(false);
    }
    return status;
}

Orbx::ErrorStatus Blocks::scanRecord(const KtDbBlockTableRecord& record) {
    if (record.isLayout()) {
        layoutIds_.append(record.objectId());
    }
    KtDbObjectId key = record.objectId();
    if (record.isAnonymous()) {
        const KtDbObjectId definition = representedDefinition(record);
        key = definition.isNull() ? key : definition;
    }
    const auto known = monitors_.find(key);
    if (known == monitors_.end()) {
        monitoredCount_ += createBlockMonitor(record) == Orbx::eOk ? 1 : 0;
        return Orbx::eOk;
    }
    if (known->second == nullptr) {
        return Orbx::eMissing;
    }
    std::ignore = known->second->update(record.objectId()); // counts as watched either way
    ++monitoredCount_;
    return Orbx::eOk;
}

Orbx::ErrorStatus Blocks::createBlockMonitor(const KtDbBlockTableRecord& record) {
    const KtDbObjectId id = record.objectId();
    const auto present = monitors_.find(id);
    if (present != monitors_.end() && present->second != nullptr) {
        return Orbx::eDuplicateRecordId;
    }
    auto block = std::make_unique<Block>();
    if (const Orbx::ErrorStatus status = block->init(this, &record); status != Orbx::eOk) {
        return status;
    }
    monitors_[id] = block.release();
    return Orbx::eOk;
}

void Blocks::addRepresentation(KtDbObjectId id, Block* block) {
    monitors_.emplace(id, block);
}

} // namespace bench::literal
