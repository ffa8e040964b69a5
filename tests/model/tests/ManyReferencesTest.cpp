// The module beside the model where there are so many references that the module's containers consist of many
// chunks, and its rescans meet everything at once: what comes, goes, returns and stays.

#include "tests/model/Twin.h"

#include "app/KtDxApplication.h"
#include "blocks/KtDxBlocks.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/References.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/documents/Host.h"

#include <ktdx/KtDxNotify.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <vector>

using namespace ktmodel;
using namespace kthost;

namespace {

constexpr std::size_t kReferences = 3000;
constexpr std::size_t kDefinitions = 3;
constexpr std::size_t kContainers = 12;
constexpr std::size_t kRounds = 40;

void client() {}

class ManyReferences : public testing::Test {
protected:
    ManyReferences() {
        gIdleCheckMessage = 0;
        host_.clock().set(1000);
        application_ = std::make_unique<KtDxApplication>();
        twin_ = std::make_unique<Twin>();
        for (std::size_t i = 0; i < kContainers; ++i) {
            containers_.push_back(define(L"container " + std::to_wstring(i)));
        }
        containers_.front() = drawing().modelSpaceId();
        for (std::size_t i = 0; i < kDefinitions; ++i) {
            definitions_.append(define(L"block " + std::to_wstring(i)));
        }
    }

    KtDbObjectId define(const std::wstring& name) {
        KtDbObjectId id;
        EXPECT_EQ(addDefinition(drawing(), name, id), Orbx::eOk);
        return id;
    }

    std::size_t below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
    }

    void insert(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            NewReference reference;
            reference.definition = definitions_[below(kDefinitions)];
            reference.container = containers_[below(kContainers)];
            reference.attributes.assign(below(3), {L"TAG", L"text"});
            ASSERT_EQ(insertReference(drawing(), reference, references_.emplace_back()), Orbx::eOk);
        }
    }

    /// Most can be edited; those that cannot stay as they are.
    void edit(std::size_t count, const std::function<Orbx::ErrorStatus(KtDbObjectId)>& change) {
        for (std::size_t i = 0; i < count; ++i) {
            std::ignore = change(references_[below(references_.size())]);
        }
    }

    void editSomehow() {
        const std::size_t count = 1 + below(200);
        switch (below(4)) {
        case 0:
            return insert(count);
        case 1:
            return edit(count, [this](KtDbObjectId id) { return eraseReference(drawing(), id); });
        case 2:
            return edit(10 * count, [this](KtDbObjectId id) { return restoreReference(drawing(), id); });
        default:
            return edit(count, [this](KtDbObjectId id) { return moveReference(drawing(), id, {1, 2, 3}); });
        }
    }

    /// A command that does this, the idle check behind it, and what differs then.
    std::string command(const std::function<void()>& edit, CommandUndo undo = CommandUndo::step) {
        const CommandOutcome outcome = host_.documents().runCommand(
            document_, L"edit",
            [&](Document&) {
                edit();
                return CommandResult::done;
            },
            undo);
        EXPECT_EQ(outcome.result, CommandResult::done) << outcome.reason;
        host_.clock().advance(1);
        host_.loop().pump();
        return twin_->difference();
    }

    std::string oneOfAll() {
        switch (below(8)) {
        case 0:
            return command([this] { std::ignore = drawing().history().undo(); }, CommandUndo::none);
        case 1:
            return command([this] { std::ignore = drawing().history().redo(); }, CommandUndo::none);
        case 2:
            drawing().releaseErased();
            return command([] {});
        case 3:
            ktdxBlockReferenceMonitorDetach(&document_, &client);
            EXPECT_TRUE(ktdxBlockReferenceMonitorAttach(&document_, &definitions_, &client));
            return command([] {});
        default:
            return command([this] { editSomehow(); });
        }
    }

    Database& drawing() { return *document_.database(); }

    std::uint32_t seed_ = std::random_device()();
    std::mt19937 random_{seed_};
    Host host_;
    Document& document_ = host_.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    std::unique_ptr<KtDxApplication> application_;
    std::unique_ptr<Twin> twin_;
    std::vector<KtDbObjectId> containers_;
    KtArray<KtDbObjectId> definitions_;
    std::vector<KtDbObjectId> references_;
};

TEST_F(ManyReferences, AreWatchedAsTheModelSays) {
    SCOPED_TRACE(seed_);
    insert(kReferences);
    ASSERT_TRUE(ktdxBlockReferenceMonitorAttach(&document_, &definitions_, &client));
    ASSERT_EQ(command([] {}), "");
    for (std::size_t round = 0; round < kRounds; ++round) {
        ASSERT_EQ(oneOfAll(), "") << round;
    }
}

} // namespace
