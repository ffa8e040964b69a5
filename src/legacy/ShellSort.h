#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Where a Shell sort that starts with half the length as its gap, and halves the gap until it is 1, leaves
/// elements that take these places among all of them: the position in `ranks` of the first, the second, and
/// so on. Ranks run from 0 without gaps; equal ones are never swapped with each other, but may still change
/// their order.
std::vector<std::size_t> shellSortedOrder(std::span<const std::size_t> ranks);
