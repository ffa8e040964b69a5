#include "kthost/reader/OccurrenceFinder.h"

#include "kthost/reader/DesignReader.h"
#include "tests/kthost/reader/ReaderTestSupport.h"
#include "tests/support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kthost {
namespace {

using testing::ElementsAre;

const char* const kTwoSheets = R"(
(sheet (uuid A) (property "Sheetname" "a") (property "Sheetfile" "x"))
(sheet (uuid B) (property "Sheetname" "b") (property "Sheetfile" "x")))";

Design readTwoSheets(const std::string& root, const std::string& sheet) {
    const TempFolder folder;
    folder.file("x", sheet);
    return readDesign(folder.file("root.kicad_sch", root));
}

/// Occurrences of the one symbol of the file that lies on the root twice.
std::vector<SymbolOccurrence> occurrencesOn(const Design& design) {
    return OccurrenceFinder(design).find(1, design.files[1].schematic.symbols.at(0));
}

std::string symbol(const std::string& instances) {
    return R"((symbol (lib_id L:U) (unit 7) (uuid s) (property "Reference" "U9"))" + instances + ")";
}

std::vector<SymbolOccurrence> occurrencesOf(const std::string& instances) {
    return occurrencesOn(
        readTwoSheets(test::schematicText(kTwoSheets), test::schematicText(symbol(instances))));
}

TEST(OccurrenceFinder, FindsReferenceAndUnitOfEveryPlace) {
    EXPECT_THAT(occurrencesOf(R"((instances (project "p" (path "/root/A" (reference "U1") (unit 1))
                                                         (path "/root/B" (reference "U2") (unit 2)))))"),
                ElementsAre(SymbolOccurrence{1, L"U1", 1}, SymbolOccurrence{2, L"U2", 2}));
}

TEST(OccurrenceFinder, LooksAtPathsAndNotAtProjectNames) {
    EXPECT_THAT(occurrencesOf(R"((instances (project "" (path "/root/B" (reference "U2") (unit 2)))
                                            (project "left over" (path "/root/A" (reference "U1") (unit 1)))))"),
                ElementsAre(SymbolOccurrence{1, L"U1", 1}, SymbolOccurrence{2, L"U2", 2}));
}

TEST(OccurrenceFinder, IgnoresStalePaths) {
    EXPECT_THAT(occurrencesOf(R"((instances (project "p" (path "/other/A" (reference "U3") (unit 3))
                                                         (path "/root" (reference "U4") (unit 4))
                                                         (path "/root/A/B" (reference "U5") (unit 5))
                                                         (path "/root/A" (reference "U1") (unit 1))
                                                         (path "/root/B" (reference "U2") (unit 2)))))"),
                ElementsAre(SymbolOccurrence{1, L"U1", 1}, SymbolOccurrence{2, L"U2", 2}));
}

TEST(OccurrenceFinder, FallsBackOnTheSymbolsOwnReferenceAndUnit) {
    EXPECT_THAT(occurrencesOf(R"((instances (project "p" (path "/root/B" (reference "U2") (unit 2)))))"),
                ElementsAre(SymbolOccurrence{1, L"U9", 7}, SymbolOccurrence{2, L"U2", 2}));
}

TEST(OccurrenceFinder, TakesTheLaterOfTwoEntriesForAPath) {
    EXPECT_THAT(occurrencesOf(R"((instances (project "p" (path "/root/A" (reference "U1") (unit 1)))
                                            (project "q" (path "/root/A" (reference "U2") (unit 2)))))")
                    .at(0),
                (SymbolOccurrence{1, L"U2", 2}));
}

TEST(OccurrenceFinder, FindsNoReferenceWhereThereIsNone) {
    const Design design =
        readTwoSheets(test::schematicText(kTwoSheets), test::schematicText("(symbol (lib_id a) (uuid s))"));
    EXPECT_EQ(occurrencesOn(design).at(0), (SymbolOccurrence{1, L"", 1}));
}

TEST(OccurrenceFinder, FindsThoseOfVersionSixInTheRoot) {
    const Design design = readTwoSheets(test::oldSchematicText(std::string(kTwoSheets) + R"((symbol_instances
        (path "/s" (reference "U3") (unit 3)) (path "/A/s" (reference "U1") (unit 1))
        (path "/root/B/s" (reference "U4") (unit 4)) (path "/B/s" (reference "U2") (unit 2))))"),
                                        test::oldSchematicText(symbol("")));
    EXPECT_THAT(occurrencesOn(design),
                ElementsAre(SymbolOccurrence{1, L"U1", 1}, SymbolOccurrence{2, L"U2", 2}));
}

TEST(OccurrenceFinder, FindsASymbolOfAVersionSixRoot) {
    const TempFolder folder;
    const Design design = readDesign(folder.file(
        "r",
        test::oldSchematicText(symbol("") + R"((symbol_instances (path "/s" (reference "U3") (unit 3))))")));
    EXPECT_THAT(OccurrenceFinder(design).find(0, design.files[0].schematic.symbols.at(0)),
                ElementsAre(SymbolOccurrence{0, L"U3", 3}));
}

TEST(OccurrenceFinder, IgnoresTheInstancesThatASheetKeepsFromItsTimeAsARoot) {
    const Design design =
        readTwoSheets(test::oldSchematicText(kTwoSheets), test::oldSchematicText(symbol("") + R"(
        (symbol_instances (path "/s" (reference "U3") (unit 3)) (path "/A/s" (reference "U1") (unit 1))))"));
    EXPECT_EQ(occurrencesOn(design).at(0), (SymbolOccurrence{1, L"U9", 7}));
}

} // namespace
} // namespace kthost
