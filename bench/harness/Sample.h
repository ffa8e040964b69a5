#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace bench {

/// What one benchmark came to; the process that ran it writes it down for the one that started it.
struct Sample {
    std::string name;
    double time = 0; ///< processor time of one pass, nanoseconds
    double allocations = 0;
    double bytesKept = 0;
    double elements = 0;
};

/// A line each.
void writeSamples(std::ostream& stream, const std::vector<Sample>& samples);
std::vector<Sample> readSamples(std::istream& stream);

} // namespace bench
