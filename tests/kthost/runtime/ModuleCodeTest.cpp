#include "kthost/runtime/ModuleCode.h"

#include <gtest/gtest.h>

namespace kthost {
namespace {

TEST(ModuleCode, RefusesNothingWhileNoneRuns) {
    EXPECT_TRUE(refuseWhileModuleCodeRuns("plan cannot be closed"));
}

TEST(ModuleCode, NamesTheInnermostThatRuns) {
    const ModuleCodeScope outer(ModuleCodeKind::filter, "A.kmx");
    const ModuleCodeScope inner(ModuleCodeKind::command, "set");
    EXPECT_EQ(refuseWhileModuleCodeRuns("plan cannot be closed").reason,
              "plan cannot be closed while the command set is running");
}

TEST(ModuleCode, NamesTheOuterOnceTheInnerHasEnded) {
    const ModuleCodeScope outer(ModuleCodeKind::filter, "A.kmx");
    { const ModuleCodeScope inner(ModuleCodeKind::command, "set"); }
    EXPECT_EQ(refuseWhileModuleCodeRuns("plan cannot be closed").reason,
              "plan cannot be closed while a message filter of A.kmx is running");
}

TEST(ModuleCode, HasWordsForEveryKind) {
    EXPECT_EQ(ModuleCodeScope(ModuleCodeKind::entryPoint, "A.kmx").text(), "the entry point of A.kmx");
    EXPECT_EQ(ModuleCodeScope(ModuleCodeKind::callback, "A.kmx").text(), "a callback of A.kmx");
    EXPECT_EQ(ModuleCodeScope(ModuleCodeKind::notification, "documentCreated").text(),
              "the notification documentCreated");
}

} // namespace
} // namespace kthost
