#include "tests/model/Passes.h"

namespace ktmodel {

void Passes::begin(Next next, std::function<void()> then) {
    passes_.push_back({std::move(next), std::move(then), std::nullopt, false});
    goOn();
}

/// What a pass does at its end may begin another one, which then goes on by itself.
void Passes::goOn() {
    Pass& pass = passes_.back();
    pass.awaited = pass.next();
    if (pass.awaited) {
        expected_.push_back(*pass.awaited);
        return;
    }
    const std::function<void()> then = std::move(pass.then);
    passes_.pop_back();
    then();
}

void Passes::callbackBegins(CallbackNumber callback) {
    made_.push_back(callback);
    if (!awaited()) { // nobody was to be called: a pass of its own, so that its return finds one
        passes_.push_back({[] { return std::nullopt; }, [] {}, callback, false});
    }
    passes_.back().running = true;
    passes_.back().awaited.reset();
}

void Passes::callbackReturns() {
    if (!passes_.empty() && passes_.back().running) {
        passes_.back().running = false;
        goOn();
    }
}

void Passes::callbackThrows() {
    if (!passes_.empty()) {
        passes_.pop_back();
    }
}

void Passes::abandonDownTo(std::size_t depth) {
    while (passes_.size() > depth) {
        passes_.pop_back();
    }
}

std::optional<CallbackNumber> Passes::awaited() const {
    return passes_.empty() ? std::nullopt : passes_.back().awaited;
}

} // namespace ktmodel
