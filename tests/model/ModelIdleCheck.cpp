#include "tests/model/Model.h"

#include "tests/model/Unnoticed.h"

#include <KtApDocManager.h>
#include <KtEd.h>
#include <WindowSystem.h>

namespace ktmodel {

void Model::idleCheckArrives(KtApDocument* document) {
    const Unnoticed unnoticed;
    arrived_.push_back(names_[document]);
    if (!posted_.empty()) {
        expectedChecks_.push_back(names_[posted_.front()]);
        posted_.pop_front();
    }
    if (isIdle(document)) {
        checkTimers(*find(document), timersOf(*document));
    }
}

bool Model::isIdle(KtApDocument* document) const {
    KtApDocManager& manager = *ktDocManagerPtr();
    if (document == nullptr || manager.curDocument() != document || find(document) == nullptr) {
        return false;
    }
    const KtAp::DocLockMode lock = document->lockMode(false);
    return document->isQuiescent() && (lock == KtAp::kNotLocked || lock == KtAp::kNone) &&
           !ktedCommandActive() && manager.pendingInputCount(document) == 0 && GetInputState() == 0;
}

/// In the order in which they are to be checked, those that are enabled.
std::vector<TimerModel*> Model::timersOf(KtApDocument& document) const {
    DocumentModel& record = *find(&document);
    std::vector<TimerModel*> timers;
    if (record.idleClients() && record.idleClients()->timer().state().enabled) {
        timers.push_back(&record.idleClients()->timer());
    }
    BlocksModel* blocks = record.existingBlocks();
    if (blocks != nullptr && blocks->timer() && blocks->timer()->state().enabled) {
        const bool first = blocksTimerIsFirst_ && blocksTimerIsFirst_(document);
        timers.insert(first ? timers.begin() : timers.end(), &*blocks->timer());
    }
    return timers;
}

/// A timer starts anew once all that it fired for has been called; only then is the next one looked at.
void Model::checkTimers(DocumentModel& document, std::vector<TimerModel*> timers) {
    if (timers.empty()) {
        return;
    }
    TimerModel& timer = *timers.front();
    timers.erase(timers.begin());
    if (!timer.isDue()) {
        checkTimers(document, timers);
        return;
    }
    const auto then = [this, &document, &timer, timers] {
        const Unnoticed unnoticed;
        timer.restart();
        checkTimers(document, timers);
    };
    if (document.idleClients() && &timer == &document.idleClients()->timer()) {
        callIdleClients(*document.idleClients(), then);
    } else if (document.existingBlocks()->scanIfNeeded(false)) {
        callBlockClients(*document.existingBlocks(), then);
    } else {
        then();
    }
}

/// Who comes next is looked up when the one before has returned. Those behind one that throws wait for the
/// next idle check: the timer has not been started anew.
void Model::callIdleClients(IdleClientsModel& clients, std::function<void()> then) {
    Pass pass;
    pass.next = [&clients, last = std::optional<CallbackNumber>()]() mutable {
        last = clients.behind(last);
        return last;
    };
    pass.then = std::move(then);
    passes_.begin(std::move(pass));
}

/// Who is called is settled before the first is. What they change is not told to anybody. One that throws
/// keeps none of the others from what they will not be told again.
void Model::callBlockClients(BlocksModel& blocks, std::function<void()> then) {
    auto callbacks = blocks.takeCallbacks();
    if (!callbacks) {
        then();
        return;
    }
    Pass pass;
    pass.next = [left = std::move(*callbacks)]() mutable -> std::optional<CallbackNumber> {
        return left.empty() ? std::nullopt : std::optional(left.extract(left.begin()).value());
    };
    pass.throwEndsIt = false;
    pass.finish = [&blocks] {
        const Unnoticed unnoticed;
        blocks.callsDone();
    };
    pass.then = std::move(then);
    passes_.begin(std::move(pass));
}

} // namespace ktmodel
