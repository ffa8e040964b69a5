#include "kthost/console/SplitLine.h"

#include "kthost/console/CommandError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kthost {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SplitLine, SeparatesWordsAtBlanks) {
    EXPECT_THAT(splitLine("  set \t R7 Value  "), ElementsAre(L"set", L"R7", L"Value"));
}

TEST(SplitLine, HoldsBlanksTogetherInQuotes) {
    EXPECT_THAT(splitLine("set R7 \"4k7 1%\""), ElementsAre(L"set", L"R7", L"4k7 1%"));
    EXPECT_THAT(splitLine("Value=\"4k7 1%\"x"), ElementsAre(L"Value=4k7 1%x"));
}

TEST(SplitLine, ReadsTwoQuotesInsideQuotesAsOne) {
    EXPECT_THAT(splitLine("\"say \"\"x\"\"\""), ElementsAre(L"say \"x\""));
}

TEST(SplitLine, KnowsEmptyWords) {
    EXPECT_THAT(splitLine("set R7 Value \"\""), ElementsAre(L"set", L"R7", L"Value", L""));
}

TEST(SplitLine, BeginsACommentAtAHashMarkThatBeginsAWord) {
    EXPECT_THAT(splitLine("undo # two steps"), ElementsAre(L"undo"));
    EXPECT_THAT(splitLine("# nothing"), IsEmpty());
}

TEST(SplitLine, LeavesOtherHashMarksAlone) {
    EXPECT_THAT(splitLine("set \"#PWR1\" Value a#b"), ElementsAre(L"set", L"#PWR1", L"Value", L"a#b"));
}

TEST(SplitLine, DropsACarriageReturnAtTheEnd) {
    EXPECT_THAT(splitLine("undo\r"), ElementsAre(L"undo"));
}

TEST(SplitLine, ReadsUtf8) {
    EXPECT_THAT(splitLine("set R7 Value 10\xC2\xB5"), ElementsAre(L"set", L"R7", L"Value", L"10µ"));
}

TEST(SplitLine, RefusesQuotesThatAreNotClosed) {
    EXPECT_THROW(splitLine("set \"R7"), CommandError);
}

TEST(SplitLine, RefusesWhatIsNotUtf8) {
    EXPECT_THROW(splitLine("set \xFF"), CommandError);
}

} // namespace

} // namespace kthost
