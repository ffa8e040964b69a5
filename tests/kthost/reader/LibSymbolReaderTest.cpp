#include "kthost/reader/SchematicReader.h"

#include "tests/kthost/reader/ReaderTestSupport.h"

#include <gtest/gtest.h>

namespace kthost {
namespace {

std::vector<LibSymbol> parseLibrary(const std::string& entries) {
    return test::parseBody("(lib_symbols\n" + entries + ")").libSymbols;
}

LibSymbol parseEntry(const std::string& content) {
    return parseLibrary("(symbol \"L:A\" " + content + ")").at(0);
}

std::string libraryError(const std::string& entries) {
    return test::bodyError("(lib_symbols\n" + entries + ")");
}

TEST(LibSymbolReader, ReadsAnEntryOfOneUnitAndStyle) {
    const LibSymbol symbol = parseEntry(R"((symbol "A_0_1") (symbol "A_1_1"))");
    EXPECT_EQ(symbol.name, L"L:A");
    EXPECT_EQ(symbol.unitCount, 1);
    EXPECT_EQ(symbol.bodyStyleCount, 1);
    EXPECT_FALSE(symbol.isPower);
}

TEST(LibSymbolReader, CountsUnitsByTheNamesOfSubSymbols) {
    EXPECT_EQ(parseEntry(R"((symbol "A_1_1") (symbol "A_3_1") (symbol "A_2_1"))").unitCount, 3);
}

TEST(LibSymbolReader, CountsBodyStylesByTheNamesOfSubSymbols) {
    EXPECT_EQ(parseEntry(R"((symbol "A_1_1") (symbol "A_0_2"))").bodyStyleCount, 2);
}

TEST(LibSymbolReader, FindsUnitAndStyleAtTheEndOfANameWithBars) {
    EXPECT_EQ(parseEntry(R"((symbol "A_7_9_4_1"))").unitCount, 4);
}

TEST(LibSymbolReader, CountsOneUnitWhereThereAreNoSubSymbols) {
    EXPECT_EQ(parseEntry("").unitCount, 1);
}

TEST(LibSymbolReader, ReadsThePowerFlagOfEveryVersion) {
    EXPECT_TRUE(parseEntry("(power)").isPower);
    EXPECT_TRUE(parseEntry("(power global)").isPower);
}

TEST(LibSymbolReader, RefusesASubSymbolNameWithoutUnitAndStyle) {
    EXPECT_EQ(libraryError(R"((symbol "L:A" (symbol "A_1")))"),
              "t.kicad_sch:3:23: expected a sub-symbol name that ends in _UNIT_BODY, found \"A_1\"");
}

TEST(LibSymbolReader, RefusesASubSymbolNameThatEndsInAWord) {
    EXPECT_EQ(libraryError(R"((symbol "L:A" (symbol "A_1_x")))"),
              "t.kicad_sch:3:23: expected a sub-symbol name that ends in _UNIT_BODY, found \"A_1_x\"");
}

TEST(LibSymbolReader, RefusesASubSymbolUnitOutOfRange) {
    EXPECT_EQ(libraryError(R"((symbol "L:A" (symbol "A_10000_1")))"),
              "t.kicad_sch:3:23: expected a sub-symbol name that ends in _UNIT_BODY, found \"A_10000_1\"");
}

TEST(LibSymbolReader, RefusesTwoEntriesOfOneName) {
    EXPECT_EQ(libraryError("(symbol \"L:A\")\n(symbol \"L:A\")"),
              "t.kicad_sch:4:9: expected a name that no other entry of the file has, found \"L:A\"");
}

TEST(LibSymbolExtends, TakesUnitsStylesAndPowerFromTheParent) {
    const std::vector<LibSymbol> symbols =
        parseLibrary(R"((symbol "L:B" (extends "L:A")) (symbol "L:A" (power) (symbol "A_4_2")))");
    EXPECT_EQ(symbols[0].unitCount, 4);
    EXPECT_EQ(symbols[0].bodyStyleCount, 2);
    EXPECT_TRUE(symbols[0].isPower);
    EXPECT_EQ(symbols[0].extends, L"L:A");
}

TEST(LibSymbolExtends, FindsAParentNamedWithoutTheLibrary) {
    EXPECT_EQ(parseLibrary(R"((symbol "L:A" (symbol "A_4_1")) (symbol "L:B" (extends "A")))")[1].unitCount,
              4);
}

TEST(LibSymbolExtends, ReachesThroughSeveralParents) {
    const std::vector<LibSymbol> symbols = parseLibrary(
        R"((symbol "C" (extends "B")) (symbol "B" (extends "A")) (symbol "A" (symbol "A_3_1")))");
    EXPECT_EQ(symbols[0].unitCount, 3);
    EXPECT_EQ(symbols[1].unitCount, 3);
}

TEST(LibSymbolExtends, RefusesAParentThatIsMissing) {
    EXPECT_EQ(libraryError(R"((symbol "L:B" (extends "A")))"),
              "t.kicad_sch:3:9: expected an entry that extends another entry of the file, found \"A\"");
}

TEST(LibSymbolExtends, RefusesACircle) {
    EXPECT_EQ(libraryError("(symbol \"A\" (extends \"B\"))\n(symbol \"B\" (extends \"A\"))"),
              "t.kicad_sch:3:9: expected an entry that does not extend itself, found \"B\"");
}

TEST(LibSymbolExtends, IsFollowedHoweverLongTheChainIs) {
    std::string entries = R"((symbol "0" (symbol "0_2_1")))";
    for (int i = 1; i < 20000; ++i) {
        entries += R"((symbol ")" + std::to_string(i) + R"(" (extends ")" + std::to_string(i - 1) + R"(")))";
    }
    EXPECT_EQ(parseLibrary(entries).back().unitCount, 2);
}

} // namespace
} // namespace kthost
