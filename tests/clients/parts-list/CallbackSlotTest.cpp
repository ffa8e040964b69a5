#include "CallbackSlot.h"

#include "Refusal.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

namespace parts {

namespace {

TEST(CallbackSlot, GivesEachItsOwnFunction) {
    int first = 0;
    int second = 0;
    const CallbackSlot one([&] { ++first; });
    const CallbackSlot other([&] { ++second; });
    ASSERT_NE(one.function(), other.function());
    one.function()();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
}

TEST(CallbackSlot, ACallThatComesTooLateDoesNothing) {
    int calls = 0;
    KtRxCallback function = nullptr;
    {
        const CallbackSlot slot([&] { ++calls; });
        function = slot.function();
    }
    function();
    EXPECT_EQ(calls, 0);
}

TEST(CallbackSlot, MayBeGivenBackFromWithinItsCall) {
    std::unique_ptr<CallbackSlot> slot;
    slot = std::make_unique<CallbackSlot>([&] { slot.reset(); });
    slot->function()();
    EXPECT_EQ(slot, nullptr);
}

TEST(CallbackSlot, KeepsWhatIsThrownToItself) {
    const CallbackSlot slot([] { throw std::runtime_error("no"); });
    EXPECT_NO_THROW(slot.function()());
}

TEST(CallbackSlot, RefusesMoreThanThereAreFunctions) {
    std::vector<std::unique_ptr<CallbackSlot>> slots;
    for (std::size_t slot = 0; slot < CallbackSlot::kMost; ++slot) {
        slots.push_back(std::make_unique<CallbackSlot>([] {}));
    }
    EXPECT_THROW(CallbackSlot([] {}), Refusal);
    slots.pop_back();
    EXPECT_NO_THROW(CallbackSlot([] {}));
}

} // namespace

} // namespace parts
