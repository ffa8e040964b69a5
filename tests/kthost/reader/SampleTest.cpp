#include "kthost/reader/DesignReader.h"
#include "tests/kthost/reader/ComponentList.h"
#include "tests/kthost/reader/ReaderTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace kthost {
namespace {

using testing::ElementsAre;

class Sample : public testing::Test {
protected:
    const Schematic& root() const { return design_.files[0].schematic; }

    const Schematic& channel() const { return design_.files[1].schematic; }

    const test::Component& component(const wchar_t* reference) const { return components_.at(reference); }

    Design design_ = readDesign(test::samplesFolder() / "sensor-node.kicad_sch");
    test::ComponentMap components_ = test::componentsOf(design_);
};

TEST_F(Sample, NamesOneSheetFileTwice) {
    EXPECT_EQ(design_.files.size(), 2U);
    EXPECT_THAT(design_.files[0].children, ElementsAre(1, 1));
    EXPECT_EQ(design_.instances[2].names, L"/Probe B");
}

TEST_F(Sample, HasAsManySymbolsAsASmallBoard) {
    EXPECT_EQ(root().symbols.size(), 17U);
    EXPECT_EQ(channel().symbols.size(), 11U);
}

TEST_F(Sample, GivesEachRepeatedPartADesignatorOfItsOwn) {
    std::set<std::wstring> references;
    for (const auto& [reference, component] : components_) {
        references.insert(reference);
    }
    EXPECT_THAT(references, ElementsAre(L"C1", L"C2", L"C3", L"C4", L"C5", L"C6", L"C7", L"D1", L"J1", L"J2",
                                        L"R1", L"R2", L"R3", L"R4", L"R5", L"R6", L"R7", L"R8", L"TH1",
                                        L"TH2", L"TP1", L"U1", L"U2", L"U3", L"U4", L"U5"));
}

TEST_F(Sample, HoldsPartsOfSeveralUnits) {
    EXPECT_THAT(component(L"U3").units, ElementsAre(1, 2, 3));
    EXPECT_THAT(component(L"U5").units, ElementsAre(1, 2, 3));
}

TEST_F(Sample, HoldsASecondBodyStyle) {
    EXPECT_TRUE(std::any_of(root().symbols.begin(), root().symbols.end(),
                            [](const PlacedSymbol& symbol) { return symbol.bodyStyle == 2; }));
}

TEST_F(Sample, HoldsPartsThatAreNotPopulatedOrNotListed) {
    EXPECT_TRUE(component(L"J2").isDnp);
    EXPECT_FALSE(component(L"TP1").isInBom);
}

TEST_F(Sample, HoldsTextBeyondTheBasicPlane) {
    EXPECT_EQ(*findProperty(channel().symbols.at(0).properties, L"Note"),
              L"\U0001F321 \u221240\u2026125 \u00B0C");
}

TEST_F(Sample, HoldsATableWithAMergedHead) {
    const SchematicTable& table = root().tables.at(0);
    EXPECT_EQ(table.columnCount, 3);
    EXPECT_EQ(table.cells.size(), 15U);
    EXPECT_EQ(table.cells[0], (TableCell{L"J1 and J2", 3, 1}));
    EXPECT_EQ(table.cells[1], (TableCell{L"", 0, 0}));
}

TEST_F(Sample, PlacesOnlySymbolsThatItsLibraryHolds) {
    for (const SheetFile& file : design_.files) {
        for (const PlacedSymbol& symbol : file.schematic.symbols) {
            EXPECT_TRUE(std::any_of(file.schematic.libSymbols.begin(), file.schematic.libSymbols.end(),
                                    [&symbol](const LibSymbol& each) {
                                        return each.name == symbol.libEntryName() &&
                                               symbol.unit <= each.unitCount;
                                    }));
        }
    }
}

} // namespace
} // namespace kthost
