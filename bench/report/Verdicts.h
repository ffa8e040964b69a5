#pragma once

#include "bench/harness/Figures.h"

#include <string>
#include <vector>

namespace bench {

/// A figure that has to come out, and how it did.
struct Verdict {
    std::string what;
    std::string wanted;
    std::string figure;
    bool isMet = false;
};

/// In the order in which they are stated; those left out of which nothing was measured. Where the largest
/// drawing was not measured, the largest that was stands for it, and the figure says which.
std::vector<Verdict> judge(const Figures& figures);

} // namespace bench
