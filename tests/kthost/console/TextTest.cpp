#include "kthost/console/ColumnText.h"
#include "kthost/console/ObjectNames.h"
#include "kthost/console/OneLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kthost {

namespace {

using testing::ElementsAre;

TEST(ColumnText, AlignsByCharactersAndLeavesNoBlanksAtTheEnd) {
    EXPECT_THAT(alignColumns({{"A", "B"}, {"\xC2\xB5\xC2\xB5\xC2\xB5", "x"}, {"y", ""}}),
                ElementsAre("A    B", "\xC2\xB5\xC2\xB5\xC2\xB5  x", "y"));
}

TEST(OneLine, ShowsLineEndsAndHidesWhatATerminalWouldObey) {
    EXPECT_EQ(onOneLine("a\nb\x1B[31m\tc"), "a\\nb?[31m?c");
}

TEST(Handle, IsHexadecimalInUpperCaseWithAMarkInFront) {
    EXPECT_EQ(handleText(0x2A), "0x2A");
    EXPECT_EQ(handleText(0xFFFFFFFFFFFFFFFF), "0xFFFFFFFFFFFFFFFF");
}

TEST(Handle, IsReadBack) {
    EXPECT_EQ(parseHandle(L"0x2A"), 0x2AU);
    EXPECT_EQ(parseHandle(L"0x2a"), 0x2AU);
}

TEST(Handle, IsNothingWithoutItsMarkOrWithOtherDigits) {
    for (const wchar_t* text : {L"2A", L"C1", L"0x", L"0xG", L"0x-1", L"0x10000000000000000", L""}) {
        EXPECT_FALSE(parseHandle(text)) << text;
    }
}

} // namespace

} // namespace kthost
