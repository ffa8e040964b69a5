#include "kthost/database/OpenObjects.h"
#include "tests/kthost/console/ConsoleFixture.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::HasSubstr;

class HoldCommands : public ConsoleTest {
protected:
    HoldCommands() { run("insert R 1,1 Reference=R7 Value=1k"); }
};

TEST_F(HoldCommands, AReferenceHeldForReadingCannotBeMoved) {
    run("hold read R7");
    EXPECT_THAT(failure("move R7 5,5"), HasSubstr("it is open for reading"));
}

TEST_F(HoldCommands, AnAttributeHeldForWritingCannotBeSet) {
    run("hold write R7 Value");
    EXPECT_THAT(failure("set R7 Value 2k"), HasSubstr("it is open for writing"));
}

TEST_F(HoldCommands, ATableOfBlocksHeldForNotificationTakesNoBlock) {
    run("hold notify blocks");
    EXPECT_THAT(failure("define C"), HasSubstr("it is open for notification"));
}

TEST_F(HoldCommands, ABlockHeldForReadingTakesNoReference) {
    run("define C");
    run("hold read block C");
    EXPECT_NE(failure("insert R 1,1 in C"), "");
}

TEST_F(HoldCommands, HoldRefusesWhatCannotBeOpened) {
    run("hold read R7");
    EXPECT_EQ(failure("hold write R7"), "it cannot be opened for writing: it is open for reading");
}

TEST_F(HoldCommands, HoldRefusesATagThatIsNotThere) {
    EXPECT_THAT(failure("hold read R7 Vlaue"), HasSubstr("has no attribute 'Vlaue'"));
}

TEST_F(HoldCommands, HoldOpensAnErasedReferenceToo) {
    run("erase R7");
    run("hold read @last");
    EXPECT_EQ(openObjects().size(), 1U);
}

TEST_F(HoldCommands, ReleaseClosesEverything) {
    run("hold read R7");
    run("hold notify R7");
    run("hold write R7 Value");
    EXPECT_EQ(run("release"), "closed 3 openings\n");
    EXPECT_TRUE(openObjects().empty());
}

TEST_F(HoldCommands, WhatGoesWithItsDrawingIsNotClosed) {
    run("hold write R7");
    host_.documents().closeAll();
    EXPECT_EQ(run("release"), "closed 0 openings\n");
}

TEST_F(HoldCommands, CloseLetsGoOfTheDocumentsObjectsAndOfNoOthers) {
    run("hold read R7");
    run("new other");
    run("define C");
    run("hold read block C");
    run("close plan");
    EXPECT_EQ(openObjects().size(), 1U);
    run("close other");
    EXPECT_TRUE(host_.end().clean());
}

TEST_F(HoldCommands, TheSessionsEndLetsGo) {
    {
        std::ostringstream out;
        Console second(host_, out);
        second.run("hold read block R");
        EXPECT_EQ(openObjects().size(), 1U);
    }
    EXPECT_TRUE(openObjects().empty());
}

} // namespace

} // namespace kthost
