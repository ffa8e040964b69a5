#pragma once

#include "tests/model/Snapshot.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace ktmodel {

/// Callbacks that are to be made one after the other. A callback may do anything meanwhile, begin another
/// pass included; what comes after it waits until it has returned.
class Passes {
public:
    /// Gives the next callback to be made, none when all have been.
    using Next = std::function<std::optional<CallbackNumber>()>;

    /// Begins a pass inside the callback that is running, if one is. `then` is done when all have been made.
    void begin(Next next, std::function<void()> then);

    void callbackBegins(CallbackNumber callback);
    void callbackReturns();
    /// What a callback throws ends the pass that made it, and nothing after the pass is done.
    void callbackThrows();

    std::size_t depth() const { return passes_.size(); }

    /// Gives up passes whose callbacks were not made.
    void abandonDownTo(std::size_t depth);
    /// The callback that has to come next; none while one is running that has no pass inside it.
    std::optional<CallbackNumber> awaited() const;

    /// Callbacks that had to be made since the last question, in order.
    std::vector<CallbackNumber> takeExpected() { return std::exchange(expected_, {}); }

    /// Callbacks that were made.
    std::vector<CallbackNumber> takeMade() { return std::exchange(made_, {}); }

private:
    struct Pass {
        Next next;
        std::function<void()> then;
        std::optional<CallbackNumber> awaited;
        bool running = false; // a callback of it
    };

    void goOn();

    std::vector<Pass> passes_; // the innermost last
    std::vector<CallbackNumber> expected_;
    std::vector<CallbackNumber> made_;
};

} // namespace ktmodel
