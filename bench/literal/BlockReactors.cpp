// How the literal monitor attaches to what it watches, and lets go of it.

#include "bench/Opened.h"
#include "bench/literal/Block.h"

#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>

#include <memory>
#include <tuple>

namespace bench::literal {

namespace {

bool isGone(KtDbObjectId id) {
    return id.isNull() || !id.isValid() || id.isErased() || id.isEffectivelyErased();
}

} // namespace

Orbx::ErrorStatus Block::setEnabled(bool enable) {
    if (enable == enabled_) {
        return Orbx::eOk;
    }
    for (const auto& [container, references] : referencesByContainer_) {
        for (const KtDbObjectId reference : *references) {
            std::ignore = attachReference(reference, enable); // one that will not open is passed over
        }
    }
    enabled_ = enable;
    if (blockId_.isNull() || !blockId_.isValid()) {
        return enable ? Orbx::eInvalidBlockId : Orbx::eOk;
    }
    if (enable && (blockId_.isErased() || blockId_.isEffectivelyErased())) {
        return Orbx::eInvalidBlockId;
    }
    for (const KtDbObjectId id : recordIds_) {
        const Opened<KtDbBlockTableRecord> record(id, KtDb::kForNotify, !enable);
        if (!record) {
            return record.status();
        }
        std::ignore = enable ? record->addReactor(this) : record->removeReactor(this); // need not succeed
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus Block::attachReference(KtDbObjectId reference, bool attach) {
    const Opened<KtDbBlockReference> opened(reference, KtDb::kForNotify, true);
    if (!opened) {
        return opened.status();
    }
    if (attach) {
        std::ignore = opened->addReactor(this); // need not succeed
        const std::unique_ptr<KtDbObjectIterator> attributes(opened->attributeIterator());
        if (attributes != nullptr) {
            attachAttributes(reference, *attributes);
        }
        return Orbx::eOk;
    }
    std::ignore = opened->removeReactor(this); // need not be there
    const auto entry = attributesByReference_.find(reference);
    if (entry != attributesByReference_.end()) {
        detachAttributes(*entry->second);
        attributesByReference_.erase(entry);
    }
    return Orbx::eOk;
}

void Block::attachAttributes(KtDbObjectId reference, KtDbObjectIterator& attributes) {
    const auto entry = attributesByReference_.find(reference);
    IdArray* recorded = entry == attributesByReference_.end() ? nullptr : entry->second.get();
    for (; !attributes.done(); attributes.step()) {
        const KtDbObjectId id = attributes.objectId();
        if (isGone(id)) {
            continue;
        }
        const Opened<KtDbAttribute> attribute(id, KtDb::kForNotify, true);
        if (!attribute) {
            continue;
        }
        std::ignore = attribute->addReactor(this); // need not succeed
        if (recorded == nullptr) {
            recorded = attributesByReference_.emplace(reference, newIdArray()).first->second.get();
        }
        recorded->append(id);
    }
}

void Block::detachAttributes(const IdArray& attributes) {
    for (const KtDbObjectId id : attributes) {
        if (id.isNull() || !id.isValid()) {
            continue;
        }
        if (const Opened<KtDbAttribute> attribute(id, KtDb::kForNotify, true); attribute) {
            std::ignore = attribute->removeReactor(this); // need not be there
        }
    }
}

} // namespace bench::literal
