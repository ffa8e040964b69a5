#include "Utf8.h"

#include <gtest/gtest.h>

namespace parts {

namespace {

TEST(Utf8, WritesCharactersOfEveryLength) {
    EXPECT_EQ(toUtf8(L"aµ–\U0001F600"), "a\xC2\xB5\xE2\x80\x93\xF0\x9F\x98\x80");
}

TEST(Utf8, JoinsSurrogatePairs) {
    EXPECT_EQ(toUtf8(std::wstring{wchar_t{0xD83D}, wchar_t{0xDE00}}), "\xF0\x9F\x98\x80");
}

TEST(Utf8, ReplacesWhatIsNoCharacter) {
    EXPECT_EQ(toUtf8(std::wstring{wchar_t{0xD83D}, L'x'}), "\xEF\xBF\xBDx");
    EXPECT_EQ(toUtf8(std::wstring{wchar_t{0xDE00}}), "\xEF\xBF\xBD");
}

TEST(Utf8, ReadsWhatItWrites) {
    const std::wstring text = L"aµ–\U0001F600";
    EXPECT_EQ(fromUtf8(toUtf8(text)), text);
}

TEST(Utf8, ReadsBytesThatAreNotUtf8AsReplacements) {
    EXPECT_EQ(fromUtf8("a\xFFz"), L"a\uFFFDz");
    EXPECT_EQ(fromUtf8("\xE2\x80"), L"\uFFFD");
    EXPECT_EQ(fromUtf8("\xC0\x80"), L"\uFFFD\uFFFD");
    EXPECT_EQ(fromUtf8("\xED\xA0\x80"), L"\uFFFD");
}

TEST(Utf8, MakesPathsOutsideAscii) {
    EXPECT_TRUE(toPath(L"Ω/µ.csv").filename() == std::filesystem::path(u8"µ.csv"));
}

} // namespace

} // namespace parts
