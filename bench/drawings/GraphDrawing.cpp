#include "bench/drawings/GraphDrawing.h"

#include "bench/drawings/Layouts.h"
#include "bench/drawings/Require.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/References.h"

#include <algorithm>
#include <string>

namespace bench {

GraphDrawing::GraphDrawing(kthost::Database& database, std::size_t definitions) : database_(database) {
    database_.setUndoRecording(false);
    defineAll(definitions);
    placeFirstLayer();
    nest(definitions * kNestings);
}

void GraphDrawing::defineAll(std::size_t count) {
    definitions_.reserve(count);
    inside_.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        KtDbObjectId id;
        require(kthost::addDefinition(database_, L"block" + std::to_wstring(i), id));
        definitions_.push_back(id);
    }
}

void GraphDrawing::placeFirstLayer() {
    const Ids layouts = makeLayouts(database_, kLayouts);
    for (std::size_t i = 0; i < firstOf(1); ++i) {
        insert(i, layouts.front());
        insert(i, layouts[1 + i % (kLayouts - 1)]);
    }
}

/// From the top down: whether a block would come to lie inside itself is then seen at once, as nothing is
/// inside it yet.
void GraphDrawing::nest(std::size_t count) {
    const std::size_t nested = definitions_.size() - firstOf(1);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t child = firstOf(1) + i * nested / count; // each has its share
        const std::size_t layer = ((child + 1) * kDepth - 1) / definitions_.size();
        const std::size_t above = firstOf(layer - 1);
        const std::size_t parent = above + below(firstOf(layer) - above);
        inside_[parent].push_back(child);
        insert(child, definitions_[parent]);
    }
}

std::size_t GraphDrawing::below(std::size_t bound) {
    return static_cast<std::size_t>(random_()) % bound; // even enough for bounds far below the generator's
}

void GraphDrawing::insert(std::size_t definition, KtDbObjectId container) {
    kthost::NewReference reference;
    reference.definition = definitions_[definition];
    reference.container = container;
    KtDbObjectId id;
    require(kthost::insertReference(database_, reference, id));
}

Ids GraphDrawing::some(std::size_t count) const {
    Ids chosen;
    for (std::size_t i = 0; i < count; ++i) {
        chosen.push_back(definitions_[(2 * i + 1) * definitions_.size() / (2 * count)]);
    }
    return chosen;
}

std::size_t GraphDrawing::nestingsReachedFrom(const Ids& definitions) const {
    std::vector<bool> isReached(definitions_.size());
    for (const KtDbObjectId id : definitions) {
        const auto place = std::lower_bound(definitions_.begin(), definitions_.end(), id);
        isReached[static_cast<std::size_t>(place - definitions_.begin())] = true;
    }
    std::size_t nestings = 0;
    for (std::size_t i = 0; i < inside_.size(); ++i) { // layer by layer, as they lie
        if (!isReached[i]) {
            continue;
        }
        nestings += inside_[i].size();
        for (const std::size_t child : inside_[i]) {
            isReached[child] = true;
        }
    }
    return nestings;
}

void GraphDrawing::editReferencesOf(const Ids& definitions) const {
    for (const KtDbObjectId definition : definitions) {
        const Ids references = kthost::referencesTo(definition);
        require(kthost::moveReference(database_, references.front(), {1.0, 1.0, 0.0}));
    }
}

} // namespace bench
