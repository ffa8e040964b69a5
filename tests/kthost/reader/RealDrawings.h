#pragma once

#include "kthost/reader/DesignReader.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <vector>

namespace kthost::test {

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

inline const RealDrawing kRealDrawings[] = {
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

inline void PrintTo(const Counts& counts, std::ostream* stream) {
    *stream << counts.files << " files, " << counts.instances << " instances, depth " << counts.depth
            << ", lib " << counts.libEntries << "/" << counts.libNames << ", power " << counts.powerNames
            << ", lib units " << counts.libUnits << ", symbols " << counts.symbols << "/"
            << counts.occurrences << ", power " << counts.powerOccurrences << ", mirrored " << counts.mirrored
            << ", properties " << counts.properties << "/" << counts.propertyOccurrences << ", components "
            << counts.components << ", not in bom " << counts.notInBom << ", dnp " << counts.dnp
            << ", tables " << counts.tables << ", other reference " << counts.otherReference
            << ", other unit " << counts.otherUnit;
}

/// Skipped by name where the drawings are not at hand.
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

/// The lines of the list of components that an independent reader found, without its head.
inline std::vector<std::string> expectedComponents(const std::filesystem::path& folder,
                                                   const RealDrawing& drawing) {
    std::ifstream list(folder / "expected" / (std::string(drawing.name) + ".tsv"));
    std::vector<std::string> lines;
    std::string line;
    std::getline(list, line);
    while (std::getline(list, line)) {
        lines.push_back(line);
    }
    return lines;
}

/// A drawing's name as a part of a test's name.
inline std::string testNameOf(const testing::TestParamInfo<RealDrawing>& drawing) {
    std::string name = drawing.param.name;
    std::erase(name, '-');
    return name;
}

} // namespace kthost::test
