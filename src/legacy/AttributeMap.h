#pragma once

#include "legacy/AttributeEntry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Attribute entries by tag, which counts exactly, case included. Walks go in the order in which the tags
/// were first filed, which for a loaded block is their order in the file. Filing takes constant time, however
/// the tags are chosen.
class AttributeMap {
public:
    struct Item {
        std::wstring tag;
        std::unique_ptr<AttributeEntry> entry; ///< never null, unless moved from
    };

    /// Files the entry under the tag. False, and the entry is dropped, when something is filed under it
    /// already.
    bool add(std::wstring tag, std::unique_ptr<AttributeEntry> entry);
    /// What is filed under the tag; null when nothing is. Stays the map's.
    [[nodiscard]] AttributeEntry* find(std::wstring_view tag) const;

    /// Makes room for that many tags in all.
    void reserve(std::size_t count) { items_.reserve(count); }

    [[nodiscard]] std::size_t size() const { return items_.size(); }

    [[nodiscard]] bool empty() const { return items_.empty(); }

    [[nodiscard]] auto begin() { return items_.begin(); }

    [[nodiscard]] auto end() { return items_.end(); }

    [[nodiscard]] auto begin() const { return items_.begin(); }

    [[nodiscard]] auto end() const { return items_.end(); }

private:
    [[nodiscard]] const Item* scan(std::wstring_view tag) const;
    [[nodiscard]] std::size_t slotOf(std::wstring_view tag) const;
    bool addScanned(Item item);
    bool addHashed(Item item);
    void growSlots();

    std::vector<Item> items_;
    std::vector<std::uint32_t>
        slots_; ///< position in items_ plus 1, 0 for free; empty while a scan is as fast
};
