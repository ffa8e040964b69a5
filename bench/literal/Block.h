#pragma once

#include "bench/literal/Ids.h"

#include <KtDbBlockTableRecord.h>
#include <KtDbObjectReactor.h>

namespace bench::literal {

class Blocks;

/// What the module's monitor of one block definition does, written straight down.
class Block final : public KtDbObjectReactor {
public:
    ~Block() override;

    Orbx::ErrorStatus init(Blocks* owner, const KtDbBlockTableRecord* record);
    Orbx::ErrorStatus update(KtDbObjectId recordId);

    Orbx::ErrorStatus refresh() { return update(blockId_); }

    Orbx::ErrorStatus setEnabled(bool enable);

    bool isEnabled() const { return enabled_; }

    void setNeedsUpdate(bool on);

    bool needsUpdate() const { return needsUpdate_; }

    void setChanged(bool on);

    bool isChanged() const { return changed_; }

    void addCallback(KtRxCallback callback) { callbacks_.insert(callback); }

    KtDbObjectId blockId() const { return blockId_; }

    const IdLists& references() const { return referencesByContainer_; }

    const IdLists& attributes() const { return attributesByReference_; }

    const IdArray& recordIds() const { return recordIds_; }

    const Callbacks& callbacks() const { return callbacks_; }

    void copied(const KtDbObject* object, const KtDbObject* copy) override;
    void goodbye(const KtDbObject* object) override;
    void openedForModify(const KtDbObject* object) override;

private:
    struct Pass {
        IdSet previous;
        IdSet seen;
        IdSet used;
    };

    void reset();
    void addRepresentations();
    Orbx::ErrorStatus collectCandidates(IdSet& candidates) const;
    Orbx::ErrorStatus takePrevious(IdSet& previous);
    Orbx::ErrorStatus visit(KtDbObjectId reference, Pass& pass);
    Orbx::ErrorStatus file(KtDbObjectId reference, KtDbObjectId container, Pass& pass);
    void dropMissing(const Pass& pass);
    void dropUnused(const Pass& pass);
    KtDbObjectId containerOf(KtDbObjectId owner) const;
    Orbx::ErrorStatus attachReference(KtDbObjectId reference, bool attach);
    void attachAttributes(KtDbObjectId reference, KtDbObjectIterator& attributes);
    void detachAttributes(const IdArray& attributes);

    Blocks* owner_ = nullptr;
    KtDbObjectId blockId_;
    IdLists referencesByContainer_;
    bool enabled_ = false;
    bool changed_ = false;
    bool needsUpdate_ = true;
    Callbacks callbacks_;
    IdLists attributesByReference_;
    IdArray recordIds_{0, 8};
};

} // namespace bench::literal
