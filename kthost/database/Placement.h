#pragma once

#include <KtDbObjectId.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kthost {

/// What a reference places and which attributes it has, in one word, since there are as many as references.
/// Attributes are nearly always made straight behind their reference, so that it is enough to count them;
/// others have a list. `reference` is the id of the reference itself, everywhere.
class Placement {
public:
    explicit Placement(KtDbObjectId definition) : word_(definition.asUnsigned() << kIdShift) {}

    Placement(const Placement&) = delete;
    Placement& operator=(const Placement&) = delete;
    ~Placement();

    KtDbObjectId definition() const;

    /// In the order of their appending.
    std::size_t attributeCount() const { return isListed() ? list()->attributes.size() : following(); }

    KtDbObjectId attribute(KtDbObjectId reference, std::size_t index) const {
        return isListed() ? list()->attributes[index] : KtDbObjectId(reference.asUnsigned() + 1 + index);
    }

    void append(KtDbObjectId reference, KtDbObjectId attribute);
    void dropReleased(KtDbObjectId reference);

private:
    struct List {
        KtDbObjectId definition;
        std::vector<KtDbObjectId> attributes;
    };

    // Either the definition's id, above a count of attributes; or the address of a list, with the lowest bit
    // set.
    static constexpr std::uint64_t kListed = 1;
    static constexpr unsigned kCountShift = 1;
    static constexpr unsigned kIdShift = 16; // the larger ids would take months to hand out
    static constexpr std::uint64_t kMostFollowing = 0x7FFF;

    bool isListed() const { return (word_ & kListed) != 0; }

    std::size_t following() const { return (word_ >> kCountShift) & kMostFollowing; }

    List* list() const;
    List& makeList(KtDbObjectId reference);

    std::uint64_t word_;
};

/// The attributes of one reference, read by place.
struct AttributeList {
    const Placement* placement;
    KtDbObjectId reference;

    std::size_t size() const { return placement->attributeCount(); }

    KtDbObjectId operator[](std::size_t index) const { return placement->attribute(reference, index); }
};

} // namespace kthost
