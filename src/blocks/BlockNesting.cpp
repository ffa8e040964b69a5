#include "blocks/BlockNesting.h"

#include <algorithm>

BlockNesting::BlockNesting(const KtDxBlocks::BlockMonitors& monitors) {
    for (const auto& [key, monitor] : monitors) {
        if (monitor == nullptr) {
            complete_ = false;
            break;
        }
        const KtDxBlock::References* references = monitor->references();
        if (references == nullptr) {
            continue;
        }
        for (const auto& [container, ids] : *references) {
            placements_.emplace_back(container, monitor->blockId());
        }
    }
    std::sort(placements_.begin(), placements_.end());
    placements_.erase(std::unique(placements_.begin(), placements_.end()), placements_.end());
}

std::vector<BlockNesting::Placement>::const_iterator BlockNesting::firstIn(KtDbObjectId container) const {
    return std::lower_bound(placements_.begin(), placements_.end(), Placement(container, KtDbObjectId()));
}
