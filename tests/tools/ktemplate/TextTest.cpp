#include "tools/ktemplate/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace ktemplate;

std::wstring lone(std::uint32_t unit) {
    return std::wstring() + static_cast<wchar_t>(unit);
}

TEST(Text, TurnsUtf8IntoWideText) {
    EXPECT_EQ(wideFromUtf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), L"a\u00E9\u20AC\U0001F600");
}

TEST(Text, KeepsZeros) {
    EXPECT_EQ(wideFromUtf8({"a\0b", 3}), std::wstring(L"a\0b", 3));
}

TEST(Text, ReplacesEachByteThatIsNoText) {
    EXPECT_EQ(wideFromUtf8("\xFF\x80z"), L"\uFFFD\uFFFDz");
}

TEST(Text, ReplacesTheBytesOfACharacterThatIsCutOff) {
    EXPECT_EQ(wideFromUtf8("\xE2\x82"), L"\uFFFD\uFFFD");
}

TEST(Text, ReplacesCharactersThatAreTooLong) {
    EXPECT_EQ(wideFromUtf8("\xC0\xAF"), L"\uFFFD\uFFFD");
}

TEST(Text, ReplacesSurrogatesInUtf8) {
    EXPECT_EQ(wideFromUtf8("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");
}

TEST(Text, ReplacesWhatLiesBeyondTheLastCharacter) {
    EXPECT_EQ(wideFromUtf8("\xF4\x90\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(DisplayText, IsUtf8) {
    EXPECT_EQ(displayText(L"a\u00E9\u20AC\U0001F600"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(DisplayText, SpellsOutWhatATerminalWouldObey) {
    EXPECT_EQ(displayText(L"\x1B[2J\u009B\n"), "\\u{1b}[2J\\u{9b}\\u{a}");
}

TEST(DisplayText, SpellsOutMarksThatTurnTheDirectionOfWriting) {
    EXPECT_EQ(displayText(L"\u202E\u2066"), "\\u{202e}\\u{2066}");
}

TEST(DisplayText, SpellsOutALoneSurrogate) {
    EXPECT_EQ(displayText(lone(0xD800)), "\\u{d800}");
}

TEST(DisplayText, DoublesBackslashes) {
    EXPECT_EQ(displayText(L"\\u{a}"), "\\\\u{a}");
}

TEST(JsonString, IsQuotedUtf8) {
    EXPECT_EQ(jsonString(L"a\u00E9\U0001F600"), "\"a\xC3\xA9\xF0\x9F\x98\x80\"");
}

TEST(JsonString, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(jsonString(L"\"\\\n"), R"("\"\\\u000a")");
}

TEST(JsonString, EscapesALoneSurrogate) {
    EXPECT_EQ(jsonString(lone(0xDC00)), R"("\udc00")");
}

} // namespace
