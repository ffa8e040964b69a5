#include "OccurrencePaths.h"

#include <stdexcept>
#include <utility>

namespace parts {

OccurrencePaths::OccurrencePaths(PlacementsOf placementsOf, IsLayout isLayout, std::size_t most)
    : placementsOf_(std::move(placementsOf)),
      isLayout_(std::move(isLayout)),
      most_(most) {}

const std::vector<std::wstring>& OccurrencePaths::of(KtDbObjectId container) {
    // Outer containers come before inner ones; a list of what waits takes the place of recursion, whose depth
    // a drawing could choose.
    std::vector<KtDbObjectId> waiting{container};
    while (!waiting.empty()) {
        visit(waiting.back(), waiting);
    }
    return nodes_.at(container).paths;
}

void OccurrencePaths::visit(KtDbObjectId container, std::vector<KtDbObjectId>& waiting) {
    const auto known = nodes_.find(container);
    if (known == nodes_.end()) {
        enter(container, waiting);
        return;
    }
    waiting.pop_back();
    if (!known->second.done) {
        finish(known->second);
    }
}

void OccurrencePaths::enter(KtDbObjectId container, std::vector<KtDbObjectId>& waiting) {
    Node& node = nodes_[container];
    if (isLayout_(container)) {
        node.paths.emplace_back();
        node.done = true;
        return;
    }
    node.placements = placementsOf_(container);
    for (const Placement& placement : node.placements) {
        if (!nodes_.contains(placement.container)) {
            waiting.push_back(placement.container);
        }
    }
}

void OccurrencePaths::finish(Node& node) {
    for (const Placement& placement : node.placements) {
        extend(node, placement, nodes_.at(placement.container));
    }
    node.placements = {};
    node.done = true;
}

void OccurrencePaths::extend(Node& node, const Placement& placement, const Node& outer) {
    paths_ += outer.paths.size();
    if (paths_ > most_) {
        throw std::length_error("there are more occurrences than can be listed");
    }
    for (const std::wstring& path : outer.paths) {
        node.paths.push_back(path + L"/" + placement.handle);
    }
}

} // namespace parts
