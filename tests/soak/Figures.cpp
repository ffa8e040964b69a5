#include "tests/soak/Figures.h"

#include <algorithm>
#include <numeric>

namespace soak {

double rise(const std::vector<double>& values) {
    if (values.size() < 2) {
        return 0;
    }
    const auto count = static_cast<double>(values.size());
    const double middle = (count - 1) / 2;
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    double products = 0;
    double squares = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double distance = static_cast<double>(i) - middle;
        products += distance * (values[i] - mean);
        squares += distance * distance;
    }
    return products / squares * (count - 1);
}

double median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>((values.size() - 1) / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::vector<double> firstHalf(const std::vector<double>& values) {
    return {values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2)};
}

std::vector<double> lastHalf(const std::vector<double>& values) {
    return {values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end()};
}

} // namespace soak
