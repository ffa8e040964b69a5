#include "kthost/audit/Trace.h"
#include "kthost/console/ObjectNames.h"
#include "kthost/runtime/PathName.h"
#include "tests/legacy/TemplateBytes.h"
#include "tests/scenarios/ScenarioTest.h"

#include <gmock/gmock.h>

#include <KtDbAttribute.h>
#include <KtDbTable.h>

/// Text outside the basic plane on its way through everything that takes text. A wide character is four bytes
/// on some systems and two on others; what the tests want is the same on all of them, to the byte.
namespace kthost {

namespace {

using testing::EndsWith;
using testing::HasSubstr;

#define LAMP "\xF0\x9F\x92\xA1"
#define PLUG "\xF0\x9F\x94\x8C"
const std::wstring kLamp = L"\U0001F4A1";
const std::wstring kPlug = L"\U0001F50C";

class WideTextScenario : public ScenarioTest {
protected:
    void SetUp() override {
        loadAll();
        run("new plan");
        run("define " LAMP);
    }

    void TearDown() override { closeTrace(); }

    void insertLamp() { run("insert " LAMP " 1,1 Reference=" PLUG "1 " PLUG "=5\xE2\x84\xA6" LAMP); }
};

TEST_F(WideTextScenario, ComesBackFromAnAttribute) {
    insertLamp();
    const auto lamps = referencesByDesignator(drawing(), kPlug + L"1");
    ASSERT_EQ(lamps.size(), 1U);
    EXPECT_EQ(attributeText(lamps[0], kPlug), L"5\u2126" + kLamp);
}

TEST_F(WideTextScenario, ComesBackFromADefinitionsName) {
    EXPECT_NE(recordByName(drawing(), kLamp), KtDbObjectId());
    EXPECT_THAT(run("list blocks"), HasSubstr(LAMP));
}

TEST_F(WideTextScenario, ComesBackFromAListInAFile) {
    insertLamp();
    run("parts " LAMP " to \"" + inFolder("list.csv") + "\"");
    EXPECT_THAT(read("list.csv"), EndsWith("," PLUG "1,5\xE2\x84\xA6" LAMP "\r\n"));
}

TEST_F(WideTextScenario, ComesBackFromATableInTheDrawing) {
    insertLamp();
    run("parts " LAMP " as table 50,50");
    KtDbTable* table = nullptr;
    const KtDbObjectId id = referencesTo(recordByName(drawing(), L"*T1")).at(0);
    ASSERT_EQ(ktdbOpenObject(table, id, KtDb::kForRead), Orbx::eOk);
    EXPECT_EQ(std::wstring(table->cell(1, 0)), kLamp);
    EXPECT_EQ(std::wstring(table->cell(1, 3)), kPlug + L"1");
    EXPECT_EQ(table->close(), Orbx::eOk);
}

TEST_F(WideTextScenario, ComesBackFromATrace) {
    ASSERT_TRUE(openTrace(folder_ / "trace.jsonl"));
    run("new " LAMP);
    closeTrace();
    EXPECT_THAT(read("trace.jsonl"), HasSubstr("\"document\": \"" LAMP "\""));
}

TEST_F(WideTextScenario, ComesBackFromATemplate) {
    insertLamp();
    std::ofstream(folder_ / "lamp.blk", std::ios::binary)
        << TemplateBytes().header(1).newClass().body(u"\U0001F4A1", 1, 1).attribute(u"\U0001F50C", 1).bytes();
    run("parts from \"" + inFolder("lamp.blk") + "\" to \"" + inFolder("list.csv") + "\"");
    const std::string list = read("list.csv");
    EXPECT_THAT(list, testing::StartsWith("Block,Container,Handle," PLUG "\r\n" LAMP ","));
    EXPECT_THAT(list, EndsWith(",5\xE2\x84\xA6" LAMP "\r\n"));
}

TEST_F(WideTextScenario, NamesFilesThatAreFound) {
    insertLamp();
    run("parts " LAMP " to \"" + pathUtf8(folder_ / std::filesystem::path(u8"\U0001F4A1.csv")) + "\"");
    EXPECT_TRUE(std::filesystem::exists(folder_ / std::filesystem::path(u8"\U0001F4A1.csv")));
}

} // namespace

} // namespace kthost
