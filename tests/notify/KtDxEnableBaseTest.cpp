#include "notify/KtDxEnableBase.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

TEST(EnableBase, IsOffAtConstruction) {
    const KtDxEnableBase object;
    EXPECT_FALSE(object.isEnabled());
}

TEST(EnableBase, SwitchesOnAndOffWithStatusOk) {
    KtDxEnableBase object;
    EXPECT_EQ(object.setEnabled(true), Orbx::eOk);
    EXPECT_TRUE(object.isEnabled());
    EXPECT_EQ(object.setEnabled(false), Orbx::eOk);
    EXPECT_FALSE(object.isEnabled());
}

TEST(EnableBase, EnabledTwiceAndDisabledOnceIsOff) {
    KtDxEnableBase object;
    std::ignore = object.setEnabled(true);
    std::ignore = object.setEnabled(true);
    std::ignore = object.setEnabled(false);
    EXPECT_FALSE(object.isEnabled());
}

} // namespace
