#include "kthost/console/Words.h"

#include "kthost/console/CommandError.h"

#include <gtest/gtest.h>

namespace kthost {

namespace {

Words words(const wchar_t* word) {
    return Words({word});
}

TEST(Words, GivesWhatIsThereAndRefusesWhatIsNot) {
    Words rest({L"a"});
    EXPECT_EQ(rest.take("A"), L"a");
    EXPECT_THROW(rest.take("B"), UsageError);
}

TEST(Words, RefusesWhatIsTooMuch) {
    EXPECT_THROW(words(L"a").expectEnd(), UsageError);
    EXPECT_NO_THROW(Words({}).expectEnd());
}

TEST(Words, TakesAKeywordOnlyIfItIsThere) {
    Words rest({L"in"});
    EXPECT_FALSE(rest.takeIf(L"unit"));
    EXPECT_TRUE(rest.takeIf(L"in"));
    EXPECT_FALSE(rest.takeIf(L"in"));
}

TEST(Words, ReadsPositions) {
    EXPECT_EQ(words(L"10,-2.5").takePoint(), (KtGePoint3d{10.0, -2.5, 0.0}));
}

TEST(Words, RefusesWhatIsNoPosition) {
    for (const wchar_t* text :
         {L"10", L"10,", L",1", L"1,2,3", L"1,x", L"nan,1", L"1,inf", L"1e999,0", L""}) {
        EXPECT_THROW(words(text).takePoint(), UsageError) << text;
    }
}

TEST(Words, ReadsPathsAsTheyAreWritten) {
    EXPECT_EQ(words(L"plans/one").takePath("FILE"), "plans/one");
}

TEST(Words, ReadsPathsFromTheRootOn) {
    EXPECT_EQ(words(L"plans/one").takeWholePath("FILE"), std::filesystem::current_path() / "plans/one");
}

TEST(Words, RefusesAnEmptyPath) {
    EXPECT_THROW(words(L"").takePath("FILE"), UsageError);
    EXPECT_THROW(words(L"").takeWholePath("FILE"), UsageError);
}

TEST(Words, ReadsNumbersInTheirRange) {
    EXPECT_EQ(words(L"1").takeNumber("N", 1, 5), 1U);
    EXPECT_EQ(words(L"5").takeNumber("N", 1, 5), 5U);
}

TEST(Words, RefusesNumbersOutsideTheirRange) {
    for (const wchar_t* text : {L"0", L"6", L"-1", L"4294967297", L"2.0", L"two", L""}) {
        EXPECT_THROW(words(text).takeNumber("N", 1, 5), UsageError) << text;
    }
}

} // namespace

} // namespace kthost
