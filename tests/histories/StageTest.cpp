#include "tests/histories/Stage.h"

#include "app/KtDxDocument.h"
#include "blocks/KtDxBlocks.h"
#include "kthost/database/DatabaseQueries.h"
#include "tests/histories/Shrink.h"
#include "tests/scenario_modules/puppets/PuppetFunctions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace histories {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class StageTest : public testing::Test {
protected:
    void run(const History& lines) {
        for (const std::string& line : lines) {
            EXPECT_THAT(stage_.run(line), IsEmpty()) << line;
        }
    }

    kthost::Database& drawing() { return stage_.session().drawing(); }

    Stage stage_;
};

TEST_F(StageTest, TakesLinesThatCannotBeDone) {
    run({"load KtDxNotify.kmx", "unload PartsList.kmx", "new plan", "erase R1", "frobnicate"});
    EXPECT_THAT(stage_.refusal(), HasSubstr("frobnicate"));
    EXPECT_THAT(stage_.end(), IsEmpty());
}

TEST_F(StageTest, TakesDocumentsWithoutADrawing) {
    run({"load KtDxNotify.kmx", "load Puppets.kmx", "new plan", "new blank without drawing",
         "puppet at plan 1 attach *", "puppet update"});
    EXPECT_THAT(stage_.end(), IsEmpty());
}

TEST_F(StageTest, TakesClientsThatThrow) {
    run({"load KtDxNotify.kmx", "load Puppets.kmx", "new plan", "define R", "puppet 1 attach R",
         "puppet 2 attach R", "puppet 1 when called throw", "insert R 1,1"});
    EXPECT_EQ(stage_.refusal(), "thrown by a puppet");
    run({"puppet 1 when called nothing", "insert R 2,2"});
    EXPECT_THAT(stage_.refusal(), IsEmpty());
    EXPECT_THAT(stage_.end(), IsEmpty());
}

TEST_F(StageTest, NoListIsComparedBehindACheckThatAClientHasBrokenOff) {
    run({"load KtDxNotify.kmx", "load PartsList.kmx", "load Puppets.kmx", "new plan", "define R", "parts",
         "puppet 1 every 0", "puppet 1 when called throw"});
    const std::size_t before = stage_.tally().listChecks;
    run({"insert R 1,1"});
    EXPECT_EQ(stage_.tally().listChecks, before);
    run({"puppet 1 when called nothing"});
    EXPECT_EQ(stage_.tally().listChecks, before + 1);
}

TEST_F(StageTest, NoListIsComparedThatNobodyIsCalledFor) {
    run({"load KtDxNotify.kmx", "load PartsList.kmx", "new plan", "define R",
         "insert R 1,1 Reference=R1 Value=1k", "parts"});
    const std::size_t before = stage_.tally().listChecks;
    run({"unload KtDxNotify.kmx", "set R1 Value 2k", "load KtDxNotify.kmx", "set R1 Value 3k"});
    EXPECT_EQ(stage_.tally().listChecks, before);
}

TEST_F(StageTest, FindsAModuleThatDiffersFromTheModel) {
    run({"load KtDxNotify.kmx", "load Puppets.kmx", "new plan", "define R", "puppet 1 attach R"});
    KtApDocument* plan = stage_.session().host().documents().currentDocument();
    const KtArray<KtDbObjectId> ids{kthost::recordByName(drawing(), L"R")};
    KtDxBlocks& blocks = *gApplication->getData(plan, false)->blocks();
    ASSERT_EQ(blocks.attachBlockReferenceMonitor(puppets::functionOf(9), ids), Orbx::eOk); // past the exports
    EXPECT_THAT(stage_.run("tick 1"), IsEmpty()) << "no idle check";
    EXPECT_THAT(stage_.run("define C"), StartsWith("model: the module differs from it:\n"));
}

TEST_F(StageTest, FindsWhatIsLeftBehind) {
    run({"load KtDxNotify.kmx", "new plan"});
    KtDbObject* opened = nullptr;
    ASSERT_EQ(ktdbOpenObject(opened, drawing().blockTableId(), KtDbObject::desc(), KtDb::kForRead),
              Orbx::eOk);
    EXPECT_THAT(stage_.end(), StartsWith("end: something is left behind:\n"));
}

TEST_F(StageTest, NoListIsComparedWhileTheHostIsBusy) {
    run({"load KtDxNotify.kmx", "load PartsList.kmx", "new plan", "parts"});
    const std::size_t before = stage_.tally().listChecks;
    run({"typing on", "define R", "typing off", "dialog on", "define C", "dialog off"});
    EXPECT_EQ(stage_.tally().listChecks, before);
    run({"define D"});
    EXPECT_EQ(stage_.tally().listChecks, before + 1);
}

TEST_F(StageTest, NoListIsComparedWhileObjectsAreHeld) {
    run({"load KtDxNotify.kmx", "load PartsList.kmx", "new plan", "define R", "insert R 1,1", "parts"});
    const std::size_t before = stage_.tally().listChecks;
    run({"hold write @last", "define C", "release"});
    EXPECT_EQ(stage_.tally().listChecks, before);
}

TEST_F(StageTest, ListsAreComparedAtTheFirstIdleCheckThatNothingIsHeldAt) {
    run({"load KtDxNotify.kmx", "load PartsList.kmx", "new plan", "define R", "insert R 1,1", "parts",
         "hold write @last", "define C", "release"});
    const std::size_t before = stage_.tally().listChecks;
    run({"define D"});
    EXPECT_EQ(stage_.tally().listChecks, before + 1);
}

} // namespace

} // namespace histories
