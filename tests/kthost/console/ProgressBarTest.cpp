#include "kthost/console/ProgressBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace kthost {

namespace {

using testing::EndsWith;

using std::chrono::milliseconds;

class ProgressBarTest : public testing::Test {
protected:
    ProgressBar::Time now_{};
    std::ostringstream terminal_;
    ProgressBar bar_{terminal_, [this] { return now_; }};
};

TEST_F(ProgressBarTest, ShowsNothingInTheFirstSecond) {
    bar_.bytesRead(10, 100);
    now_ += milliseconds(1000);
    bar_.bytesRead(20, 100);
    EXPECT_EQ(terminal_.str(), "");
}

TEST_F(ProgressBarTest, ShowsHowFarItIsAfterwards) {
    bar_.bytesRead(10, 100);
    now_ += milliseconds(1001);
    bar_.bytesRead(50, 100);
    EXPECT_THAT(terminal_.str(), EndsWith("[" + std::string(20, '=') + std::string(20, ' ') + "]"));
}

TEST_F(ProgressBarTest, GoesAwayAtTheEnd) {
    bar_.bytesRead(10, 100);
    now_ += milliseconds(1001);
    bar_.bytesRead(50, 100);
    bar_.bytesRead(100, 100);
    EXPECT_THAT(terminal_.str(), EndsWith(" \r"));
}

TEST_F(ProgressBarTest, CountsEachDrawingsTimeByItself) {
    bar_.bytesRead(10, 100);
    bar_.bytesRead(100, 100);
    now_ += milliseconds(5000);
    bar_.bytesRead(10, 100);
    bar_.bytesRead(50, 100);
    EXPECT_EQ(terminal_.str(), "");
}

} // namespace

} // namespace kthost
