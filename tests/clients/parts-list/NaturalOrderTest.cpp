#include "NaturalOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <compare>
#include <random>
#include <string>
#include <vector>

namespace parts {

namespace {

TEST(NaturalOrder, ComparesRunsOfDigitsAsNumbers) {
    EXPECT_TRUE(std::is_lt(naturalOrder(L"R2", L"R10")));
    EXPECT_TRUE(std::is_lt(naturalOrder(L"C10_3", L"C10_20")));
}

TEST(NaturalOrder, ComparesNumbersLongerThanAnyInteger) {
    EXPECT_TRUE(std::is_lt(naturalOrder(L"R99999999999999999999999998", L"R99999999999999999999999999")));
}

TEST(NaturalOrder, PutsTheBeginningOfATextBeforeTheText) {
    EXPECT_TRUE(std::is_lt(naturalOrder(L"R", L"R1")));
    EXPECT_TRUE(std::is_lt(naturalOrder(L"", L"R")));
}

TEST(NaturalOrder, LetsLeadingZerosDecideOnlyBetweenTextsOtherwiseEqual) {
    EXPECT_TRUE(std::is_lt(naturalOrder(L"R01", L"R1")));
    EXPECT_TRUE(std::is_gt(naturalOrder(L"R01B", L"R1A")));
}

TEST(NaturalOrder, CallsOnlyTheSameTextEqual) {
    EXPECT_TRUE(std::is_eq(naturalOrder(L"R1", L"R1")));
    EXPECT_TRUE(std::is_neq(naturalOrder(L"R1", L"r1")));
    EXPECT_TRUE(std::is_neq(naturalOrder(L"000", L"0")));
}

std::wstring randomText(std::mt19937& random) {
    std::wstring text;
    for (auto length = random() % 6; length > 0; --length) {
        text += L"019aR_"[random() % 6];
    }
    return text;
}

TEST(NaturalOrder, SortsTheSameWhateverTheInputsOrder) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::vector<std::wstring> texts(200);
    std::generate(texts.begin(), texts.end(), [&] { return randomText(random); });
    std::vector<std::wstring> others = texts;
    std::shuffle(others.begin(), others.end(), random);
    std::sort(texts.begin(), texts.end(), NaturalLess());
    std::sort(others.begin(), others.end(), NaturalLess());
    EXPECT_EQ(texts, others);
}

TEST(NaturalOrder, PutsCharactersBeyondTheBasicPlaneLast) {
    EXPECT_TRUE(std::is_lt(naturalOrder(L"\uFFE6", L"\U0001F321")));
}

} // namespace

} // namespace parts
