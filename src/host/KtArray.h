#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// The host's array of plain values. A growth length is the least number of elements that an append adds room
/// for; larger arrays grow by half of what they hold, so appending n elements costs time proportional to n.
/// Throws std::bad_alloc when there is no memory and is then unchanged.
template <typename T>
class KtArray {
    static_assert(std::is_trivially_copyable_v<T>, "elements are moved by copying their bytes");

public:
    static constexpr std::uint32_t kDefaultGrowLength = 8;

    KtArray() noexcept = default;

    /// Room for `physicalLength` elements, none of them there yet.
    explicit KtArray(std::size_t physicalLength, std::uint32_t growLength = kDefaultGrowLength)
        : growLength_(std::max<std::uint32_t>(growLength, 1)) {
        setPhysicalLength(physicalLength);
    }

    KtArray(std::initializer_list<T> values) {
        setPhysicalLength(values.size());
        for (const T& value : values) {
            append(value);
        }
    }

    KtArray(const KtArray& other) : growLength_(other.growLength_) { append(other); }

    KtArray(KtArray&& other) noexcept { swap(other); }

    KtArray& operator=(const KtArray& other) {
        KtArray copy(other);
        swap(copy);
        return *this;
    }

    KtArray& operator=(KtArray&& other) noexcept {
        swap(other);
        return *this;
    }

    ~KtArray() = default;

    [[nodiscard]] std::size_t length() const noexcept { return length_; }

    [[nodiscard]] bool isEmpty() const noexcept { return length_ == 0; }

    [[nodiscard]] std::size_t physicalLength() const noexcept { return physicalLength_; }

    [[nodiscard]] std::uint32_t growLength() const noexcept { return growLength_; }

    T& operator[](std::size_t index) noexcept { return elements_[index]; }

    const T& operator[](std::size_t index) const noexcept { return elements_[index]; }

    [[nodiscard]] T* begin() noexcept { return elements_.get(); }

    [[nodiscard]] T* end() noexcept { return elements_.get() + length_; }

    [[nodiscard]] const T* begin() const noexcept { return elements_.get(); }

    [[nodiscard]] const T* end() const noexcept { return elements_.get() + length_; }

    void append(const T& value) {
        const T kept = value; // the value may lie in the storage that growing replaces
        growFor(1);
        elements_[length_++] = kept;
    }

    void append(const KtArray& other) {
        const std::size_t count = other.length_;
        if (count == 0) {
            return;
        }
        growFor(count);
        std::copy_n(other.elements_.get(), count, elements_.get() + length_);
        length_ += static_cast<std::uint32_t>(count);
    }

    [[nodiscard]] bool contains(const T& value) const noexcept {
        return std::find(begin(), end(), value) != end();
    }

    /// Forgets the elements and keeps the room.
    void setLogicalLengthZero() noexcept { length_ = 0; }

    /// Gives exactly this much room; elements beyond it are dropped.
    void setPhysicalLength(std::size_t length) {
        if (length > std::numeric_limits<std::uint32_t>::max()) {
            throw std::bad_array_new_length();
        }
        std::unique_ptr<T[]> moved;
        if (length != 0) {
            moved.reset(new T[length]);
            std::copy_n(elements_.get(), std::min<std::size_t>(length_, length), moved.get());
        }
        elements_ = std::move(moved);
        physicalLength_ = static_cast<std::uint32_t>(length);
        length_ = std::min(length_, physicalLength_);
    }

    void swap(KtArray& other) noexcept {
        std::swap(elements_, other.elements_);
        std::swap(length_, other.length_);
        std::swap(physicalLength_, other.physicalLength_);
        std::swap(growLength_, other.growLength_);
    }

private:
    void growFor(std::size_t count) {
        if (length_ + count > physicalLength_) {
            setPhysicalLength(length_ +
                              std::max({count, std::size_t{growLength_}, std::size_t{length_ / 2}}));
        }
    }

    std::unique_ptr<T[]> elements_;
    std::uint32_t length_ = 0; // 32 bits each: drawings keep many small arrays
    std::uint32_t physicalLength_ = 0;
    std::uint32_t growLength_ = kDefaultGrowLength;
};
