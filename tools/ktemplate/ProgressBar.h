#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <iosfwd>

namespace ktemplate {

/// A bar on one line that shows how much of a piece of work is done, once the work has taken a second, and
/// goes away when it is over.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;
    using Now = std::function<Clock::time_point()>;

    /// Draws on `out` if that is a terminal (`shown`); `now` tells the time.
    ProgressBar(std::ostream& out, bool shown, Now now = Clock::now);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void update(std::uint64_t done, std::uint64_t total);
    /// Takes the bar off the line. No more updates after this.
    void finish();

private:
    void draw(std::uint64_t done, std::uint64_t total);

    std::ostream* out_;
    bool shown_;
    bool drawn_ = false;
    Now now_;
    Clock::time_point next_;
};

} // namespace ktemplate
