#include "legacy/TextTable.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

/// Of many texts, and small enough not to weigh where there are only a few.
constexpr std::size_t kChunk = 16384;

} // namespace

void TextTable::reserve(std::size_t more) {
    const std::size_t size = std::min(texts_.size() + more, most_);
    if (size > texts_.capacity()) {
        texts_.reserve(std::max(size, 2 * texts_.capacity()));
    }
    unsigned bits = kPlaceBits - shift_;
    while (slotsFor(size) > std::size_t{1} << bits) {
        ++bits;
    }
    if (bits != kPlaceBits - shift_) {
        growSlots(bits);
    }
}

void TextTable::addChunk(std::size_t least) {
    const std::size_t length = std::max(least, kChunk);
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(length));
    next_ = chunks_.back().get();
    free_ = length;
}

/// The upper bits of the places spread them, so that the slots go over in the order in which they lie.
void TextTable::growSlots(unsigned bits) {
    std::vector<Slot> grown(std::size_t{1} << bits);
    const std::size_t mask = grown.size() - 1;
    const unsigned shift = kPlaceBits - bits;
    for (const Slot& slot : slots_) {
        if (slot.number != kFree) {
            std::size_t i = slot.place >> shift;
            while (grown[i].number != kFree) {
                i = (i + 1) & mask;
            }
            grown[i] = slot;
        }
    }
    slots_ = std::move(grown);
    shift_ = shift;
}

void TextTable::makeRoom() {
    if (texts_.size() == most_) {
        throw std::bad_alloc();
    }
    reserve(1 + texts_.size());
}
