#include "blocks/RunMerger.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <set>
#include <vector>

namespace {

using Ids = std::vector<KtDbObjectId>;

Ids made(std::initializer_list<std::uint64_t> numbers) {
    Ids ids;
    for (const std::uint64_t number : numbers) {
        ids.emplace_back(number);
    }
    return ids;
}

Ids ascending(RunMerger& merger, const Ids& ids) {
    const auto ordered = merger.ascending(ids);
    return {ordered.begin(), ordered.end()};
}

TEST(RunMerger, GivesBackWhatIsInOrder) {
    RunMerger merger;
    const Ids ids = made({1, 2, 5});
    EXPECT_EQ(merger.ascending(ids).data(), ids.data());
    EXPECT_TRUE(merger.ascending({}).empty());
}

TEST(RunMerger, MergesRuns) {
    RunMerger merger;
    EXPECT_EQ(ascending(merger, made({2, 5, 1, 7, 3})), made({1, 2, 3, 5, 7}));
}

TEST(RunMerger, LeavesRepeatsOut) {
    RunMerger merger;
    EXPECT_EQ(ascending(merger, made({1, 1, 2})), made({1, 2}));
    EXPECT_EQ(ascending(merger, made({1, 2, 1, 2, 2})), made({1, 2}));
}

TEST(RunMerger, PutsAnythingInOrder) {
    const std::uint32_t seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    RunMerger merger;
    for (std::size_t round = 0; round < 200; ++round) {
        Ids ids;
        const std::size_t count = random() % 100;
        const bool inRuns = round % 2 == 0;
        for (std::size_t i = 0; i < count; ++i) {
            const bool goesOn = inRuns && !ids.empty() && random() % 8 != 0;
            ids.emplace_back(goesOn ? ids.back().asUnsigned() + random() % 3 : random() % 100);
        }
        const std::set<KtDbObjectId> expected(ids.begin(), ids.end());
        ASSERT_EQ(ascending(merger, ids), Ids(expected.begin(), expected.end()));
    }
}

} // namespace
