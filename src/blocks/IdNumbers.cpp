#include "blocks/IdNumbers.h"

#include <algorithm>
#include <bit>

void IdNumbers::start(std::size_t expected) {
    ids_.clear();
    ids_.reserve(expected);
    useRoomFor(expected);
}

std::uint32_t IdNumbers::enter(KtDbObjectId id) {
    if (const std::uint32_t known = find(id); known != kNone) {
        return known;
    }
    const std::uint32_t number = size();
    if (2 * (ids_.size() + 1) > mask_) {
        useRoomFor(2 * (ids_.size() + 1));
        for (std::uint32_t moved = 0; moved < number; ++moved) {
            put(moved);
        }
    }
    ids_.push_back(id);
    put(number);
    return number;
}

/// Less than half full, so that what is looked for is found at once.
void IdNumbers::useRoomFor(std::size_t count) {
    const std::size_t places = std::bit_ceil(2 * count + 2);
    if (table_.size() < places) {
        table_.resize(places);
    }
    mask_ = places - 1;
    std::fill_n(table_.begin(), places, kNone);
}

void IdNumbers::put(std::uint32_t number) {
    std::size_t place = placeOf(ids_[number]);
    while (table_[place] != kNone) {
        place = (place + 1) & mask_;
    }
    table_[place] = number;
}
