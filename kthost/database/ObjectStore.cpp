#include "kthost/database/ObjectStore.h"

namespace kthost {

ObjectStore& ObjectStore::instance() {
    static ObjectStore store;
    return store;
}

std::uint32_t ObjectStore::addDatabase(Database& database) {
    slots_.push_back({&database, 0, {}});
    return static_cast<std::uint32_t>(slots_.size() - 1);
}

void ObjectStore::removeDatabase(std::uint32_t slot) {
    for (const std::uint32_t block : slots_[slot].blocks) {
        blocks_[block].stubs.reset();
    }
    slots_[slot] = {};
}

void ObjectStore::addBlock(std::uint32_t slot) {
    Slot& database = slots_[slot];
    database.blocks.push_back(static_cast<std::uint32_t>(blocks_.size()));
    blocks_.push_back({std::make_unique<Stub[]>(kBlockSize), database.handles + 1, slot, 0, 0});
}

KtDbObjectId ObjectStore::add(std::uint32_t slot, const Stub& stub) {
    Slot& database = slots_[slot];
    if (database.handles % kBlockSize == 0) {
        addBlock(slot);
    }
    const std::uint64_t number = database.blocks.back();
    Block& block = blocks_[number];
    block.stubs[block.used] = stub;
    ++database.handles;
    return KtDbObjectId(kFirst + number * kBlockSize + block.used++);
}

void ObjectStore::release(KtDbObjectId id) {
    Block& block = blocks_[(id.asUnsigned() - kFirst) / kBlockSize];
    block.stubs[indexOf(id)].object = nullptr;
    block.stubs[indexOf(id)].erased = 1;
    if (++block.released == kBlockSize) {
        block.stubs.reset();
    }
}

bool ObjectStore::isValid(KtDbObjectId id) const {
    return blockOf(id) != nullptr;
}

Database* ObjectStore::databaseOf(KtDbObjectId id) const {
    const Block* block = blockOf(id);
    return block == nullptr ? nullptr : slots_[block->slot].database;
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
