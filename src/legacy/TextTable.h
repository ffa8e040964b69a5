#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>
#include <vector>

/// Different texts, each kept once and known by the number that it was given, from 0 in the order in which
/// they came. Constant time each, however the texts are chosen. What their bytes mean is their owner's
/// business.
class TextTable {
public:
    static constexpr std::size_t kMost = std::size_t{1} << 31; ///< that the slots can tell apart

    /// Refuses more than `most` texts as if there were no memory for them.
    explicit TextTable(std::size_t most = kMost) : most_(most) {}

    TextTable(const TextTable&) = delete;
    TextTable& operator=(const TextTable&) = delete;
    ~TextTable() = default;

    /// Makes room for that many more.
    void reserve(std::size_t more);

    /// The number of the text, a new one if it is not there yet; `hash` is TagHash's.
    std::uint32_t add(std::string_view text, std::uint64_t hash);

    /// No more are added, and the room that finding them takes is given back.
    void close() { std::vector<Slot>().swap(slots_); }

    /// Has the memory fetched that `add` will look at first, ...
    void fetchSlot(std::uint64_t hash) const;
    /// ... then, where that has arrived, what it will look at next, ...
    void fetchText(std::uint64_t hash) const;
    /// ... and last.
    void fetchBytes(std::uint64_t hash) const;

    [[nodiscard]] std::string_view at(std::uint32_t number) const {
        return {texts_[number].begin, texts_[number].length};
    }

    /// What the owner notes of a text; 0 when it is new.
    [[nodiscard]] std::uint64_t& markOf(std::uint32_t number) { return texts_[number].mark; }

    [[nodiscard]] std::size_t size() const { return texts_.size(); }

private:
    struct Text {
        const char* begin;
        std::size_t length;
        std::uint64_t mark;
    };

    /// A number, and the half of its text's hash that says where it should be.
    struct Slot {
        std::uint32_t place;
        std::uint32_t number = kFree;
    };

    static constexpr std::uint32_t kFree = std::numeric_limits<std::uint32_t>::max();
    static constexpr unsigned kPlaceBits = 32;
    static constexpr unsigned kFirstBits = 5;

    /// So many that half of them stay free.
    static std::size_t slotsFor(std::size_t texts) { return 2 * texts; }

    static std::uint32_t placeOf(std::uint64_t hash) {
        return static_cast<std::uint32_t>(hash >> kPlaceBits);
    }

    [[nodiscard]] const Slot& firstSlot(std::uint64_t hash) const { return slots_[placeOf(hash) >> shift_]; }

    [[nodiscard]] Slot& slotOf(std::string_view text, std::uint32_t place);
    [[nodiscard]] const Text* likelyText(std::uint64_t hash) const;
    std::uint32_t addNew(std::string_view text, Slot& slot, std::uint32_t place);
    void addChunk(std::size_t least);
    void makeRoom();
    void growSlots(unsigned bits);

    std::size_t most_;
    std::vector<Text> texts_;
    std::vector<Slot> slots_ = std::vector<Slot>(std::size_t{1} << kFirstBits);
    unsigned shift_ = kPlaceBits - kFirstBits;
    std::vector<std::unique_ptr<char[]>> chunks_; ///< the texts' bytes
    char* next_ = nullptr;                        ///< free in the last chunk
    std::size_t free_ = 0;
};

inline TextTable::Slot& TextTable::slotOf(std::string_view text, std::uint32_t place) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = place >> shift_;
    while (slots_[i].number != kFree && (slots_[i].place != place || at(slots_[i].number) != text)) {
        i = (i + 1) & mask;
    }
    return slots_[i];
}

inline std::uint32_t TextTable::add(std::string_view text, std::uint64_t hash) {
    const std::uint32_t place = placeOf(hash);
    Slot& slot = slotOf(text, place);
    if (slot.number != kFree) {
        return slot.number;
    }
    if (slotsFor(texts_.size() + 1) <= slots_.size() && texts_.size() < most_) {
        return addNew(text, slot, place);
    }
    makeRoom();
    return addNew(text, slotOf(text, place), place);
}

inline std::uint32_t TextTable::addNew(std::string_view text, Slot& slot, std::uint32_t place) {
    if (text.size() > free_) {
        addChunk(text.size());
    }
    texts_.push_back({next_, text.size(), 0});
    next_ = std::copy(text.begin(), text.end(), next_);
    free_ -= text.size();
    slot = {place, static_cast<std::uint32_t>(texts_.size() - 1)};
    return slot.number;
}

inline void TextTable::fetchSlot(std::uint64_t hash) const {
    __builtin_prefetch(&firstSlot(hash));
}

/// What the first slot leads to, if that is the text's.
inline const TextTable::Text* TextTable::likelyText(std::uint64_t hash) const {
    const Slot& slot = firstSlot(hash);
    return slot.number != kFree && slot.place == placeOf(hash) ? &texts_[slot.number] : nullptr;
}

inline void TextTable::fetchText(std::uint64_t hash) const {
    if (const Text* text = likelyText(hash); text != nullptr) {
        __builtin_prefetch(text);
    }
}

inline void TextTable::fetchBytes(std::uint64_t hash) const {
    if (const Text* text = likelyText(hash); text != nullptr) {
        __builtin_prefetch(text->begin);
    }
}
