#pragma once

#include <KtDbObjectId.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

/// Numbers ids 0, 1, 2, ... in the order in which they are entered, and finds the number of one in constant
/// time. Keeps its room when it is started afresh, which costs no more than the ids that are then entered.
class IdNumbers {
public:
    static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

    /// Forgets all; `expected` ids can then be entered without further memory. Throws std::bad_alloc.
    void start(std::size_t expected);

    /// Of an id that is there or is entered now. Throws std::bad_alloc and is then unchanged.
    std::uint32_t enter(KtDbObjectId id);

    /// kNone for an id that was not entered.
    std::uint32_t find(KtDbObjectId id) const {
        if (table_.empty()) {
            return kNone;
        }
        std::size_t place = placeOf(id);
        while (table_[place] != kNone && ids_[table_[place]] != id) {
            place = (place + 1) & mask_;
        }
        return table_[place];
    }

    std::uint32_t size() const { return static_cast<std::uint32_t>(ids_.size()); }

    KtDbObjectId idOf(std::uint32_t number) const { return ids_[number]; }

private:
    std::size_t placeOf(KtDbObjectId id) const {
        constexpr std::uint64_t kSpread =
            0x9E3779B97F4A7C15; // the golden ratio's: neighbours end up far apart
        return static_cast<std::size_t>((id.asUnsigned() * kSpread) >> 32U) & mask_;
    }

    void useRoomFor(std::size_t count);
    void put(std::uint32_t number);

    std::vector<KtDbObjectId> ids_;
    std::vector<std::uint32_t> table_; // numbers, where hashing puts their ids; only up to the mask in use
    std::size_t mask_ = 0;
};
