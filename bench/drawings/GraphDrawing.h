#pragma once

#include "bench/contenders/Contender.h"
#include "kthost/database/Database.h"

#include <KtDbObjectId.h>

#include <cstddef>
#include <random>
#include <vector>

namespace bench {

/// A drawing with so many definitions in 12 layers. Five times as many references nest them: each is placed
/// in a random definition of the layer above, so that most are reached in several ways. Those of the first
/// layer lie in model space and in one of 11 other layouts. Nothing is kept for undo.
class GraphDrawing {
public:
    static constexpr std::size_t kDepth = 12;
    static constexpr std::size_t kNestings = 5; ///< a definition
    static constexpr std::size_t kLayouts = 12;

    GraphDrawing(kthost::Database& database, std::size_t definitions);

    /// In table order.
    const Ids& definitions() const { return definitions_; }

    /// So many, spread evenly.
    Ids some(std::size_t count) const;

    /// References that lie in these definitions or in what they contain at any depth.
    std::size_t nestingsReachedFrom(const Ids& definitions) const;

    /// Moves the first reference of each.
    void editReferencesOf(const Ids& definitions) const;

private:
    void defineAll(std::size_t count);
    void placeFirstLayer();
    void nest(std::size_t count);

    std::size_t firstOf(std::size_t layer) const { return layer * definitions_.size() / kDepth; }

    std::size_t below(std::size_t bound);
    void insert(std::size_t definition, KtDbObjectId container);

    kthost::Database& database_;
    Ids definitions_;
    std::vector<std::vector<std::size_t>> inside_; // of each definition, those placed in it
    std::mt19937 random_{30'000};
};

} // namespace bench
