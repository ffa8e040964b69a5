#include "legacy/TagHash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

/// Tags as they come in drawings, and such that differ in little.
std::vector<std::wstring> tags() {
    std::vector<std::wstring> all{L"", L"A", L"AA", L"AAA", L"AB", L"BA", L"AAB", L"ABA", L"BAA"};
    for (int i = 0; i < 4096; ++i) {
        all.push_back(L"PIN_" + std::to_wstring(i));
    }
    return all;
}

TEST(TagHash, IsTheSameForTheSameTag) {
    for (const std::wstring& tag : tags()) {
        EXPECT_EQ(TagHash()(tag), TagHash()(std::wstring(tag)));
    }
}

TEST(TagHash, DiffersFromTagToTag) {
    std::set<std::size_t> hashes;
    for (const std::wstring& tag : tags()) {
        EXPECT_TRUE(hashes.insert(TagHash()(tag)).second) << tag.c_str();
    }
}

/// Sixteen tags to a place on the average. Of numbers drawn at random, a place with 64 turns up once in the
/// age of the universe.
TEST(TagHash, SpreadsTagsOverThePlacesOfATable) {
    std::map<std::size_t, int> places;
    for (const std::wstring& tag : tags()) {
        ++places[TagHash()(tag) % 256];
    }
    for (const auto& [place, count] : places) {
        EXPECT_LT(count, 64) << place;
    }
    EXPECT_GT(places.size(), 200U);
}

} // namespace
