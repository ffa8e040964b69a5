#pragma once

#include <KtDbObjectId.h>

#include "blocks/KtDxBlocks.h"

#include <utility>
#include <vector>

/// Which blocks are placed straight inside which container: the monitors' references turned round, so that
/// following the nesting costs what it reaches and not a walk over all monitors at every step. A picture of
/// one moment; it covers the monitors up to the first empty entry.
class BlockNesting {
public:
    explicit BlockNesting(const KtDxBlocks::BlockMonitors& monitors);

    /// False when an empty entry ended the walk.
    bool isComplete() const { return complete_; }

    /// Calls `visit` with the id of each block placed in the container; a block whose monitor several keys
    /// reach comes once.
    template <typename Visit>
    void forEachBlockIn(KtDbObjectId container, Visit visit) const {
        for (auto placement = firstIn(container);
             placement != placements_.end() && placement->first == container; ++placement) {
            visit(placement->second);
        }
    }

private:
    using Placement = std::pair<KtDbObjectId, KtDbObjectId>; // container, block
    std::vector<Placement>::const_iterator firstIn(KtDbObjectId container) const;

    std::vector<Placement> placements_; // ascending
    bool complete_ = true;
};
