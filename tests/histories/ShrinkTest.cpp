#include "tests/histories/Shrink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace histories {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A history in which one kind of step comes behind another, somewhere among many others.
bool hasBehind(const History& history, const std::string& first, const std::string& second) {
    const auto found = std::find(history.begin(), history.end(), first);
    return std::find(found, history.end(), second) != history.end();
}

History randomHistory(std::size_t length, std::uint32_t seed) {
    static const History kLines{"insert", "erase", "undo", "redo", "define", "purge", "attach"};
    std::mt19937 random(seed);
    History history(length);
    std::generate(history.begin(), history.end(), [&] { return kLines[random() % kLines.size()]; });
    return history;
}

TEST(Shrink, LeavesTheTwoStepsThatMakeAFault) {
    const auto showsFault = [](const History& history) { return hasBehind(history, "purge", "undo"); };
    for (std::uint32_t seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(seed);
        const History history = randomHistory(300, seed);
        ASSERT_TRUE(showsFault(history));
        EXPECT_THAT(shrink(history, showsFault), ElementsAre("purge", "undo"));
    }
}

TEST(Shrink, LeavesStepsThatDependOnEachOther) {
    const auto showsFault = [](const History& history) {
        return hasBehind(history, "define", "attach") && hasBehind(history, "attach", "purge") &&
               std::count(history.begin(), history.end(), "insert") >= 3;
    };
    History history = randomHistory(200, 7);
    ASSERT_TRUE(showsFault(history));
    const History shortest = shrink(history, showsFault);
    EXPECT_EQ(shortest.size(), 6U) << testing::PrintToString(shortest);
}

TEST(Shrink, LeavesNothingWhereTheFaultNeedsNothing) {
    EXPECT_THAT(shrink(randomHistory(50, 3), [](const History&) { return true; }), IsEmpty());
}

TEST(Shrink, LeavesAllWhereAllIsNeeded) {
    const History history = randomHistory(60, 3);
    EXPECT_EQ(shrink(history, [](const History& shorter) { return shorter.size() == 60; }), history);
}

/// How often a line is run, alone or together with others.
std::ptrdiff_t countRuns(const History& history, const std::string& line) {
    return std::count_if(history.begin(), history.end(), [&](const std::string& each) {
        return each == line || each.find("\"" + line + "\"") != std::string::npos;
    });
}

TEST(Shrink, TakesLinesOutOfThoseThatAreRunTogether) {
    const auto showsFault = [](const History& history) {
        return std::any_of(history.begin(), history.end(), [](const std::string& line) {
            return countRuns({line}, "insert") == 1 && countRuns({line}, "purge") == 1;
        });
    };
    EXPECT_THAT(shrink({"erase", R"(together "insert" "undo" "purge" "erase")", "insert"}, showsFault),
                ElementsAre(R"(together "insert" "purge")"));
}

TEST(Shrink, ALineThatIsLeftAloneIsNotRunTogether) {
    const auto showsFault = [](const History& history) { return countRuns(history, "purge") == 1; };
    EXPECT_THAT(shrink({"erase", R"(together "insert" "purge" "undo")"}, showsFault), ElementsAre("purge"));
}

TEST(Shrink, LinesThatAreNeededTogetherStayTogether) {
    const History history{R"(together "insert ""R 1"" 1,1" "purge")"};
    const auto showsFault = [&](const History& shorter) { return shorter == history; };
    EXPECT_EQ(shrink(history, showsFault), history);
}

TEST(Shrink, QuotesInsideOfLinesStay) {
    const History history{R"(together "insert ""R 1"" 1,1" "purge" "undo")"};
    const auto showsFault = [](const History& shorter) {
        return !shorter.empty() && shorter[0].starts_with(R"(together "insert ""R 1"" 1,1" ")");
    };
    EXPECT_THAT(shrink(history, showsFault), ElementsAre(R"(together "insert ""R 1"" 1,1" "purge")"));
}

TEST(Shrink, ALineWithoutItsLastQuoteStaysWhole) {
    const History history{R"(together "insert" "undo)"};
    EXPECT_EQ(shrink(history, [&](const History& shorter) { return shorter == history; }), history);
}

TEST(Shrink, GivesAHistoryThatShowsTheFaultWhenItMayAskNoMore) {
    const auto showsFault = [](const History& history) { return hasBehind(history, "purge", "undo"); };
    std::size_t asked = 0;
    const History shorter = shrink(
        randomHistory(300, 11),
        [&](const History& history) {
            ++asked;
            return showsFault(history);
        },
        5);
    EXPECT_TRUE(showsFault(shorter));
    EXPECT_LE(asked, 5U);
}

TEST(Shrink, AsksFarFewerTimesThanThereAreWaysToShorten) {
    std::size_t asked = 0;
    shrink(randomHistory(1000, 5), [&](const History& history) {
        ++asked;
        return hasBehind(history, "purge", "undo");
    });
    EXPECT_LT(asked, 200U);
}

} // namespace

} // namespace histories
