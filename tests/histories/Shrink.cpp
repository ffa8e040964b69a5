#include "tests/histories/Shrink.h"

#include <algorithm>
#include <iterator>

namespace histories {

namespace {

class Shrinking {
public:
    Shrinking(History history, const ShowsFault& showsFault, std::size_t mostRuns)
        : history_(std::move(history)),
          showsFault_(showsFault),
          runsLeft_(mostRuns) {}

    History run() {
        for (std::size_t length = history_.size() / 2; length > 1; length /= 2) {
            takeOut(length);
        }
        // Behind a line that is gone, one before it may have become needless.
        while (takeOut(1)) {
        }
        return history_;
    }

private:
    /// Runs of that length, from the back: what was done last most often needs what was done first. True when
    /// something went.
    bool takeOut(std::size_t length) {
        bool tookOut = false;
        std::size_t end = history_.size();
        while (end > 0 && runsLeft_ > 0) {
            const std::size_t begin = end > length ? end - length : 0;
            if (showsWithout(begin, end)) {
                tookOut = true;
            }
            end = begin;
        }
        return tookOut;
    }

    bool showsWithout(std::size_t begin, std::size_t end) {
        History fewer;
        fewer.reserve(history_.size() - (end - begin));
        std::copy_n(history_.begin(), begin, std::back_inserter(fewer));
        std::copy(std::next(history_.begin(), static_cast<std::ptrdiff_t>(end)), history_.end(),
                  std::back_inserter(fewer));
        --runsLeft_;
        if (!showsFault_(fewer)) {
            return false;
        }
        history_ = std::move(fewer);
        return true;
    }

    History history_;
    const ShowsFault& showsFault_;
    std::size_t runsLeft_;
};

} // namespace

History shrink(History history, const ShowsFault& showsFault, std::size_t mostRuns) {
    return Shrinking(std::move(history), showsFault, mostRuns).run();
}

} // namespace histories
