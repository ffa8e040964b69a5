#pragma once

#include <KtDbObject.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace kthost {

class Database;

enum class ObjectKind : std::uint8_t {
    blockTable,
    blockTableRecord,
    blockReference,
    table,
    attribute,
    evalGraph
};

/// What the host keeps about an object apart from the object. There are as many as objects, so every byte
/// counts.
struct Stub {
    KtDbObject* object = nullptr; ///< owned by the database; null once released
    KtDbObjectId owner;
    std::uint16_t openings =
        0; ///< the latest 16, a bit each, the lowest the latest: 1 for notify, 0 for others
    std::uint16_t notifiers = 0;
    std::uint8_t readers = 0;
    ObjectKind kind = ObjectKind::blockTable;
    bool writing = false;
    std::uint8_t erased : 1 = 0;
    std::uint8_t unappended : 1 = 0; ///< its appending is undone

    bool isOpen() const { return writing || readers != 0 || notifiers != 0; }
};

static_assert(sizeof(void*) != 8 || sizeof(Stub) == 24);

/// Hands out the ids of the process and finds the stub behind one in constant time. Ids are handed out in
/// blocks that belong to one database each, ascending within it, so that the memory of a closed drawing, or
/// of a block whose objects are all released, can be given back while its ids stay known.
class ObjectStore {
public:
    static ObjectStore& instance();

    std::uint32_t addDatabase(Database& database);
    /// Forgets the stubs of the database, too. Its objects must be released.
    void removeDatabase(std::uint32_t slot);

    KtDbObjectId add(std::uint32_t slot, const Stub& stub);
    /// The object has been deleted.
    void release(KtDbObjectId id);

    bool isValid(KtDbObjectId id) const;

    /// Null for an id that is not valid, and once nothing is left to know about it but that it was released.
    Stub* find(KtDbObjectId id) const {
        const Block* block = blockOf(id);
        return block == nullptr || block->stubs == nullptr ? nullptr : &block->stubs[indexOf(id)];
    }

    /// Null for an id that is not valid and once the database is closed.
    Database* databaseOf(KtDbObjectId id) const;
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
        std::unique_ptr<Stub[]> stubs;
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

    void addBlock(std::uint32_t slot);

    std::vector<Block> blocks_;
    std::vector<Slot> slots_;
};

} // namespace kthost
