#include "bench/literal/Timer.h"

namespace bench::literal {

void Timer::setEnabled(bool enable) {
    if (enable == enabled_) {
        return;
    }
    if (enable) {
        timers_.insert(this);
    } else {
        timers_.erase(this);
    }
    enabled_ = enable;
}

void Timer::check() {
    if (!enabled_) {
        return;
    }
    const std::uint32_t elapsed = GetTickCount() - startTick_;
    if (elapsed < interval_) {
        return;
    }
    for (auto next = reactors_.begin(); next != reactors_.end();) {
        TimerReactor* reactor = *next++;
        reactor->timerElapsed();
    }
    startTick_ = GetTickCount();
}

void ClientTimer::add(KtRxCallback callback) {
    callbacks_.insert(callback);
    timer_.add(this);
    timer_.setEnabled(true);
}

void ClientTimer::timerElapsed() {
    for (const KtRxCallback callback : callbacks_) {
        ktrxCall(callback);
    }
}

} // namespace bench::literal
