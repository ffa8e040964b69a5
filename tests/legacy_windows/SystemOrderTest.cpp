#include "legacy/CEattUtil.h"
#include "legacy/CollationRanks.h"

#include <UserLocale.h>
#include <WindowSystem.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

/// The order of texts against the system's.
namespace {

using testing::ElementsAreArray;
using testing::Not;

using Strings = std::vector<std::wstring>;

/// Below, equal or above: -1, 0, 1.
int bySystem(const std::wstring& left, const std::wstring& right) {
    return CompareStringEx(LOCALE_NAME_USER_DEFAULT, NORM_IGNORECASE, left.data(),
                           static_cast<int>(left.size()), right.data(), static_cast<int>(right.size()),
                           nullptr, nullptr, 0) -
           CSTR_EQUAL;
}

int byRank(std::size_t left, std::size_t right) {
    return left < right ? -1 : (right < left ? 1 : 0);
}

const Strings kTags{L"zebra",   L"\u00C4pfel", L"apfel", L"Zahl",     L"\u00E9clair", L"eclair",
                    L"Eclipse", L"10",         L"9",     L"_x",       L"x_",          L"stra\u00DFe",
                    L"Strasse", L"co-op",      L"coop",  L"\u03A9hm", L"\u00F8re",    L"ozean",
                    L"",        L"a b",        L"ab"};

Strings shuffledTags() {
    Strings tags = kTags;
    std::shuffle(tags.begin(), tags.end(), std::mt19937(7));
    return tags;
}

TEST(SystemOrder, IsThatOfSortedTags) {
    Strings tags = shuffledTags();
    CEattUtil().SortStringArray(tags);
    for (std::size_t i = 1; i < tags.size(); ++i) {
        EXPECT_LE(bySystem(tags[i - 1], tags[i]), 0) << i;
    }
}

TEST(SystemOrder, LosesNoTag) {
    Strings tags = shuffledTags();
    CEattUtil().SortStringArray(tags);
    EXPECT_THAT(tags, testing::UnorderedElementsAreArray(kTags));
}

TEST(SystemOrder, IsNotThatOfTheCharactersNumbers) {
    Strings tags = shuffledTags();
    CEattUtil().SortStringArray(tags);
    Strings byNumber = kTags;
    std::sort(byNumber.begin(), byNumber.end());
    EXPECT_THAT(tags, Not(ElementsAreArray(byNumber)));
}

TEST(SystemOrder, IsThatOfTheRanksForEveryPair) {
    const std::vector<std::size_t> ranks = collationRanks(kTags, userLocale());
    for (std::size_t i = 0; i < kTags.size(); ++i) {
        for (std::size_t j = 0; j < kTags.size(); ++j) {
            EXPECT_EQ(byRank(ranks[i], ranks[j]), bySystem(kTags[i], kTags[j])) << i << " and " << j;
        }
    }
}

TEST(SystemOrder, TakesNoNoticeOfCaseBeyondAscii) {
    EXPECT_EQ(collationRanks(Strings{L"\u00C4\u03A9\u0416", L"\u00E4\u03C9\u0436"}, userLocale()),
              (std::vector<std::size_t>{0, 0}));
}

TEST(SystemOrder, HoldsForRandomTexts) {
    const auto seed = std::random_device()();
    std::mt19937 random(seed);
    const std::wstring letters = L"aAbB\u00E4\u00C4\u00E9zZ019 .,()\u03A9\u03C9";
    Strings texts(60);
    for (std::wstring& text : texts) {
        const std::size_t length = random() % 5;
        for (std::size_t i = 0; i < length; ++i) {
            text += letters[random() % letters.size()];
        }
    }
    const std::vector<std::size_t> ranks = collationRanks(texts, userLocale());
    for (std::size_t i = 1; i < texts.size(); ++i) {
        ASSERT_EQ(byRank(ranks[i - 1], ranks[i]), bySystem(texts[i - 1], texts[i])) << "seed " << seed;
    }
}

} // namespace
