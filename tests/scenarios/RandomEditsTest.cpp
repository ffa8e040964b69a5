#include "kthost/console/ObjectNames.h"
#include "kthost/runtime/Utf8.h"
#include "tests/scenarios/RandomEditor.h"
#include "tests/scenarios/ReadCsv.h"
#include "tests/scenarios/ScenarioTest.h"

#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <regex>
#include <set>

namespace kthost {

namespace {

constexpr int kCommands = 1000;

/// Path of a root sheet below the folder of drawings; empty when there is no such folder.
std::string drawingFile(const std::string& name) {
    if (name.find('/') == std::string::npos) {
        return std::string(KTDX_SAMPLES) + "/" + name;
    }
    const char* folder = std::getenv("KTDX_DRAWINGS");
    return folder == nullptr ? "" : std::string(folder) + "/" + name;
}

std::uint32_t chooseSeed() {
    const char* seed = std::getenv("KTDX_SEED");
    return seed == nullptr ? std::random_device()()
                           : static_cast<std::uint32_t>(std::strtoul(seed, nullptr, 10));
}

struct RandomCase {
    const char* drawing;
    const char* list;
    const char* watched = ""; ///< the block that another client watches before the list begins
};

/// What a list says of one reference: its block, its container, its handle and its attributes.
using Texts = std::map<std::string, std::string>;
/// Handles repeat between a drawing and those attached to it.
using Rows = std::multiset<Texts>;

class RandomEdits : public ScenarioTest, public testing::WithParamInterface<RandomCase> {
protected:
    /// The list as it was written.
    Rows writtenRows() const {
        Rows rows;
        const std::vector<std::vector<std::string>> lines = readCsv(read("list.csv"));
        for (std::size_t line = 1; line < lines.size(); ++line) {
            Texts row;
            for (std::size_t column = 0; column < lines[line].size(); ++column) {
                if (!lines[line][column].empty()) {
                    row[lines[0].at(column)] = lines[line][column];
                }
            }
            rows.insert(row);
        }
        return rows;
    }

    /// The same from what the drawing says of itself, without the client.
    Rows drawnRows() {
        Rows rows;
        for (const KtDbObjectId id : allReferences(drawing())) {
            rows.insert(drawnRow(id, toUtf8(recordName(ownerOf(id)))));
        }
        for (const KtDbObjectId record : records(drawing(), false)) {
            const std::string name = toUtf8(recordName(record));
            if (const std::size_t bar = name.find('|'); bar != std::string::npos) {
                addAttachedRows(record, name.substr(0, bar), rows);
            }
        }
        return rows;
    }

    /// The references to a definition that came with an attached drawing: those that lie there in model space
    /// lie here in the record that stands for it.
    void addAttachedRows(KtDbObjectId record, const std::string& attached, Rows& rows) {
        for (const KtDbObjectId id : referencesTo(record)) {
            const std::string container = toUtf8(recordName(ownerOf(id)));
            if (id.database() != &drawing()) { // its own are among all references
                rows.insert(drawnRow(id, container == "*Model_Space" ? attached : container));
            }
        }
    }

    static Texts drawnRow(KtDbObjectId id, const std::string& container) {
        Texts row{{"Block", blockName(id)},
                  {"Container", container},
                  {"Handle", handleText(handleOf(id)).substr(2)}};
        for (const AttributeView& attribute : attributesOf(id)) {
            if (!attribute.text.empty()) {
                row[toUtf8(attribute.tag)] = toUtf8(attribute.text);
            }
        }
        return row;
    }

    /// A failure can be looked at with `kthost --script`.
    std::string keepScript() const {
        const std::filesystem::path file =
            std::filesystem::path(testing::TempDir()) /
            ("ktdx-random-" + std::to_string(std::random_device()()) + ".script");
        std::ofstream(file) << script_;
        return file.string();
    }

    std::string script_; // the lines that were done

    static bool listsAllReferences() { return std::string(GetParam().list).empty(); }
};

/// The list has to be right behind every single command, and so have the file and the table in the drawing.
TEST_P(RandomEdits, LeaveTheListEqualToAFreshExtraction) {
    const std::string file = drawingFile(GetParam().drawing);
    if (file.empty()) {
        GTEST_SKIP() << "KTDX_DRAWINGS does not name the folder of " << GetParam().drawing;
    }
    const std::uint32_t seed = chooseSeed();
    std::cout << GetParam().drawing << ", seed " << seed << '\n';
    SCOPED_TRACE(seed);
    loadAll();
    run("open \"" + file + "\"");
    if (const std::string watched = GetParam().watched; !watched.empty()) {
        loadWatcher("Watcher.kmx");
        run("watch " + watched);
        run("copy @1 7,7");
        run("erase @last"); // while only the other one watches
    }
    run("parts " + std::string(GetParam().list) + " to " + inFolder("list.csv"));
    RandomEditor editor(drawing(), std::string(KTDX_SAMPLES) + "/channel.kicad_sch", seed);
    int done = 0;
    while (done < kCommands) {
        const std::string line = editor.nextLine();
        if (failure(line).empty()) {
            ++done;
            script_ += line + "\n";
            ASSERT_EQ(failure("parts check"), "") << "behind command " << done << ": " << keepScript();
            if (listsAllReferences() && done % 10 == 0) {
                ASSERT_EQ(writtenRows(), drawnRows()) << "behind command " << done << ": " << keepScript();
            }
        }
    }
    EXPECT_TRUE(host_.end().clean());
}

std::string nameOf(const testing::TestParamInfo<RandomCase>& info) {
    const std::string drawing = info.param.drawing;
    const std::string folder = drawing.substr(0, drawing.find_first_of("/."));
    return std::regex_replace(folder, std::regex("[^a-z0-9]"), "_") + "_" + std::to_string(info.index);
}

INSTANTIATE_TEST_SUITE_P(
    Of, RandomEdits,
    testing::Values(RandomCase{"sensor-node.kicad_sch", ""},
                    RandomCase{"sensor-node.kicad_sch", "as table 0,0"},
                    RandomCase{"sensor-node.kicad_sch", "by occurrence"},
                    RandomCase{"sensor-node.kicad_sch", "", "Passive:R"},
                    RandomCase{"sensor-node.kicad_sch", "by component where in_bom=yes dnp=no as table 0,0"},
                    RandomCase{"bp-irtoy/bp5-ir-toy-v3-rev3.kicad_sch", ""},
                    RandomCase{"pmod-r22/eurorack-pmod-pcb.kicad_sch", "by occurrence"},
                    RandomCase{"glasgow-c3/glasgow.kicad_sch", "by component where in_bom=yes dnp=no"},
                    RandomCase{"tt06-fpga/tt06-fpga-ICE40UP5k.kicad_sch",
                               "by component where dnp=no as table 0,0"}),
    nameOf);

} // namespace

} // namespace kthost
