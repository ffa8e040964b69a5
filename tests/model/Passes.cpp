#include "tests/model/Passes.h"

namespace ktmodel {

void Passes::begin(Pass pass) {
    open_.push_back({std::move(pass), std::nullopt});
    goOn();
}

/// What a pass does at its end may begin another one, which then goes on by itself.
void Passes::goOn() {
    Open& innermost = open_.back();
    innermost.awaited = innermost.pass.next();
    if (innermost.awaited) {
        expected_.push_back(*innermost.awaited);
        return;
    }
    const Open ended = std::move(innermost);
    open_.pop_back();
    ended.pass.finish();
    if (!ended.thrown) {
        ended.pass.then();
    }
}

void Passes::callbackBegins(CallbackNumber callback) {
    made_.push_back(callback);
    if (!awaited()) { // nobody was to be called: a pass of its own, so that its return finds one
        open_.push_back({{[] { return std::nullopt; }}, callback});
    }
    open_.back().awaited.reset();
    open_.back().running = true;
}

void Passes::callbackReturns() {
    if (!open_.empty() && std::exchange(open_.back().running, false)) {
        goOn();
    }
}

void Passes::callbackThrows() {
    if (open_.empty() || !std::exchange(open_.back().running, false)) {
        return;
    }
    open_.back().thrown = true;
    if (open_.back().pass.throwEndsIt) {
        open_.pop_back();
    } else {
        goOn();
    }
}

void Passes::abandonDownTo(std::size_t depth) {
    while (open_.size() > depth) {
        open_.pop_back();
    }
}

std::optional<CallbackNumber> Passes::awaited() const {
    return open_.empty() ? std::nullopt : open_.back().awaited;
}

} // namespace ktmodel
