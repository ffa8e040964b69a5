#pragma once

#include "tests/model/DefinitionModel.h"
#include "tests/model/Snapshot.h"
#include "tests/model/TimerModel.h"

#include <KtArray.h>
#include <KtDbDatabase.h>
#include <KtDbObjectReactor.h>

#include <map>
#include <memory>
#include <optional>
#include <set>

namespace ktmodel {

/// What has to be known of one drawing's block table: a model of every definition, whether the table has to
/// be looked at again, and whether clients are to be called.
class BlocksModel final : public KtDbObjectReactor {
public:
    /// By the id of a record; a dynamic definition and its representations share one.
    using Definitions = std::map<KtDbObjectId, std::shared_ptr<DefinitionModel>>;

    BlocksModel(KtDbDatabase& database, EnabledTimers& timers) : database_(database), timers_(timers) {}

    BlocksModel(const BlocksModel&) = delete;
    BlocksModel& operator=(const BlocksModel&) = delete;
    ~BlocksModel() override;

    /// A drawing without model space has no block table model.
    int attach();
    int setEnabled(bool enable);

    bool isEnabled() const { return enabled_; }

    void setRescanNeeded(bool needed);
    void setPendingChanges(bool pending);

    /// Looks at the whole table again.
    void scan();
    /// The first half of an update; false when there was nothing to do.
    bool scanIfNeeded(bool force);
    /// Callbacks of what has changed, which are then to be called, and after them `callsDone`. Nothing when
    /// there is nothing to tell.
    std::optional<std::set<CallbackNumber>> takeCallbacks();

    void callsDone() { setPendingChanges(false); }

    void addCallback(const KtArray<KtDbObjectId>& ids, CallbackNumber callback);
    void removeCallback(CallbackNumber callback);
    bool hasCallbacks() const;

    /// For the definitions: a record belongs to one of them, too, unless it belongs to one already.
    void addRepresentation(KtDbObjectId record, DefinitionModel& definition);

    const KtDbDatabase* database() const { return &database_; }

    /// The record that stands for the drawing that the id is of.
    KtDbObjectId findXrefBlock(KtDbObjectId id) const;

    const Definitions& definitions() const { return definitions_; }

    /// Null when the drawing does not know that record.
    const DefinitionModel* definition(KtDbObjectId record) const;

    KtDbObjectId modelSpace() const { return modelSpace_; }

    const Ids& layouts() const { return layouts_; }

    std::optional<TimerModel>& timer() { return timer_; }

    BlocksSnapshot snapshot() const;

    void openedForModify(const KtDbObject* object) override;

private:
    void scanRecord(KtDbObjectId id);
    bool create(const KtDbBlockTableRecord& record);
    void drop(const DefinitionModel& definition);
    void propagate();
    std::set<DefinitionModel*> distinct() const;

    KtDbDatabase& database_;
    EnabledTimers& timers_;
    bool enabled_ = false;
    bool rescanNeeded_ = true;
    bool pendingChanges_ = false;
    KtDbObjectId modelSpace_;
    Ids layouts_;
    std::int32_t monitoredCount_ = 0;
    Definitions definitions_;
    std::shared_ptr<DefinitionModel> beingMade_; // null except while it is
    std::optional<TimerModel> timer_;
};

} // namespace ktmodel
