#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

/// The host's array of plain values. A growth length is the least number of elements that an append adds room
/// for; larger arrays grow by half of what they hold, so appending n elements costs time proportional to n.
/// Throws std::bad_alloc when there is no memory and is then unchanged. Drawings keep many small arrays, so
/// the physical length lies in front of the elements and not in the array itself.
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

    /// Of a copy, or of what was moved here.
    KtArray& operator=(KtArray other) noexcept {
        swap(other);
        return *this;
    }

    ~KtArray() { release(elements_); }

    [[nodiscard]] std::size_t length() const noexcept { return length_; }

    [[nodiscard]] bool isEmpty() const noexcept { return length_ == 0; }

    [[nodiscard]] std::size_t physicalLength() const noexcept {
        return elements_ == nullptr ? 0 : headOf(elements_)->physicalLength;
    }

    [[nodiscard]] std::uint32_t growLength() const noexcept { return growLength_; }

    T& operator[](std::size_t index) noexcept { return elements_[index]; }

    const T& operator[](std::size_t index) const noexcept { return elements_[index]; }

    [[nodiscard]] T* begin() noexcept { return elements_; }

    [[nodiscard]] T* end() noexcept { return elements_ + length_; }

    [[nodiscard]] const T* begin() const noexcept { return elements_; }

    [[nodiscard]] const T* end() const noexcept { return elements_ + length_; }

    void append(const T& value) {
        const T kept = value; // the value may lie in the storage that growing replaces
        growFor(1);
        elements_[length_++] = kept;
    }

    void append(const KtArray& other) {
        const std::size_t count = other.length_;
        growFor(count);
        std::copy_n(other.elements_, count, elements_ + length_);
        length_ += static_cast<std::uint32_t>(count);
    }

    [[nodiscard]] bool contains(const T& value) const noexcept {
        return std::find(begin(), end(), value) != end();
    }

    /// Forgets the elements and keeps the room.
    void setLogicalLengthZero() noexcept { length_ = 0; }

    /// Forgets the elements behind the first `length`, if there are more, and keeps the room.
    void setLogicalLength(std::size_t length) noexcept {
        length_ = static_cast<std::uint32_t>(std::min<std::size_t>(length_, length));
    }

    /// Gives exactly this much room; elements beyond it are dropped.
    void setPhysicalLength(std::size_t length) {
        if (length > std::numeric_limits<std::uint32_t>::max()) {
            throw std::bad_array_new_length();
        }
        T* moved = nullptr;
        if (length != 0) {
            moved = allocate(static_cast<std::uint32_t>(length));
            std::copy_n(elements_, std::min<std::size_t>(length_, length), moved);
        }
        setLogicalLength(length);
        release(std::exchange(elements_, moved));
    }

    void swap(KtArray& other) noexcept {
        std::swap(elements_, other.elements_);
        std::swap(length_, other.length_);
        std::swap(growLength_, other.growLength_);
    }

private:
    void growFor(std::size_t count) {
        if (length_ + count > physicalLength()) {
            setPhysicalLength(length_ +
                              std::max({count, std::size_t{growLength_}, std::size_t{length_ / 2}}));
        }
    }

    struct Head {
        alignas(std::uint64_t) std::uint32_t physicalLength;
    };

    static_assert(alignof(T) <= alignof(Head), "elements lie behind a head");

    static Head* headOf(T* elements) noexcept { return reinterpret_cast<Head*>(elements) - 1; }

    static T* allocate(std::uint32_t length) {
        Head* const head = new (::operator new(sizeof(Head) + length * sizeof(T))) Head{length};
        return reinterpret_cast<T*>(head + 1);
    }

    static void release(T* elements) noexcept {
        if (elements != nullptr) {
            ::operator delete(headOf(elements));
        }
    }

    T* elements_ = nullptr;
    std::uint32_t length_ = 0;
    std::uint32_t growLength_ = kDefaultGrowLength;
};
