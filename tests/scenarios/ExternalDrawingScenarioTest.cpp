#include "tests/scenarios/ScenarioTest.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace kthost {

namespace {

using testing::EndsWith;
using testing::HasSubstr;

/// A drawing with a list of everything, and a schematic that can be attached to it.
class ExternalDrawing : public ScenarioTest {
protected:
    void SetUp() override {
        loadAll();
        std::filesystem::copy_file(std::string(KTDX_SAMPLES) + "/channel.kicad_sch",
                                   folder_ / "channel.kicad_sch");
        run("new plan");
        run("define R");
        run("insert R 1,1 Reference=R1 Value=1k");
        run("parts to " + inFolder("list.csv"));
    }

    std::string attach(const std::string& name) {
        return run("attach \"" + inFolder("channel.kicad_sch") + "\" as " + name);
    }

    std::size_t referencesOfAttached() {
        std::size_t count = 0;
        for (const KtDbObjectId record : records(drawing(), false)) {
            const bool cameWithIt = recordName(record).find(L'|') != std::wstring_view::npos;
            count += cameWithIt ? referencesTo(record).size() : 0;
        }
        return count;
    }

    /// The attached schematic as its author leaves it: one text put in the place of another.
    void rewrite(const std::string& from, const std::string& to) {
        std::string text = read("channel.kicad_sch");
        const std::size_t place = text.find(from);
        ASSERT_NE(place, std::string::npos);
        std::ofstream(folder_ / "channel.kicad_sch", std::ios::binary)
            << text.replace(place, from.size(), to);
    }

    void expectFollowed() { EXPECT_EQ(failure("parts check"), ""); }
};

TEST_F(ExternalDrawing, AttachedBringsItsReferencesIntoTheList) {
    const std::string said = attach("CH");
    ASSERT_GT(referencesOfAttached(), 0U);
    EXPECT_THAT(said, EndsWith("parts plan: " + std::to_string(1 + referencesOfAttached()) + " rows, " +
                               std::to_string(referencesOfAttached()) + " added, 0 changed, 0 removed\n"));
    expectFollowed();
}

TEST_F(ExternalDrawing, ItsReferencesLieInTheRecordThatStandsForIt) {
    attach("CH");
    EXPECT_THAT(read("list.csv"), HasSubstr(",CH,"));
}

TEST_F(ExternalDrawing, PlacedItIsARowOfItsOwn) {
    attach("CH");
    EXPECT_THAT(run("insert CH 40,40"), HasSubstr("1 added, 0 changed"));
    expectFollowed();
}

TEST_F(ExternalDrawing, PlacedTwiceItsPartsOccurTwice) {
    attach("CH");
    run("parts by occurrence to " + inFolder("list.csv"));
    const auto listed = [this] {
        const std::string csv = read("list.csv");
        return static_cast<std::size_t>(std::count(csv.begin(), csv.end(), '\n')) - 1;
    };
    const std::size_t without = listed();
    run("insert CH 40,40");
    const std::size_t once = listed();
    run("insert CH 80,40");
    EXPECT_EQ(listed() - once, once - without);
    EXPECT_EQ(once - without, referencesOfAttached() + 1);
    expectFollowed();
}

TEST_F(ExternalDrawing, DetachedItTakesItsReferencesWithIt) {
    attach("CH");
    run("insert CH 40,40");
    EXPECT_THAT(run("detach CH"), HasSubstr("parts plan: 1 rows, 0 added, 0 changed, "));
    EXPECT_TRUE(recordByName(drawing(), L"CH").isNull());
    expectFollowed();
}

TEST_F(ExternalDrawing, ReloadedItShowsWhatItsAuthorHasChanged) {
    attach("CH");
    rewrite("RC0603JR-070RL", "ANOTHER-NUMBER");
    EXPECT_THAT(run("reload CH"), HasSubstr("parts plan: "));
    EXPECT_THAT(read("list.csv"), HasSubstr("ANOTHER-NUMBER"));
    expectFollowed();
}

TEST_F(ExternalDrawing, ReloadOfAFileThatHasBecomeUnreadableChangesNothing) {
    attach("CH");
    const std::string before = read("list.csv");
    std::ofstream(folder_ / "channel.kicad_sch") << "(kicad_sch";
    EXPECT_THAT(failure("reload CH"), HasSubstr("channel.kicad_sch:1:"));
    EXPECT_EQ(read("list.csv"), before);
    expectFollowed();
}

TEST_F(ExternalDrawing, AnotherCanBeReadInItsPlaceAndUndoBringsTheFirstBack) {
    std::filesystem::copy_file(inFolder("channel.kicad_sch"), inFolder("other.kicad_sch"));
    attach("CH");
    rewrite("MCP6002", "TL072");
    EXPECT_NE(failure("reload CH from nowhere.kicad_sch"), "");
    run("reload CH from \"" + inFolder("other.kicad_sch") + "\"");
    EXPECT_THAT(read("list.csv"), HasSubstr("MCP6002"));
    expectFollowed();
    std::filesystem::remove(inFolder("channel.kicad_sch"));
    EXPECT_EQ(failure("reload CH"), ""); // it is the other one from then on
    run("undo 2");
    EXPECT_NE(failure("reload CH"), "");
    expectFollowed();
}

TEST_F(ExternalDrawing, AttachUnderANameThatIsTakenIsRefused) {
    EXPECT_EQ(failure("attach \"" + inFolder("channel.kicad_sch") + "\" as R"),
              "'R' cannot be attached: the name is taken");
    EXPECT_THAT(failure("attach nowhere.kicad_sch as CH"), HasSubstr("nowhere.kicad_sch"));
    EXPECT_TRUE(recordByName(drawing(), L"CH").isNull());
}

TEST_F(ExternalDrawing, WhatIsNoExternalDrawingIsNeitherDetachedNorReloaded) {
    EXPECT_THAT(failure("detach R"), HasSubstr("'R' cannot be detached"));
    EXPECT_THAT(failure("reload R"), HasSubstr("'R' cannot be reloaded"));
    EXPECT_THAT(failure("detach CH"), HasSubstr("CH"));
}

TEST_F(ExternalDrawing, WhatLiesInItCannotBeEdited) {
    attach("CH");
    EXPECT_NE(failure("insert R 1,1 in CH"), "");
    expectFollowed();
}

TEST_F(ExternalDrawing, UndoneToTheBottomAndRedoneAllIsAsItWas) {
    run("parts stop");
    run("undo 2"); // the fixture's: what is below is the empty drawing
    run("parts to " + inFolder("list.csv"));
    const std::wstring bottom = dumpDatabase(drawing());
    run("redo 2");
    attach("CH");
    run("insert CH 40,40");
    run("reload CH");
    run("detach CH");
    attach("CH");
    const std::wstring top = dumpDatabase(drawing());
    run("undo 7");
    EXPECT_EQ(dumpDatabase(drawing()), bottom);
    EXPECT_EQ(failure("undo"), "0 steps can be undone");
    expectFollowed();
    run("redo 7");
    EXPECT_EQ(dumpDatabase(drawing()), top);
    EXPECT_EQ(failure("redo"), "0 steps can be redone");
    expectFollowed();
}

TEST_F(ExternalDrawing, EveryStepOfUndoAndRedoIsFollowed) {
    attach("CH");
    run("insert CH 40,40");
    run("reload CH");
    run("detach CH");
    for (const char* step : {"undo", "undo", "undo", "undo", "redo", "redo", "redo", "redo"}) {
        run(step);
        EXPECT_EQ(failure("parts check"), "") << step;
    }
}

TEST_F(ExternalDrawing, NothingIsLeftBehind) {
    attach("CH");
    run("insert CH 40,40");
    run("reload CH");
    EXPECT_EQ(run("unload PartsList.kmx"), "unloaded PartsList.kmx, nothing left behind\n");
    EXPECT_TRUE(host_.end().clean());
}

} // namespace

} // namespace kthost
