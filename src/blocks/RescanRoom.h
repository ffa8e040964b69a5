#pragma once

#include "blocks/RecordedReferences.h"
#include "blocks/RunMerger.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

/// What a rescan of one block needs beside what it records. Kept from one to the next, so that rescans that
/// find nothing new need no memory.
struct RescanRoom {
    KtDbObjectIdArray listed{0, 8};     ///< by the host
    RunMerger listedInOrder;            ///< the same
    std::vector<KtDbObjectId> previous; ///< recorded before and not met again where it was
    std::size_t attributesEach = 0;     ///< of the latest reference that was attached to
    bool isLent = false;
};

/// The shared room, or, inside a rescan that uses it, one of its own.
class BorrowedRescanRoom {
public:
    explicit BorrowedRescanRoom(RescanRoom& shared)
        : room_(std::exchange(shared.isLent, true) ? own_.emplace() : shared) {}

    BorrowedRescanRoom(const BorrowedRescanRoom&) = delete;
    BorrowedRescanRoom& operator=(const BorrowedRescanRoom&) = delete;

    ~BorrowedRescanRoom() { room_.isLent = false; }

    RescanRoom& operator*() const { return room_; }

    RescanRoom* operator->() const { return &room_; }

private:
    std::optional<RescanRoom> own_; // before the reference, whose initialiser fills it
    RescanRoom& room_;
};
