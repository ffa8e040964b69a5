#pragma once

#include <KtRxCallback.h>

#include <array>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

/// Plain functions for a test to attach, numbered in ascending order of their addresses, and what became of
/// them. One at a time: what they note goes to the one alive.
class ClientCallbacks {
public:
    static constexpr std::size_t kCount = 5;

    ClientCallbacks();
    ClientCallbacks(const ClientCallbacks&) = delete;
    ClientCallbacks& operator=(const ClientCallbacks&) = delete;
    ~ClientCallbacks();

    KtRxCallback at(std::size_t rank) const { return functions_.at(rank); }

    /// What the function does beside being noted.
    void onCall(std::size_t rank, std::function<void()> action) { actions_.at(rank) = std::move(action); }

    /// Ranks of the functions called since the last question, in the order of the calls.
    std::vector<std::size_t> takeCalls() { return std::exchange(calls_, {}); }

private:
    template <std::size_t kNumber>
    static void function();
    void called(KtRxCallback which);

    static ClientCallbacks* current;

    std::array<KtRxCallback, kCount> functions_; // ascending
    std::array<std::function<void()>, kCount> actions_;
    std::vector<std::size_t> calls_;
};
