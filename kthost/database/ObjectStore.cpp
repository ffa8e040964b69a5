#include "kthost/database/ObjectStore.h"

#include <algorithm>
#include <new>

namespace kthost {

ObjectStore ObjectStore::instance_;

std::uint32_t ObjectStore::addDatabase(Database& database) {
    slots_.push_back({&database, 0, {}});
    return static_cast<std::uint32_t>(slots_.size() - 1);
}

void ObjectStore::removeDatabase(std::uint32_t slot) {
    for (const std::uint32_t block : slots_[slot].blocks) {
        blocks_[block].slots.reset();
    }
    slots_[slot] = {};
}

/// Room that nothing lies in yet. It stays the next until something is entered.
ObjectSlot& ObjectStore::nextSlot(std::uint32_t slot) {
    Slot& database = slots_[slot];
    if (database.handles == database.blocks.size() * kBlockSize) {
        const auto number = static_cast<std::uint32_t>(blocks_.size());
        auto slots = std::make_unique_for_overwrite<ObjectSlot[]>(1 + kBlockSize); // most is not touched soon
        ::new (static_cast<void*>(&slots[0])) BlockStart{KtDbObjectId(kFirst + number * kBlockSize)};
        blocks_.push_back({std::move(slots), database.handles + 1, slot, 0, 0});
        database.blocks.push_back(number);
    }
    Block& block = blocks_[database.blocks.back()];
    return block.slots[std::size_t{1} + block.used];
}

KtDbObjectId ObjectStore::enter(std::uint32_t slot, ObjectHead& head) {
    Slot& database = slots_[slot];
    head.place = blocks_[database.blocks.back()].used++;
    head.stored = true;
    ++database.handles;
    return head.id();
}

void ObjectStore::release(KtDbObjectId id) {
    const std::uint64_t number = (id.asUnsigned() - kFirst) / kBlockSize;
    ObjectSlot& slot = blocks_[number].slots[1 + indexOf(id)];
    ObjectHead& head = *headIn(slot);
    KtDbObject* object = head.object();
    const KtDbObjectId owner = head.owner;
    head.released = true; // first: with the object may go a drawing, whose reactors hear of that
    head.erased = true;
    object->~KtDbObject();
    std::fill(std::begin(slot.bytes), std::end(slot.bytes),
              std::byte{}); // whoever still calls it will notice
    auto* left = ::new (static_cast<void*>(&head)) ObjectHead;
    left->owner = owner;
    left->erased = true;
    left->released = true;
    if (++blocks_[number].released == kBlockSize) {
        blocks_[number].slots.reset();
    }
}

std::uint64_t ObjectStore::handleOf(KtDbObjectId id) const {
    const Block* block = blockOf(id);
    const bool known = block != nullptr && slots_[block->slot].database != nullptr;
    return known ? block->firstHandle + indexOf(id) : 0;
}

KtDbObjectId ObjectStore::byHandle(std::uint32_t slot, std::uint64_t handle) const {
    const Slot& database = slots_[slot];
    if (handle == 0 || handle > database.handles) {
        return {};
    }
    const std::uint64_t block = database.blocks[(handle - 1) / kBlockSize];
    return KtDbObjectId(kFirst + block * kBlockSize + (handle - 1) % kBlockSize);
}

} // namespace kthost
