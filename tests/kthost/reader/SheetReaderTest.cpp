#include "kthost/reader/SchematicReader.h"

#include "tests/kthost/reader/ReaderTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kthost {
namespace {

using test::bodyError;
using test::parseBody;
using testing::ElementsAre;

SheetSymbol fullSheet() {
    return parseBody(R"((sheet (at 1.5 2) (size 30 10.5) (uuid "u1")
  (property "Sheetname" "Left amp" (at 0 0 0)) (property "Sheetfile" "../Amp one.kicad_sch" (at 0 0 0))
  (property "Gain" "20") (pin "IN" input (at 0 0 0))
  (instances (project "p" (path "/root" (page "2")))))
)")
        .sheets.at(0);
}

TEST(SheetReader, ReadsNameAndFileAsWritten) {
    EXPECT_EQ(fullSheet().name, L"Left amp");
    EXPECT_EQ(fullSheet().file, L"../Amp one.kicad_sch");
}

TEST(SheetReader, ReadsPlaceSizeAndUuid) {
    EXPECT_EQ(fullSheet().position, (SchematicPoint{1.5, 2}));
    EXPECT_EQ(fullSheet().size, (SchematicPoint{30, 10.5}));
    EXPECT_EQ(fullSheet().uuid, L"u1");
}

TEST(SheetReader, ReadsPropertiesInOrder) {
    EXPECT_THAT(fullSheet().properties, ElementsAre(SchematicProperty{L"Sheetname", L"Left amp"},
                                                    SchematicProperty{L"Sheetfile", L"../Amp one.kicad_sch"},
                                                    SchematicProperty{L"Gain", L"20"}));
}

TEST(SheetReader, ReadsPages) {
    EXPECT_THAT(fullSheet().pages, ElementsAre(SheetPage{L"/root", L"2"}));
}

TEST(SheetReader, KnowsWhereTheFileIsNamed) {
    EXPECT_EQ(fullSheet().filePosition, (SourcePosition{3, 70}));
}

TEST(SheetReader, GivesThePropertiesOfVersionSixTheirLaterNames) {
    const SheetSymbol sheet =
        parseBody(
            R"((sheet (property "Sheet name" "A" (id 0)) (property "Sheet file" "a.kicad_sch" (id 1))))")
            .sheets.at(0);
    EXPECT_EQ(sheet.name, L"A");
    EXPECT_EQ(sheet.file, L"a.kicad_sch");
    EXPECT_THAT(sheet.properties, ElementsAre(SchematicProperty{L"Sheetname", L"A"},
                                              SchematicProperty{L"Sheetfile", L"a.kicad_sch"}));
}

TEST(SheetReader, RefusesASheetWithoutFile) {
    EXPECT_EQ(bodyError(R"(  (sheet (property "Sheetname" "A")))"),
              "t.kicad_sch:2:3: expected a sheet that names its file, found one that does not");
}

TEST(SheetReader, RefusesASizeOutOfRange) {
    EXPECT_EQ(bodyError("(sheet (size 1 1e6))"),
              "t.kicad_sch:2:16: expected a length from -214748.3647 to 214748.3647, found '1e6'");
}

} // namespace
} // namespace kthost
