#include "kthost/reader/SchematicReader.h"

#include "tests/kthost/reader/ReaderTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace kthost {
namespace {

using test::bodyError;
using test::parse;
using test::parseBody;
using test::parseError;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(SchematicReader, ReadsVersionAndUuid) {
    const Schematic schematic = parse("(kicad_sch (version 20211123) (generator eeschema) (uuid ab-cd))");
    EXPECT_EQ(schematic.version, 20211123);
    EXPECT_EQ(schematic.uuid, L"ab-cd");
}

TEST(SchematicReader, ReadsTheOldestVersionItKnows) {
    EXPECT_EQ(parse("(kicad_sch (version 20211014))").version, 20211014);
}

TEST(SchematicReader, RefusesAnOlderVersion) {
    EXPECT_EQ(parseError("(kicad_sch (version 20200310))"),
              "t.kicad_sch:1:21: expected a format version from 20211014 to 99991231, found '20200310'");
}

TEST(SchematicReader, RefusesAVersionThatIsNoNumber) {
    EXPECT_EQ(parseError("(kicad_sch (version new))"),
              "t.kicad_sch:1:21: expected a format version, found 'new'");
}

TEST(SchematicReader, RefusesAFileWithoutVersion) {
    EXPECT_EQ(parseError("(kicad_sch (uuid a))"),
              "t.kicad_sch:1:1: expected a schematic with a version, found one without");
}

TEST(SchematicReader, RefusesAnEmptyFile) {
    EXPECT_EQ(parseError(""),
              "t.kicad_sch:1:1: expected a schematic that begins with (kicad_sch, found the end of the file");
}

TEST(SchematicReader, RefusesTheFileOfAnOtherProgram) {
    EXPECT_EQ(parseError("EESchema Schematic File Version 4"),
              "t.kicad_sch:1:1: expected a schematic that begins with (kicad_sch, found 'EESchema'");
}

TEST(SchematicReader, RefusesAnOtherKindOfList) {
    EXPECT_EQ(parseError("(kicad_pcb (version 20231120))"),
              "t.kicad_sch:1:2: expected a schematic that begins with (kicad_sch, found 'kicad_pcb'");
}

TEST(SchematicReader, RefusesAFileThatIsCutOff) {
    EXPECT_EQ(parseError("(kicad_sch (version 20231120)\n(symbol (lib_id \"a\")"),
              "t.kicad_sch:2:21: expected ')', found the end of the file");
}

TEST(SchematicReader, RefusesTextAfterTheSchematic) {
    EXPECT_EQ(parseError("(kicad_sch (version 20231120))\n(more)"),
              "t.kicad_sch:2:1: expected the end of the file, found '('");
}

TEST(SchematicReader, RefusesListsThatNestTooDeep) {
    EXPECT_THAT(bodyError(std::string(300, '(')), HasSubstr("expected lists nested at most 256 deep"));
}

TEST(SchematicReader, PassesOverWhatTheModelDoesNotHold) {
    const Schematic schematic =
        parseBody("(wire (pts (xy 0 0) (xy 1 1))) word () ((x)) (image (at 1 1) (data \"iVB\" \"AA==\"))"
                  "(embedded_files (file (data |KLUv/(|))) (symbol (lib_id \"a:b\") (unit 2))");
    ASSERT_EQ(schematic.symbols.size(), 1U);
    EXPECT_EQ(schematic.symbols[0].unit, 2);
}

const char* const kFullSymbol =
    R"~((symbol (lib_name "R_1") (lib_id "Device:R") (at 10.16 -20.5 90) (mirror y)
  (unit 3) (convert 2) (exclude_from_sim no) (in_bom no) (on_board no) (dnp yes) (uuid "s1")
  (property "Reference" "R1" (at 0 0 0) (effects (font (size 1.27 1.27)) hide))
  (property "Value" "4,7 k)" (id 1) (at 0 0 0))
  (property "" "")
  (pin "1" (uuid p1))
  (instances (project "one" (path "/root/x" (reference "R5") (unit 1)))
             (project "" (path "/root" (reference "R6") (unit 2)) (path "/else" (reference "R?"))))))~";

PlacedSymbol fullSymbol() {
    return parseBody(kFullSymbol).symbols.at(0);
}

TEST(PlacedSymbolReader, ReadsLibraryIdAndName) {
    EXPECT_EQ(fullSymbol().libId, L"Device:R");
    EXPECT_EQ(fullSymbol().libEntryName(), L"R_1");
}

TEST(PlacedSymbolReader, ReadsThePlacement) {
    const PlacedSymbol symbol = fullSymbol();
    EXPECT_EQ(symbol.position, (SchematicPoint{10.16, -20.5}));
    EXPECT_EQ(symbol.angle, 90);
    EXPECT_TRUE(symbol.isMirroredY);
    EXPECT_FALSE(symbol.isMirroredX);
}

TEST(PlacedSymbolReader, ReadsUnitAndBodyStyle) {
    EXPECT_EQ(fullSymbol().unit, 3);
    EXPECT_EQ(fullSymbol().bodyStyle, 2);
}

TEST(PlacedSymbolReader, ReadsTheBodyStyleOfVersionTen) {
    EXPECT_EQ(parseBody(R"((symbol (lib_id "a") (body_style 2)))").symbols.at(0).bodyStyle, 2);
}

TEST(PlacedSymbolReader, ReadsTheFlags) {
    const PlacedSymbol symbol = fullSymbol();
    EXPECT_FALSE(symbol.isInBom);
    EXPECT_FALSE(symbol.isOnBoard);
    EXPECT_TRUE(symbol.isDnp);
}

TEST(PlacedSymbolReader, ReadsPropertiesInOrder) {
    EXPECT_THAT(fullSymbol().properties,
                ElementsAre(SchematicProperty{L"Reference", L"R1"}, SchematicProperty{L"Value", L"4,7 k)"},
                            SchematicProperty{L"", L""}));
}

TEST(PlacedSymbolReader, ReadsInstancesOfAllProjectsInOrder) {
    EXPECT_THAT(fullSymbol().instances,
                ElementsAre(SymbolInstance{L"/root/x", L"R5", 1}, SymbolInstance{L"/root", L"R6", 2},
                            SymbolInstance{L"/else", L"R?", 1}));
}

TEST(PlacedSymbolReader, TakesTheDefaultsWhereTheFileIsSilent) {
    PlacedSymbol expected;
    expected.libId = L"a";
    EXPECT_EQ(parseBody("(symbol (lib_id a))").symbols.at(0), expected);
    EXPECT_TRUE(expected.isInBom && expected.isOnBoard && !expected.isDnp);
    EXPECT_EQ(expected.libEntryName(), L"a");
}

TEST(PlacedSymbolReader, ReadsBothMirrors) {
    const PlacedSymbol symbol = parseBody("(symbol (lib_id a) (mirror x y))").symbols.at(0);
    EXPECT_TRUE(symbol.isMirroredX && symbol.isMirroredY);
}

TEST(PlacedSymbolReader, ReadsAPlacementWithoutAngle) {
    EXPECT_EQ(parseBody("(symbol (lib_id a) (at 1 2))").symbols.at(0).angle, 0);
}

TEST(PlacedSymbolReader, KeepsMarkupEscapesAndTextBeyondTheBasicPlane) {
    const Schematic schematic =
        parseBody("(symbol (lib_id a) (property \"~{RST}\\n\\\"\" \"\xF0\x9F\x8C\xA1\"))");
    EXPECT_EQ(schematic.symbols.at(0).properties.at(0), (SchematicProperty{L"~{RST}\n\"", L"\U0001F321"}));
}

TEST(PlacedSymbolReader, PassesOverTheMarkOfAPrivateProperty) {
    EXPECT_EQ(
        parseBody(R"((symbol (lib_id a) (property private "Cost" "1")))").symbols.at(0).properties.at(0),
        (SchematicProperty{L"Cost", L"1"}));
}

TEST(PlacedSymbolReader, TakesAQuotedPrivateForAName) {
    EXPECT_EQ(parseBody(R"((symbol (lib_id a) (property "private" "1")))").symbols.at(0).properties.at(0),
              (SchematicProperty{L"private", L"1"}));
}

TEST(PlacedSymbolReader, AcceptsTheOutermostCoordinates) {
    const PlacedSymbol symbol =
        parseBody("(symbol (lib_id a) (at 214748.3647 -214748.3647 -360))").symbols.at(0);
    EXPECT_EQ(symbol.position, (SchematicPoint{214748.3647, -214748.3647}));
}

struct Refusal {
    const char* name;
    std::string body;
    std::string place;
    std::string problem;
};

class RefusedSymbol : public testing::TestWithParam<Refusal> {};

// The body begins on the second line.
TEST_P(RefusedSymbol, IsRefusedWithItsPlaceAndReason) {
    EXPECT_EQ(bodyError(GetParam().body),
              "t.kicad_sch:2:" + GetParam().place + ": expected " + GetParam().problem);
}

const std::string kS = "(symbol (lib_id a) ";

INSTANTIATE_TEST_SUITE_P(
    Every, RefusedSymbol,
    testing::Values(
        Refusal{"WithoutLibraryId", " (symbol (unit 1))", "2",
                "a placed symbol with a lib_id, found one without"},
        Refusal{"WithAListForALibraryId", "(symbol (lib_id (a)))", "17", "a library id, found '('"},
        Refusal{"WithAnEmptyLibraryIdList", "(symbol (lib_id))", "16", "a library id, found ')'"},
        Refusal{"WithUnitZero", kS + "(unit 0))", "26", "a unit from 1 to 9999, found '0'"},
        Refusal{"WithATooLargeUnit", kS + "(unit 10000))", "26", "a unit from 1 to 9999, found '10000'"},
        Refusal{"WithAUnitBeyondAllIntegers", kS + "(unit 99999999999999999999))", "26",
                "a unit from 1 to 9999, found '99999999999999999999'"},
        Refusal{"WithAFractionForAUnit", kS + "(unit 1.5))", "26", "a unit, found '1.5'"},
        Refusal{"WithAWordForAUnit", kS + "(unit one))", "26", "a unit, found 'one'"},
        Refusal{"WithABodyStyleOutOfRange", kS + "(convert 100))", "29",
                "a body style from 1 to 99, found '100'"},
        Refusal{"WithACoordinateOutOfRange", kS + "(at 0 214748.4 0))", "26",
                "a coordinate from -214748.3647 to 214748.3647, found '214748.4'"},
        Refusal{"WithACoordinateBeyondAllNumbers", kS + "(at 1e999 0 0))", "24",
                "a coordinate from -214748.3647 to 214748.3647, found '1e999'"},
        Refusal{"WithACoordinateThatIsNoNumber", kS + "(at nan 0 0))", "24",
                "a coordinate from -214748.3647 to 214748.3647, found 'nan'"},
        Refusal{"WithACoordinateThatIsMissing", kS + "(at 0))", "25", "a coordinate, found ')'"},
        Refusal{"WithAnAngleOutOfRange", kS + "(at 0 0 361))", "28",
                "an angle from -360 to 360, found '361'"},
        Refusal{"WithAnUnknownMirror", kS + "(mirror z))", "28", "an axis x or y, found 'z'"},
        Refusal{"WithAnUnknownInBom", kS + "(in_bom maybe))", "28", "in_bom yes or no, found 'maybe'"},
        Refusal{"WithAnUnknownOnBoard", kS + "(on_board 1))", "30", "on_board yes or no, found '1'"},
        Refusal{"WithAnUnknownDnp", kS + "(dnp))", "24", "dnp yes or no, found ')'"},
        Refusal{"WithAPropertyWithoutName", kS + "(property))", "29", "a property name, found ')'"},
        Refusal{"WithAPropertyWithoutText", kS + "(property \"a\"))", "33", "a property text, found ')'"},
        Refusal{"WithAnInstanceWithoutPath", kS + "(instances (project a (path (unit 1)))))", "48",
                "a path of sheets, found '('"},
        Refusal{"WithAnInstanceUnitOutOfRange", kS + "(instances (project a (path /a (unit 0)))))", "57",
                "a unit from 1 to 9999, found '0'"}),
    [](const auto& each) { return each.param.name; });

TEST(SymbolInstancesReader, ReadsThoseOfAVersionSixRoot) {
    const Schematic schematic = parse(test::oldSchematicText(
        R"((symbol_instances (path "/s1" (reference "R1") (unit 1) (value "1k") (footprint ""))
                             (path "/x/s2" (reference "U1") (unit 2))))"));
    EXPECT_THAT(schematic.symbolInstances,
                ElementsAre(SymbolInstance{L"/s1", L"R1", 1}, SymbolInstance{L"/x/s2", L"U1", 2}));
}

} // namespace
} // namespace kthost
