#include "tools/ktemplate/ProgressBar.h"

#include <fmt/format.h>

#include <algorithm>
#include <ostream>
#include <utility>

namespace ktemplate {

namespace {

constexpr std::chrono::seconds kFirstAfter{1};
constexpr std::chrono::milliseconds kBetween{100};
constexpr std::uint64_t kWidth = 40;

} // namespace

ProgressBar::ProgressBar(std::ostream& out, bool shown, Now now)
    : out_(&out),
      shown_(shown),
      now_(std::move(now)),
      next_(now_() + kFirstAfter) {}

ProgressBar::~ProgressBar() {
    finish();
}

void ProgressBar::update(std::uint64_t done, std::uint64_t total) {
    if (!shown_ || total == 0) {
        return;
    }
    if (const auto now = now_(); now >= next_) {
        next_ = now + kBetween;
        draw(std::min(done, total), total);
    }
}

void ProgressBar::draw(std::uint64_t done, std::uint64_t total) {
    const double part = static_cast<double>(done) / static_cast<double>(total);
    const auto filled = static_cast<std::size_t>(part * kWidth);
    *out_ << fmt::format("\r[{:<{}}] {:3.0f} %", std::string(filled, '#'), kWidth, 100.0 * part)
          << std::flush;
    drawn_ = true;
}

void ProgressBar::finish() {
    if (drawn_) {
        *out_ << "\r\x1B[K" << std::flush;
        drawn_ = false;
    }
    shown_ = false;
}

} // namespace ktemplate
