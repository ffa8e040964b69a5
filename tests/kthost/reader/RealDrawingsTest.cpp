#include "tests/kthost/reader/RealDrawings.h"
#include "kthost/reader/OccurrenceFinder.h"
#include "tests/kthost/reader/ComponentList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

namespace kthost {
namespace {

class Counter {
public:
    explicit Counter(const Design& design) : design_(design), finder_(design) {}

    test::Counts count() {
        counts_.files = design_.files.size();
        counts_.instances = design_.instances.size();
        for (const SheetInstance& instance : design_.instances) {
            const auto bars = std::count(instance.path.begin(), instance.path.end(), L'/');
            counts_.depth = std::max(counts_.depth, static_cast<std::size_t>(bars) - 1);
        }
        for (std::size_t file = 0; file < design_.files.size(); ++file) {
            countFile(file);
        }
        countComponents();
        counts_.libNames = names_.size();
        counts_.powerNames = power_.size();
        return counts_;
    }

private:
    void countFile(std::size_t file) {
        const Schematic& schematic = design_.files[file].schematic;
        counts_.libEntries += schematic.libSymbols.size();
        counts_.tables += schematic.tables.size();
        for (const LibSymbol& symbol : schematic.libSymbols) {
            counts_.libUnits +=
                names_.insert(symbol.name).second ? static_cast<std::size_t>(symbol.unitCount) : 0;
            if (symbol.isPower) {
                power_.insert(symbol.name);
            }
        }
        for (const PlacedSymbol& symbol : schematic.symbols) {
            countSymbol(file, symbol);
        }
    }

    void countSymbol(std::size_t file, const PlacedSymbol& symbol) {
        const std::vector<SymbolOccurrence> found = finder_.find(file, symbol);
        const std::wstring* const own = findProperty(symbol.properties, L"Reference");
        counts_.symbols += 1;
        counts_.mirrored += symbol.isMirroredX || symbol.isMirroredY ? 1U : 0U;
        counts_.occurrences += found.size();
        counts_.properties += symbol.properties.size();
        counts_.propertyOccurrences += symbol.properties.size() * found.size();
        for (const SymbolOccurrence& each : found) {
            const bool isPower = each.reference.starts_with(L'#') || power_.contains(symbol.libEntryName());
            counts_.powerOccurrences += isPower ? 1U : 0U;
            counts_.otherReference += own == nullptr || each.reference != *own ? 1U : 0U;
            counts_.otherUnit += each.unit != symbol.unit ? 1U : 0U;
        }
    }

    void countComponents() {
        const auto components = test::componentsOf(design_);
        counts_.components = components.size();
        for (const auto& [reference, component] : components) {
            counts_.notInBom += component.isInBom ? 0U : 1U;
            counts_.dnp += component.isDnp ? 1U : 0U;
        }
    }

    const Design& design_;
    OccurrenceFinder finder_;
    test::Counts counts_;
    std::set<std::wstring> names_;
    std::set<std::wstring> power_;
};

using test::RealDrawings;

TEST_P(RealDrawings, AreOfTheVersionThatTheyClaim) {
    for (const SheetFile& file : design_.files) {
        EXPECT_EQ(file.schematic.version, GetParam().version);
    }
}

TEST_P(RealDrawings, HoldAsMuchAsAnIndependentCountFound) {
    EXPECT_EQ(Counter(design_).count(), GetParam().counts);
}

TEST_P(RealDrawings, GiveTheComponentsThatAnIndependentReaderFound) {
    const std::vector<std::string> expected = test::expectedComponents(folder_, GetParam());
    ASSERT_FALSE(expected.empty()) << "no list of expected components";
    EXPECT_THAT(test::linesOf(test::componentsOf(design_)), testing::UnorderedElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(Every, RealDrawings, testing::ValuesIn(test::kRealDrawings), test::testNameOf);

} // namespace
} // namespace kthost
