#include "kthost/reader/DrawingBuilder.h"

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/reader/DesignReader.h"
#include "tests/kthost/reader/BuiltDrawing.h"
#include "tests/kthost/reader/ReaderTestSupport.h"
#include "tests/support/TempFolder.h"

#include <KtDbBlockReference.h>
#include <KtDbTable.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace kthost {
namespace {

using test::attributeTexts;
using test::BuiltDrawing;
using test::handleText;
using test::occurrenceTexts;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

/// The root and, by name, the bodies of further sheet files.
BuiltDrawing build(const std::string& root, const std::map<std::string, std::string>& sheets = {}) {
    const TempFolder folder;
    for (const auto& [name, body] : sheets) {
        folder.file(name, test::schematicText(body));
    }
    return BuiltDrawing(readDesign(folder.file("root.kicad_sch", test::schematicText(root))));
}

const char* const kLibrary = R"((lib_symbols (symbol "L:R" (symbol "R_1_1"))
  (symbol "L:Dual" (symbol "Dual_1_1") (symbol "Dual_2_1") (symbol "Dual_3_1"))
  (symbol "L:Styled" (symbol "Styled_1_1") (symbol "Styled_1_2"))))";

std::string withLibrary(const std::string& body) {
    return kLibrary + body;
}

std::string sheetWithGain(const std::string& name, const std::string& file) {
    return R"((sheet (at 3 4) (uuid ")" + name + R"(") (property "Sheetname" ")" + name +
           R"(") (property "Sheetfile" ")" + file + R"(") (property "Gain" "2")))";
}

TEST(DrawingBuilder, PutsTheRootSheetIntoModelSpace) {
    const BuiltDrawing drawing = build(withLibrary(R"((symbol (lib_id "L:R")) (symbol (lib_id "L:R")))"));
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"L:R", L"L:R"));
}

TEST(DrawingBuilder, LeavesPaperSpaceEmpty) {
    const BuiltDrawing drawing = build(withLibrary(R"((symbol (lib_id "L:R")))"));
    EXPECT_THAT(drawing.placedIn(drawing.record(L"*Paper_Space")), IsEmpty());
}

TEST(DrawingBuilder, NamesTheDrawingAsAsked) {
    BuiltDrawing drawing = build("");
    EXPECT_EQ(drawing.database().name(), L"built");
}

TEST(DrawingBuilder, MakesARecordOfEachLibrarySymbolUsedOrNot) {
    EXPECT_THAT(build(kLibrary).recordNames(), UnorderedElementsAre(L"L:R", L"L:Dual", L"L:Styled"));
}

TEST(DrawingBuilder, MakesOneRecordOfEntriesOfOneName) {
    const BuiltDrawing drawing = build(withLibrary(sheetWithGain("A", "a")), {{"a", kLibrary}});
    EXPECT_THAT(drawing.recordNames(), UnorderedElementsAre(L"L:R", L"L:Dual", L"L:Styled", L"a"));
}

TEST(DrawingBuilder, MakesSymbolsOfSeveralUnitsOrStylesDynamic) {
    const BuiltDrawing drawing = build(kLibrary);
    EXPECT_TRUE(isDynamic(drawing.record(L"L:Dual")));
    EXPECT_TRUE(isDynamic(drawing.record(L"L:Styled")));
}

TEST(DrawingBuilder, LeavesSymbolsOfOneUnitStatic) {
    const BuiltDrawing drawing = build(kLibrary);
    EXPECT_FALSE(isDynamic(drawing.record(L"L:R")));
}

TEST(DrawingBuilder, RepresentsEachUnitInUseOnce) {
    const BuiltDrawing drawing = build(withLibrary(
        R"((symbol (lib_id "L:Dual") (unit 3)) (symbol (lib_id "L:Dual") (unit 1)) (symbol (lib_id "L:Dual") (unit 3)))"));
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"*U1", L"*U2", L"*U1"));
    EXPECT_EQ(representation(drawing.record(L"L:Dual"), L"unit 3"), drawing.record(L"*U1"));
    EXPECT_EQ(representation(drawing.record(L"L:Dual"), L"unit 1"), drawing.record(L"*U2"));
}

TEST(DrawingBuilder, DoesNotRepresentAUnitThatIsNotInUse) {
    const BuiltDrawing drawing = build(withLibrary(R"((symbol (lib_id "L:Dual") (unit 3)))"));
    EXPECT_TRUE(representation(drawing.record(L"L:Dual"), L"unit 2").isNull());
    EXPECT_THAT(drawing.recordNames(), Not(Contains(L"*U2")));
}

TEST(DrawingBuilder, RepresentsEachBodyStyleInUse) {
    const BuiltDrawing drawing =
        build(withLibrary(R"((symbol (lib_id "L:Styled") (convert 2)) (symbol (lib_id "L:Styled")))"));
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"*U1", L"*U2"));
    EXPECT_EQ(representation(drawing.record(L"L:Styled"), L"unit 1 style 2"), drawing.record(L"*U1"));
    EXPECT_EQ(representation(drawing.record(L"L:Styled"), L"unit 1"), drawing.record(L"*U2"));
}

TEST(DrawingBuilder, GivesAnEntryThatExtendsAnotherTheUnitsOfThatOne) {
    const BuiltDrawing drawing =
        build(R"((lib_symbols (symbol "L:B" (extends "L:A")) (symbol "L:A" (symbol "A_2_1"))))");
    EXPECT_TRUE(isDynamic(drawing.record(L"L:B")));
}

TEST(DrawingBuilder, JoinsTheUnitsOfEntriesThatDiffer) {
    const BuiltDrawing drawing = build(
        R"((lib_symbols (symbol "L:A" (symbol "A_1_1"))) (symbol (lib_id "L:A")))" + sheetWithGain("S", "s"),
        {{"s", R"((lib_symbols (symbol "L:A" (symbol "A_2_1"))))"}});
    EXPECT_TRUE(isDynamic(drawing.record(L"L:A")));
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"s", L"*U1"));
}

TEST(DrawingBuilder, MakesARecordForASymbolWithoutEntry) {
    const BuiltDrawing drawing = build(R"((symbol (lib_id "L:Gone")))");
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"L:Gone"));
}

TEST(DrawingBuilder, RepresentsAUnitThatTheEntryHasNot) {
    const BuiltDrawing drawing = build(withLibrary(R"((symbol (lib_id "L:R") (unit 2)))"));
    EXPECT_EQ(representation(drawing.record(L"L:R"), L"unit 2"),
              definitionOf(drawing.placed(drawing.modelSpace(), L"L:R")));
}

TEST(DrawingBuilder, PlacesTheEntryThatLibNameNames) {
    const BuiltDrawing drawing =
        build(R"((lib_symbols (symbol "R_1")) (symbol (lib_name "R_1") (lib_id "L:R")))");
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"R_1"));
    EXPECT_THAT(drawing.recordNames(), ElementsAre(L"R_1"));
}

TEST(DrawingBuilder, TurnsPropertiesIntoAttributesWithTheFlagsBehindThem) {
    const BuiltDrawing drawing = build(R"((symbol (lib_id "L:R") (in_bom no) (dnp yes)
        (property "Reference" "R1") (property "Value" "") (property "Reference" "R2")))");
    EXPECT_THAT(attributeTexts(drawing.placed(drawing.modelSpace(), L"L:R")),
                ElementsAre(L"Reference=R1", L"Value=", L"Reference (2)=R2", L"in_bom=no", L"on_board=yes",
                            L"dnp=yes"));
}

TEST(DrawingBuilder, GivesTheFlagsTheirDefaults) {
    const BuiltDrawing drawing = build(R"((symbol (lib_id "L:R")))");
    EXPECT_THAT(attributeTexts(drawing.placed(drawing.modelSpace(), L"L:R")),
                ElementsAre(L"in_bom=yes", L"on_board=yes", L"dnp=no"));
}

TEST(DrawingBuilder, KeepsTheTagsOfTheFlagsForTheFlags) {
    const BuiltDrawing drawing =
        build(R"((symbol (lib_id "L:R") (property "dnp" "text") (property "DNP" "x")))");
    EXPECT_THAT(attributeTexts(drawing.placed(drawing.modelSpace(), L"L:R")),
                ElementsAre(L"dnp (2)=text", L"DNP=x", L"in_bom=yes", L"on_board=yes", L"dnp=no"));
}

TEST(DrawingBuilder, PlacesAReferenceWhereTheSymbolLies) {
    const BuiltDrawing drawing = build(R"((symbol (lib_id "L:R") (at 10.16 -2.5 90)))");
    KtDbBlockReference* reference = nullptr;
    ASSERT_EQ(ktdbOpenObject(reference, drawing.placed(drawing.modelSpace(), L"L:R"), KtDb::kForRead),
              Orbx::eOk);
    EXPECT_EQ(reference->position(), (KtGePoint3d{10.16, -2.5, 0}));
    EXPECT_EQ(reference->close(), Orbx::eOk);
}

TEST(DrawingBuilder, MakesARecordOfEachSheetFileAndAReferenceOfEachSheet) {
    const BuiltDrawing drawing =
        build(sheetWithGain("A", "sub/x.kicad_sch") + sheetWithGain("B", "sub/x.kicad_sch"),
              {{"sub/x.kicad_sch", sheetWithGain("C", "../y.kicad_sch")}, {"y.kicad_sch", ""}});
    EXPECT_THAT(drawing.recordNames(), UnorderedElementsAre(L"sub/x.kicad_sch", L"y.kicad_sch"));
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"sub/x.kicad_sch", L"sub/x.kicad_sch"));
    EXPECT_THAT(drawing.placedIn(drawing.record(L"sub/x.kicad_sch")), ElementsAre(L"y.kicad_sch"));
}

TEST(DrawingBuilder, TurnsThePropertiesOfASheetIntoAttributes) {
    const BuiltDrawing drawing = build(sheetWithGain("A", "x"), {{"x", ""}});
    EXPECT_THAT(attributeTexts(drawing.placed(drawing.modelSpace(), L"x")),
                ElementsAre(L"Sheetname=A", L"Sheetfile=x", L"Gain=2"));
}

TEST(DrawingBuilder, PutsTheSymbolsOfASheetIntoItsRecord) {
    const BuiltDrawing drawing = build(sheetWithGain("A", "x"), {{"x", R"((symbol (lib_id "L:R")))"}});
    EXPECT_THAT(drawing.placedIn(drawing.record(L"x")), ElementsAre(L"L:R"));
}

TEST(DrawingBuilder, KeepsWhatASymbolOnTheRootIsCalled) {
    const BuiltDrawing drawing = build(R"((symbol (lib_id "L:R") (property "Reference" "R1")
        (instances (project "p" (path "/root" (reference "R7") (unit 3))))))");
    EXPECT_THAT(occurrenceTexts(drawing.placed(drawing.modelSpace(), L"L:R")),
                ElementsAre(L"/", L"R7", L"3"));
}

TEST(DrawingBuilder, KeepsWhatASymbolIsCalledInEveryPlaceOfItsSheet) {
    const BuiltDrawing drawing =
        build(sheetWithGain("A", "x") + sheetWithGain("B", "y"),
              {{"x", sheetWithGain("C", "y")}, {"y", R"((symbol (lib_id "L:R") (instances (project "p"
                     (path "/root/A/C" (reference "R1") (unit 1)) (path "/root/B" (reference "R2") (unit 2))))))"}});
    const std::wstring a = handleText(drawing.placed(drawing.modelSpace(), L"x"));
    const std::wstring b = handleText(drawing.placed(drawing.modelSpace(), L"y"));
    const std::wstring c = handleText(drawing.placed(drawing.record(L"x"), L"y"));
    EXPECT_THAT(occurrenceTexts(drawing.placed(drawing.record(L"y"), L"L:R")),
                ElementsAre(L"/" + a + L"/" + c, L"R1", L"1", L"/" + b, L"R2", L"2"));
}

TEST(DrawingBuilder, KeepsNoOccurrencesWithASheet) {
    const BuiltDrawing drawing = build(sheetWithGain("A", "x"), {{"x", ""}});
    EXPECT_THAT(occurrenceTexts(drawing.placed(drawing.modelSpace(), L"x")), IsEmpty());
}

TEST(DrawingBuilder, TellsLibrarySymbolsApartThatDifferInCase) {
    const BuiltDrawing drawing = build(
        R"((lib_symbols (symbol "L:r") (symbol "L:R")) (symbol (lib_id "L:R")) (symbol (lib_id "L:r")))");
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"L:R (2)", L"L:r"));
}

TEST(DrawingBuilder, LetsALibrarySymbolHaveANameBeforeASheetFile) {
    const BuiltDrawing drawing = build(sheetWithGain("A", "x") + R"((symbol (lib_id "X")))", {{"x", ""}});
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"x (2)", L"X"));
}

TEST(DrawingBuilder, WritesInANameWhatARecordCannotBeCalled) {
    EXPECT_THAT(build(R"((lib_symbols (symbol "L:A|B") (symbol "*U1")))").recordNames(),
                UnorderedElementsAre(L"L:A{bar}B", L"{star}U1"));
}

const char* const kTable = R"((table (column_count 2) (cells (table_cell "Head" (at 5 6 0) (span 2 1))
  (table_cell "" (span 0 0)) (table_cell "a") (table_cell "b") (table_cell "c") (table_cell "d"))))";

TEST(DrawingBuilder, DrawsATableThroughAnAnonymousRecord) {
    const BuiltDrawing drawing = build(std::string(kTable) + kTable);
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), ElementsAre(L"*T1", L"*T2"));
}

TEST(DrawingBuilder, FillsTheCellsOfATable) {
    const BuiltDrawing drawing = build(kTable);
    KtDbTable* table = nullptr;
    ASSERT_EQ(ktdbOpenObject(table, drawing.placed(drawing.modelSpace(), L"*T1"), KtDb::kForRead), Orbx::eOk);
    EXPECT_EQ(table->rows(), 3U);
    EXPECT_EQ(table->columns(), 2U);
    EXPECT_STREQ(table->cell(0, 0), L"Head");
    EXPECT_STREQ(table->cell(0, 1), L"");
    EXPECT_STREQ(table->cell(2, 1), L"d");
    EXPECT_EQ(table->position(), (KtGePoint3d{5, 6, 0}));
    EXPECT_EQ(table->close(), Orbx::eOk);
}

TEST(DrawingBuilder, LeavesNothingToUndo) {
    BuiltDrawing drawing = build(withLibrary(std::string(kTable) + R"((symbol (lib_id "L:R")))"));
    EXPECT_EQ(drawing.database().history().undoable(), 0U);
}

} // namespace
} // namespace kthost
