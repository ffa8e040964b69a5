#pragma once

#include "Containers.h"

#include <cstddef>
#include <functional>

namespace parts {

/// Finds the ways in which a container comes to lie in a layout. Each container is worked out once, and takes
/// time in proportion to its paths.
class OccurrencePaths {
public:
    /// Nested references multiply: a few dozen small blocks could stand for more occurrences than there is
    /// memory.
    static constexpr std::size_t kMost = 4'000'000;

    using PlacementsOf = std::function<std::vector<Placement>(KtDbObjectId container)>;
    using IsLayout = std::function<bool(KtDbObjectId container)>;

    OccurrencePaths(PlacementsOf placementsOf, IsLayout isLayout, std::size_t most = kMost);

    /// The handles of the references walked through, the outermost first, each behind a "/"; the empty text
    /// for a layout. None for a container that lies in no layout. Stays valid as long as this lives. Throws
    /// std::length_error beyond `most` paths.
    const std::vector<std::wstring>& of(KtDbObjectId container);

private:
    struct Node {
        std::vector<Placement> placements;
        std::vector<std::wstring> paths;
        bool done = false;
    };

    void visit(KtDbObjectId container, std::vector<KtDbObjectId>& waiting);
    void enter(KtDbObjectId container, std::vector<KtDbObjectId>& waiting);
    void finish(Node& node);
    void extend(Node& node, const Placement& placement, const Node& outer);

    PlacementsOf placementsOf_;
    IsLayout isLayout_;
    std::unordered_map<KtDbObjectId, Node> nodes_;
    std::size_t most_;
    std::size_t paths_ = 0;
};

} // namespace parts
