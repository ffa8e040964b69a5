#include "kthost/database/DatabaseQueries.h"
#include "tests/kthost/reader/BuiltComponents.h"
#include "tests/kthost/reader/ReaderTestSupport.h"
#include "tests/kthost/reader/RealDrawings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace kthost {
namespace {

class BuiltRealDrawings : public test::RealDrawings {};

TEST_P(BuiltRealDrawings, GiveTheComponentsThatAnIndependentReaderFound) {
    const std::vector<std::string> expected = test::expectedComponents(folder_, GetParam());
    ASSERT_FALSE(expected.empty()) << "no list of expected components";
    test::BuiltDrawing drawing(design_);
    EXPECT_THAT(test::linesOf(test::componentsIn(drawing)), testing::UnorderedElementsAreArray(expected));
}

TEST_P(BuiltRealDrawings, HaveARecordForEachLibraryNameAndSheetFile) {
    const test::BuiltDrawing drawing(design_);
    const std::vector<std::wstring> names = drawing.recordNames();
    EXPECT_EQ(std::count_if(names.begin(), names.end(),
                            [](const std::wstring& name) { return !name.starts_with(L'*'); }),
              GetParam().counts.libNames + GetParam().counts.files - 1);
}

TEST_P(BuiltRealDrawings, HaveAReferenceForEachSymbolSheetAndTable) {
    test::BuiltDrawing drawing(design_);
    std::size_t references = referencesIn(drawing.modelSpace()).size();
    for (const KtDbObjectId record : records(drawing.database(), false)) {
        references += referencesIn(record).size();
    }
    std::size_t sheets = 0;
    for (const SheetFile& file : design_.files) {
        sheets += file.children.size();
    }
    EXPECT_EQ(references, GetParam().counts.symbols + GetParam().counts.tables + sheets);
}

INSTANTIATE_TEST_SUITE_P(Every, BuiltRealDrawings, testing::ValuesIn(test::kRealDrawings), test::testNameOf);

TEST(BuiltSample, HoldsTheComponentsOfTheDesign) {
    const Design design = readDesign(test::samplesFolder() / "sensor-node.kicad_sch");
    test::BuiltDrawing drawing(design);
    EXPECT_THAT(test::linesOf(test::componentsIn(drawing)),
                testing::ElementsAreArray(test::linesOf(test::componentsOf(design))));
}

TEST(BuiltSample, HoldsItsTableAsAReferenceInModelSpace) {
    const test::BuiltDrawing drawing(readDesign(test::samplesFolder() / "sensor-node.kicad_sch"));
    EXPECT_THAT(drawing.placedIn(drawing.modelSpace()), testing::Contains(L"*T1").Times(1));
}

} // namespace
} // namespace kthost
