#include "blocks/BlockNesting.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

void BlockNesting::update(const BlockMonitors& monitors) {
    if (isKept_ || looked_ == lastChangeStamp()) {
        return;
    }
    const std::uint64_t containersStamp = findSources(monitors);
    if (monitorsStamp_ != monitors.changeStamp() || containersStamp_ != containersStamp) {
        monitorsStamp_ = kNoChangeStamp; // until it is drawn
        draw();
        monitorsStamp_ = monitors.changeStamp();
        containersStamp_ = containersStamp;
    }
    looked_ = lastChangeStamp();
}

/// Asks every monitor once. What comes back is greater than before as soon as any of them got or lost a
/// container.
std::uint64_t BlockNesting::findSources(const BlockMonitors& monitors) {
    std::uint64_t greatest = 0;
    sources_.clear();
    sources_.reserve(monitors.size());
    for (const auto& [key, monitor] : monitors) {
        if (monitor == nullptr) {
            break;
        }
        const KtDxBlock::References* references = monitor->references();
        if (references != nullptr) {
            greatest = std::max(greatest, references->changeStamp());
        }
        sources_.push_back({monitor, references});
    }
    isComplete_ = sources_.size() == monitors.size();
    return greatest;
}

void BlockNesting::draw() {
    std::vector<Placement> placements;
    ids_.start(sources_.size());
    enterPlacements(placements);
    groupByContainer(placements);
}

void BlockNesting::enterPlacements(std::vector<Placement>& placements) {
    std::vector<const KtDxBlock*> entered; // by number
    for (const auto& [monitor, references] : sources_) {
        const std::uint32_t block = ids_.enter(monitor->blockId());
        entered.resize(std::max<std::size_t>(entered.size(), ids_.size()));
        if (references == nullptr || std::exchange(entered[block], monitor) == monitor) {
            continue;
        }
        for (const auto& [container, ids] : *references) {
            placements.push_back({ids_.enter(container), block});
        }
    }
}

void BlockNesting::groupByContainer(const std::vector<Placement>& placements) {
    firstPlaced_.assign(ids_.size() + 1, 0);
    for (const Placement& placement : placements) {
        ++firstPlaced_[placement.container];
    }
    std::inclusive_scan(firstPlaced_.begin(), firstPlaced_.end(), firstPlaced_.begin());
    placed_.resize(placements.size());
    for (auto placement = placements.rbegin(); placement != placements.rend(); ++placement) {
        placed_[--firstPlaced_[placement->container]] = placement->block;
    }
}
