#include "kthost/console/ObjectNames.h"
#include "tests/kthost/console/ConsoleFixture.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::HasSubstr;

class AttributeCommands : public ConsoleTest {
protected:
    AttributeCommands() { run("insert R 1,1 Reference=R7 Value=1k"); }

    std::size_t count() { return attributesOf(referencesByDesignator(drawing(), L"R7").at(0)).size(); }
};

TEST_F(AttributeCommands, AttributeGivesAReferenceOneMore) {
    run("attribute R7 Note new");
    run("attribute R7 Note newer");
    EXPECT_EQ(count(), 4U);
}

TEST_F(AttributeCommands, EraseAndRestoreTakeATag) {
    run("erase R7 Value");
    EXPECT_EQ(count(), 1U);
    run("restore @last Value");
    EXPECT_EQ(count(), 2U);
}

TEST_F(AttributeCommands, RestoreBringsTheLatestOfThatTagBack) {
    run("attribute R7 Value 2k");
    run("erase R7 Value");
    run("erase R7 Value");
    run("restore @last Value");
    EXPECT_EQ(attributeText(referencesByDesignator(drawing(), L"R7").at(0), L"Value"), L"2k");
}

TEST_F(AttributeCommands, RestoreRefusesATagThatIsNotErased) {
    EXPECT_THAT(failure("restore @last Value"), HasSubstr("has no erased attribute 'Value'"));
    EXPECT_THAT(failure("restore @last Note"), HasSubstr("has no erased attribute 'Note'"));
}

TEST_F(AttributeCommands, EraseOfAnAttributeLeavesTheReference) {
    run("erase R7 Value");
    EXPECT_EQ(referencesByDesignator(drawing(), L"R7").size(), 1U);
}

TEST_F(AttributeCommands, XDataIsSetAndTakenAway) {
    run("xdata R7 MAKER one \"two 2\"");
    EXPECT_THAT(dump(), HasSubstr(L"two 2"));
    run("xdata R7 MAKER");
    EXPECT_THAT(dump(), testing::Not(HasSubstr(L"two 2")));
}

} // namespace

} // namespace kthost
