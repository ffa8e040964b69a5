#include "notify/OrderedMap.h"

#include "tests/support/FailingAllocation.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <new>
#include <random>
#include <stdexcept>
#include <tuple>
#include <type_traits>
#include <utility>

namespace {

using testing::ElementsAre;
using testing::Pair;

using Map = OrderedMap<std::uint32_t, std::uint32_t>;
using Expected = std::map<std::uint32_t, std::uint32_t>;

/// So many that there are chunks of every kind.
constexpr std::uint32_t kMany = 2000;

Expected entriesOf(const Map& map) {
    Expected contents;
    std::uint32_t before = 0;
    for (const auto& [key, value] : map) {
        EXPECT_TRUE(contents.empty() || before < key) << before << ' ' << key;
        before = key;
        contents[key] = value;
    }
    EXPECT_EQ(contents.size(), map.size());
    return contents;
}

void fill(Map& map, std::uint32_t count) {
    for (std::uint32_t key = 0; key < count; ++key) {
        map.emplace(key, key);
    }
}

TEST(OrderedMap, StartsEmpty) {
    const Map map;
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.begin(), map.end());
    EXPECT_FALSE(map.contains(1));
    EXPECT_EQ(map.lower_bound(1), map.end());
}

TEST(OrderedMap, TellsItsPlacesApart) {
    Map map;
    fill(map, kMany);
    for (auto place = map.begin(); place != map.end(); ++place) {
        ASSERT_EQ(place, map.find(place->first));
        ASSERT_NE(place, std::next(place)) << place->first;
    }
}

TEST(OrderedMap, IsWalkedInAscendingOrderOfKeys) {
    Map map;
    map.emplace(3, 30);
    map.emplace(1, 10);
    map.emplace(2, 20);
    EXPECT_THAT(map, ElementsAre(Pair(1, 10), Pair(2, 20), Pair(3, 30)));
}

TEST(OrderedMap, KeepsTheValueThatAKeyHas) {
    Map map;
    EXPECT_TRUE(map.emplace(1, 10).second);
    EXPECT_FALSE(map.emplace(1, 11).second);
    EXPECT_EQ(map.at(1), 10U);
}

TEST(OrderedMap, AssignsTheValueThatAKeyGets) {
    Map map;
    EXPECT_TRUE(map.insert_or_assign(1, 10).second);
    EXPECT_FALSE(map.insert_or_assign(1, 11).second);
    EXPECT_EQ(map.at(1), 11U);
}

TEST(OrderedMap, MakesTheValueOfAKeyThatIsAskedFor) {
    Map map;
    map[7] = 70;
    EXPECT_EQ(map[7], 70U);
    EXPECT_EQ(map[8], 0U);
}

TEST(OrderedMap, HasNoValueAtAKeyThatIsNotThere) {
    Map map;
    map[1] = 10;
    EXPECT_THROW(std::ignore = map.at(2), std::out_of_range);
    EXPECT_THROW(std::ignore = std::as_const(map).at(2), std::out_of_range);
    try {
        map.at(2) = 20;
    } catch (const std::out_of_range& thrown) {
        EXPECT_STREQ(thrown.what(), "OrderedMap::at");
    }
}

TEST(OrderedMap, FindsTheBoundsOfAKey) {
    Map map;
    for (std::uint32_t key = 0; key < kMany; key += 2) {
        map[key] = key;
    }
    for (std::uint32_t key = 0; key + 2 < kMany; ++key) {
        ASSERT_EQ(map.lower_bound(key)->first, key + key % 2) << key;
        ASSERT_EQ(map.upper_bound(key)->first, key + 2 - key % 2) << key;
    }
    EXPECT_EQ(map.lower_bound(kMany), map.end());
    EXPECT_EQ(map.upper_bound(kMany - 2), map.end());
}

TEST(OrderedMap, ErasesInAWalk) {
    Map map;
    fill(map, kMany);
    for (auto entry = map.begin(); entry != map.end();) {
        if (entry->first % 3 == 0) {
            ++entry;
        } else {
            entry = map.erase(entry);
        }
    }
    Expected thirds;
    for (std::uint32_t key = 0; key < kMany; key += 3) {
        thirds[key] = key;
    }
    EXPECT_EQ(entriesOf(map), thirds);
}

TEST(OrderedMap, RemovesWhatIsAskedFor) {
    Map map;
    fill(map, kMany);
    map.removeIf([](const auto& entry) { return entry.first != 500; });
    EXPECT_THAT(map, ElementsAre(Pair(500, 500)));
    EXPECT_EQ(map.size(), 1U);
}

TEST(OrderedMap, TakesAnElementAtAnyPlaceBetweenOthers) {
    constexpr std::uint32_t kFew = 200; // several chunks, all but the last full
    for (std::uint32_t between = 1; between < 2 * kFew; between += 2) {
        Map map;
        for (std::uint32_t i = 0; i < kFew; ++i) {
            map[2 * i] = i;
        }
        const auto [place, isNew] = map.emplace(between, between);
        ASSERT_TRUE(isNew);
        ASSERT_EQ(place->first, between);
        ASSERT_EQ(entriesOf(map).size(), kFew + 1);
        ASSERT_EQ(std::next(map.find(between - 1))->first, between);
    }
}

TEST(OrderedMap, TakesAnElementAtAnyPlaceBetweenThoseItWasFilledWith) {
    constexpr std::uint32_t kFew = 200; // whatever insertions do, all chunks but the last are full
    for (std::uint32_t between = 1; between < 2 * kFew; between += 2) {
        Map map;
        map.fill(kFew,
                 [](std::size_t index) { return std::pair(2 * static_cast<std::uint32_t>(index), 0U); });
        map.emplace(between, between);
        ASSERT_EQ(entriesOf(map).size(), kFew + 1);
        ASSERT_EQ(std::next(map.find(between - 1))->first, between);
    }
}

TEST(OrderedMap, IsEmptiedFromEitherEnd) {
    for (const bool fromTheEnd : {true, false}) {
        Map map;
        fill(map, kMany);
        for (std::uint32_t i = 0; i < kMany; ++i) {
            const std::uint32_t key = fromTheEnd ? kMany - 1 - i : i;
            const std::uint32_t next = fromTheEnd ? key - 1 : key + 1;
            ASSERT_EQ(map.erase(key), 1U);
            ASSERT_FALSE(map.contains(key));
            ASSERT_EQ(map.contains(next), i + 1 < kMany);
        }
        EXPECT_TRUE(map.empty());
        EXPECT_EQ(map.begin(), map.end());
    }
}

TEST(OrderedMap, ErasesWithoutMemory) {
    Map map;
    fill(map, kMany);
    const FailingFiltered none([](const void*) { return true; }, 1, true);
    for (std::uint32_t i = 0; i < kMany; ++i) {
        ASSERT_EQ(map.erase(i * 769 % kMany), 1U);
    }
    EXPECT_TRUE(map.empty());
}

TEST(OrderedMap, DoesWhatTheLibrarysMapDoes) {
    const std::uint32_t seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (const std::uint32_t keys :
         {100U, 200U, kMany}) { // with few, every chunk is the last but one at times
        Map map;
        Expected expected;
        for (std::uint32_t step = 0; step < 20000; ++step) {
            const auto key = static_cast<std::uint32_t>(random() % keys);
            const bool shrinking = step % 8000 > 4000; // chunks fill up and are emptied again
            if (random() % 4 < (shrinking ? 1U : 3U)) {
                ASSERT_EQ(map.emplace(key, step).second, expected.emplace(key, step).second);
            } else {
                ASSERT_EQ(map.erase(key), expected.erase(key));
            }
            ASSERT_EQ(map.contains(key), expected.contains(key));
            ASSERT_EQ(map.size(), expected.size());
        }
        EXPECT_EQ(entriesOf(map), expected);
    }
}

TEST(OrderedMap, IsUnchangedWithoutMemory) {
    Map map;
    for (std::uint32_t i = 0; i < kMany; ++i) {
        const std::uint32_t key = i * 769 % kMany; // in no order
        const Expected before = i % 50 == 0 ? entriesOf(map) : Expected();
        for (std::size_t k = 1; !map.contains(key); ++k) {
            const FailingAllocation none(k);
            try {
                map.emplace(key, key);
            } catch (const std::bad_alloc&) {
                ASSERT_FALSE(map.contains(key));
            }
        }
        if (i % 50 == 0) {
            Expected with = before;
            with[key] = key;
            ASSERT_EQ(entriesOf(map), with);
        }
    }
    EXPECT_EQ(map.size(), kMany);
}

TEST(OrderedMap, HasAnotherStampWheneverEntriesHaveComeOrGone) {
    Map map;
    std::uint64_t before = map.changeStamp();
    const auto hasChanged = [&] { return std::exchange(before, map.changeStamp()) != map.changeStamp(); };
    map.emplace(1, 10);
    EXPECT_TRUE(hasChanged());
    map.emplace(1, 10);
    map.at(1) = 11;
    map.erase(2);
    EXPECT_FALSE(hasChanged());
    map.insert_or_assign(1, 12);
    EXPECT_TRUE(hasChanged());
    map.erase(1);
    EXPECT_TRUE(hasChanged());
    map.clear();
    EXPECT_TRUE(hasChanged());
}

TEST(OrderedMap, HasAGreaterStampThanAnyThatChangedBefore) {
    Map first;
    Map second;
    std::uint64_t greatest = 0;
    for (std::uint32_t key = 0; key < 10; ++key) {
        Map& changed = key % 3 == 0 ? first : second;
        changed.emplace(key, key);
        EXPECT_GT(changed.changeStamp(), greatest);
        greatest = changed.changeStamp();
    }
}

TEST(OrderedMap, SwapsEntriesAndHasAnotherStampThen) {
    Map one;
    Map three;
    fill(one, 1);
    fill(three, 3);
    const std::uint64_t before = three.changeStamp();
    one.swap(three);
    EXPECT_EQ(entriesOf(one).size(), 3U);
    EXPECT_EQ(entriesOf(three).size(), 1U);
    EXPECT_GT(one.changeStamp(), before);
    EXPECT_GT(three.changeStamp(), before);
    EXPECT_NE(one.changeStamp(), three.changeStamp());
}

TEST(OrderedMap, HasAnotherStampIfAnyEntryIsRemoved) {
    Map map;
    fill(map, kMany);
    const std::uint64_t before = map.changeStamp();
    map.removeIf([](const auto&) { return false; });
    EXPECT_EQ(map.changeStamp(), before);
    map.removeIf([](const auto& entry) { return entry.first == 500; });
    EXPECT_GT(map.changeStamp(), before);
    EXPECT_EQ(entriesOf(map).size(), kMany - 1);
}

TEST(OrderedMap, IsEmptyOnceItIsCleared) {
    Map map;
    fill(map, kMany);
    map.clear();
    EXPECT_EQ(entriesOf(map), Expected());
    fill(map, 3);
    EXPECT_EQ(entriesOf(map).size(), 3U);
}

TEST(OrderedMap, HasPlacesThatGoOnAndTellWhereTheyWere) {
    Map map;
    fill(map, 2);
    auto place = map.begin();
    EXPECT_EQ((place++)->first, 0U);
    EXPECT_EQ(place->first, 1U);
}

TEST(OrderedMap, GivesAPlaceToWhoeverMayNotChangeIt) {
    EXPECT_TRUE((std::is_convertible_v<Map::iterator, Map::const_iterator>));
}

TEST(OrderedMap, GivesNoPlaceToChangeToWhoeverMayOnlyLook) {
    EXPECT_FALSE((std::is_convertible_v<Map::const_iterator, Map::iterator>));
}

TEST(OrderedMap, HasNoOthersStampBeforeItHasItsFirst) {
    Map changed;
    const Map fresh;
    changed.emplace(1, 10);
    EXPECT_NE(fresh.changeStamp(), changed.changeStamp());
}

TEST(OrderedMap, IsFilledInOneGo) {
    for (const std::uint32_t count : {0U, 1U, 64U, 65U, kMany}) {
        Map map;
        const std::uint64_t before = map.changeStamp();
        map.fill(count, [](std::size_t index) {
            return std::pair(static_cast<std::uint32_t>(index), static_cast<std::uint32_t>(2 * index));
        });
        EXPECT_NE(map.changeStamp(), before);
        Expected expected;
        for (std::uint32_t key = 0; key < count; ++key) {
            expected[key] = 2 * key;
        }
        EXPECT_EQ(entriesOf(map), expected) << count;
    }
}

TEST(OrderedMap, OwnsItsValues) {
    const auto counted = std::make_shared<int>(0);
    {
        OrderedMap<std::uint32_t, std::shared_ptr<int>> map;
        for (std::uint32_t key = 0; key < kMany; ++key) {
            map.emplace(key * 769 % kMany, counted);
        }
        EXPECT_EQ(counted.use_count(), 1 + static_cast<long>(kMany));
        map.removeIf([](const auto& entry) { return entry.first % 2 == 0; });
        EXPECT_EQ(counted.use_count(), 1 + static_cast<long>(kMany / 2));
    }
    EXPECT_EQ(counted.use_count(), 1);
}

TEST(OrderedMap, CanBeChangedDuringAWalk) {
    Map map;
    fill(map, kMany);
    std::uint32_t walked = 0;
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        if (entry->first < kMany && entry->first % 100 == 0) {
            map.emplace(kMany + entry->first, 0); // behind the place where the walk is
        }
        ++walked;
    }
    EXPECT_EQ(walked, map.size());
}

} // namespace
