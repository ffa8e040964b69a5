#include "kthost/console/ScriptRunner.h"
#include "tests/kthost/console/ConsoleFixture.h"

namespace kthost {

namespace {

class ScriptRunner : public ConsoleTest {
protected:
    ScriptResult runAll(const std::string& script, ScriptOptions options = {}) {
        options.name = "test.script";
        std::istringstream lines(script);
        return runScript(console_, lines, out_, err_, options);
    }

    std::ostringstream err_;
};

TEST_F(ScriptRunner, RunsEveryLine) {
    EXPECT_EQ(runAll("define A\ndefine B\n"), ScriptResult::done);
    EXPECT_EQ(out_.str(), "defined A\ndefined B\n");
}

TEST_F(ScriptRunner, StopsAtALineThatCannotBeDoneAndNamesIt) {
    EXPECT_EQ(runAll("define A\n\ndefine A\ndefine B\n"), ScriptResult::failed);
    EXPECT_EQ(err_.str(), "test.script:3: 'A' cannot be defined: the name is taken\n");
    EXPECT_TRUE(recordByName(drawing(), L"B").isNull());
}

TEST_F(ScriptRunner, GoesOnWhenToldTo) {
    EXPECT_EQ(runAll("define R\ndefine B\n", {.name = "", .keepGoing = true}), ScriptResult::failed);
    EXPECT_FALSE(recordByName(drawing(), L"B").isNull());
}

TEST_F(ScriptRunner, EndsAtQuit) {
    EXPECT_EQ(runAll("quit\ndefine A\n"), ScriptResult::done);
    EXPECT_TRUE(recordByName(drawing(), L"A").isNull());
}

TEST_F(ScriptRunner, EchoesLinesThatHoldACommand) {
    runAll("# comment\n\n  define A\r\n", {.name = "", .echo = true});
    EXPECT_EQ(out_.str(), ">   define A\ndefined A\n");
}

TEST_F(ScriptRunner, PromptsAndGoesOnBehindAMistake) {
    EXPECT_EQ(runAll("define R\nquit\n", {.name = "", .prompt = true}), ScriptResult::failed);
    EXPECT_EQ(out_.str(), "kthost> kthost> ");
}

} // namespace

} // namespace kthost
