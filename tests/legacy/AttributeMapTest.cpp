#include "legacy/AttributeMap.h"

#include "legacy/TagHash.h"
#include "tests/legacy/CountedMemory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

std::unique_ptr<AttributeEntry> entry(bool selected = false) {
    auto made = std::make_unique<AttributeEntry>();
    made->m_bSelected = selected;
    return made;
}

std::vector<std::wstring> tagsOf(const AttributeMap& map) {
    std::vector<std::wstring> tags;
    for (const auto& [tag, filed] : map) {
        tags.push_back(tag);
    }
    return tags;
}

/// Enough tags for the map to hash them, in an order of their own.
std::vector<std::wstring> manyTags() {
    std::vector<std::wstring> tags;
    tags.reserve(1000);
    for (int i = 0; i < 1000; ++i) {
        tags.push_back(std::to_wstring(i * 7919 % 1000));
    }
    return tags;
}

AttributeMap mapOf(const std::vector<std::wstring>& tags) {
    AttributeMap map;
    for (const std::wstring& tag : tags) {
        map.add(tag, entry());
    }
    return map;
}

TEST(AttributeMap, StartsEmpty) {
    EXPECT_TRUE(AttributeMap().empty());
    EXPECT_EQ(AttributeMap().find(L"T"), nullptr);
}

TEST(AttributeMap, KeepsTheRecordThatItIsGiven) {
    AttributeMap map;
    auto given = entry();
    AttributeEntry* record = given.get();
    map.add(L"T", std::move(given));
    EXPECT_EQ(map.find(L"T"), record);
}

TEST(AttributeMap, RefusesATagThatItHas) {
    AttributeMap map;
    EXPECT_TRUE(map.add(L"T", entry(true)));
    EXPECT_FALSE(map.add(L"T", entry(false)));
    EXPECT_TRUE(map.find(L"T")->m_bSelected);
    EXPECT_EQ(map.size(), 1U);
}

TEST(AttributeMap, RefusesAnyOfManyTagsThatItHas) {
    AttributeMap map = mapOf(manyTags());
    for (const std::wstring& tag : manyTags()) {
        EXPECT_FALSE(map.add(tag, entry()));
    }
    EXPECT_EQ(map.size(), manyTags().size());
}

TEST(AttributeMap, TakesEachOfManyTagsThatItHasNot) {
    AttributeMap map;
    for (const std::wstring& tag : manyTags()) {
        EXPECT_TRUE(map.add(tag, entry())) << tag.c_str();
    }
}

TEST(AttributeMap, TellsCaseApart) {
    AttributeMap map = mapOf({L"t"});
    EXPECT_EQ(map.find(L"T"), nullptr);
    EXPECT_TRUE(map.add(L"T", entry()));
}

TEST(AttributeMap, HoldsTheEmptyTag) {
    EXPECT_NE(mapOf({L""}).find(L""), nullptr);
}

TEST(AttributeMap, WalksInTheOrderOfFirstFiling) {
    EXPECT_EQ(tagsOf(mapOf({L"b", L"a", L"c", L"a"})), (std::vector<std::wstring>{L"b", L"a", L"c"}));
}

TEST(AttributeMap, WalksManyTagsInTheOrderOfFirstFiling) {
    EXPECT_EQ(tagsOf(mapOf(manyTags())), manyTags());
}

TEST(AttributeMap, FindsEachOfManyTags) {
    const AttributeMap map = mapOf(manyTags());
    for (const auto& [tag, filed] : map) {
        EXPECT_EQ(map.find(tag), filed.get());
    }
}

TEST(AttributeMap, FindsNoneThatIsNotAmongMany) {
    EXPECT_EQ(mapOf(manyTags()).find(L"1000"), nullptr);
}

/// Tags whose hashes are all even.
std::vector<std::wstring> tagsOfEvenHash(std::size_t count) {
    std::vector<std::wstring> tags;
    for (int i = 0; tags.size() < count; ++i) {
        std::wstring tag = std::to_wstring(i);
        if (TagHash()(tag) % 2 == 0) {
            tags.push_back(std::move(tag));
        }
    }
    return tags;
}

TEST(AttributeMap, FindsNoneThatIsNotAmongManyHoweverTheirHashesFall) {
    constexpr std::size_t kMost = 64;
    for (std::size_t count = 1; count < kMost; ++count) {
        std::vector<std::wstring> tags = tagsOfEvenHash(count + 1);
        const std::wstring other = tags.back();
        tags.pop_back();
        EXPECT_EQ(mapOf(tags).find(other), nullptr) << count;
    }
}

/// The numbers of the tags, counted from 1, that filing takes memory for, where there is room for the tags.
std::vector<int> tagsThatTakeMemory(int count) {
    AttributeMap map;
    map.reserve(static_cast<std::size_t>(count));
    std::vector<int> numbers;
    for (int number = 1; number <= count; ++number) {
        std::wstring tag = std::to_wstring(number); // short, so that it takes none
        auto made = entry();
        const std::size_t before = counted_memory::allocations();
        map.add(std::move(tag), std::move(made));
        if (counted_memory::allocations() != before) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

TEST(AttributeMap, TakesMemoryToHashTagsFromTheEleventhOnAndWhenHalfOfItIsUsed) {
    EXPECT_THAT(tagsThatTakeMemory(64), testing::ElementsAre(11, 17, 33));
}

TEST(AttributeMap,
     TakesAHundredThousandTags) { // which a walk along the others for each would take minutes for
    AttributeMap map;
    for (int i = 0; i < 100'000; ++i) {
        map.add(std::to_wstring(i), entry());
    }
    EXPECT_EQ(map.size(), 100'000U);
}

} // namespace
