#include "kthost/console/ProgressBar.h"

#include <ostream>
#include <string>
#include <utility>

namespace kthost {

ProgressBar::ProgressBar(std::ostream& terminal, Clock clock)
    : terminal_(terminal),
      clock_(std::move(clock)),
      started_(clock_()) {}

void ProgressBar::bytesRead(std::uint64_t done, std::uint64_t total) {
    if (done < last_ || last_ == 0) {
        started_ = clock_(); // another drawing
    }
    last_ = done;
    if (done == total) {
        clear();
        last_ = 0;
    } else if (clock_() - started_ > kPatience) {
        draw(done, total);
    }
}

void ProgressBar::draw(std::uint64_t done, std::uint64_t total) {
    const int marks = static_cast<int>(static_cast<double>(done) / static_cast<double>(total) * kWidth);
    if (marks == shown_) {
        return;
    }
    shown_ = marks;
    const auto filled = static_cast<std::size_t>(marks);
    terminal_ << "\rreading [" << std::string(filled, '=') << std::string(kWidth - filled, ' ') << ']'
              << std::flush;
}

void ProgressBar::clear() {
    if (shown_ >= 0) {
        terminal_ << '\r' << std::string(kWidth + sizeof "reading []", ' ') << '\r' << std::flush;
        shown_ = -1;
    }
}

} // namespace kthost
