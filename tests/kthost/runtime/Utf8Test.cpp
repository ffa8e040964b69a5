#include "kthost/runtime/Utf8.h"

#include <gtest/gtest.h>

namespace kthost {
namespace {

TEST(Utf8, SurvivesTheWayToWideTextAndBack) {
    const std::string text = "plain \xC3\xBC \xE2\x82\xAC \xF0\x9F\x8C\xA1 end";
    EXPECT_EQ(toUtf8(toWide(text)), text);
}

TEST(Utf8, BecomesTheWideTextOfTheSystem) {
    EXPECT_EQ(toWide("\xF0\x9F\x8C\xA1\xC2\xB5"), L"\U0001F321\u00B5");
}

TEST(Utf8, KeepsTheLastCodePoint) {
    EXPECT_EQ(toUtf8(L"\U0010FFFF"), "\xF4\x8F\xBF\xBF");
}

TEST(Utf8, IsWellFormedForTextOfEveryLength) {
    EXPECT_EQ(findMalformedUtf8("a\xC2\x80\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xF0\x90\x80\x80"),
              std::string_view::npos);
}

struct Malformed {
    const char* name;
    std::string_view bytes;
};

class MalformedUtf8 : public testing::TestWithParam<Malformed> {};

TEST_P(MalformedUtf8, IsFoundWhereItBegins) {
    EXPECT_EQ(findMalformedUtf8("ab" + std::string(GetParam().bytes) + "c"), 2U);
}

TEST_P(MalformedUtf8, BecomesReplacementCharacters) {
    EXPECT_EQ(toWide(GetParam().bytes).substr(0, 1), L"\uFFFD");
}

INSTANTIATE_TEST_SUITE_P(Every, MalformedUtf8,
                         testing::Values(Malformed{"LoneContinuation", "\x80"},
                                         Malformed{"OverlongOfTwo", "\xC1\xBF"},
                                         Malformed{"OverlongOfThree", "\xE0\x9F\xBF"},
                                         Malformed{"OverlongOfFour", "\xF0\x8F\xBF\xBF"},
                                         Malformed{"Surrogate", "\xED\xA0\x80"},
                                         Malformed{"BeyondTheLast", "\xF4\x90\x80\x80"},
                                         Malformed{"FiveBytes", "\xF8\x88\x80\x80\x80"},
                                         Malformed{"CutOff", "\xE2\x82"}, Malformed{"WindowsLetter", "\xFC"}),
                         [](const auto& each) { return each.param.name; });

TEST(Utf8, IsMalformedAtTheEndOfTheTextWhenCutOff) {
    EXPECT_EQ(findMalformedUtf8("a\xF0\x9F\x8C"), 1U);
}

TEST(Utf8, HoldsNoZeroByte) {
    EXPECT_EQ(findMalformedUtf8(std::string_view("ab\0c", 4)), 2U);
}

TEST(Utf8, ReplacesWideUnitsThatAreNoText) {
    EXPECT_EQ(toUtf8(std::wstring(1, static_cast<wchar_t>(0xDC00))), "\xEF\xBF\xBD");
}

TEST(Utf8, CountsCharactersAndNotBytes) {
    EXPECT_EQ(countCodePoints("a\xC2\xB5\xF0\x9F\x8C\xA1"), 3U);
}

} // namespace
} // namespace kthost
