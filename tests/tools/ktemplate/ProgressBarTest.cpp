#include "tools/ktemplate/ProgressBar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>

namespace {

using namespace std::chrono_literals;
using ktemplate::ProgressBar;

/// A bar that is drawn into a string, and whose time goes on when it is told to.
class BarTest : public testing::Test {
protected:
    std::string drawnAfter(ProgressBar::Clock::duration time, std::uint64_t done, std::uint64_t total) {
        now_ += time;
        out_.str("");
        bar_.update(done, total);
        return out_.str();
    }

    ProgressBar::Clock::time_point now_{};
    std::ostringstream out_;
    ProgressBar bar_{out_, true, [this] { return now_; }};
};

TEST_F(BarTest, IsNotDrawnInTheFirstSecond) {
    EXPECT_EQ(drawnAfter(999ms, 1, 2), "");
}

TEST_F(BarTest, IsDrawnAfterASecond) {
    EXPECT_EQ(drawnAfter(1s, 1, 2), "\r[" + std::string(20, '#') + std::string(20, ' ') + "]  50 %");
}

TEST_F(BarTest, IsFullInTheEnd) {
    EXPECT_EQ(drawnAfter(1s, 3, 2), "\r[" + std::string(40, '#') + "] 100 %");
}

TEST_F(BarTest, IsDrawnTenTimesASecondAtMost) {
    drawnAfter(1s, 1, 2);
    EXPECT_EQ(drawnAfter(99ms, 2, 2), "");
    EXPECT_NE(drawnAfter(1ms, 2, 2), "");
}

TEST_F(BarTest, IsNotDrawnForNoWork) {
    EXPECT_EQ(drawnAfter(1s, 0, 0), "");
}

TEST_F(BarTest, GoesAwayWhenTheWorkIsOver) {
    drawnAfter(1s, 1, 2);
    out_.str("");
    bar_.finish();
    EXPECT_EQ(out_.str(), "\r\x1B[K");
}

TEST_F(BarTest, LeavesTheLineAloneWhenItWasNotDrawn) {
    bar_.finish();
    EXPECT_EQ(out_.str(), "");
}

TEST(ProgressBar, IsNotDrawnWhereNobodySeesIt) {
    ProgressBar::Clock::time_point now{};
    std::ostringstream out;
    ProgressBar bar(out, false, [&now] { return now; });
    now += 2s;
    bar.update(1, 2);
    bar.finish();
    EXPECT_EQ(out.str(), "");
}

} // namespace
