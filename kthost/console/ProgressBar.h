#pragma once

#include "kthost/reader/ReadProgress.h"

#include <chrono>
#include <functional>
#include <iosfwd>

namespace kthost {

/// Shows on a terminal how far the reading of a drawing has come, once that has taken more than a second.
class ProgressBar final : public ReadProgress {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Clock = std::function<Time()>;

    static constexpr std::chrono::seconds kPatience{1};
    static constexpr int kWidth = 40;

    /// The stream must outlive it and be a terminal.
    explicit ProgressBar(std::ostream& terminal, Clock clock = std::chrono::steady_clock::now);

    void bytesRead(std::uint64_t done, std::uint64_t total) override;

private:
    void draw(std::uint64_t done, std::uint64_t total);
    void clear();

    std::ostream& terminal_;
    Clock clock_;
    Time started_;
    std::uint64_t last_ = 0; // bytes done at the last call
    int shown_ = -1;         // marks on the screen; below 0 when there is no bar
};

} // namespace kthost
