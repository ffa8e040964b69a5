#pragma once

#include "blocks/IdNumbers.h"
#include "blocks/RecordedReferences.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Follows what is recorded of a block while its references are met again in ascending order. As long as each
/// lies where it lay, and none is missing, nothing has to be written: not even a look at another list is
/// needed to tell that.
class RecordedOrder {
public:
    /// False when a container has no array. The arrays are not to be changed while this is in use. Throws
    /// std::bad_alloc.
    bool start(const RecordedReferences& references);

    /// Number that stands for a container; IdNumbers::kNone for one that is neither recorded nor noted.
    std::uint32_t placeOf(KtDbObjectId container) {
        if (latest_ >= places_.size() || containers_.idOf(latest_) != container) {
            latest_ = containers_.find(container);
        }
        return latest_;
    }

    /// Whether what this record owns is known to be filed under itself.
    bool isOwnContainer(std::uint32_t place) const { return places_[place].isOwnContainer; }

    /// Notes that. Throws std::bad_alloc.
    std::uint32_t noteOwnContainer(KtDbObjectId record);

    /// True when the reference is the next one that is recorded there.
    bool follow(std::uint32_t place, KtDbObjectId reference) {
        Place& at = places_[place];
        if (at.next == at.end || *at.next != reference) {
            return false;
        }
        ++at.next;
        ++followed_;
        return true;
    }

    /// Number of references that have been.
    std::size_t followedCount() const { return followed_; }

    /// Whether all have been, and no container is without references.
    bool isAllFollowed() const { return followed_ == recorded_ && !hasUnused_; }

    /// Appends what has not been followed, container by container.
    void appendRest(std::vector<KtDbObjectId>& rest) const;
    /// Forgets what has not been followed. The order is of no further use but for its notes.
    void cutRest();

private:
    struct Place {
        KtDbObjectIdArray* array = nullptr; // null for what is only noted
        const KtDbObjectId* next = nullptr;
        const KtDbObjectId* end = nullptr;
        bool isOwnContainer = false;
    };

    IdNumbers containers_;
    std::vector<Place> places_; // by number
    std::uint32_t latest_ = 0;
    std::size_t recorded_ = 0;
    std::size_t followed_ = 0;
    bool hasUnused_ = false;
};
