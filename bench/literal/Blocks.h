#pragma once

#include "bench/literal/Block.h"
#include "bench/literal/Ids.h"
#include "bench/literal/Timer.h"

#include <KtDbDatabase.h>
#include <KtDbObjectReactor.h>

#include <cstdint>
#include <map>
#include <memory>

class KtApDocument;

namespace bench::literal {

/// What the module's monitor of a drawing's block table does, written straight down.
class Blocks final : public KtDbObjectReactor, public TimerReactor {
public:
    using Monitors = std::map<KtDbObjectId, Block*>;

    explicit Blocks(Timers& timers) : timers_(timers) {}

    ~Blocks() override;

    Orbx::ErrorStatus attachDocument(KtApDocument* document);
    Orbx::ErrorStatus setEnabled(bool enable);

    bool isEnabled() const { return enabled_; }

    Orbx::ErrorStatus scanBlockTable();
    void update(bool force, bool notify);
    void propagateChanges();
    void notifyBlockReferenceMonitors();
    void setRescanNeeded(bool on);

    bool isRescanNeeded() const { return rescanNeeded_; }

    void setPendingChanges(bool on);

    bool hasPendingChanges() const { return pendingChanges_; }

    Orbx::ErrorStatus attachBlockReferenceMonitor(KtRxCallback callback, const IdArray& ids);
    void addRepresentation(KtDbObjectId id, Block* block);
    KtDbDatabase* database() const;

    KtDbObjectId findXrefBlock(KtDbObjectId id) const;
    Orbx::ErrorStatus collectNestedBlocks(KtDbObjectId container, bool recursive, IdSet& nested);
    std::uint32_t countReferences(KtDbObjectId block, KtDbObjectId container, bool recursive);
    std::uint32_t countInstances(KtDbObjectId block, bool modelSpaceOnly, bool recursive);

    const Monitors& monitors() const { return monitors_; }

    const IdArray& layoutIds() const { return layoutIds_; }

    KtDbObjectId modelSpaceId() const { return modelSpaceId_; }

    std::int32_t monitoredCount() const { return monitoredCount_; }

    void openedForModify(const KtDbObject* object) override;
    void timerElapsed() override;

private:
    Orbx::ErrorStatus scanRecord(const KtDbBlockTableRecord& record);
    Orbx::ErrorStatus createBlockMonitor(const KtDbBlockTableRecord& record);
    Orbx::ErrorStatus collectNestedBlocks(KtDbObjectId container, bool recursive, IdSet& nested,
                                          IdSet& visited);
    std::uint32_t countReferences(KtDbObjectId block, KtDbObjectId container, bool recursive, IdSet& visited);

    Timers& timers_;
    KtApDocument* document_ = nullptr;
    Monitors monitors_;
    IdArray layoutIds_{0, 8};
    KtDbObjectId modelSpaceId_;
    std::int32_t monitoredCount_ = 0;
    bool enabled_ = false;
    bool rescanNeeded_ = true;
    bool pendingChanges_ = false;
    std::unique_ptr<Timer> timer_;
};

} // namespace bench::literal
