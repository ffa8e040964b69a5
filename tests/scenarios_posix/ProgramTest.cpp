#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <sys/wait.h>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

std::string binary(const std::string& name) {
    return std::string(KTDX_BINARIES) + "/" + name;
}

/// The program itself, with its streams in files.
class KtHostProgram : public testing::Test {
protected:
    void SetUp() override {
        folder_ =
            std::filesystem::path(testing::TempDir()) /
            (std::string("ktdx-program-") + testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }

    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ / name) << text;
    }

    std::string read(const std::string& name) const {
        std::ifstream stream(folder_ / name);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    /// Exit status.
    int run(const std::string& arguments) const {
        const std::string command = "'" + binary("kthost") + "' " + arguments + " >'" + path("out") +
                                    "' 2>'" + path("err") + "' <'" + path("in") + "'";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    int runScript(const std::string& script, const std::string& arguments = "") const {
        write("in", "");
        write("test.script", script);
        return run("--script '" + path("test.script") + "' " + arguments);
    }

    std::filesystem::path folder_;
};

TEST_F(KtHostProgram, EndsWith0WhenAllIsDoneAndSaysThatTheAuditIsClean) {
    EXPECT_EQ(runScript("new plan\ndefine R\n"), 0);
    EXPECT_THAT(read("out"), EndsWith("> define R\ndefined R\naudit: clean\n"));
}

TEST_F(KtHostProgram, EndsWith1AtALineThatCannotBeDoneAndNamesIt) {
    EXPECT_EQ(runScript("new plan\nerase R1\ndefine R\n"), 1);
    EXPECT_EQ(read("err"), path("test.script") + ":2: there is no reference 'R1'\n");
    EXPECT_THAT(read("out"), Not(HasSubstr("defined R")));
}

TEST_F(KtHostProgram, KeepsGoingWhenToldToAndStillEndsWith1) {
    EXPECT_EQ(runScript("new plan\nerase R1\ndefine R\n", "--keep-going"), 1);
    EXPECT_THAT(read("out"), HasSubstr("defined R"));
}

TEST_F(KtHostProgram, EndsWith2WhenItIsNotUsedRight) {
    EXPECT_EQ(runScript("", "--frobnicate"), 2);
    write("in", "");
    EXPECT_EQ(run("--script '" + path("nowhere.script") + "'"), 2);
}

TEST_F(KtHostProgram, EndsWith3WhenTheAuditFindsSomething) {
    EXPECT_EQ(runScript("new plan\ndefine R\nwatch R\nunload CarelessWatcher.kmx\n",
                        "--load '" + binary("KtDxNotify.kmx") + "' --load '" +
                            std::string(KTDX_SCENARIO_MODULES) + "/CarelessWatcher.kmx'"),
              3);
    EXPECT_THAT(read("out"), HasSubstr("audit: after unloading CarelessWatcher.kmx"));
}

TEST_F(KtHostProgram, TakesWhatFollowsALoadedModuleForADrawing) {
    write("in", "");
    EXPECT_EQ(run("--load '" + binary("KtDxNotify.kmx") + "' '" KTDX_SAMPLES "/sensor-node.kicad_sch'"), 0);
    EXPECT_THAT(read("out"), HasSubstr("opened sensor-node"));
}

TEST_F(KtHostProgram, ReadsStandardInputWithoutAScript) {
    write("in", "new plan\nquit\nfrobnicate\n");
    EXPECT_EQ(run(""), 0);
    EXPECT_EQ(read("out"), "opened plan, empty\naudit: clean\n");
}

TEST_F(KtHostProgram, ReadsStandardInputAsAScript) {
    write("in", "new plan\nfrobnicate\n");
    EXPECT_EQ(run("--script -"), 1);
    EXPECT_THAT(read("err"), HasSubstr("standard input:2: there is no command 'frobnicate'"));
}

TEST_F(KtHostProgram, OpensTheDrawingsThatAreNamed) {
    EXPECT_EQ(runScript("list documents\n", std::string("'") + KTDX_SAMPLES + "/sensor-node.kicad_sch' '" +
                                                KTDX_SAMPLES + "/channel.kicad_sch'"),
              0);
    EXPECT_THAT(read("out"), HasSubstr("2 documents"));
}

TEST_F(KtHostProgram, ADrawingThatCannotBeOpenedEndsWith1) {
    EXPECT_EQ(runScript("list documents\n", "nowhere.kicad_sch"), 1);
    EXPECT_THAT(read("err"), HasSubstr("nowhere.kicad_sch"));
}

TEST_F(KtHostProgram, AModuleThatCannotBeLoadedEndsWith1) {
    EXPECT_EQ(runScript("new plan\n", "--load nowhere.kmx"), 1);
    EXPECT_THAT(read("out"), Not(HasSubstr("opened plan")));
}

TEST_F(KtHostProgram, TakesPathsOutsideAscii) {
    write("Plan Ω.script", "new plan\n");
    write("in", "");
    EXPECT_EQ(run("--script '" + path("Plan Ω.script") + "' --trace '" + path("Spur µ.jsonl") + "'"), 0);
    EXPECT_THAT(read("Spur µ.jsonl"), HasSubstr("\"event\""));
}

TEST_F(KtHostProgram, ShowsItsUsageAndItsVersion) {
    write("in", "");
    EXPECT_EQ(run("--help"), 0);
    EXPECT_THAT(read("out"), HasSubstr("--keep-going"));
    EXPECT_EQ(run("--version"), 0);
    EXPECT_THAT(read("out"), HasSubstr("kthost 1."));
}

TEST_F(KtHostProgram, RunsTheDemoOfTheSample) {
    std::filesystem::copy_file(std::string(KTDX_SAMPLES) + "/parts.blk", folder_ / "parts.blk");
    write("in", "");
    const std::string in = "cd '" + folder_.string() + "' && ";
    const std::string command = in + "'" + binary("kthost") + "' --load '" + binary("KtDxNotify.kmx") +
                                "' --load '" + binary("PartsList.kmx") + "' --script '" + KTDX_SAMPLES +
                                "/demo.script' '" + KTDX_SAMPLES + "/sensor-node.kicad_sch' >out 2>err";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 0) << read("err");
    EXPECT_THAT(read("out"), EndsWith("audit: clean\n"));
}

TEST_F(KtHostProgram, RunsTheDemoOfAnyDrawing) {
    write("in", "");
    const std::string in = "cd '" + folder_.string() + "' && ";
    const std::string command = in + "'" + binary("kthost") + "' --load '" + binary("KtDxNotify.kmx") +
                                "' --load '" + binary("PartsList.kmx") + "' --script '" + KTDX_SAMPLES +
                                "/any-drawing.script' '" + KTDX_SAMPLES + "/channel.kicad_sch' >out 2>err";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 0) << read("err");
    EXPECT_THAT(read("out"), EndsWith("audit: clean\n"));
}

} // namespace
