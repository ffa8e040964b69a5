#include "legacy/ShellSort.h"

#include <algorithm>
#include <utility>

namespace {

struct Element {
    std::size_t rank;
    std::size_t position;
};

/// Lets element `i` sink among those a gap apart below it. These are in order already, so once it is not
/// swapped, nothing further down would be.
void sink(std::span<Element> elements, std::size_t i, std::size_t gap) {
    for (std::size_t j = i; j >= gap && elements[j].rank < elements[j - gap].rank; j -= gap) {
        std::swap(elements[j], elements[j - gap]);
    }
}

std::vector<Element> shellSorted(std::span<const std::size_t> ranks) {
    std::vector<Element> elements(ranks.size());
    for (std::size_t i = 0; i < ranks.size(); ++i) {
        elements[i] = {ranks[i], i};
    }
    for (std::size_t gap = ranks.size() / 2; gap >= 1; gap /= 2) {
        for (std::size_t i = gap; i < elements.size(); ++i) {
            sink(elements, i, gap);
        }
    }
    return elements;
}

bool allDiffer(std::span<const std::size_t> ranks) {
    return ranks.empty() || *std::max_element(ranks.begin(), ranks.end()) == ranks.size() - 1;
}

} // namespace

std::vector<std::size_t> shellSortedOrder(std::span<const std::size_t> ranks) {
    std::vector<std::size_t> order(ranks.size());
    if (allDiffer(ranks)) {
        // Whatever the way, there is only one order to arrive at, and the ranks tell it.
        for (std::size_t i = 0; i < ranks.size(); ++i) {
            order[ranks[i]] = i;
        }
        return order;
    }
    const std::vector<Element> elements = shellSorted(ranks);
    std::transform(elements.begin(), elements.end(), order.begin(),
                   [](const Element& e) { return e.position; });
    return order;
}
