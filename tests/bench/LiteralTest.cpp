#include "bench/literal/Application.h"
#include "kthost/database/Attributes.h"
#include "tests/bench/LiteralSnapshot.h"
#include "tests/blocks/BlocksTest.h"
#include "tests/model/Observer.h"
#include "tests/model/Twin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <random>

namespace {

/// The module and the literal monitors watch the same drawing. They call the same client, each for itself.
class LiteralTest : public BlocksTest {
protected:
    static constexpr std::size_t kClient = 0;

    void attachBoth(const Ids& ids) {
        KtArray<KtDbObjectId> array;
        for (const KtDbObjectId id : ids) {
            array.append(id);
        }
        ASSERT_TRUE(attach(kClient, ids));
        ASSERT_TRUE(literal_.attach(&document_, array, client_.at(kClient)));
    }

    /// Empty when both have recorded the same and answer all questions alike.
    std::string difference() {
        ktmodel::Snapshot module = ktmodel::observe();
        const auto questions = ktmodel::allQuestions(module, document_.name());
        module = ktmodel::observe({{document_.name(), questions}});
        module.documents[document_.name()].blocks->timer.reset();
        ktmodel::Snapshot literal = module;
        literal.documents[document_.name()].blocks =
            observeLiteral(*literal_.blocksOf(&document_), questions);
        return ktmodel::difference(literal, module);
    }

    bench::literal::Application literal_{L"BENCH_IDLE_CHECK"};
};

TEST_F(LiteralTest, RecordsWhatTheModuleRecordsOfReferencesAndAttributes) {
    const KtDbObjectId valve = edit_.define(L"valve");
    const KtDbObjectId sheet = edit_.define(L"sheet");
    edit_.insertWithAttributes(valve, 3, sheet);
    edit_.insertWithAttributes(valve, 2);
    edit_.insert(sheet);
    attachBoth({valve, sheet});
    EXPECT_EQ(difference(), "");
}

TEST_F(LiteralTest, CallsItsClientsWhenTheModuleDoes) {
    const KtDbObjectId valve = edit_.define(L"valve");
    const KtDbObjectId reference = edit_.insertWithAttributes(valve, 2);
    attachBoth({valve});
    command([&] { edit_.move(reference); });
    EXPECT_THAT(client_.takeCalls(), testing::ElementsAre(kClient, kClient));
    idle();
    EXPECT_THAT(client_.takeCalls(), testing::IsEmpty());
}

TEST_F(LiteralTest, FilesWhatLiesInAnAttachedDrawingAsTheModuleDoes) {
    const AttachedDrawing other = attachDrawing(
        L"other", [](DrawingEditor& editor) { editor.insertWithAttributes(editor.define(L"pump"), 2); });
    edit_.insert(other.record);
    attachBoth({other.record});
    idle();
    EXPECT_EQ(difference(), "");
}

/// Edits made up at random; those that cannot be done do nothing.
class RandomEdits {
public:
    RandomEdits(DrawingEditor& editor, kthost::Database& drawing, std::uint32_t seed)
        : editor_(editor),
          drawing_(drawing),
          random_(seed),
          definitions_{editor.define(L"first"), editor.defineDynamic(L"dynamic")},
          references_{editor.insertWithAttributes(definitions_[0], 2), editor.insert(definitions_[1])} {}

    const Ids& definitions() const { return definitions_; }

    void perform() {
        switch (below(10)) {
        case 0:
            definitions_.push_back(editor_.define(L"block" + std::to_wstring(definitions_.size())));
            break;
        case 1:
            definitions_.push_back(
                editor_.represent(definitions_[1], L"label" + std::to_wstring(definitions_.size())));
            break;
        case 2:
        case 3:
            references_.push_back(editor_.insertWithAttributes(any(definitions_), below(4)));
            break;
        case 4:
            references_.push_back(
                editor_.insertWithAttributes(any(definitions_), below(3), any(definitions_)));
            break;
        case 5:
            must(kthost::setAttributeText(drawing_, any(references_), L"A", L"other"));
            break;
        case 6:
            editor_.erase(any(references_));
            break;
        case 7:
            editor_.restore(any(references_));
            break;
        case 8:
            references_.push_back(editor_.copy(any(references_)));
            break;
        default:
            editor_.purge(any(definitions_));
        }
    }

    bool wantsRelease() { return below(8) == 0; }

private:
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(random_()) % bound; }

    KtDbObjectId any(const Ids& ids) { return ids[below(ids.size())]; }

    DrawingEditor& editor_;
    kthost::Database& drawing_;
    std::mt19937 random_;
    Ids definitions_;
    Ids references_;
};

class LiteralHistories : public LiteralTest, public testing::WithParamInterface<int> {
protected:
    /// Gives what differs behind the command.
    std::string playOne(RandomEdits& edits) {
        try {
            command([&] { edits.perform(); });
        } catch (const std::runtime_error&) {
            idle(); // it could not be done
        }
        if (edits.wantsRelease()) {
            edit_.release();
            idle();
        }
        const auto calls = client_.takeCalls();
        return calls.size() % 2 == 0 ? difference() : "only one of both called its client";
    }
};

TEST_P(LiteralHistories, RecordWhatTheModuleRecords) {
    constexpr int kSteps = 60;
    const auto seed = std::random_device()();
    std::cout << "seed " << seed << std::endl;
    RandomEdits edits(edit_, drawing(), seed);
    attachBoth(edits.definitions());
    for (int step = 0; step < kSteps; ++step) {
        ASSERT_EQ(playOne(edits), "") << "at step " << step << " from seed " << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(Share, LiteralHistories, testing::Range(0, 8));

} // namespace
