#pragma once

#include <KtDbObjectId.h>
#include <KtDbObjectReactor.h>
#include <KtRxCallback.h>

#include "blocks/RecordedOrder.h"
#include "blocks/RecordedReferences.h"
#include "notify/ByAddress.h"
#include "notify/KtDxEnableBase.h"
#include "notify/OrderedMap.h"

#include <cstddef>
#include <memory>
#include <set>
#include <span>
#include <utility>
#include <vector>

class KtDbBlockReference;
class KtDbBlockTableRecord;
class KtDbObjectIterator;
class KtDxBlocks;
template <typename T>
class OpenedObject;

using KtDxCallbackSet = std::set<KtRxCallback, ByAddress>;

/// Watches one block definition, together with the anonymous records that represent it if it is dynamic:
/// records every reference to them by container, and every reference's attributes, and hears what happens to
/// all of these.
///
/// Notifications only set two marks, which are passed on to the owner at once: needs-update (something was
/// touched) and changed (clients must hear of it). `update` rescans the references and decides what else is a
/// change. A rescan needs no enabled monitor; reactors are attached only while it is enabled. User-interface
/// thread only.
class KtDxBlock : public KtDbObjectReactor, public KtDxEnableBase {
public:
    using References = RecordedReferences;
    /// Attributes of a reference by its id, in the order in which they were attached to.
    using Attributes = OrderedMap<KtDbObjectId, KtDbObjectIdArray>;

    /// A new monitor, initialised; on failure null, with no trace of it left in the
    /// owner.
    static Orbx::ErrorStatus create(KtDxBlocks* owner, const KtDbBlockTableRecord* record,
                                    std::unique_ptr<KtDxBlock>& block);

    KtDxBlock() = default;
    ~KtDxBlock() override;

    void copied(const KtDbObject* object, const KtDbObject* copy) override;
    /// Lets go of the object. What was recorded of it stays until the next update.
    void goodbye(const KtDbObject* object) override;
    void openedForModify(const KtDbObject* object) override;

    /// Rescans the references to all records of the block, `recordId` among them from now on. eMissing
    /// without an owner, eInvalidBlockId for the null id; a host's status when a record cannot be asked for
    /// its references, and then nothing has changed.
    virtual Orbx::ErrorStatus update(KtDbObjectId recordId);
    /// Rescans the references.
    virtual Orbx::ErrorStatus refresh();
    /// Owned by the monitor. Containers may be entered and removed through it until the next update.
    virtual References* references();
    virtual bool needsUpdate() const;
    /// Setting the mark tells the owner first, and does nothing without one.
    virtual void setNeedsUpdate(bool on);
    virtual bool isChanged() const;
    /// Setting the mark tells the owner first, and does nothing without one.
    virtual void setChanged(bool on);
    /// Owned by the monitor.
    virtual KtDxCallbackSet* callbacks();
    /// A null callback is ignored.
    virtual void addCallback(KtRxCallback callback);
    virtual void removeCallback(KtRxCallback callback);

    /// Attaches to, or lets go of, the records, references and attributes. eInvalidBlockId when enabling for
    /// a definition that is not there; otherwise the status of a record that would not open.
    Orbx::ErrorStatus setEnabled(bool enable) override;

    /// Binds the monitor to an owner and an opened record and scans for the first time. It then takes the
    /// owner's enabled state.
    Orbx::ErrorStatus init(KtDxBlocks* owner, const KtDbBlockTableRecord* record);
    /// Lets go of everything watched, and forgets owner, block, references and callbacks.
    void reset();

    /// True for the first who asks and no one after: of the keys that reach the monitor one destroys it.
    bool claimForDestruction() { return !std::exchange(claimed_, true); }

    KtDbObjectId blockId() const { return blockId_; }

    /// The definition first, then its representations in the order in which they were found.
    const KtDbObjectIdArray& recordIds() const { return recordIds_; }

    /// Recorded while enabled, of references that have any.
    const Attributes& attributesByReference() const { return attributesByReference_; }

private:
    using IdVector = std::vector<KtDbObjectId>;
    struct Rescan;
    class RunningRescan;
    struct Whereabouts;
    class AttributeArray;

    Orbx::ErrorStatus tryRescan(Rescan& pass);
    Orbx::ErrorStatus rescan(Rescan& pass);
    std::span<const KtDbObjectId> records() const;
    bool checkOrder(Rescan& pass);
    void forgetOrder(Rescan& pass);
    void stopFollowing(Rescan& pass);
    void settleOrder(const Rescan& pass);
    void cutContainers(KtDbObjectId first);
    void findRepresentations();
    Orbx::ErrorStatus listReferences(KtDbObjectIdArray& listed) const;
    Whereabouts whereaboutsOf(const OpenedObject<KtDbBlockReference>& opened) const;
    Orbx::ErrorStatus meetReference(KtDbObjectId reference, const Whereabouts& found, Rescan& pass);
    Orbx::ErrorStatus meetEach(Rescan& pass);
    Orbx::ErrorStatus meetTogether(Rescan& pass);
    Orbx::ErrorStatus fileReference(KtDbObjectId reference, KtDbObjectId container, Rescan& pass);
    void missContainer(KtDbObjectId reference, Orbx::ErrorStatus why, Rescan& pass);
    Orbx::ErrorStatus record(KtDbObjectId reference, KtDbObjectId container);
    KtDbObjectId containerOf(KtDbObjectId owner) const;
    KtDbObjectIdArray* containerArray(KtDbObjectId container);
    void dropMissing(Rescan& pass);
    void dropUnusedContainers();

    Orbx::ErrorStatus attachReference(KtDbObjectId reference, bool attach);
    void attachAttributes(KtDbObjectId reference, KtDbObjectIterator& attributes);
    void attachAttribute(KtDbObjectId attribute, AttributeArray& array);
    std::size_t usualAttributes() const;
    void fitAttributes(KtDbObjectIdArray& recorded);
    void makeRoomForAttributes();
    void removeEmptyAttributes();
    void detachAttributesOf(KtDbObjectId reference);
    void detachAttributes(const KtDbObjectIdArray& attributes);
    void detachAllAttributes();
    static void giveUp(KtDxBlocks* owner, std::unique_ptr<KtDxBlock>& block);
    void attachReferences(bool attach);
    Orbx::ErrorStatus attachRecords(bool attach);
    void leaveRecordsBehind(std::size_t first, Orbx::ErrorStatus refusal);
    void letGo(const KtDbObject* object);
    void leaveBehind(KtDbObjectId object, Orbx::ErrorStatus refusal);
    void leaveBehind(KtDbObjectId object);
    void leaveBehind(IdVector&& objects);
    void letGoOfLeftBehind();

    KtDxBlocks* owner_ = nullptr;
    KtDbObjectId blockId_;
    References referencesByContainer_;
    bool changed_ = false;
    bool needsUpdateFlag_ = true;
    KtDxCallbackSet callbackSet_;
    Attributes attributesByReference_;
    KtDbObjectIdArray recordIds_;
    RecordedOrder recordedOrder_;  // what a rescan reads of each block lies together
    Rescan* running_ = nullptr;    // the innermost, where an update calls out and is called back
    bool isOrderDoubtful_ = false; // not before it has been checked does a rescan go by it
    bool claimed_ = false;
    IdVector leftBehind_; // objects that may still hold this reactor, unrecorded; asked once more at the end
};
