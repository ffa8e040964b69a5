#pragma once

#include "kthost/database/ReactorSlot.h"

#include <KtDbObject.h>

#include <cstddef>
#include <cstdint>

namespace kthost {

enum class ObjectKind : std::uint8_t {
    blockTable,
    blockTableRecord,
    blockReference,
    table,
    attribute,
    evalGraph
};

/// What the host keeps about an object, inside the object: whoever has found the one has found the other.
/// There are as many as objects, so every byte counts.
struct ObjectHead {
    KtDbObjectId owner;
    ReactorSlot reactors;
    std::uint16_t openings =
        0; ///< the latest 16, a bit each, the lowest the latest: 1 for notify, 0 for others
    std::uint16_t notifiers = 0;
    std::uint16_t place = 0; ///< in its block, once stored
    std::uint8_t readers = 0;
    ObjectKind kind : 3 = ObjectKind::blockTable;
    bool writing : 1 = false;
    bool erased : 1 = false;
    bool unappended : 1 = false; ///< its appending is undone
    bool stored : 1 = false;     ///< it is in a database, and so has an id
    bool released : 1 = false;   ///< the object has gone; this is what is left of it

    bool isOpen() const { return writing || readers != 0 || notifiers != 0; }

    /// Null for an object that is not in a database.
    KtDbObjectId id() const;
    /// Owned by the database; null once released. Not to be asked of an object that is not in one.
    KtDbObject* object();
};

static_assert(sizeof(void*) != 8 || sizeof(ObjectHead) == 24);

/// Room for one object, whatever its kind: a line of the processor's cache, so that an object costs one miss.
struct alignas(64) ObjectSlot {
    std::byte bytes[64];
};

/// Where the head of every object lies: straight behind the pointer to its virtual functions.
inline constexpr std::size_t kHeadOffset = sizeof(KtDbObject);

inline ObjectHead* headIn(ObjectSlot& slot) {
    return static_cast<ObjectHead*>(static_cast<void*>(&slot.bytes[kHeadOffset]));
}

inline const ObjectSlot* slotOf(const ObjectHead* head) {
    return static_cast<const ObjectSlot*>(static_cast<const void*>(
        static_cast<const std::byte*>(static_cast<const void*>(head)) - kHeadOffset));
}

/// Lies in the slot in front of the first of a block.
struct BlockStart {
    KtDbObjectId firstId;
};

inline KtDbObjectId ObjectHead::id() const {
    if (!stored) {
        return {};
    }
    const void* start = slotOf(this) - place - 1;
    return KtDbObjectId(static_cast<const BlockStart*>(start)->firstId.asUnsigned() + place);
}

inline KtDbObject* ObjectHead::object() {
    void* slot = static_cast<std::byte*>(static_cast<void*>(this)) - kHeadOffset;
    return released ? nullptr : static_cast<KtDbObject*>(slot);
}

} // namespace kthost
