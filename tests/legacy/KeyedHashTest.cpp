#include "legacy/KeyedHash.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

/// A hash that is not what it should be still tells tags apart, only not as well, so that nothing else would
/// show it. The numbers come from a few lines in another language.
namespace {

TEST(MixedBits, AreWhatTheSplitmixGeneratorGives) {
    constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15;
    EXPECT_EQ(mixedBits(kStep), 0xE220A8397B1DCDAFU);
    EXPECT_EQ(mixedBits(2 * kStep), 0x6E789E6AA1B965F4U);
    EXPECT_EQ(mixedBits(3 * kStep), 0x06C45D188009454FU);
}

class KeyedHashOfSeven : public testing::Test {
protected:
    static std::uint64_t of(std::string_view bytes) { return KeyedHash(7).of(bytes); }
};

TEST_F(KeyedHashOfSeven, FoldsAZeroInForNoBytes) {
    EXPECT_EQ(of(""), 0xB19F2FEBE6CD7702U);
}

TEST_F(KeyedHashOfSeven, FillsAShortWordUpWithZeros) {
    EXPECT_EQ(of("A"), 0x774E9CEB006D24E4U);
    EXPECT_EQ(of("ABCDEFG"), 0xD1F997F72966BB36U);
}

TEST_F(KeyedHashOfSeven, FoldsWholeWordsInOnceEach) {
    EXPECT_EQ(of("ABCDEFGH"), 0x0027AC0619277D2EU);
    EXPECT_EQ(of("ABCDEFGHIJKLMNOP"), 0xA913E845DEEB2546U);
}

TEST_F(KeyedHashOfSeven, FoldsTheLastEightBytesInWhereTheyDoNotComeOutEven) {
    EXPECT_EQ(of("ABCDEFGHI"), 0x09AAB87D1E91B85FU);
    EXPECT_EQ(of("ABCDEFGHIJKLMNOPQ"), 0x1882E6897B06FC53U);
}

TEST(KeyedHash, HasAnOddFactorWhereMixingGivesAnEvenOne) {
    ASSERT_EQ(mixedBits(~std::uint64_t{1}) % 2, 0U);
    EXPECT_EQ(KeyedHash(1).of("A"), 0x63E03118803549F4U);
}

} // namespace
