// How a block definition monitor attaches to what it watches, and lets go of it.

#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>
#include <KtDbBlockTableRecord.h>

#include "blocks/KtDxBlock.h"
#include "blocks/KtDxBlocks.h"
#include "blocks/OpenedObject.h"
#include "blocks/RescanRoom.h"
#include "blocks/SortUnique.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <tuple>
#include <utility>
#include <vector>

/// The array of one reference's attributes. Looked for again only when entries have come or gone, as they do
/// when a host's call leads back here.
class KtDxBlock::AttributeArray {
public:
    AttributeArray(Attributes& all, KtDbObjectId reference) : all_(all), reference_(reference) {}

    /// Null when there is none.
    KtDbObjectIdArray* find() {
        if (stamp_ != all_.changeStamp()) {
            look();
        }
        return array_;
    }

    /// Throws std::bad_alloc.
    KtDbObjectIdArray& findOrMake() {
        if (find() == nullptr) {
            all_.emplace(reference_, KtDbObjectIdArray(0, 8));
        }
        return *find();
    }

private:
    void look() {
        const auto entry = all_.find(reference_);
        array_ = entry == all_.end() ? nullptr : &entry->second;
        stamp_ = all_.changeStamp();
    }

    Attributes& all_;
    KtDbObjectId reference_;
    KtDbObjectIdArray* array_ = nullptr;
    std::uint64_t stamp_ = kNoChangeStamp;
};

Orbx::ErrorStatus KtDxBlock::setEnabled(bool enable) {
    if (enable == isEnabled()) {
        return Orbx::eOk;
    }
    try {
        attachReferences(enable);
    } catch (...) { // the host's; it passes through, and a monitor that is not enabled must not be heard
        attachReferences(false);
        throw;
    }
    std::ignore = KtDxEnableBase::setEnabled(enable); // storing the flag cannot fail
    if (blockId_.isNull() || !blockId_.isValid()) {
        return enable ? Orbx::eInvalidBlockId : Orbx::eOk;
    }
    if (enable && (blockId_.isErased() || blockId_.isEffectivelyErased())) {
        return Orbx::eInvalidBlockId;
    }
    return attachRecords(enable);
}

/// References come container by container, and so in no order of their ids. Entries that are made beforehand,
/// in ascending order, lie without gaps.
void KtDxBlock::makeRoomForAttributes() {
    if (!attributesByReference_.empty() || !recordedOrder_.isOf(referencesByContainer_)) {
        return;
    }
    try {
        attributesByReference_.fill(recordedOrder_.size(), [this](std::size_t index) {
            return Attributes::value_type(recordedOrder_.referenceAt(index), KtDbObjectIdArray(0, 8));
        });
    } catch (const std::bad_alloc&) {
        // They are made one by one, as they are without an order of the references to go by.
    }
}

/// Entries without attributes stay behind where room was made, and where references were let go of: removed
/// one by one, each would have others moved.
void KtDxBlock::removeEmptyAttributes() {
    attributesByReference_.removeIf([](const auto& entry) { return entry.second.isEmpty(); });
}

void KtDxBlock::attachReferences(bool attach) {
    if (attach) {
        makeRoomForAttributes();
    }
    for (const auto& [container, references] : referencesByContainer_) {
        if (references == nullptr) {
            break;
        }
        for (const KtDbObjectId reference : *references) {
            std::ignore =
                attachReference(reference, attach); // one that will not open must not keep the others
        }
    }
    removeEmptyAttributes();
}

Orbx::ErrorStatus KtDxBlock::attachRecords(bool attach) {
    for (std::size_t i = 0; i < recordIds_.length(); ++i) {
        const OpenedObject<KtDbBlockTableRecord> record(recordIds_[i], KtDb::kForNotify, !attach);
        if (!record) {
            if (!attach) {
                leaveRecordsBehind(i, record.status());
            }
            return record.status();
        }
        if (attach) {
            std::ignore = record->addReactor(this); // a record that cannot be heard is still rescanned
        } else {
            letGo(record.get());
        }
    }
    return Orbx::eOk;
}

/// The first of them has refused; those behind it are not even asked.
void KtDxBlock::leaveRecordsBehind(std::size_t first, Orbx::ErrorStatus refusal) {
    leaveBehind(recordIds_[first], refusal);
    for (std::size_t i = first + 1; i < recordIds_.length(); ++i) {
        leaveBehind(recordIds_[i]);
    }
}

Orbx::ErrorStatus KtDxBlock::attachReference(KtDbObjectId reference, bool attach) {
    const OpenedObject<KtDbBlockReference> opened(reference, KtDb::kForNotify, true);
    if (!opened) {
        if (!attach) {
            leaveBehind(reference, opened.status());
        }
        return opened.status();
    }
    if (!attach) {
        letGo(opened.get());
        detachAttributesOf(reference);
        return Orbx::eOk;
    }
    std::ignore = opened->addReactor(this); // a reference that cannot be heard is still recorded
    const std::unique_ptr<KtDbObjectIterator> attributes(opened->attributeIterator());
    if (attributes != nullptr) {
        attachAttributes(reference, *attributes);
    }
    return Orbx::eOk;
}

inline void KtDxBlock::attachAttribute(KtDbObjectId attribute, AttributeArray& array) {
    if (attribute.isNull() || !attribute.isValid() || attribute.isErased() ||
        attribute.isEffectivelyErased()) {
        return;
    }
    const OpenedObject<KtDbAttribute> opened(attribute, KtDb::kForNotify, true);
    if (!opened) {
        return;
    }
    KtDbObjectIdArray& recorded = array.findOrMake();
    if (recorded.physicalLength() == 0) {
        recorded.setPhysicalLength(usualAttributes());
    }
    recorded.append(attribute);             // first, as it may fail: what is heard has to be known
    std::ignore = opened->addReactor(this); // an attribute that cannot be heard is let go of like others
}

/// Adds to what is recorded of the reference without looking for repeats: a reference that is attached twice
/// has its attributes twice, and letting go of it once lets go of them all.
void KtDxBlock::attachAttributes(KtDbObjectId reference, KtDbObjectIterator& attributes) {
    AttributeArray array(attributesByReference_, reference);
    try {
        for (; !attributes.done(); attributes.step()) {
            attachAttribute(attributes.objectId(), array);
        }
        if (KtDbObjectIdArray* const recorded = array.find(); recorded != nullptr) {
            fitAttributes(*recorded);
        }
    } catch (const std::bad_alloc&) {
        // The rest of them are not heard.
    }
}

/// As many as the reference before had: most have the same.
std::size_t KtDxBlock::usualAttributes() const {
    return owner_ == nullptr ? 0 : owner_->rescanRoom().attributesEach;
}

/// There is one such array for each reference, so that room for what never comes is most of what they take.
void KtDxBlock::fitAttributes(KtDbObjectIdArray& recorded) {
    try {
        if (recorded.physicalLength() != recorded.length()) {
            recorded.setPhysicalLength(recorded.length());
        }
    } catch (const std::bad_alloc&) {
        return; // it stays too large
    }
    if (owner_ != nullptr) {
        owner_->rescanRoom().attributesEach = recorded.length();
    }
}

/// Leaves an empty entry.
void KtDxBlock::detachAttributesOf(KtDbObjectId reference) {
    const auto entry = attributesByReference_.find(reference);
    if (entry != attributesByReference_.end()) {
        const KtDbObjectIdArray attributes(std::move(entry->second));
        detachAttributes(attributes);
    }
}

void KtDxBlock::detachAttributes(const KtDbObjectIdArray& attributes) {
    for (const KtDbObjectId attribute : attributes) {
        if (attribute.isNull() || !attribute.isValid()) {
            continue;
        }
        const OpenedObject<KtDbAttribute> opened(attribute, KtDb::kForNotify, true);
        if (opened) {
            letGo(opened.get());
        } else {
            leaveBehind(attribute, opened.status());
        }
    }
}

void KtDxBlock::detachAllAttributes() {
    for (const auto& [reference, attributes] : attributesByReference_) {
        detachAttributes(attributes);
    }
    attributesByReference_.clear();
}

void KtDxBlock::letGo(const KtDbObject* object) {
    const Orbx::ErrorStatus status = object->removeReactor(this);
    const bool isGone =
        status == Orbx::eOk || status == Orbx::eKeyNotFound; // it could not be added, or twice
    if (!isGone) {
        leaveBehind(object->objectId(), status);
    }
}

/// Of an object that the host has refused. A released one has said goodbye.
void KtDxBlock::leaveBehind(KtDbObjectId object, Orbx::ErrorStatus refusal) {
    if (refusal != Orbx::eObjectReleased) {
        leaveBehind(object);
    }
}

/// Remembers an object that may still hold this reactor.
void KtDxBlock::leaveBehind(KtDbObjectId object) {
    try {
        if (leftBehind_.size() == leftBehind_.capacity()) {
            sortUnique(leftBehind_); // what is refused again and again must not pile up
        }
        leftBehind_.push_back(object);
    } catch (const std::bad_alloc&) {
        // Two refusals at once: the object keeps a reactor that must not be remembered.
    }
}

void KtDxBlock::leaveBehind(IdVector&& objects) {
    if (leftBehind_.empty()) {
        leftBehind_ = std::move(objects); // needs no memory, for want of which the objects may be here
        return;
    }
    for (const KtDbObjectId object : objects) {
        leaveBehind(object);
    }
}

void KtDxBlock::letGoOfLeftBehind() {
    for (const KtDbObjectId object : leftBehind_) {
        const OpenedObject<KtDbObject> opened(object, KtDb::kForNotify, true);
        if (opened) {
            std::ignore = opened->removeReactor(this); // asked for the last time
        }
    }
}
