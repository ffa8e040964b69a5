#pragma once

#include "tests/model/Snapshot.h"

#include <KtDbBlockTableRecord.h>
#include <KtDbObjectReactor.h>

namespace ktmodel {

class BlocksModel;

/// What has to be known of one block definition: where it is placed, what attributes the placements have, and
/// whether clients must hear of a change. A reactor of the host in its own right, so that it hears exactly
/// what a monitor hears that is attached to the same objects.
class DefinitionModel final : public KtDbObjectReactor {
public:
    DefinitionModel() = default;
    DefinitionModel(const DefinitionModel&) = delete;
    DefinitionModel& operator=(const DefinitionModel&) = delete;
    /// Lets go of everything.
    ~DefinitionModel() override;

    int init(BlocksModel& owner, const KtDbBlockTableRecord& record);
    int update(KtDbObjectId record);
    int setEnabled(bool enable);
    void setChanged(bool on);
    void setNeedsUpdate(bool on);

    void addCallback(CallbackNumber callback) { state_.callbacks.insert(callback); }

    void removeCallback(CallbackNumber callback) { state_.callbacks.erase(callback); }

    KtDbObjectId id() const { return id_; }

    const MonitorSnapshot& state() const { return state_; }

    void copied(const KtDbObject* object, const KtDbObject* copy) override;
    void openedForModify(const KtDbObject* object) override;
    void goodbye(const KtDbObject* object) override;

private:
    void addRepresentations();
    int collectCandidates(IdSet& candidates) const;
    IdSet recordedReferences() const;
    KtDbObjectId containerOf(KtDbObjectId reference) const;
    bool isForeignModelSpace(KtDbObjectId container) const;
    void takeOver(const std::map<KtDbObjectId, Ids>& found);
    void watchReference(KtDbObjectId reference);
    void watchAttributes(KtDbObjectId reference, KtDbObjectIterator& attributes);
    void forgetReference(KtDbObjectId reference);
    void unwatchAttributes(const Ids& attributes);
    int watchRecords(bool watch);
    void watch(const KtDbObject& object);
    void unwatch(const KtDbObject& object);
    void unwatchWhatIsLeft();

    BlocksModel* owner_ = nullptr;
    KtDbObjectId id_;
    MonitorSnapshot state_;
    IdSet watched_; // objects that this reactor is on
};

} // namespace ktmodel
