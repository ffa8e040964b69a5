#include "tests/histories/Shrink.h"

#include "kthost/console/CommandError.h"
#include "kthost/console/SplitLine.h"
#include "kthost/runtime/Utf8.h"
#include "tests/histories/Drawn.h"

#include <algorithm>
#include <iterator>

namespace histories {

namespace {

constexpr const char* kTogether = "together";

/// The lines that this one has run as one command; none when it is no such line.
History linesInside(const std::string& line) {
    History inside;
    if (!line.starts_with(kTogether)) {
        return inside;
    }
    try {
        const std::vector<std::wstring> words = kthost::splitLine(line);
        std::transform(words.begin() + 1, words.end(), std::back_inserter(inside), kthost::toUtf8);
    } catch (const kthost::CommandError&) {
        inside.clear(); // a line that cannot be taken apart stays whole
    }
    return inside;
}

std::string asOneLine(const History& lines) {
    std::string line = kTogether;
    for (const std::string& each : lines) {
        line += " " + inQuotes(each);
    }
    return line;
}

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
        do {
            while (takeOut(1)) {
            }
        } while (takeOutOfGroups());
        return history_;
    }

private:
    /// Runs of that length, from the back: what was done last most often needs what was done first. True when
    /// something went.
    bool takeOut(std::size_t length) {
        bool tookOut = false;
        std::size_t end = history_.size();
        while (end > 0) {
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
        return takeIfItShows(std::move(fewer));
    }

    /// Lines that others run as one command. True when something went.
    bool takeOutOfGroups() {
        bool tookOut = false;
        for (std::size_t place = history_.size(); place-- > 0;) {
            tookOut = shrinkGroup(place) || tookOut;
        }
        return tookOut;
    }

    /// The last line that is left needs no group.
    bool shrinkGroup(std::size_t place) {
        History inside = linesInside(history_[place]);
        bool tookOut = false;
        for (std::size_t number = inside.size(); number-- > 0 && inside.size() > 1;) {
            History fewer = inside;
            fewer.erase(std::next(fewer.begin(), static_cast<std::ptrdiff_t>(number)));
            if (showsWith(place, asOneLine(fewer))) {
                inside = std::move(fewer);
                tookOut = true;
            }
        }
        return (inside.size() == 1 && showsWith(place, inside.front())) || tookOut;
    }

    bool showsWith(std::size_t place, const std::string& line) {
        History other = history_;
        other[place] = line;
        return takeIfItShows(std::move(other));
    }

    bool takeIfItShows(History shorter) {
        if (runsLeft_ == 0) {
            return false;
        }
        --runsLeft_;
        if (!showsFault_(shorter)) {
            return false;
        }
        history_ = std::move(shorter);
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
