#pragma once

#include "blocks/RecordedReferences.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// The recorded references of one block once more, in ascending order over all containers: as the host lists
/// them. A rescan that finds everything where it is recorded reads this, side by side with the host's list,
/// and nothing else.
class RecordedOrder {
public:
    /// Whether it shows what is recorded. It does not after a rescan that broke off, nor when somebody else
    /// has entered or removed containers.
    bool isOf(const RecordedReferences& references) const { return stamp_ == references.changeStamp(); }

    /// Says that it does.
    void settle(const RecordedReferences& references) { stamp_ = references.changeStamp(); }

    /// Says that it does not, until it is settled.
    void unsettle() { stamp_ = kNoChangeStamp; }

    std::size_t size() const { return places_.length(); }

    KtDbObjectId referenceAt(std::size_t index) const { return places_[index].reference; }

    /// Whether these are its references, all of them in this order.
    bool hasReferences(std::span<const KtDbObjectId> ids) const;

    bool isAt(std::size_t index, KtDbObjectId reference, KtDbObjectId container) const {
        return index < places_.length() && places_[index].reference == reference &&
               places_[index].container == container;
    }

    /// Appends those from `first` on.
    void appendRest(std::size_t first, std::vector<KtDbObjectId>& rest) const;

    /// Room for so many in all. Throws std::bad_alloc.
    void reserve(std::size_t size) {
        if (size > places_.physicalLength()) {
            places_.setPhysicalLength(size);
        }
    }

    /// Behind all others. Needs no memory where room was made.
    void append(KtDbObjectId reference, KtDbObjectId container) { places_.append({reference, container}); }

    /// Forgets those behind the first `size`.
    void cut(std::size_t size) { places_.setLogicalLength(size); }

private:
    struct Place {
        KtDbObjectId reference;
        KtDbObjectId container;
    };

    KtArray<Place> places_;
    std::uint64_t stamp_ = 0; // of containers that are empty from the start
};
