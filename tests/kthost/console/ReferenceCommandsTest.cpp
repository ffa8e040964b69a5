#include "kthost/console/ObjectNames.h"
#include "tests/kthost/console/ConsoleFixture.h"

#include <gmock/gmock.h>

namespace kthost {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ReferenceCommands : public ConsoleTest {
protected:
    std::wstring text(const wchar_t* designator, const wchar_t* tag) {
        return std::wstring(attributeText(referencesByDesignator(drawing(), designator).at(0), tag));
    }
};

TEST_F(ReferenceCommands, InsertPlacesABlockWithItsAttributes) {
    EXPECT_THAT(run("insert R 10,20 Reference=R7 Value=\"4k7 1%\""), StartsWith("inserted 0x"));
    EXPECT_EQ(text(L"R7", L"Value"), L"4k7 1%");
}

TEST_F(ReferenceCommands, InsertPlacesABlockInAnother) {
    run("define Sheet");
    run("insert R 1,1 in Sheet Reference=R7");
    EXPECT_EQ(ownerOf(referencesByDesignator(drawing(), L"R7").at(0)), recordByName(drawing(), L"Sheet"));
}

TEST_F(ReferenceCommands, InsertRefusesABlockThatIsNotThere) {
    EXPECT_EQ(failure("insert Q 1,1"), "there is no block 'Q'");
}

TEST_F(ReferenceCommands, InsertRefusesAnAttributeThatComesTwice) {
    const std::wstring before = dump();
    EXPECT_THAT(failure("insert R 1,1 Value=a Value=b"), HasSubstr("comes twice"));
    EXPECT_EQ(dump(), before);
}

TEST_F(ReferenceCommands, InsertRefusesASecondUnitOfABlockThatHasOne) {
    EXPECT_EQ(failure("insert R 1,1 unit 2"), "'R' has one unit only");
}

TEST_F(ReferenceCommands, InsertRefusesABlockInsideItself) {
    const std::wstring before = dump();
    EXPECT_NE(failure("insert R 1,1 in R"), "");
    EXPECT_EQ(dump(), before);
}

TEST_F(ReferenceCommands, SetChangesAnAttributeAndSaysWhatItWas) {
    run("insert R 1,1 Reference=R7 Value=1k");
    EXPECT_THAT(run("set R7 Value 4k7"), HasSubstr("Value = 4k7 (was 1k)"));
    EXPECT_EQ(text(L"R7", L"Value"), L"4k7");
}

TEST_F(ReferenceCommands, SetRefusesATagThatTheReferenceDoesNotHave) {
    run("insert R 1,1 Reference=R7 Value=1k");
    EXPECT_THAT(failure("set R7 Vlaue 4k7"), HasSubstr("it has Reference, Value"));
}

TEST_F(ReferenceCommands, CanBeNamedByHandle) {
    run("insert R 1,1 Reference=R7 Value=1k");
    const KtDbObjectId id = referencesByDesignator(drawing(), L"R7").at(0);
    run("set " + handleText(handleOf(id)) + " Value 2k");
    EXPECT_EQ(text(L"R7", L"Value"), L"2k");
}

TEST_F(ReferenceCommands, CanBeNamedByTheirNumberAmongTheParts) {
    run("insert R 1,1 Reference=#PWR1 Value=GND");
    run("insert R 1,1 Reference=R7 Value=1k");
    run("insert R 1,1 Reference=R8 Value=1k");
    run("set @2 Value 2k");
    EXPECT_EQ(text(L"R8", L"Value"), L"2k");
}

TEST_F(ReferenceCommands, CanBeNamedAsTheLatest) {
    run("insert R 1,1 Reference=R7 Value=1k");
    run("copy R7 2,2");
    run("set @last Reference R8");
    EXPECT_EQ(text(L"R8", L"Value"), L"1k");
}

TEST_F(ReferenceCommands, RefuseANumberThatNoPartHas) {
    EXPECT_EQ(failure("erase @1"), "there is no part '@1'; the drawing has 0");
    EXPECT_NE(failure("erase @0"), "");
    EXPECT_NE(failure("erase @x"), "");
}

TEST_F(ReferenceCommands, RefuseADesignatorThatSeveralHave) {
    run("insert R 1,1 Reference=R7");
    run("insert R 1,1 Reference=R7");
    EXPECT_THAT(failure("erase R7"), StartsWith("'R7' names several references, use a handle: 0x"));
}

TEST_F(ReferenceCommands, RefuseAHandleThatIsNoReferences) {
    const std::string handle = handleText(handleOf(recordByName(drawing(), L"R")));
    EXPECT_EQ(failure("erase " + handle), "there is no reference '" + handle + "'");
}

TEST_F(ReferenceCommands, EraseAndRestoreByDesignator) {
    run("insert R 1,1 Reference=R7");
    run("erase R7");
    EXPECT_TRUE(referencesByDesignator(drawing(), L"R7").empty());
    run("restore R7");
    EXPECT_EQ(referencesByDesignator(drawing(), L"R7").size(), 1U);
}

TEST_F(ReferenceCommands, EraseRefusesWhatIsErased) {
    run("insert R 1,1 Reference=R7");
    run("erase R7");
    EXPECT_NE(failure("erase @last"), "");
}

TEST_F(ReferenceCommands, MoveIsOneStepToUndo) {
    run("insert R 1,1 Reference=R7");
    const std::wstring before = dump();
    run("move R7 5,5");
    EXPECT_NE(dump(), before);
    run("undo");
    EXPECT_EQ(dump(), before);
}

TEST_F(ReferenceCommands, SetReferenceRenamesTheOccurrenceThatBoreTheName) {
    run("insert R 1,1 Reference=R7");
    run("set R7 Reference R9");
    EXPECT_THAT(dump(), HasSubstr(L"R9"));
    EXPECT_EQ(dump().find(L"R7"), std::wstring::npos);
}

} // namespace

} // namespace kthost
