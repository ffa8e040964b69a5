#pragma once

#include <cstddef>
#include <vector>

/// What long runs are judged by.
namespace soak {

/// By how much the straight line that fits best (least squares) rises from the first to the last of the
/// values; they are the same distance apart. 0 for fewer than two.
double rise(const std::vector<double>& values);

/// The middle one, or the lower of the two in the middle; 0 for none.
double median(std::vector<double> values);

/// The middle value goes to the later half.
std::vector<double> firstHalf(const std::vector<double>& values);
std::vector<double> lastHalf(const std::vector<double>& values);

} // namespace soak
