#include "kthost/console/ObjectNames.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/runtime/Faults.h"
#include "kthost/runtime/Utf8.h"
#include "tests/scenarios/ScenarioTest.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <string>

namespace kthost {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// A drawing with a dynamic block D, a resistor R1, and a capacitor C1 that is erased, with its definition's
/// neighbour E purged: what KtDxNotify does not hear when it begins to watch now, or when it comes up later.
class UnheardObjects : public ScenarioTest {
protected:
    void SetUp() override {
        loadAll();
        loadWatcher("Watcher.kmx");
        run("new plan");
        run("define R");
        run("define D");
        ASSERT_EQ(makeDynamic(drawing(), recordByName(drawing(), L"D")), Orbx::eOk);
        run("insert R 1,1 Reference=R1 Value=1k");
        run("define C");
        run("insert C 1,1 Reference=C1 Value=1n");
        capacitor_ = handleText(handleOf(referencesTo(recordByName(drawing(), L"C")).at(0)));
    }

    /// Places a representation of D that there was none of, and says what it is called.
    std::string newRepresentation(const std::string& unit) {
        run("insert D 5,5 unit " + unit + " Reference=U" + unit);
        const std::vector<KtDbObjectId> all = records(drawing(), false);
        return "\"" + toUtf8(recordName(all.back())) + "\"";
    }

    std::string capacitor_; // its handle
};

TEST_F(UnheardObjects, WhatIsPlacedInARepresentationThatCameUpLaterIsListed) {
    run("parts");
    newRepresentation("1"); // the first one of all is watched together with its definition
    const std::string later = newRepresentation("2");
    EXPECT_THAT(run("insert R 1,1 in " + later + " Reference=R2"), HasSubstr("1 added, 0 changed"));
    EXPECT_EQ(failure("parts check"), "");
}

TEST_F(UnheardObjects, WhatIsPlacedThereIsFollowedFromThenOn) {
    run("parts R");
    newRepresentation("1");
    run("insert R 1,1 in " + newRepresentation("2") + " Reference=R2 Value=2k");
    EXPECT_THAT(run("set R2 Value 3k"), HasSubstr("0 added, 1 changed"));
    EXPECT_THAT(run("undo 2"), HasSubstr("0 changed, 1 removed"));
}

TEST_F(UnheardObjects, ANestedPlacementThereCounts) {
    run("define Sheet");
    run("insert R 1,1 in Sheet Reference=R5");
    newRepresentation("1");
    run("parts R by occurrence");
    const std::string later = newRepresentation("2");
    EXPECT_THAT(run("insert Sheet 1,1 in " + later), HasSubstr("1 added, 0 changed"));
    EXPECT_THAT(run("undo"), HasSubstr("0 changed, 1 removed"));
}

TEST_F(UnheardObjects, AnotherClientThatWasFirstChangesNothingAboutThat) {
    run("watch R");
    newRepresentation("1");
    const std::string later = newRepresentation("2"); // unheard before the list begins, and from then on
    run("parts R");
    EXPECT_THAT(run("insert R 1,1 in " + later + " Reference=R2"), HasSubstr("1 added, 0 changed"));
}

TEST_F(UnheardObjects, OtherClientsAreToldToo) {
    run("parts R");
    run("watch R");
    newRepresentation("1");
    const std::string later = newRepresentation("2");
    EXPECT_THAT(run("insert R 1,1 in " + later + " Reference=R2"), HasSubstr("watcher called"));
}

TEST_F(UnheardObjects, AttributesOfARestoredReferenceAreFollowed) {
    run("erase " + capacitor_);
    run("parts");
    run("restore " + capacitor_);
    EXPECT_THAT(run("set C1 Value 2n"), EndsWith("2 rows, 0 added, 1 changed, 0 removed\n"));
}

TEST_F(UnheardObjects, AttributesRestoredUnderAnotherClientsWatchAreFollowed) {
    run("erase " + capacitor_);
    run("watch C");
    run("restore " + capacitor_);
    run("parts");
    EXPECT_THAT(run("set C1 Value 2n"), EndsWith("2 rows, 0 added, 1 changed, 0 removed\n"));
}

TEST_F(UnheardObjects, ADefinitionThatWasPurgedAndCameBackIsHeard) {
    run("parts");
    run("define Box");
    run("purge Box");
    run("parts stop"); // nothing is watched any more, and then
    run("parts R");    // everything but what is erased
    run("undo");
    EXPECT_THAT(run("insert R 1,1 in Box Reference=R7"), HasSubstr("1 added, 0 changed"));
}

TEST_F(UnheardObjects, ATouchThatChangesNothingListedIsPassedOver) {
    run("parts R");
    EXPECT_THAT(run("insert C 3,3 Reference=C2"), Not(HasSubstr("parts plan")));
}

TEST_F(UnheardObjects, AReferenceThatCouldNotBeListenedToIsReadWithAnyOther) {
    run("parts R");
    Faults& faults = Faults::instance();
    std::uint64_t listenings = 0;
    for (std::uint64_t k = 1; k == 1 || k <= listenings; ++k) { // each of them fails once
        const std::string fresh = "X" + std::to_string(k);
        faults.reset();
        faults.fail(HostCall::addReactor, k, Orbx::eNotOpenForWrite);
        run("insert R 2,2 Reference=" + fresh + " Value=1k");
        listenings = faults.calls(HostCall::addReactor);
        faults.reset();
        run(R"(together "set R1 Value 2k" "set )" + fresh + R"( Value 3k")");
        EXPECT_EQ(failure("parts check"), "") << k << " of " << listenings;
    }
}

/// Each call in its turn, while everything is read.
TEST_F(UnheardObjects, WhatCouldNotBeReadForAMomentIsReadAtTheNextEdit) {
    run("insert R 2,2 Reference=R2 Value=1k");
    run("insert D 3,3 unit 1 Reference=D1");
    run("xdata D1 KT_OCCURRENCES / D2 2");
    run("parts by occurrence");
    Faults& faults = Faults::instance();
    for (const HostCall call : {HostCall::openObject, HostCall::getName, HostCall::attributeIterator,
                                HostCall::getXData, HostCall::originalBlockTableRecord}) {
        std::uint64_t calls = 0;
        for (std::uint64_t k = 1; k == 1 || k <= calls; ++k) {
            faults.reset();
            faults.fail(call, k, Orbx::eOutOfRange);
            failure(R"(together "redefine R" "set R1 Value 2k")");
            calls = faults.calls(call);
            faults.reset();
            run("set R2 Value " + std::to_string(k));
            ASSERT_EQ(failure("parts check"), "") << "call " << static_cast<int>(call) << ", " << k;
        }
    }
}

TEST_F(UnheardObjects, NothingIsLeftBehind) {
    run("parts as table 9,9");
    run("insert R 1,1 in " + newRepresentation("2") + " Reference=R2");
    run("erase R2");
    EXPECT_EQ(run("unload PartsList.kmx"), "unloaded PartsList.kmx, nothing left behind\n");
    run("unload Watcher.kmx");
    EXPECT_TRUE(host_.end().clean());
}

} // namespace

} // namespace kthost
