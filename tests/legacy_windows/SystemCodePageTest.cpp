#include "legacy/CodePage.h"

#include <UserLocale.h>
#include <WindowSystem.h>

#include "kthost/window/windows/SystemLocale.h"
#include "tests/legacy/LoadedTemplate.h"
#include "tests/legacy/TemplateBytes.h"

#include <gtest/gtest.h>

#include <locale>
#include <string>

/// 8-bit text against what the system makes of it.
namespace {

std::string upperHalf() {
    std::string bytes;
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(byte)));
    }
    return bytes;
}

/// The system's own conversion; empty when that is no text in the code page.
std::wstring bySystem(UINT codePage, const std::string& bytes) {
    std::wstring text(bytes.size(), L'\0');
    const int length =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
                            text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

/// Each byte by itself; one that is no text has its own value.
std::wstring byteByByte(UINT codePage, const std::string& bytes) {
    std::wstring text;
    for (const char byte : bytes) {
        const std::wstring character = bySystem(codePage, std::string(1, byte));
        text += character.empty() ? std::wstring(1, static_cast<wchar_t>(static_cast<unsigned char>(byte)))
                                  : character;
    }
    return text;
}

TEST(SystemCodePage, GivesEachByteTheCharacterThatTheSystemGivesIt) {
    EXPECT_EQ(wideFromCodePage(upperHalf(), userLocale()), byteByByte(CP_ACP, upperHalf()));
}

TEST(SystemCodePage, IsThatOfTextInTemplates) {
    const std::string bytes = upperHalf();
    const LoadedTemplate loaded(
        TemplateBytes().header(1).newClass().text8(bytes).u8(1).u32(1).text8("T").u8(1));
    ASSERT_EQ(loaded.header.m_arrBlocks.size(), 1U);
    EXPECT_EQ(loaded.block(0).m_strBlockName, byteByByte(CP_ACP, bytes));
}

class CodePages : public testing::TestWithParam<UINT> {};

TEST_P(CodePages, AreReadAsTheSystemReadsThem) {
    const std::locale locale = kthost::systemLocale(GetParam());
    for (const char byte : upperHalf()) {
        const std::string one(1, byte);
        EXPECT_EQ(wideFromCodePage(one, locale), byteByByte(GetParam(), one));
    }
}

INSTANTIATE_TEST_SUITE_P(OfOneByte, CodePages, testing::Values(437U, 850U, 1250U, 1251U, 1252U, 1253U, 1254U),
                         testing::PrintToStringParamName());

TEST(SystemCodePage, MayHaveCharactersOfTwoBytes) {
    const std::string japanese = "a\x93\xFA\x96\x7B\xB1z"; // two of two bytes, and one of one
    EXPECT_EQ(wideFromCodePage(japanese, kthost::systemLocale(932)), bySystem(932, japanese));
    EXPECT_EQ(bySystem(932, japanese), L"a\u65E5\u672C\uFF71z");
}

TEST(SystemCodePage, GivesAByteThatBreaksOffACharacterItsOwnValue) {
    EXPECT_EQ(wideFromCodePage("a\x93", kthost::systemLocale(932)), L"a\u0093");
}

TEST(SystemCodePage, HasNoPartialPairAcrossItsSlices) {
    const std::locale japanese = kthost::systemLocale(932);
    for (const std::size_t before : {254U, 255U, 256U, 257U}) {
        EXPECT_EQ(wideFromCodePage(std::string(before, 'x') + "\x93\xFAy", japanese),
                  std::wstring(before, L'x') + L"\u65E5y");
    }
}

} // namespace
