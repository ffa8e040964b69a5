#include "bench/harness/Sample.h"

#include <iomanip>
#include <limits>

namespace bench {

void writeSamples(std::ostream& stream, const std::vector<Sample>& samples) {
    stream << std::setprecision(std::numeric_limits<double>::max_digits10);
    for (const Sample& sample : samples) {
        stream << sample.time << ' ' << sample.allocations << ' ' << sample.bytesKept << ' '
               << sample.elements << ' ' << sample.name << '\n';
    }
}

std::vector<Sample> readSamples(std::istream& stream) {
    std::vector<Sample> samples;
    Sample sample;
    while (stream >> sample.time >> sample.allocations >> sample.bytesKept >> sample.elements &&
           std::getline(stream >> std::ws, sample.name)) {
        samples.push_back(sample);
    }
    return samples;
}

} // namespace bench
