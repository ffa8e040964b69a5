#pragma once

#include <KtDbObjectId.h>

#include "blocks/IdNumbers.h"
#include "blocks/KtDxBlock.h"
#include "notify/OrderedMap.h"

#include <cstdint>
#include <vector>

/// Which blocks are placed straight inside which container: the monitors' references turned round, so that
/// following the nesting costs what it reaches and not a walk over all monitors at every step. It covers the
/// monitors up to the first empty entry.
class BlockNesting {
public:
    using BlockMonitors = OrderedMap<KtDbObjectId, KtDxBlock*>;

    /// Draws the picture anew if the monitors or their containers are others than when it was drawn. Throws
    /// std::bad_alloc.
    void update(const BlockMonitors& monitors);

    /// While it is kept, the picture stays as it is.
    void keep(bool on) { isKept_ = on; }

    /// False when an empty entry ended the walk.
    bool isComplete() const { return isComplete_; }

    /// Calls `visit` with the id of each block placed in the container; a block whose monitor several keys
    /// reach comes once.
    template <typename Visit>
    void forEachBlockIn(KtDbObjectId container, Visit visit) const {
        const std::uint32_t number = ids_.find(container);
        if (number == IdNumbers::kNone) {
            return;
        }
        for (std::uint32_t i = firstPlaced_[number]; i < firstPlaced_[number + 1]; ++i) {
            visit(ids_.idOf(placed_[i]));
        }
    }

private:
    struct Placement {
        std::uint32_t container;
        std::uint32_t block;
    };

    struct Source {
        KtDxBlock* monitor;
        const KtDxBlock::References* references; // null when it has none to show
    };

    std::uint64_t findSources(const BlockMonitors& monitors);
    void draw();
    void enterPlacements(std::vector<Placement>& placements);
    void groupByContainer(const std::vector<Placement>& placements);

    std::vector<Source> sources_;            // of the monitors up to the first empty entry, one for each key
    IdNumbers ids_;                          // of containers and blocks
    std::vector<std::uint32_t> firstPlaced_; // by container's number, in `placed_`; one more at the end
    std::vector<std::uint32_t> placed_;      // numbers of blocks
    std::uint64_t looked_ = kNoChangeStamp;  // the last of all stamps when the monitors were asked
    std::uint64_t monitorsStamp_ = kNoChangeStamp;
    std::uint64_t containersStamp_ = kNoChangeStamp; // the greatest of all monitors'
    bool isComplete_ = true;
    bool isKept_ = false;
};
