#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

/// The greatest number given so far: while it is the same, no elements have come or gone anywhere.
inline std::uint64_t& lastChangeStamp() {
    static std::uint64_t last = 0;
    return last;
}

/// A number that was never given before: whoever remembers the greatest of some can tell that none of them
/// has changed since.
inline std::uint64_t nextChangeStamp() {
    return ++lastChangeStamp();
}

/// One that is never given.
inline constexpr std::uint64_t kNoChangeStamp = std::numeric_limits<std::uint64_t>::max();

/// Elements in ascending order of their keys, each key once. They lie side by side in chunks, so that walks
/// are sweeps and next to nothing is needed beyond the elements themselves, and an insertion or removal moves
/// no more than a chunk. What is looked for in ascending order is found beside what was found last.
///
/// Iterators are places, not elements: they stay usable when elements come and go, but then what they point
/// to may be another element. References to elements last until the next insertion or removal.
///
/// `Order` has the type `Key`, `keyOf(element)` and `isLess(key, key)`.
template <typename Element, typename Order>
class OrderedChunks {
    using Elements = std::vector<Element>;

    template <typename Owner, typename Value>
    class Place;

public:
    using Key = typename Order::Key;
    using value_type = Element;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using iterator = Place<OrderedChunks, Element>;
    using const_iterator = Place<const OrderedChunks, const Element>;

    OrderedChunks() = default;
    OrderedChunks(const OrderedChunks&) = delete;
    OrderedChunks& operator=(const OrderedChunks&) = delete;
    ~OrderedChunks() = default;

    bool empty() const noexcept { return size_ == 0; }

    std::size_t size() const noexcept { return size_; }

    /// Different whenever elements have come or gone, or one has been put in another's place, since it was
    /// asked, and from that of all others.
    std::uint64_t changeStamp() const noexcept { return changeStamp_; }

    iterator begin() noexcept { return {*this, 0, 0}; }

    iterator end() noexcept { return {}; }

    const_iterator begin() const noexcept { return {*this, 0, 0}; }

    const_iterator end() const noexcept { return {}; }

    iterator find(const Key& key) { return found<iterator>(*this, key); }

    const_iterator find(const Key& key) const { return found<const_iterator>(*this, key); }

    bool contains(const Key& key) const { return find(key) != end(); }

    /// The first element whose key is not less.
    const_iterator lower_bound(const Key& key) const {
        const std::size_t chunk = chunkFor(key);
        return {*this, chunk, chunk == chunks_.size() ? 0 : indexFor(chunk, key)};
    }

    /// The first element whose key is greater.
    const_iterator upper_bound(const Key& key) const {
        const_iterator place = lower_bound(key);
        if (place != end() && !Order::isLess(key, Order::keyOf(*place))) {
            ++place;
        }
        return place;
    }

    /// Leaves an element that has the key already as it is. Throws std::bad_alloc and is then unchanged.
    std::pair<iterator, bool> insert(Element element);

    /// Enters `make(0)`, `make(1)`, ..., which come in ascending order, where nothing is; no room is left
    /// over. Throws std::bad_alloc, and then those are there that came before.
    template <typename Make>
    void fill(std::size_t count, Make make);

    /// What comes behind it.
    iterator erase(iterator place);

    /// Number of elements removed, 0 or 1.
    std::size_t erase(const Key& key) {
        const iterator place = find(key);
        if (place == end()) {
            return 0;
        }
        erase(place);
        return 1;
    }

    template <typename Condition>
    void removeIf(Condition condition);

    void clear() noexcept {
        chunks_.clear();
        changeSize(0);
    }

    void swap(OrderedChunks& other) noexcept {
        chunks_.swap(other.chunks_);
        const std::size_t size = size_;
        changeSize(other.size_);
        other.changeSize(size);
    }

protected:
    void noteChange() noexcept { changeStamp_ = nextChangeStamp(); }

private:
    static constexpr std::size_t kFull = 64;
    static constexpr std::size_t kHalf = kFull / 2;
    static constexpr std::size_t kEnd = std::numeric_limits<std::size_t>::max();

    struct Chunk {
        Key least; // no key in the chunk, unless it is the first one, is less; those of the next one's are
                   // not
        Elements elements;
    };

    bool isFor(std::size_t chunk, const Key& key) const {
        return (chunk == 0 || !Order::isLess(key, chunks_[chunk].least)) &&
               (chunk + 1 == chunks_.size() || Order::isLess(key, chunks_[chunk + 1].least));
    }

    /// The chunk that has the key if any has; the number of chunks when there is none.
    std::size_t chunkFor(const Key& key) const {
        if (chunks_.empty() || (lastChunk_ < chunks_.size() && isFor(lastChunk_, key))) {
            return chunks_.empty() ? 0 : lastChunk_;
        }
        const auto second = std::next(chunks_.begin()); // the first one has all that is less
        const auto behind =
            std::upper_bound(second, chunks_.end(), key, [](const Key& sought, const Chunk& chunk) {
                return Order::isLess(sought, chunk.least);
            });
        lastChunk_ = static_cast<std::size_t>(behind - second);
        return lastChunk_;
    }

    /// Of the first element in the chunk whose key is not less; their number when all are.
    std::size_t indexFor(std::size_t chunk, const Key& key) const {
        const Elements& elements = chunks_[chunk].elements;
        const auto isLess = [](const Element& element, const Key& sought) {
            return Order::isLess(Order::keyOf(element), sought);
        };
        auto from = elements.begin();
        if (lastIndex_ < elements.size()) {
            const auto last = from + static_cast<std::ptrdiff_t>(lastIndex_);
            if (isLess(*last, key)) {
                from = std::next(last);
                if (from != elements.end() && !isLess(*from, key)) {
                    return ++lastIndex_;
                }
            } else if (last == from || isLess(*std::prev(last), key)) {
                return lastIndex_;
            }
        }
        lastIndex_ =
            static_cast<std::size_t>(std::lower_bound(from, elements.end(), key, isLess) - elements.begin());
        return lastIndex_;
    }

    bool isAt(std::size_t chunk, std::size_t index, const Key& key) const {
        const Elements& elements = chunks_[chunk].elements;
        return index < elements.size() && !Order::isLess(key, Order::keyOf(elements[index]));
    }

    template <typename Found, typename Self>
    static Found found(Self& self, const Key& key) {
        const std::size_t chunk = self.chunkFor(key);
        if (chunk == self.chunks_.size()) {
            return {};
        }
        const std::size_t index = self.indexFor(chunk, key);
        return self.isAt(chunk, index, key) ? Found(self, chunk, index) : Found();
    }

    void changeSize(std::size_t size) noexcept {
        size_ = size;
        noteChange();
    }

    iterator append(Element&& element) {
        Chunk fresh{Order::keyOf(element), {}};
        fresh.elements.push_back(std::move(element));
        chunks_.push_back(std::move(fresh));
        return {*this, chunks_.size() - 1, 0};
    }

    void split(std::size_t chunk);
    void joinNext(std::size_t chunk) noexcept;

    std::vector<Chunk> chunks_; // none is empty
    std::size_t size_ = 0;
    std::uint64_t changeStamp_ = 0;
    mutable std::size_t lastChunk_ = 0; // where the last search ended
    mutable std::size_t lastIndex_ = 0;
};

template <typename Element, typename Order>
template <typename Owner, typename Value>
class OrderedChunks<Element, Order>::Place {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using pointer = Value*;
    using reference = Value&;

    Place() = default;

    Place(Owner& owner, std::size_t chunk, std::size_t index) : owner_(&owner), chunk_(chunk), index_(index) {
        settle();
    }

    /// To one that cannot change what it points to.
    template <typename OtherOwner, typename OtherValue>

    requires std::is_convertible_v<OtherOwner*, Owner*> &&
        (!std::is_same_v<OtherOwner, Owner>)Place(const Place<OtherOwner, OtherValue>& other)
        : owner_(other.owner_),
          chunk_(other.chunk_),
          index_(other.index_) {}

    Value& operator*() const { return owner_->chunks_[chunk_].elements[index_]; }

    Value* operator->() const { return &**this; }

    Place& operator++() {
        ++index_;
        settle();
        return *this;
    }

    Place operator++(int) {
        const Place before = *this;
        ++*this;
        return before;
    }

    template <typename OtherOwner, typename OtherValue>
    bool operator==(const Place<OtherOwner, OtherValue>& other) const {
        return chunk_ == other.chunk_ && index_ == other.index_;
    }

private:
    friend class OrderedChunks;
    template <typename OtherOwner, typename OtherValue>
    friend class Place;

    /// Goes on to the next chunk behind the last element of one.
    void settle() {
        const auto& chunks = owner_->chunks_;
        if (chunk_ < chunks.size() && index_ >= chunks[chunk_].elements.size()) {
            ++chunk_;
            index_ = 0;
        }
        if (chunk_ >= chunks.size()) {
            *this = Place();
        }
    }

    Owner* owner_ = nullptr;
    std::size_t chunk_ = kEnd;
    std::size_t index_ = 0;
};

template <typename Element, typename Order>
std::pair<typename OrderedChunks<Element, Order>::iterator, bool>
OrderedChunks<Element, Order>::insert(Element element) {
    std::size_t chunk = chunkFor(Order::keyOf(element));
    std::size_t index = chunk == chunks_.size() ? 0 : indexFor(chunk, Order::keyOf(element));
    if (chunk < chunks_.size() && isAt(chunk, index, Order::keyOf(element))) {
        return {iterator(*this, chunk, index), false};
    }
    const bool isFull = chunk < chunks_.size() && chunks_[chunk].elements.size() == kFull;
    iterator place;
    if (chunks_.empty() || (isFull && index == kFull && chunk + 1 == chunks_.size())) {
        place = append(std::move(element)); // what comes in ascending order fills its chunks
    } else {
        if (isFull) {
            split(chunk);
            chunk += index > kHalf ? 1 : 0;
            index -= index > kHalf ? kHalf : 0;
        }
        Elements& elements = chunks_[chunk].elements;
        elements.insert(elements.begin() + static_cast<std::ptrdiff_t>(index), std::move(element));
        place = iterator(*this, chunk, index);
    }
    changeSize(size_ + 1);
    return {place, true};
}

template <typename Element, typename Order>
template <typename Make>
void OrderedChunks<Element, Order>::fill(std::size_t count, Make make) {
    noteChange();
    chunks_.reserve((count + kFull - 1) / kFull);
    while (size_ < count) {
        Elements elements;
        const std::size_t end = std::min(count, size_ + kFull);
        elements.reserve(end - size_);
        for (std::size_t i = size_; i < end; ++i) {
            elements.push_back(make(i));
        }
        const Key least = Order::keyOf(elements.front());
        chunks_.push_back({least, std::move(elements)});
        size_ = end;
    }
}

/// All that needs memory comes first.
template <typename Element, typename Order>
void OrderedChunks<Element, Order>::split(std::size_t chunk) {
    Chunk upper{Order::keyOf(chunks_[chunk].elements[kHalf]), {}};
    upper.elements.reserve(kFull);
    if (chunks_.size() == chunks_.capacity()) {
        chunks_.reserve(2 * chunks_.size());
    }
    Elements& lower = chunks_[chunk].elements;
    const auto middle = lower.begin() + static_cast<std::ptrdiff_t>(kHalf);
    std::move(middle, lower.end(), std::back_inserter(upper.elements));
    lower.erase(middle, lower.end());
    chunks_.insert(chunks_.begin() + static_cast<std::ptrdiff_t>(chunk) + 1, std::move(upper));
}

template <typename Element, typename Order>
typename OrderedChunks<Element, Order>::iterator OrderedChunks<Element, Order>::erase(iterator place) {
    const std::size_t chunk = place.chunk_;
    Elements& elements = chunks_[chunk].elements;
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(place.index_));
    changeSize(size_ - 1);
    if (elements.empty()) {
        chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(chunk));
    } else {
        joinNext(chunk);
    }
    return {*this, chunk, place.index_};
}

/// If both together are few enough; needs no memory.
template <typename Element, typename Order>
void OrderedChunks<Element, Order>::joinNext(std::size_t chunk) noexcept {
    if (chunk + 1 == chunks_.size()) {
        return;
    }
    Elements& elements = chunks_[chunk].elements;
    Elements& next = chunks_[chunk + 1].elements;
    if (elements.size() + next.size() <= std::min(kHalf, elements.capacity())) {
        std::move(next.begin(), next.end(), std::back_inserter(elements));
        chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(chunk) + 1);
    }
}

template <typename Element, typename Order>
template <typename Condition>
void OrderedChunks<Element, Order>::removeIf(Condition condition) {
    std::size_t removed = 0;
    for (Chunk& chunk : chunks_) {
        removed += std::erase_if(chunk.elements, condition);
    }
    if (removed == 0) {
        return;
    }
    std::erase_if(chunks_, [](const Chunk& chunk) { return chunk.elements.empty(); });
    changeSize(size_ - removed);
}
