#include "legacy/CodePage.h"

#include "tests/legacy/Utf8Locale.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <locale>
#include <stdexcept>
#include <string>

namespace {

/// The classic locale with another 8-bit encoding, in which byte 0xA4 is the euro sign and the rest is ASCII.
class EuroEncoding : public std::codecvt<wchar_t, char, std::mbstate_t> {
protected:
    result do_in(state_type& /*state*/, const char* from, const char* fromEnd, const char*& fromNext,
                 wchar_t* to, wchar_t* toEnd, wchar_t*& toNext) const override {
        for (fromNext = from, toNext = to; fromNext != fromEnd && toNext != toEnd; ++fromNext, ++toNext) {
            const auto byte = static_cast<unsigned char>(*fromNext);
            if (byte > 0x7F && byte != 0xA4) {
                return error;
            }
            *toNext = byte == 0xA4 ? L'\u20AC' : static_cast<wchar_t>(byte);
        }
        return ok;
    }
};

/// Tests that need a locale with UTF-8, which not every system's standard library has.
class Utf8CodePage : public testing::Test {
protected:
    void SetUp() override {
        try {
            utf8_ = utf8Locale();
        } catch (const std::runtime_error&) {
            GTEST_SKIP() << "there is no such locale here";
        }
    }

    std::locale utf8_;
};

TEST(CodePage, IsThatOfTheLocale) {
    const std::locale euro(std::locale::classic(), new EuroEncoding);
    EXPECT_EQ(wideFromCodePage("5 \xA4", euro), L"5 \u20AC");
}

TEST_F(Utf8CodePage, ReadsUtf8) {
    EXPECT_EQ(wideFromCodePage("Gr\xC3\xB6\xC3\x9F\x65", utf8_), L"Gr\u00F6\u00DFe");
}

TEST_F(Utf8CodePage, ReadsUtf8OutsideTheBasicPlane) {
    EXPECT_EQ(wideFromCodePage("\xF0\x9F\x98\x80", utf8_), L"\U0001F600");
}

TEST_F(Utf8CodePage, GivesBytesThatAreNoTextTheirOwnValue) {
    EXPECT_EQ(wideFromCodePage("Gr\xF6\xDF\x65", utf8_), L"Gr\u00F6\u00DFe");
}

TEST_F(Utf8CodePage, GivesTheBytesOfACharacterThatIsCutOffTheirOwnValue) {
    EXPECT_EQ(wideFromCodePage("a\xE2\x82", utf8_), L"a\u00E2\u0082");
}

TEST_F(Utf8CodePage, GivesAFirstByteWithNothingBehindItsOwnValue) {
    EXPECT_EQ(wideFromCodePage("\xC3", utf8_), L"\u00C3");
    EXPECT_EQ(wideFromCodePage("ab\xC3", utf8_), L"ab\u00C3");
    EXPECT_EQ(wideFromCodePage("\xC3\xA9\xC3", utf8_), L"\u00E9\u00C3");
}

TEST_F(Utf8CodePage, GivesTheBytesOfACharacterThatBreaksOffTheirOwnValue) {
    EXPECT_EQ(wideFromCodePage("a\xE2\x82z\xC3\xA9", utf8_), L"a\u00E2\u0082z\u00E9");
}

TEST_F(Utf8CodePage, GivesTheBytesOfAnOldLongFormTheirOwnValue) {
    EXPECT_EQ(wideFromCodePage("\xC3\xA9\xFC\xBC\xBC\xBC\xBC\xBCz", utf8_),
              L"\u00E9\u00FC\u00BC\u00BC\u00BC\u00BC\u00BCz");
}

TEST_F(Utf8CodePage, GivesTheBytesOfTheFirstBeyondUnicodeTheirOwnValue) {
    EXPECT_EQ(wideFromCodePage("\xF4\x8F\xBF\xBF\xF4\x90\x80\x80z", utf8_),
              L"\U0010FFFF\u00F4\u0090\u0080\u0080z");
}

TEST(CodePage, GivesBytesTheirOwnValueWhereTheLocaleKnowsOnlyAscii) {
    EXPECT_EQ(wideFromCodePage("\xC3\xA9", std::locale::classic()), L"\u00C3\u00A9");
}

TEST_F(Utf8CodePage, KeepsZeros) {
    EXPECT_EQ(wideFromCodePage({"a\0b", 3}, utf8_), std::wstring(L"a\0b", 3));
}

TEST_F(Utf8CodePage, ReadsACharacterAcrossItsSlices) {
    for (const std::size_t before : {253U, 254U, 255U, 256U}) {
        EXPECT_EQ(wideFromCodePage(std::string(before, 'x') + "\xF0\x9F\x98\x80y", utf8_),
                  std::wstring(before, L'x') + L"\U0001F600y");
    }
}

TEST_F(Utf8CodePage, ReadsMillionsOfBytesThatAreNoText) {
    const std::string bytes(2'000'000, '\xFF');
    EXPECT_EQ(wideFromCodePage(bytes, utf8_), std::wstring(bytes.size(), L'\u00FF'));
}

} // namespace
