#include "legacy/Utf16.h"

#include <gtest/gtest.h>

#include <array>
#include <span>
#include <string>
#include <vector>

namespace {

std::wstring decoded(const std::vector<std::vector<unsigned char>>& pieces) {
    Utf16Decoder decoder;
    std::wstring text;
    for (const auto& piece : pieces) {
        decoder.append(piece, text);
    }
    decoder.finish(text);
    return text;
}

/// A lone surrogate as it stands in wide text.
std::wstring lone(std::uint32_t unit) {
    return std::wstring() + static_cast<wchar_t>(unit);
}

TEST(Utf16, LeavesHalfACodeUnitAlone) {
    EXPECT_EQ(decoded({{0x41, 0x00, 0x42}}), L"A");
    EXPECT_EQ(decoded({{0x41}}), L"");
}

TEST(Utf16, JoinsAPair) {
    EXPECT_EQ(decoded({{0x3D, 0xD8, 0x00, 0xDE}}), L"\U0001F600");
}

TEST(Utf16, JoinsAPairAcrossTwoPieces) {
    EXPECT_EQ(decoded({{0x3D, 0xD8}, {0x00, 0xDE}}), L"\U0001F600");
}

TEST(Utf16, JoinsTheFirstPairThereIs) {
    EXPECT_EQ(decoded({{0x00, 0xD8, 0x00, 0xDC}}), L"\U00010000");
}

TEST(Utf16, JoinsTheLastPairThereIs) {
    EXPECT_EQ(decoded({{0xFF, 0xDB, 0xFF, 0xDF}}), L"\U0010FFFF");
}

TEST(Utf16, KeepsAHighHalfBeforeALetter) {
    EXPECT_EQ(decoded({{0x00, 0xD8, 0x41, 0x00}}), lone(0xD800) + L"A");
}

TEST(Utf16, KeepsAHighHalfBeforeTheFirstUnitBehindTheLowHalves) {
    EXPECT_EQ(decoded({{0x00, 0xD8, 0x00, 0xE0}}), lone(0xD800) + L"\uE000");
}

TEST(Utf16, KeepsAHighHalfAtTheEnd) {
    EXPECT_EQ(decoded({{0xFF, 0xDB}}), lone(0xDBFF));
}

TEST(Utf16, KeepsALowHalfAlone) {
    EXPECT_EQ(decoded({{0x00, 0xDC, 0x41, 0x00}}), lone(0xDC00) + L"A");
}

TEST(Utf16, KeepsTheFirstOfTwoHighHalvesBeforeALowOne) {
    EXPECT_EQ(decoded({{0x00, 0xD8, 0x3D, 0xD8, 0x00, 0xDE}}), lone(0xD800) + L"\U0001F600");
}

TEST(Utf16, WritesAPairForACharacterOutsideTheBasicPlane) {
    EXPECT_EQ(utf16FromWide(L"\U0001F600"), u"\U0001F600");
}

TEST(Utf16, WritesOneUnitForTheLastCharacterOfTheBasicPlane) {
    EXPECT_EQ(utf16FromWide(L"\uFFFF"), std::u16string(1, 0xFFFF));
}

TEST(Utf16, WritesAPairForTheFirstCharacterOutsideTheBasicPlane) {
    EXPECT_EQ(utf16FromWide(L"\U00010000"), u"\U00010000");
}

TEST(Utf16, WritesAPairForTheLastCharacter) {
    EXPECT_EQ(utf16FromWide(L"\U0010FFFF"), u"\U0010FFFF");
}

TEST(Utf16, WritesALoneSurrogateAsItself) {
    EXPECT_EQ(utf16FromWide(lone(0xDC00) + lone(0xD800)), (std::u16string{0xDC00, 0xD800}));
}

TEST(Utf16, WritesTwoHalvesThatMeetAsTheUnitsTheyAre) {
    EXPECT_EQ(utf16FromWide(lone(0xD83D) + lone(0xDE00)), u"\U0001F600");
}

TEST(Utf16, WritesAReplacementForWhatIsNoCharacter) {
    if (sizeof(wchar_t) == 2) {
        GTEST_SKIP() << "every value of a wchar_t is a code unit here";
    }
    EXPECT_EQ(utf16FromWide(lone(0x110000)), u"\uFFFD");
}

TEST(Utf16, IsEasilyWidenedBelowTheUpperHalf) {
    const std::array<unsigned char, 4> bytes{0x41, 0x00, 0xFF, 0x7F};
    std::wstring to(2, L'x');
    EXPECT_TRUE(widenLower(bytes, to.data()));
    EXPECT_EQ(to, L"A\u7FFF");
}

TEST(Utf16, IsNotEasilyWidenedFromTheFirstUnitOfTheUpperHalfOn) {
    const std::array<unsigned char, 2> bytes{0x00, 0x80};
    wchar_t to = L'x';
    EXPECT_FALSE(widenLower(bytes, &to));
}

TEST(Utf16, LeavesHalfACodeUnitAloneWhereItIsEasilyWidened) {
    const std::array<unsigned char, 4> bytes{0x41, 0x00, 0x42, 0x00};
    std::wstring to(2, L'x');
    EXPECT_TRUE(widenLower(std::span(bytes).first(3), to.data()));
    EXPECT_EQ(to, L"Ax");
}

} // namespace
