#pragma once

#include "tests/model/Snapshot.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace ktmodel {

/// Callbacks that are to be made one after the other. A callback may do anything meanwhile, begin another
/// pass included; what comes after it waits until it has returned.
struct Pass {
    /// Gives the next callback to be made, none when all have been.
    std::function<std::optional<CallbackNumber>()> next;
    /// What a callback throws ends the pass at once, or goes on when all the others have been made.
    bool throwEndsIt = true;
    /// Done when all have been made.
    std::function<void()> finish = [] {};
    /// Done after that, unless a callback threw.
    std::function<void()> then = [] {};
};

class Passes {
public:
    /// Inside the callback that is running, if one is.
    void begin(Pass pass);

    void callbackBegins(CallbackNumber callback);
    void callbackReturns();
    void callbackThrows();

    std::size_t depth() const { return open_.size(); }

    /// Gives up passes whose callbacks were not made.
    void abandonDownTo(std::size_t depth);
    /// The callback that has to come next; none while one is running that has no pass inside it.
    std::optional<CallbackNumber> awaited() const;

    /// Callbacks that had to be made since the last question, in order.
    std::vector<CallbackNumber> takeExpected() { return std::exchange(expected_, {}); }

    /// Callbacks that were made.
    std::vector<CallbackNumber> takeMade() { return std::exchange(made_, {}); }

private:
    struct Open {
        Pass pass;
        std::optional<CallbackNumber> awaited;
        bool running = false; // a callback of it
        bool thrown = false;
    };

    void goOn();

    std::vector<Open> open_; // the innermost last
    std::vector<CallbackNumber> expected_;
    std::vector<CallbackNumber> made_;
};

} // namespace ktmodel
