// What clients, and the host, may do at odd moments.

#include "kthost/database/Definitions.h"
#include "kthost/database/References.h"
#include "notify/ByAddress.h"
#include "tests/faults/Stage.h"

#include <KtArray.h>
#include <ktdx/KtDxNotify.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::IsEmpty;

KtDbObjectId placedBlock(kthost::Database& drawing) {
    KtDbObjectId block;
    must(kthost::addDefinition(drawing, L"valve", block));
    KtDbObjectId reference;
    must(kthost::insertReference(drawing, {block, drawing.modelSpaceId(), {}, {}, {}}, reference));
    return block;
}

void place(kthost::Database& drawing, KtDbObjectId block) {
    KtDbObjectId reference;
    must(kthost::insertReference(drawing, {block, drawing.modelSpaceId(), {}, {}, {}}, reference));
}

// Ten thousand functions

constexpr std::size_t kHundred = 100;
std::vector<KtRxCallback> called; // in the order of the calls

template <std::size_t kNumber>
void noted() {
    called.push_back(&noted<kNumber>);
}

template <std::size_t kFirst, std::size_t... kOffsets>
void appendHundred(std::vector<KtRxCallback>& functions, std::index_sequence<kOffsets...> /*offsets*/) {
    (functions.push_back(&noted<kFirst * kHundred + kOffsets>), ...);
}

template <std::size_t... kFirsts>
std::vector<KtRxCallback> manyFunctions(std::index_sequence<kFirsts...> /*firsts*/) {
    std::vector<KtRxCallback> functions;
    (appendHundred<kFirsts>(functions, std::make_index_sequence<kHundred>()), ...);
    std::ranges::sort(functions, ByAddress{});
    return functions;
}

class ManyClients : public testing::Test {
protected:
    ManyClients() {
        stage_.open(L"plan");
        block_ = placedBlock(stage_.drawing());
        stage_.load();
        called.clear();
    }

    template <typename Function>
    Function exported(const char* name) {
        return reinterpret_cast<Function>(stage_.host().modules().exportOf(Stage::kModule, name));
    }

    Stage stage_;
    KtDbObjectId block_;
    std::vector<KtRxCallback> functions_ = manyFunctions(std::make_index_sequence<kHundred>());
};

TEST_F(ManyClients, TenThousandOfABlockAreEachCalledOnceInAscendingOrder) {
    const auto attach =
        exported<decltype(&ktdxBlockReferenceMonitorAttach)>("ktdxBlockReferenceMonitorAttach");
    const KtArray<KtDbObjectId> ids{block_};
    std::for_each(functions_.rbegin(), functions_.rend(),
                  [&](KtRxCallback function) { ASSERT_TRUE(attach(&stage_.document(), &ids, function)); });
    stage_.command([this] { place(stage_.drawing(), block_); });
    EXPECT_EQ(called.size(), kHundred * kHundred);
    EXPECT_EQ(called, functions_);
}

TEST_F(ManyClients, TenThousandOfTheIdleTimerAreEachCalledOnceInAscendingOrder) {
    const auto attach = exported<decltype(&ktdxDocTimerAttach)>("ktdxDocTimerAttach");
    std::for_each(functions_.rbegin(), functions_.rend(),
                  [&](KtRxCallback function) { ASSERT_EQ(attach(&stage_.document(), function, 0, 1), 1); });
    stage_.command([] {});
    EXPECT_EQ(called, functions_);
    for (const KtRxCallback function : functions_) {
        ASSERT_EQ(attach(&stage_.document(), function, 0, 0), 1);
    }
    called.clear();
    stage_.command([] {});
    EXPECT_THAT(called, IsEmpty());
}

// Documents

/// Four documents, each with a client of its block and one of its idle timer; closed in an order.
class ClosingOrder : public testing::TestWithParam<std::array<std::size_t, 4>> {
protected:
    static std::wstring nameOf(std::size_t number) { return L"plan " + std::to_wstring(number); }

    ClosingOrder() {
        for (std::size_t number = 0; number < 4; ++number) {
            stage_.open(nameOf(number));
            blocks_.at(number) = placedBlock(stage_.drawing(nameOf(number)));
        }
        stage_.load();
        for (std::size_t number = 0; number < 4; ++number) {
            stage_.attach(number, {blocks_.at(number)}, nameOf(number));
            stage_.attachIdle(number, 0, nameOf(number));
        }
    }

    /// Ranks of the functions that an edit of the document calls.
    std::string callsOf(std::size_t number) {
        stage_.host().documents().setCurrent(&stage_.document(nameOf(number)));
        stage_.command([&] { place(stage_.drawing(nameOf(number)), blocks_.at(number)); }, nameOf(number));
        return stage_.takeCalls();
    }

    Stage stage_;
    std::array<KtDbObjectId, 4> blocks_;
};

TEST_P(ClosingOrder, LeavesTheOtherDocumentsTheirCallsAndNothingBehind) {
    for (std::size_t closed = 0; closed < 4; ++closed) {
        stage_.close(nameOf(GetParam().at(closed)));
        for (std::size_t left = closed + 1; left < 4; ++left) {
            const std::string call = std::to_string(GetParam().at(left)) + ' ';
            EXPECT_EQ(callsOf(GetParam().at(left)), call + call);
        }
    }
    EXPECT_THAT(stage_.leftWithDocuments(), IsEmpty());
    stage_.unload();
    EXPECT_EQ(stage_.escaped(), "");
    EXPECT_THAT(stage_.host().end().findings, IsEmpty());
}

std::vector<std::array<std::size_t, 4>> allOrders() {
    std::vector<std::array<std::size_t, 4>> orders;
    std::array<std::size_t, 4> order{0, 1, 2, 3};
    do {
        orders.push_back(order);
    } while (std::ranges::next_permutation(order).found);
    return orders;
}

INSTANTIATE_TEST_SUITE_P(Every, ClosingOrder, testing::ValuesIn(allOrders()));

// Unloading

class OddUnloading : public testing::Test {
protected:
    OddUnloading() {
        stage_.open(L"plan");
        block_ = placedBlock(stage_.drawing());
        stage_.load();
        stage_.attach(0, {block_});
        stage_.attach(1, {block_});
        stage_.attachIdle(2, 0);
    }

    void expectNothingLeft() {
        EXPECT_EQ(stage_.escaped(), "");
        EXPECT_THAT(stage_.host().end().findings, IsEmpty());
    }

    Stage stage_;
    KtDbObjectId block_;
};

TEST_F(OddUnloading, IsRefusedInTheMiddleOfAPassWhichGoesOn) {
    bool refused = false;
    stage_.onCall(0, [&] { refused = !stage_.host().modules().unload(Stage::kModule); });
    stage_.command([this] { place(stage_.drawing(), block_); });
    EXPECT_TRUE(refused);
    std::string calls = stage_.takeCalls();
    std::ranges::sort(calls); // which of the two timers comes first is up to their addresses
    EXPECT_EQ(calls, "   012");
    stage_.unload();
    expectNothingLeft();
}

TEST_F(OddUnloading, BetweenTheEndOfACommandAndItsIdleCheckEndsTheCalls) {
    kthost::Document& plan = stage_.document();
    ASSERT_TRUE(stage_.host().documents().runCommand(plan, L"edit", [this](kthost::Document&) {
        place(stage_.drawing(), block_);
        return kthost::CommandResult::done;
    }));
    stage_.unload();
    stage_.host().loop().pump();
    EXPECT_EQ(stage_.takeCalls(), "");
    expectNothingLeft();
}

TEST_F(OddUnloading, WithAChangeThatNobodyWasToldOfLeavesNothingBehind) {
    stage_.document().setPendingInputCount(1);
    stage_.command([this] { place(stage_.drawing(), block_); });
    EXPECT_EQ(stage_.takeCalls(), "");
    stage_.unload();
    stage_.document().setPendingInputCount(0);
    stage_.command([this] { place(stage_.drawing(), block_); });
    EXPECT_EQ(stage_.takeCalls(), "");
    expectNothingLeft();
}

} // namespace
