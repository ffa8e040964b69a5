#include "blocks/RunMerger.h"

#include <algorithm>
#include <functional>
#include <iterator>

std::span<const KtDbObjectId> RunMerger::ascending(std::span<const KtDbObjectId> ids) {
    if (std::adjacent_find(ids.begin(), ids.end(), std::greater_equal<>()) == ids.end()) {
        return ids;
    }
    findRuns(ids);
    mergePairs(ids);
    while (ends_.size() > 1) {
        before_.swap(merged_);
        mergePairs(before_);
    }
    merged_.erase(std::unique(merged_.begin(), merged_.end()), merged_.end());
    return merged_;
}

void RunMerger::findRuns(Ids ids) {
    ends_.clear();
    for (auto run = ids.begin(); run != ids.end();) {
        run = std::is_sorted_until(run, ids.end());
        ends_.push_back(static_cast<std::size_t>(run - ids.begin()));
    }
}

/// Every run with the one behind it.
void RunMerger::mergePairs(Ids ids) {
    merged_.clear();
    merged_.reserve(ids.size());
    std::size_t begin = 0;
    std::size_t kept = 0;
    for (std::size_t run = 0; run < ends_.size(); run += 2) {
        const std::size_t middle = ends_[run];
        const std::size_t end = run + 1 < ends_.size() ? ends_[run + 1] : middle;
        const Ids first = ids.subspan(begin, middle - begin);
        const Ids second = ids.subspan(middle, end - middle);
        std::merge(first.begin(), first.end(), second.begin(), second.end(), std::back_inserter(merged_));
        ends_[kept++] = end;
        begin = end;
    }
    ends_.resize(kept);
}
