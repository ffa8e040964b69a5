#include "TableDiff.h"

#include <gtest/gtest.h>

namespace parts {

namespace {

const PartsTable kBefore{{L"Reference", L"Value"},
                         {{L"1", {L"R1", L"1k"}}, {L"2", {L"R2", L"2k"}}, {L"3", {L"R3", L""}}}};

TEST(TableDiff, OfATableWithItselfIsEmpty) {
    EXPECT_EQ(compareTables(kBefore, kBefore), (TableDiff{3, 0, 0, 0}));
}

TEST(TableDiff, CountsEveryRowOfAFirstTableAsAdded) {
    EXPECT_EQ(compareTables({}, kBefore), (TableDiff{3, 3, 0, 0}));
}

TEST(TableDiff, CountsARowWithAnotherKeyAsAddedAndTheMissingOneAsRemoved) {
    PartsTable after = kBefore;
    after.rows[1].key = L"4";
    EXPECT_EQ(compareTables(kBefore, after), (TableDiff{3, 1, 0, 1}));
}

TEST(TableDiff, CountsARowOnceHoweverManyOfItsCellsChange) {
    PartsTable after = kBefore;
    after.rows[0].cells = {L"R7", L"7k"};
    EXPECT_EQ(compareTables(kBefore, after), (TableDiff{3, 0, 1, 0}));
}

TEST(TableDiff, CountsChangesOnBothSidesOfARowThatIsNew) {
    PartsTable after = kBefore;
    after.rows[0].cells[1] = L"7k";
    after.rows[2].cells[1] = L"8k";
    after.rows.insert(after.rows.begin() + 1, {L"4", {L"R4", L"4k"}});
    EXPECT_EQ(compareTables(kBefore, after), (TableDiff{4, 1, 2, 0}));
}

TEST(TableDiff, CountsChangesOnBothSidesOfARowThatIsGone) {
    PartsTable after = kBefore;
    after.rows.erase(after.rows.begin() + 1);
    after.rows[0].cells[1] = L"7k";
    after.rows[1].cells[1] = L"8k";
    EXPECT_EQ(compareTables(kBefore, after), (TableDiff{2, 0, 2, 1}));
}

TEST(TableDiff, DoesNotMindTheOrderOfRows) {
    PartsTable after = kBefore;
    std::swap(after.rows[0], after.rows[2]);
    EXPECT_TRUE(compareTables(kBefore, after).isEmpty());
}

TEST(TableDiff, ANewColumnChangesOnlyRowsThatHaveATextInIt) {
    const PartsTable after{
        {L"Mfg", L"Reference", L"Value"},
        {{L"1", {L"", L"R1", L"1k"}}, {L"2", {L"ACME", L"R2", L"2k"}}, {L"3", {L"", L"R3", L""}}}};
    EXPECT_EQ(compareTables(kBefore, after), (TableDiff{3, 0, 1, 0}));
}

TEST(TableDiff, ALostColumnChangesOnlyRowsThatHadATextInIt) {
    const PartsTable after{{L"Reference"}, {{L"1", {L"R1"}}, {L"2", {L"R2"}}, {L"3", {L"R3"}}}};
    EXPECT_EQ(compareTables(kBefore, after), (TableDiff{3, 0, 2, 0}));
}

} // namespace

} // namespace parts
