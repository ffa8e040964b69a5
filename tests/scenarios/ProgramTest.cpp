#include "tests/scenarios/ProgramFixture.h"

#include <gmock/gmock.h>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class KtHostProgram : public ProgramFixture {
protected:
    /// A script of the samples', run where its template lies and its files may be written.
    int runSample(const std::string& script, const std::string& drawing) {
        copyOfSample("parts.blk");
        Words arguments = allModules();
        arguments.insert(arguments.end(), {"--script", sample(script), sample(drawing)});
        return run(std::move(arguments));
    }
};

TEST_F(KtHostProgram, EndsWith0WhenAllIsDoneAndSaysThatTheAuditIsClean) {
    EXPECT_EQ(runScript("new plan\ndefine R\n"), 0);
    EXPECT_THAT(outcome_.output, EndsWith("> define R\ndefined R\naudit: clean\n"));
}

TEST_F(KtHostProgram, EndsWith1AtALineThatCannotBeDoneAndNamesIt) {
    EXPECT_EQ(runScript("new plan\nerase R1\ndefine R\n"), 1);
    EXPECT_EQ(outcome_.errors, scriptName() + ":2: there is no reference 'R1'\n");
    EXPECT_THAT(outcome_.output, Not(HasSubstr("defined R")));
}

TEST_F(KtHostProgram, KeepsGoingWhenToldToAndStillEndsWith1) {
    EXPECT_EQ(runScript("new plan\nerase R1\ndefine R\n", {"--keep-going"}), 1);
    EXPECT_THAT(outcome_.output, HasSubstr("defined R"));
}

TEST_F(KtHostProgram, EndsWith2WhenItIsNotUsedRight) {
    EXPECT_EQ(runScript("", {"--frobnicate"}), 2);
    EXPECT_EQ(run({"--script", utf8(folder_ / "nowhere.script")}), 2);
}

TEST_F(KtHostProgram, EndsWith3WhenTheAuditFindsSomething) {
    EXPECT_EQ(runScript("new plan\ndefine R\nwatch R\nunload CarelessWatcher.kmx\n",
                        {"--load", binary("KtDxNotify.kmx"), "--load",
                         std::string(KTDX_SCENARIO_MODULES) + "/CarelessWatcher.kmx"}),
              3);
    EXPECT_THAT(outcome_.output, HasSubstr("audit: after unloading CarelessWatcher.kmx"));
}

TEST_F(KtHostProgram, TakesWhatFollowsALoadedModuleForADrawing) {
    EXPECT_EQ(run({"--load", binary("KtDxNotify.kmx"), sample("sensor-node.kicad_sch")}), 0);
    EXPECT_THAT(outcome_.output, HasSubstr("opened sensor-node"));
}

TEST_F(KtHostProgram, ReadsStandardInputWithoutAScript) {
    EXPECT_EQ(run({}, "new plan\nquit\nfrobnicate\n"), 0);
    EXPECT_EQ(outcome_.output, "opened plan, empty\naudit: clean\n");
}

TEST_F(KtHostProgram, ReadsStandardInputAsAScript) {
    EXPECT_EQ(run({"--script", "-"}, "new plan\nfrobnicate\n"), 1);
    EXPECT_THAT(outcome_.errors, HasSubstr("standard input:2: there is no command 'frobnicate'"));
}

TEST_F(KtHostProgram, OpensTheDrawingsThatAreNamed) {
    EXPECT_EQ(runScript("list documents\n", {sample("sensor-node.kicad_sch"), sample("channel.kicad_sch")}),
              0);
    EXPECT_THAT(outcome_.output, HasSubstr("2 documents"));
}

TEST_F(KtHostProgram, ADrawingThatCannotBeOpenedEndsWith1) {
    EXPECT_EQ(runScript("list documents\n", {"nowhere.kicad_sch"}), 1);
    EXPECT_THAT(outcome_.errors, HasSubstr("nowhere.kicad_sch"));
}

TEST_F(KtHostProgram, AModuleThatCannotBeLoadedEndsWith1) {
    EXPECT_EQ(runScript("new plan\n", {"--load", "nowhere.kmx"}), 1);
    EXPECT_THAT(outcome_.output, Not(HasSubstr("opened plan")));
}

TEST_F(KtHostProgram, TakesPathsOutsideAsciiWhateverTheLocale) {
    write(folder_ / u8"Plan Ω.script", "new plan\n");
    EXPECT_EQ(runProgram("kthost", {.arguments = {"--script", "Plan Ω.script", "--trace", "Spur µ.jsonl"},
                                    .environment = {{"LC_ALL", "C"}}}),
              0)
        << outcome_.errors;
    EXPECT_THAT(read(folder_ / u8"Spur µ.jsonl"), HasSubstr("\"event\""));
}

TEST_F(KtHostProgram, ShowsItsUsageAndItsVersion) {
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_THAT(outcome_.output, HasSubstr("--keep-going"));
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_THAT(outcome_.output, HasSubstr("kthost 1."));
}

TEST_F(KtHostProgram, TakesWordsWithSpacesQuotesAndBackslashes) {
    EXPECT_EQ(run({"--script", R"(no "such\" file\)"}), 2);
    EXPECT_THAT(outcome_.errors, HasSubstr(R"(the script 'no "such\" file\' cannot be read)"));
}

TEST_F(KtHostProgram, RunsTheDemoOfTheSample) {
    EXPECT_EQ(runSample("demo.script", "sensor-node.kicad_sch"), 0) << outcome_.errors;
    EXPECT_THAT(outcome_.output, EndsWith("audit: clean\n"));
}

TEST_F(KtHostProgram, RunsTheDemoOfAnyDrawing) {
    EXPECT_EQ(runSample("any-drawing.script", "channel.kicad_sch"), 0) << outcome_.errors;
    EXPECT_THAT(outcome_.output, EndsWith("audit: clean\n"));
}

} // namespace
