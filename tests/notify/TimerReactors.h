#pragma once

#include "notify/KtDxTimerReactor.h"

#include <array>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

/// Timer reactors for a test to add, numbered in ascending order of their addresses, and when they were
/// called.
class TimerReactors {
public:
    static constexpr std::size_t kCount = 5;

    TimerReactors() {
        for (std::size_t rank = 0; rank < kCount; ++rank) {
            reactors_[rank].elapsed = [this, rank] { called(rank); };
        }
    }

    TimerReactors(const TimerReactors&) = delete;
    TimerReactors& operator=(const TimerReactors&) = delete;
    ~TimerReactors() = default;

    KtDxTimerReactor* at(std::size_t rank) { return &reactors_.at(rank); }

    /// What the reactor does beside being noted.
    void onCall(std::size_t rank, std::function<void()> action) { actions_.at(rank) = std::move(action); }

    /// Ranks of the reactors called since the last question, in the order of the calls.
    std::vector<std::size_t> takeCalls() { return std::exchange(calls_, {}); }

private:
    class Reactor final : public KtDxTimerReactor {
    public:
        void timerElapsed() override { elapsed(); }

        std::function<void()> elapsed;
    };

    void called(std::size_t rank) {
        calls_.push_back(rank);
        if (const std::function<void()> action = actions_[rank]) {
            action();
        }
    }

    std::array<Reactor, kCount> reactors_;
    std::array<std::function<void()>, kCount> actions_;
    std::vector<std::size_t> calls_;
};
