#include "kthost/audit/Audit.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kthost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class AuditOf : public testing::Test {
protected:
    void leave(const Leftover& leftover) {
        audit.addSource([leftover](std::vector<Leftover>& leftovers) { leftovers.push_back(leftover); });
    }

    AddressRange range() const {
        const auto begin = reinterpret_cast<std::uintptr_t>(&code_[0]);
        return {begin, begin + 2};
    }

    const void* inside() const { return &code_[1]; }

    const void* outside() const { return &code_[3]; }

    Audit audit;

private:
    char code_[4]{};
};

TEST_F(AuditOf, NothingIsClean) {
    EXPECT_TRUE(audit.afterUnload("A.kmx", range()).clean());
    EXPECT_TRUE(audit.atEnd().clean());
}

TEST_F(AuditOf, AModuleFindsWhatPointsIntoIt) {
    leave({"filter left", inside(), {}, false});
    EXPECT_THAT(audit.afterUnload("A.kmx", range()).findings,
                ElementsAre(StartsWith("after unloading A.kmx: filter left (0x")));
}

TEST_F(AuditOf, AModuleLeavesOutWhatPointsElsewhere) {
    leave({"filter left", outside(), {}, false});
    EXPECT_THAT(audit.afterUnload("A.kmx", range()).findings, IsEmpty());
}

TEST_F(AuditOf, AModuleFindsWhatItBrought) {
    leave({"service left", outside(), "A.kmx", false});
    EXPECT_THAT(audit.afterUnload("A.kmx", range()).findings, SizeIs(1));
}

TEST_F(AuditOf, AModuleLeavesOutWhatAnotherBrought) {
    leave({"service left", nullptr, "B.kmx", false});
    EXPECT_THAT(audit.afterUnload("A.kmx", range()).findings, IsEmpty());
}

TEST_F(AuditOf, AModuleFindsWhatAlwaysCounts) {
    leave({"left open", nullptr, {}, true});
    EXPECT_THAT(audit.afterUnload("A.kmx", range()).findings,
                ElementsAre("after unloading A.kmx: left open"));
}

TEST_F(AuditOf, TheEndFindsEverything) {
    leave({"filter left", outside(), {}, false});
    leave({"left open", nullptr, {}, true});
    EXPECT_THAT(audit.atEnd().findings,
                ElementsAre(StartsWith("at the end: filter left (0x"), "at the end: left open"));
}

TEST_F(AuditOf, ADocumentNamesIt) {
    leave({"left open", nullptr, {}, true});
    EXPECT_THAT(audit.afterClose("plan").findings, ElementsAre("after closing plan: left open"));
}

TEST_F(AuditOf, WhatAModuleBroughtNamesItWhereNoCodeDoes) {
    leave({"service left", nullptr, "B.kmx", false});
    EXPECT_THAT(audit.atEnd().findings, ElementsAre("at the end: service left (by B.kmx)"));
}

} // namespace
} // namespace kthost
