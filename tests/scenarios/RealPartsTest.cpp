#include "tests/kthost/reader/RealDrawings.h"
#include "tests/scenarios/ReadCsv.h"
#include "tests/scenarios/ScenarioTest.h"

#include <algorithm>
#include <set>
#include <utility>

namespace kthost {

namespace {

using test::RealDrawing;

/// Designator and value.
using Part = std::pair<std::string, std::string>;
using Parts = std::multiset<Part>;

std::vector<std::string> splitAtTabs(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');) {
        fields.push_back(field);
    }
    return fields;
}

/// A real drawing, opened by the host, and the parts that an independent reader found in it.
class RealParts : public ScenarioTest, public testing::WithParamInterface<RealDrawing> {
protected:
    void SetUp() override {
        const char* const folder = std::getenv("KTDX_DRAWINGS"); // NOLINT(concurrency-mt-unsafe): one thread
        if (folder == nullptr) {
            GTEST_SKIP() << "KTDX_DRAWINGS does not name the folder of the real drawings";
        }
        drawings_ = folder;
        loadAll();
        run("open \"" + (drawings_ / GetParam().name / GetParam().root).string() + "\"");
    }

    /// Those that go onto a board and are bought, or all.
    Parts expectedParts(bool boughtOnly) const {
        constexpr std::size_t kInBom = 5;
        constexpr std::size_t kDnp = 7;
        Parts parts;
        for (const std::string& line : test::expectedComponents(drawings_, GetParam())) {
            const std::vector<std::string> fields = splitAtTabs(line);
            if (!boughtOnly || (fields.at(kInBom) == "1" && fields.at(kDnp) == "0")) {
                parts.emplace(fields.at(0), fields.at(1));
            }
        }
        return parts;
    }

    Parts listedParts(const std::string& conditions) {
        run("parts by component" + conditions + " to " + inFolder("parts.csv"));
        const std::vector<std::vector<std::string>> lines = readCsv(read("parts.csv"));
        const auto valueColumn = static_cast<std::size_t>(
            std::find(lines.at(0).begin(), lines.at(0).end(), "Value") - lines.at(0).begin());
        Parts parts;
        for (std::size_t line = 1; line < lines.size(); ++line) {
            parts.emplace(lines[line].at(0), lines[line].at(valueColumn));
        }
        return parts;
    }

    std::filesystem::path drawings_;
};

TEST_P(RealParts, ThatAreBoughtAreListedAsAnIndependentReaderFoundThem) {
    const Parts expected = expectedParts(true);
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(listedParts(" where in_bom=yes dnp=no"), expected);
}

TEST_P(RealParts, AreAllListedWithoutAnyCondition) {
    const Parts expected = expectedParts(false);
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(listedParts(""), expected);
}

INSTANTIATE_TEST_SUITE_P(Of, RealParts, testing::ValuesIn(test::kRealDrawings), test::testNameOf);

} // namespace

} // namespace kthost
