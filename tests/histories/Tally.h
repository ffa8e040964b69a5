#pragma once

#include <cstddef>
#include <map>
#include <string>

namespace histories {

/// How often what happened in histories: what is never done or never checked proves nothing.
struct Tally {
    struct Lines {
        std::size_t done = 0;
        std::size_t refused = 0;
    };

    std::map<std::string, Lines> lines; ///< by what they do, such as "insert" or "puppet attach"
    std::size_t idleChecks = 0;
    std::size_t listChecks = 0;
    std::size_t comparisons = 0; ///< with the model

    void add(const Tally& other);
};

/// What a line does: its first word, and for a client's line what the client does.
std::string kindOfLine(const std::string& line);

} // namespace histories
