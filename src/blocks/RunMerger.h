#pragma once

#include <KtDbObjectId.h>

#include <cstddef>
#include <span>
#include <vector>

/// Puts lists of ids in ascending order, each id once, that consist of few ascending runs: linear in the ids
/// and logarithmic in the runs. Keeps its room from one list to the next.
class RunMerger {
public:
    /// The ids themselves when they are in order already; otherwise a list of its own, which stays until the
    /// next call. Throws std::bad_alloc.
    std::span<const KtDbObjectId> ascending(std::span<const KtDbObjectId> ids);

private:
    using Ids = std::span<const KtDbObjectId>;

    void findRuns(Ids ids);
    void mergePairs(Ids ids);

    std::vector<KtDbObjectId> merged_;
    std::vector<KtDbObjectId> before_;
    std::vector<std::size_t> ends_; // of the runs
};
