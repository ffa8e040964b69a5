#pragma once

#include <KtDbObjectReactor.h>

#include "blocks/BlockNesting.h"
#include "blocks/KtDxBlock.h"
#include "blocks/RescanRoom.h"
#include "notify/KtDxEnableBase.h"
#include "notify/KtDxTimerReactor.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <set>

class KtDbBlockTable;
class KtDbDatabase;
class KtDxDocument;
class KtDxTimer;

using KtDbObjectIdSet = std::set<KtDbObjectId>;

/// Watches the block table of one drawing: keeps a monitor for every block definition, answers which
/// definitions are used inside which, and at idle time calls the clients of those that have changed.
///
/// It does nothing while disabled. The first client that attaches enables it, the last one to go disables it.
/// Notifications and monitors only set two marks: rescan-needed and pending-changes; `update`, run at idle
/// checks by a timer of its own, does the work. User-interface thread only.
class KtDxBlocks : public KtDbObjectReactor, public KtDxEnableBase, public KtDxTimerReactor {
public:
    /// Several keys may reach one monitor: that of a dynamic definition and those of its representations. An
    /// entry is empty only if somebody entered it so; walks end there.
    using BlockMonitors = BlockNesting::BlockMonitors;

    /// A new monitor bound to a document record, owned by the caller; null on failure.
    static Orbx::ErrorStatus create(KtDxDocument* document, KtDxBlocks*& blocks);

    /// Bound to nothing.
    KtDxBlocks();
    ~KtDxBlocks() override;

    /// The block table is about to be changed: definitions may come or go.
    void openedForModify(const KtDbObject* object) override;

    /// Forgets the document and everything known of it; every monitor and the timer are destroyed. The
    /// enabled state stays.
    virtual void reset();
    /// Null without a document or a drawing.
    virtual KtDbDatabase* database() const;

    /// How many references of a block lie in a container: straight in it, and, when recursive, also through
    /// blocks that are themselves placed straight in it; deeper ones are not counted. `visited` stops
    /// repeats. 0 when something is missing, memory included.
    virtual std::uint32_t countReferences(KtDbObjectId block, KtDbObjectId container, bool recursive,
                                          KtDbObjectIdSet& visited);
    virtual std::uint32_t countReferences(KtDbObjectId block, KtDbObjectId container, bool recursive);
    /// The same, summed over model space alone or over all layouts.
    virtual std::uint32_t countInstances(KtDbObjectId block, bool modelSpaceOnly, bool recursive);
    /// Adds to `nested` the definitions used inside a container, directly or (recursive) at any depth.
    /// Containers in `visited` are passed over, and those looked at are added. eMissing when an empty entry
    /// cut the walk short, and when there is no memory.
    virtual Orbx::ErrorStatus collectNestedBlocks(KtDbObjectId container, bool recursive,
                                                  KtDbObjectIdSet& nested, KtDbObjectIdSet& visited);
    virtual Orbx::ErrorStatus collectNestedBlocks(KtDbObjectId container, bool recursive,
                                                  KtDbObjectIdSet& nested);

    /// Has every record of the block table monitored, or its monitor look at it again. Records that will not
    /// open or whose monitor cannot be made are passed over. eMissing without a drawing or at an empty entry;
    /// the host's status when the table cannot be walked, and a rescan is then still needed.
    virtual Orbx::ErrorStatus scanBlockTable();
    /// Calls each callback of the changed blocks once, in ascending order of address, and clears the marks.
    /// What the callbacks change is not reported.
    virtual void notifyBlockReferenceMonitors();
    /// Marks every block used inside a changed block, at any depth, as changed: its instances may be more or
    /// fewer now. A block is not changed by what happens inside the blocks that it contains.
    virtual void propagateChanges();
    /// Scan, propagate and, if asked, notify. Nothing unless forced, or enabled with a rescan needed.
    virtual void update(bool force, bool notify);

    virtual bool isRescanNeeded() const;
    /// Clearing clears the mark of every monitor too, up to the first empty entry.
    virtual void setRescanNeeded(bool on);
    virtual bool hasPendingChanges() const;
    /// Clearing clears the mark of every monitor too, up to the first empty entry.
    virtual void setPendingChanges(bool on);

    /// Adds a callback to the monitors of the given definitions; ids without one are passed over. eMissing
    /// for a null callback, at an empty entry (those before it stay attached), and when there is no memory.
    virtual Orbx::ErrorStatus attachBlockReferenceMonitor(KtRxCallback callback,
                                                          const KtDbObjectIdArray& blockIds);
    virtual void detachBlockReferenceMonitor(KtRxCallback callback);
    /// Adds every callback attached to any block. eMissing at an empty entry, and when there is no memory.
    virtual Orbx::ErrorStatus collectBlockReferenceMonitors(KtDxCallbackSet& callbacks);

    /// The record of this drawing that stands for the drawing of `id`; the null id when that is this one, or
    /// none stands for it.
    virtual KtDbObjectId findXrefBlock(KtDbObjectId id) const;
    /// Has `id` reach `block`, unless it is a key already. What keys reach belongs to this object.
    virtual void addRepresentation(KtDbObjectId id, KtDxBlock* block);
    /// Binds to a document record: finds model space and scans, watching nothing yet. eMissing without a
    /// document or a drawing; the host's status when there is no model space or the block table will not
    /// open.
    virtual Orbx::ErrorStatus attachDocument(KtDxDocument* document);
    /// A monitor for an opened record, entered under the record's own id. eDuplicateRecordId when that id
    /// reaches one already; the status of a monitor that could not be initialised.
    virtual Orbx::ErrorStatus createBlockMonitor(KtDxBlock*& block, const KtDbBlockTableRecord* record);

    /// Starts or stops hearing the block table and passes the state on to every monitor, once for each of its
    /// keys, and to the timer.
    Orbx::ErrorStatus setEnabled(bool enable) override;

    void timerElapsed() override;

    /// Removes every key that reaches a monitor which is about to be destroyed.
    void forgetRepresentations(const KtDxBlock* block);

    const BlockMonitors& blockMonitors() const { return blockMonitors_; }

    const KtDbObjectIdArray& layoutIds() const { return layoutIds_; }

    KtDbObjectId modelSpaceId() const { return modelSpaceId_; }

    /// For the monitors, which rescan one after the other.
    RescanRoom& rescanRoom() { return rescanRoom_; }

    /// Number of records that the last scan put under watch, new or known.
    std::int32_t monitoredCount() const { return monitoredCount_; }

    /// How many monitors bear each mark.
    struct Marks {
        std::size_t needsUpdate = 0;
        std::size_t changed = 0;
    };

    /// For the monitors, which count themselves. Walks over all of them end where nobody bears a mark any
    /// more.
    Marks& marks() { return marks_; }

private:
    Orbx::ErrorStatus scanAllRecords();
    Orbx::ErrorStatus scanRecord(const KtDbBlockTableRecord* record);
    KtDbObjectId keyOf(const KtDbBlockTableRecord* record, KtDbObjectId id);
    std::uint32_t countInTwoLevels(const KtDxBlock::References& references, KtDbObjectId container,
                                   KtDbObjectIdSet& visited);
    KtDbObjectId countedContainer(KtDbObjectId container) const;
    Orbx::ErrorStatus collectNestedInChanged(KtDbObjectIdSet& nested);
    bool hasEmptyEntry();
    void markChanged(const KtDbObjectIdSet& blocks);
    void markAllChanged();
    void takeCallbacksOfChanged(KtDxCallbackSet& callbacks);
    static std::exception_ptr callEach(const KtDxCallbackSet& callbacks);
    void hearBlockTable(const KtDbBlockTable& blockTable, bool hear);
    void enableMonitors(bool enable);
    Orbx::ErrorStatus enableTimer(bool enable);
    void stopHearing();
    void destroyMonitors();
    void destroyTimer();

    KtDxDocument* document_ = nullptr;
    BlockMonitors blockMonitors_;
    KtDbObjectIdArray layoutIds_{0, 8};
    KtDbObjectId modelSpaceId_;
    std::int32_t monitoredCount_ = 0;
    bool rescanNeeded_ = true;
    bool pendingChanges_ = false;
    KtDxTimer* timer_ = nullptr;
    KtDbObjectId heardTable_; // also after an enabling that failed half-way, and after a reset
    BlockNesting nesting_;    // up to date only while it is asked
    RescanRoom rescanRoom_;
    Marks marks_;
    // Of the monitors when they were last looked over for an empty entry.
    std::uint64_t emptyEntryStamp_ = kNoChangeStamp;
    bool hasEmptyEntry_ = false;
};
