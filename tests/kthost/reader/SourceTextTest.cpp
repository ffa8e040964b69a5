#include "kthost/reader/SourceText.h"

#include "tests/kthost/reader/ReaderTestSupport.h"

#include <gtest/gtest.h>

namespace kthost {
namespace {

using test::errorOf;

TEST(SourceText, CountsLinesAndColumnsFromOne) {
    const SourceText source("f", "ab\ncd\n\ne");
    EXPECT_EQ(source.position(0), (SourcePosition{1, 1}));
    EXPECT_EQ(source.position(4), (SourcePosition{2, 2}));
    EXPECT_EQ(source.position(6), (SourcePosition{3, 1}));
    EXPECT_EQ(source.position(7), (SourcePosition{4, 1}));
}

TEST(SourceText, GoesBackToAnEarlierPlace) {
    const SourceText source("f", "ab\ncd\nef");
    EXPECT_EQ(source.position(7), (SourcePosition{3, 2}));
    EXPECT_EQ(source.position(1), (SourcePosition{1, 2}));
}

TEST(SourceText, CountsColumnsInCharacters) {
    const SourceText source("f", "\n\xC2\xB5\xF0\x9F\x8C\xA1x");
    EXPECT_EQ(source.position(7), (SourcePosition{2, 3}));
}

TEST(SourceText, ContinuesACountWithinALine) {
    const SourceText source("f", "a\nbcdef");
    EXPECT_EQ(source.position(3), (SourcePosition{2, 2}));
    EXPECT_EQ(source.position(6), (SourcePosition{2, 5}));
}

TEST(SourceText, PassesOverAByteOrderMark) {
    const SourceText source("f", "\xEF\xBB\xBF(x)");
    EXPECT_EQ(source.text(), "(x)");
}

TEST(SourceText, RefusesWhatIsNotUtf8WithItsPlace) {
    EXPECT_EQ(errorOf([] { SourceText("dir/f.kicad_sch", "(a\n \xFC)"); }),
              "dir/f.kicad_sch:2:2: expected UTF-8 text, found the byte 0xFC");
}

TEST(ReadErrorMessage, LeavesOutThePlaceOfAnErrorAboutTheWholeFile) {
    EXPECT_STREQ(ReadError("f", {}, "a", "b").what(), "f: expected a, found b");
}

TEST(ReadErrorMessage, IsAlsoToldInItsParts) {
    const ReadError error("f", {2, 3}, "a", "b");
    EXPECT_EQ(error.file(), "f");
    EXPECT_EQ(error.position(), (SourcePosition{2, 3}));
    EXPECT_EQ(error.expected(), "a");
    EXPECT_EQ(error.found(), "b");
}

} // namespace
} // namespace kthost
