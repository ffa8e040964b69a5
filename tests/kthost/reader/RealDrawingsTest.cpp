#include "kthost/reader/DesignReader.h"
#include "kthost/reader/OccurrenceFinder.h"
#include "tests/kthost/reader/ComponentList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <vector>

namespace kthost {
namespace {

/// What an independent count found in a drawing of the folder that KTDX_DRAWINGS names.
struct Counts {
    std::size_t files = 0;
    std::size_t instances = 0;
    std::size_t depth = 0;
    std::size_t libEntries = 0;
    std::size_t libNames = 0;
    std::size_t powerNames = 0;
    std::size_t libUnits = 0; ///< of all distinct names together
    std::size_t symbols = 0;
    std::size_t occurrences = 0;
    std::size_t powerOccurrences = 0;
    std::size_t mirrored = 0; ///< placed symbols
    std::size_t properties = 0;
    std::size_t propertyOccurrences = 0;
    std::size_t components = 0;
    std::size_t notInBom = 0;
    std::size_t dnp = 0;
    std::size_t tables = 0;
    std::size_t otherReference = 0; ///< occurrences whose reference is not the Reference property
    std::size_t otherUnit = 0;

    bool operator==(const Counts&) const = default;
};

struct RealDrawing {
    const char* name;
    const char* root;
    std::int64_t version;
    Counts counts;
};

const RealDrawing kDrawings[] = {
    {"bp-irtoy",
     "bp5-ir-toy-v3-rev3.kicad_sch",
     20231120,
     {.files = 1,
      .instances = 1,
      .depth = 0,
      .libEntries = 12,
      .libNames = 12,
      .powerNames = 1,
      .libUnits = 12,
      .symbols = 50,
      .occurrences = 50,
      .powerOccurrences = 15,
      .mirrored = 25,
      .properties = 295,
      .propertyOccurrences = 295,
      .components = 35,
      .notInBom = 1,
      .dnp = 1,
      .tables = 0,
      .otherReference = 0,
      .otherUnit = 0}},
    {"pmod-r22",
     "eurorack-pmod-pcb.kicad_sch",
     20211123,
     {.files = 3,
      .instances = 5,
      .depth = 1,
      .libEntries = 37,
      .libNames = 22,
      .powerNames = 8,
      .libUnits = 31,
      .symbols = 171,
      .occurrences = 249,
      .powerOccurrences = 89,
      .mirrored = 20,
      .properties = 820,
      .propertyOccurrences = 1208,
      .components = 101,
      .notInBom = 0,
      .dnp = 0,
      .tables = 0,
      .otherReference = 62,
      .otherUnit = 16}},
    {"glasgow-c3",
     "glasgow.kicad_sch",
     20231120,
     {.files = 3,
      .instances = 4,
      .depth = 2,
      .libEntries = 57,
      .libNames = 40,
      .powerNames = 5,
      .libUnits = 44,
      .symbols = 347,
      .occurrences = 474,
      .powerOccurrences = 213,
      .mirrored = 54,
      .properties = 2243,
      .propertyOccurrences = 3073,
      .components = 257,
      .notInBom = 23,
      .dnp = 12,
      .tables = 0,
      .otherReference = 127,
      .otherUnit = 0}},
    {"tt06-fpga",
     "tt06-fpga-ICE40UP5k.kicad_sch",
     20250114,
     {.files = 2,
      .instances = 2,
      .depth = 1,
      .libEntries = 34,
      .libNames = 27,
      .powerNames = 6,
      .libUnits = 30,
      .symbols = 121,
      .occurrences = 121,
      .powerOccurrences = 66,
      .mirrored = 11,
      .properties = 1139,
      .propertyOccurrences = 1139,
      .components = 52,
      .notInBom = 8,
      .dnp = 10,
      .tables = 1,
      .otherReference = 0,
      .otherUnit = 0}},
};

class Counter {
public:
    explicit Counter(const Design& design) : design_(design), finder_(design) {}

    Counts count() {
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
    Counts counts_;
    std::set<std::wstring> names_;
    std::set<std::wstring> power_;
};

void PrintTo(const Counts& counts, std::ostream* stream) {
    *stream << counts.files << " files, " << counts.instances << " instances, depth " << counts.depth
            << ", lib " << counts.libEntries << "/" << counts.libNames << ", power " << counts.powerNames
            << ", lib units " << counts.libUnits << ", symbols " << counts.symbols << "/"
            << counts.occurrences << ", power " << counts.powerOccurrences << ", mirrored " << counts.mirrored
            << ", properties " << counts.properties << "/" << counts.propertyOccurrences << ", components "
            << counts.components << ", not in bom " << counts.notInBom << ", dnp " << counts.dnp
            << ", tables " << counts.tables << ", other reference " << counts.otherReference
            << ", other unit " << counts.otherUnit;
}

class RealDrawings : public testing::TestWithParam<RealDrawing> {
protected:
    void SetUp() override {
        const char* const folder = std::getenv("KTDX_DRAWINGS"); // NOLINT(concurrency-mt-unsafe): one thread
        if (folder == nullptr) {
            GTEST_SKIP() << "KTDX_DRAWINGS does not name the folder of the real drawings";
        }
        folder_ = folder;
        design_ = readDesign(folder_ / GetParam().name / GetParam().root);
    }

    std::filesystem::path folder_;
    Design design_;
};

TEST_P(RealDrawings, AreOfTheVersionThatTheyClaim) {
    for (const SheetFile& file : design_.files) {
        EXPECT_EQ(file.schematic.version, GetParam().version);
    }
}

TEST_P(RealDrawings, HoldAsMuchAsAnIndependentCountFound) {
    EXPECT_EQ(Counter(design_).count(), GetParam().counts);
}

TEST_P(RealDrawings, GiveTheComponentsThatAnIndependentReaderFound) {
    std::ifstream list(folder_ / "expected" / (std::string(GetParam().name) + ".tsv"));
    std::string line;
    ASSERT_TRUE(std::getline(list, line)) << "no list of expected components";
    std::vector<std::string> expected;
    while (std::getline(list, line)) {
        expected.push_back(line);
    }
    std::vector<std::string> found;
    for (const auto& [reference, component] : test::componentsOf(design_)) {
        found.push_back(test::lineOf(reference, component));
    }
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(Every, RealDrawings, testing::ValuesIn(kDrawings), [](const auto& each) {
    std::string name = each.param.name;
    std::erase(name, '-');
    return name;
});

} // namespace
} // namespace kthost
