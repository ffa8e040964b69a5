#include "tests/scenarios/ProgramFixture.h"
#include "tests/support/AwkwardFolders.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// All that the program opens, by a path that is too long for some systems, and by one that few encodings
/// have.
class ProgramPaths : public ProgramFixture, public testing::WithParamInterface<std::filesystem::path> {
protected:
    std::filesystem::path in(const std::filesystem::path& name) const { return awkward_.path() / name; }

    /// Its copy in the folder that is tried out.
    std::filesystem::path copied(const std::filesystem::path& file) const {
        write(in(file.filename()), read(file));
        return in(file.filename());
    }

    /// With the sample's drawing and all modules.
    int runParts(const std::string& line) {
        Words arguments = allModules();
        arguments.push_back(sample("sensor-node.kicad_sch"));
        return runScript(line + "\nparts check\n", std::move(arguments));
    }

    static std::string quoted(const std::filesystem::path& path) { return "\"" + utf8(path) + "\""; }

    awkward::Folder awkward_{folder_.path(), GetParam()};
};

TEST_P(ProgramPaths, OfScripts) {
    write(in("a.script"), "new plan\nerase R1\n");
    EXPECT_EQ(run({"--script", utf8(in("a.script"))}), 1);
    EXPECT_EQ(outcome_.errors, utf8(in("a.script")) + ":2: there is no reference 'R1'\n");
}

TEST_P(ProgramPaths, OfDrawingsAndTheirSheets) {
    copied(sample("channel.kicad_sch"));
    EXPECT_EQ(run({utf8(copied(sample("sensor-node.kicad_sch")))}), 0) << outcome_.errors;
    EXPECT_THAT(outcome_.output, HasSubstr("opened sensor-node"));
}

TEST_P(ProgramPaths, OfTemplates) {
    EXPECT_EQ(runParts("parts from " + quoted(copied(sample("parts.blk"))) + " to list.csv"), 0)
        << outcome_.errors;
    ASSERT_EQ(runParts("parts from " + copyOfSample("parts.blk") + " to plain.csv"), 0) << outcome_.errors;
    EXPECT_EQ(read(folder_ / "list.csv"), read(folder_ / "plain.csv"));
}

TEST_P(ProgramPaths, OfTables) {
    EXPECT_EQ(runParts("parts by component to " + quoted(in("list.csv"))), 0) << outcome_.errors;
    ASSERT_EQ(runParts("parts by component to plain.csv"), 0) << outcome_.errors;
    EXPECT_EQ(read(in("list.csv")), read(folder_ / "plain.csv"));
}

TEST_P(ProgramPaths, OfTraces) {
    EXPECT_EQ(run({"--trace", utf8(in("a.jsonl"))}, "new plan\n"), 0) << outcome_.errors;
    EXPECT_THAT(read(in("a.jsonl")), StartsWith("{\"n\": 1"));
}

TEST_P(ProgramPaths, OfModulesAndTheirResources) {
    copied(binary("KtDxNotifyRes.dll"));
    EXPECT_EQ(run({"--load", utf8(copied(binary("KtDxNotify.kmx")))}), 0) << outcome_.errors;
    EXPECT_THAT(outcome_.output, HasSubstr("loaded KtDxNotify.kmx"));
}

INSTANTIATE_TEST_SUITE_P(Of, ProgramPaths, awkward::folders(), awkward::nameOfFolder);

} // namespace
