#include "legacy/AttributeMap.h"

#include "legacy/TagHash.h"

#include <algorithm>
#include <utility>

namespace {

/// Up to here a walk along the tags is as fast as hashing; nearly every block has fewer.
constexpr std::size_t kMostScanned = 10;
/// A power of two, as every later number of slots, and more than twice what is scanned.
constexpr std::size_t kFirstSlots = 32;

} // namespace

const AttributeMap::Item* AttributeMap::scan(std::wstring_view tag) const {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [tag](const Item& item) { return item.tag == tag; });
    return found != items_.end() ? &*found : nullptr;
}

/// The slot that the tag has, or else the free one that it would get. At least half of the slots are free.
std::size_t AttributeMap::slotOf(std::wstring_view tag) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = TagHash()(tag) & mask;
    while (slots_[slot] != 0 && items_[slots_[slot] - 1].tag != tag) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

AttributeEntry* AttributeMap::find(std::wstring_view tag) const {
    if (slots_.empty()) {
        const Item* item = scan(tag);
        return item != nullptr ? item->entry.get() : nullptr;
    }
    const std::uint32_t taken = slots_[slotOf(tag)];
    return taken != 0 ? items_[taken - 1].entry.get() : nullptr;
}

void AttributeMap::growSlots() {
    slots_.assign(std::max(slots_.size() * 2, kFirstSlots), 0);
    for (std::size_t i = 0; i < items_.size(); ++i) {
        slots_[slotOf(items_[i].tag)] = static_cast<std::uint32_t>(i + 1);
    }
}

bool AttributeMap::addScanned(Item item) {
    if (scan(item.tag) != nullptr) {
        return false;
    }
    items_.push_back(std::move(item));
    if (items_.size() > kMostScanned) {
        growSlots();
    }
    return true;
}

bool AttributeMap::addHashed(Item item) {
    std::uint32_t& slot = slots_[slotOf(item.tag)];
    if (slot != 0) {
        return false;
    }
    items_.push_back(std::move(item));
    slot = static_cast<std::uint32_t>(items_.size());
    if (2 * items_.size() > slots_.size()) {
        growSlots();
    }
    return true;
}

bool AttributeMap::add(std::wstring tag, std::unique_ptr<AttributeEntry> entry) {
    Item item{std::move(tag), std::move(entry)};
    return slots_.empty() ? addScanned(std::move(item)) : addHashed(std::move(item));
}
