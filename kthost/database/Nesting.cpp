#include "kthost/database/Nesting.h"

#include "kthost/database/ObjectAccess.h"

#include <unordered_set>

namespace kthost {

namespace {

void count(Nestings& nestings, KtDbObjectId other, int difference) {
    std::uint32_t& number = nestings[other];
    number += static_cast<std::uint32_t>(difference); // wraps back: a placement is counted before it is not
    if (number == 0) {
        nestings.erase(other);
    }
}

/// Breadth-first walk over records, one at a time.
class Search {
public:
    using Neighbours = const Nestings& (BlockTableRecord::*)() const;

    Search(KtDbObjectId start, Neighbours neighbours) : neighbours_(neighbours) { visit(start); }

    bool isDone() const { return next_ == found_.size(); }

    bool hasFound(KtDbObjectId record) const { return visited_.contains(record); }

    void step() {
        const KtDbObjectId record = found_[next_++];
        if (const BlockTableRecord* opened = peek<BlockTableRecord>(record)) {
            for (const auto& [other, number] : (opened->*neighbours_)()) {
                visit(other);
            }
        }
    }

    const std::vector<KtDbObjectId>& found() const { return found_; }

private:
    void visit(KtDbObjectId record) {
        if (visited_.insert(record).second) {
            found_.push_back(record);
        }
    }

    Neighbours neighbours_;
    std::vector<KtDbObjectId> found_;
    std::unordered_set<KtDbObjectId> visited_;
    std::size_t next_ = 0;
};

bool isPlacedIn(KtDbObjectId definition, KtDbObjectId container) {
    const auto* record = peek<BlockTableRecord>(container);
    return record != nullptr && record->contains().contains(definition);
}

} // namespace

void countPlacement(KtDbObjectId definition, KtDbObjectId container, int difference) {
    if (auto* record = peek<BlockTableRecord>(definition)) {
        count(record->placedIn(), container, difference);
    }
    if (auto* record = peek<BlockTableRecord>(container)) {
        count(record->contains(), definition, difference);
    }
}

bool wouldContainItself(KtDbObjectId definition, KtDbObjectId container) {
    if (isPlacedIn(definition, container)) {
        return false; // one more of what is there makes no new way round
    }
    Search down(definition, &BlockTableRecord::contains);
    Search up(container, &BlockTableRecord::placedIn);
    while (!down.isDone() && !up.isDone()) {
        if (down.hasFound(container) || up.hasFound(definition)) {
            return true;
        }
        down.step();
        up.step();
    }
    return down.hasFound(container) || up.hasFound(definition);
}

std::vector<KtDbObjectId> recordAndContainers(KtDbObjectId record) {
    Search up(record, &BlockTableRecord::placedIn);
    while (!up.isDone()) {
        up.step();
    }
    return up.found();
}

} // namespace kthost
