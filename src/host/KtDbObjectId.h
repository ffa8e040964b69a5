#pragma once

#include <compare>
#include <cstdint>
#include <functional>

class KtDbDatabase;

/// Identifier of a database object. It stays what it is for the life of the process: after its object is
/// erased, released or its database closed, the id is still valid, and opening it says what became of the
/// object. Ids are ordered by their raw value.
class KtDbObjectId {
public:
    constexpr KtDbObjectId() noexcept = default;

    explicit constexpr KtDbObjectId(std::uint64_t raw) noexcept : raw_(raw) {}

    constexpr bool operator==(const KtDbObjectId&) const noexcept = default;
    // NOLINTNEXTLINE(modernize-use-nullptr): the zero inside a defaulted comparison is no pointer
    constexpr std::strong_ordering operator<=>(const KtDbObjectId&) const noexcept = default;

    constexpr std::uint64_t asUnsigned() const noexcept { return raw_; }

    constexpr bool isNull() const noexcept { return raw_ == 0; }

    /// True when the host has handed out this id.
    bool isValid() const;
    /// True when the object itself is erased or released.
    bool isErased() const;
    /// True when the object or one that owns it, at any remove, is erased or released.
    bool isEffectivelyErased() const;
    /// Database of the object; null for an id that is not valid and once that database is closed.
    KtDbDatabase* database() const;

private:
    std::uint64_t raw_ = 0;
};

template <>
struct std::hash<KtDbObjectId> {
    std::size_t operator()(KtDbObjectId id) const noexcept {
        return std::hash<std::uint64_t>{}(id.asUnsigned());
    }
};
