#include "tests/blocks/BlocksTest.h"

#include <cstddef>
#include <cstdint>
#include <iostream>
#include <iterator>
#include <random>

namespace {

/// What the block table monitor says of nesting, stated again with nothing but recursion and sets over what
/// the single blocks have recorded.
class PlainGraph {
public:
    explicit PlainGraph(const KtDxBlocks& blocks) : blocks_(blocks) {}

    void collect(KtDbObjectId container, bool recursive, IdSet& nested, IdSet& visited) const {
        if (!visited.insert(container).second) {
            return;
        }
        for (const auto& [key, monitor] : blocks_.blockMonitors()) {
            const KtDbObjectId id = monitor->blockId();
            if (id == container || !monitor->references()->contains(container)) {
                continue;
            }
            nested.insert(id);
            if (recursive) {
                collect(id, true, nested, visited);
            }
        }
    }

    std::uint32_t countOneLevel(KtDbObjectId block, KtDbObjectId container) const {
        const auto& monitors = blocks_.blockMonitors();
        if (!monitors.contains(block) || !monitors.contains(container)) {
            return 0;
        }
        const auto& references = *monitors.at(block)->references();
        const auto entry = references.find(container);
        return entry == references.end() ? 0 : static_cast<std::uint32_t>(entry->second->length());
    }

    std::uint32_t countTwoLevels(KtDbObjectId block, KtDbObjectId container) const {
        const auto& monitors = blocks_.blockMonitors();
        if (!monitors.contains(block) || !monitors.contains(container)) {
            return 0;
        }
        std::uint32_t total = 0;
        for (const auto& [holder, references] : *monitors.at(block)->references()) {
            if (holder.isErased() || holder.isEffectivelyErased()) {
                continue;
            }
            const auto length = static_cast<std::uint32_t>(references->length());
            total += holder == container ? length : length * countOneLevel(holder, container);
        }
        return total;
    }

    /// The blocks that are changed once changes have been carried down.
    IdSet changedThen() const {
        IdSet changed;
        for (const auto& [key, monitor] : blocks_.blockMonitors()) {
            if (monitor->isChanged()) {
                changed.insert(monitor->blockId());
                IdSet visited;
                collect(monitor->blockId(), true, changed, visited);
            }
        }
        return changed;
    }

private:
    const KtDxBlocks& blocks_;
};

class RandomGraph : public BlocksTest {
protected:
    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    KtDbObjectId anyOf(const Ids& ids) { return ids[below(ids.size())]; }

    void addSomeDefinition(std::size_t number) {
        const std::wstring name = L"D" + std::to_wstring(number);
        if (below(4) != 0) {
            places_.push_back(edit_.define(name));
            return;
        }
        const bool representationIsOlder = below(3) == 0;
        const KtDbObjectId older = representationIsOlder ? edit_.anonymous() : KtDbObjectId();
        const KtDbObjectId definition = edit_.defineDynamic(name);
        places_.push_back(definition);
        places_.push_back(edit_.represent(definition, L"1"));
        if (representationIsOlder) {
            edit_.adopt(definition, older, L"2");
            places_.push_back(older);
        }
    }

    /// References that would make a block contain itself are refused by the host.
    void insertSomething() {
        kthost::NewReference reference;
        reference.definition = anyOf(places_);
        reference.container = below(4) == 0 ? edit_.modelSpace() : anyOf(places_);
        if (below(20) == 0) {
            reference.container = edit_.paperSpace();
        }
        KtDbObjectId id;
        if (kthost::insertReference(drawing(), reference, id) == Orbx::eOk) {
            references_.push_back(id);
        }
    }

    void attachSomeDrawing() {
        const AttachedDrawing other = attachDrawing(L"other", [this](DrawingEditor& editor) {
            const KtDbObjectId tank = editor.define(L"tank");
            const KtDbObjectId frame = editor.define(L"frame");
            for (std::size_t i = below(4); i != 0; --i) {
                editor.insert(tank);
                editor.insert(tank, frame);
            }
            editor.insert(frame);
        });
        places_.push_back(other.record);
    }

    void eraseSomething() {
        if (!references_.empty()) {
            const std::size_t index = below(references_.size());
            edit_.erase(references_[index]);
            references_.erase(references_.begin() + static_cast<std::ptrdiff_t>(index));
        }
    }

    void build() {
        const std::size_t definitions = 2 + below(12);
        for (std::size_t i = 0; i < definitions; ++i) {
            addSomeDefinition(i);
        }
        if (below(2) == 0) {
            attachSomeDrawing();
        }
        for (std::size_t i = below(80); i != 0; --i) {
            insertSomething();
        }
        for (std::size_t i = below(6); i != 0; --i) {
            eraseSomething();
        }
    }

    void compareQueries(KtDbObjectId block, KtDbObjectId container) {
        const PlainGraph plain(blocks());
        EXPECT_EQ(blocks().countReferences(block, container, false), plain.countOneLevel(block, container));
        EXPECT_EQ(blocks().countReferences(block, container, true), plain.countTwoLevels(block, container));
        for (const bool recursive : {false, true}) {
            IdSet nested;
            IdSet expected;
            IdSet visited;
            EXPECT_EQ(blocks().collectNestedBlocks(container, recursive, nested), Orbx::eOk);
            plain.collect(container, recursive, expected, visited);
            EXPECT_EQ(nested, expected);
        }
    }

    void comparePropagation() {
        for (std::size_t i = below(4); i != 0; --i) {
            const IdSet keys = keysOf(blocks());
            monitorOf(*std::next(keys.begin(), static_cast<std::ptrdiff_t>(below(keys.size()))))
                ->setChanged(true);
        }
        const IdSet expected = PlainGraph(blocks()).changedThen();
        blocks().propagateChanges();
        IdSet changed;
        for (const auto& [key, monitor] : blocks().blockMonitors()) {
            if (monitor->isChanged()) {
                changed.insert(monitor->blockId());
            }
        }
        EXPECT_EQ(changed, expected);
    }

    std::mt19937_64 random_;
    Ids places_;
    Ids references_;
};

/// Each round is a drawing of its own, made from the seed and the round's number.
class RandomGraphs : public RandomGraph, public testing::WithParamInterface<std::uint32_t> {};

std::uint32_t seed() {
    static const std::uint32_t chosen = std::random_device()();
    return chosen;
}

TEST_P(RandomGraphs, AnswerLikeAPlainStatementOfThem) {
    SCOPED_TRACE("seed " + std::to_string(seed()));
    std::cout << "seed " << seed() << ", round " << GetParam() << '\n';
    std::seed_seq both{seed(), GetParam()};
    random_.seed(both);
    build();
    ASSERT_TRUE(ktdxUpdateBlockGraph(&document_, true, false));
    const IdSet keys = keysOf(blocks());
    for (const KtDbObjectId block : keys) {
        for (const KtDbObjectId container : keys) {
            compareQueries(block, container);
        }
    }
    blocks().setPendingChanges(false);
    comparePropagation();
}

INSTANTIATE_TEST_SUITE_P(Rounds, RandomGraphs, testing::Range(1U, 26U));

} // namespace
