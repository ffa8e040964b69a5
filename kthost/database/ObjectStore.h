#pragma once

#include "kthost/database/ObjectHead.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace kthost {

class Database;

/// Hands out the ids of the process and finds the object behind one in constant time: the id says which block
/// of slots, and which slot of it. Ids are handed out in blocks that belong to one database each, ascending
/// within it, so that the memory of a closed drawing, or of a block whose objects are all released, can be
/// given back while its ids stay known. Objects lie in the order in which they were made and never move.
class ObjectStore {
public:
    static ObjectStore& instance() { return instance_; }

    std::uint32_t addDatabase(Database& database);
    /// Forgets what is left of its objects, too. They must be released.
    void removeDatabase(std::uint32_t slot);

    /// Makes an object in the next slot.
    template <class T, class... Arguments>
    KtDbObjectId add(std::uint32_t slot, ObjectKind kind, KtDbObjectId owner, Arguments&&... arguments);
    /// Destroys the object.
    void release(KtDbObjectId id);

    bool isValid(KtDbObjectId id) const { return blockOf(id) != nullptr; }

    /// Null for an id that is not valid, and once nothing is left to know about it but that it was released.
    ObjectHead* find(KtDbObjectId id) const {
        const Block* block = blockOf(id);
        return block == nullptr || block->slots == nullptr ? nullptr : headIn(block->slots[1 + indexOf(id)]);
    }

    /// Null for an id that is not valid and once the database is closed.
    Database* databaseOf(KtDbObjectId id) const {
        const Block* block = blockOf(id);
        return block == nullptr ? nullptr : slots_[block->slot].database;
    }

    /// 0 for the same.
    std::uint64_t handleOf(KtDbObjectId id) const;
    /// Null when the handle was never handed out in that database.
    KtDbObjectId byHandle(std::uint32_t slot, std::uint64_t handle) const;

    std::uint64_t lastHandle(std::uint32_t slot) const { return slots_[slot].handles; }

    /// One after the last that can be asked for; null places are databases that are closed.
    std::size_t databaseCount() const { return slots_.size(); }

    Database* databaseAt(std::size_t slot) const { return slots_[slot].database; }

private:
    static constexpr std::uint64_t kFirst =
        0x10000; // small numbers are handles, to tell the two apart at sight
    static constexpr std::size_t kBlockSize = 4096;

    struct Block {
        std::unique_ptr<ObjectSlot[]> slots; // one more in front, which says what the first id is
        std::uint64_t firstHandle = 0;
        std::uint32_t slot = 0;
        std::uint16_t used = 0;
        std::uint16_t released = 0;
    };

    struct Slot {
        Database* database = nullptr;
        std::uint64_t handles = 0;         // handed out so far
        std::vector<std::uint32_t> blocks; // of this database, in the order in which they were filled
    };

    static std::size_t indexOf(KtDbObjectId id) { return (id.asUnsigned() - kFirst) % kBlockSize; }

    const Block* blockOf(KtDbObjectId id) const {
        const std::uint64_t ordinal = id.asUnsigned() - kFirst; // wraps to something huge for smaller ids
        const std::uint64_t block = ordinal / kBlockSize;
        return block < blocks_.size() && ordinal % kBlockSize < blocks_[block].used ? &blocks_[block]
                                                                                    : nullptr;
    }

    ObjectSlot& nextSlot(std::uint32_t slot);
    KtDbObjectId enter(std::uint32_t slot, ObjectHead& head);

    static ObjectStore instance_;

    std::vector<Block> blocks_;
    std::vector<Slot> slots_;
};

template <class T, class... Arguments>
KtDbObjectId ObjectStore::add(std::uint32_t slot, ObjectKind kind, KtDbObjectId owner,
                              Arguments&&... arguments) {
    static_assert(sizeof(T) <= sizeof(ObjectSlot), "what does not fit lies elsewhere, with a pointer to it");
    const T* object = ::new (static_cast<void*>(&nextSlot(slot))) T(std::forward<Arguments>(arguments)...);
    object->head().owner = owner;
    object->head().kind = kind;
    return enter(slot, object->head());
}

} // namespace kthost
