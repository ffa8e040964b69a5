#include "tests/model/TimerModel.h"

#include <WindowSystem.h>

namespace ktmodel {

TimerModel::TimerModel(EnabledTimers& timers, std::uint32_t interval) : timers_(timers) {
    state_.interval = interval;
    ++timers_.all.count;
}

TimerModel::~TimerModel() {
    timers_.enabled.erase(this);
    --timers_.all.count;
    if (timers_.all.count == 0) {
        timers_.all.filterRegistered = false;
    }
}

void TimerModel::setEnabled(bool enable) {
    state_.enabled = enable;
    if (enable) {
        timers_.all.filterRegistered = true;
        timers_.enabled.insert(this);
    } else {
        timers_.enabled.erase(this);
    }
}

void TimerModel::setInterval(std::uint32_t interval) {
    state_.interval = static_cast<std::int32_t>(interval) < 0 ? 0 : interval;
}

bool TimerModel::isDue() const {
    const std::uint32_t elapsed = GetTickCount() - state_.startTick; // wraps around like the counter
    return state_.enabled && elapsed >= state_.interval;
}

void TimerModel::restart() {
    state_.startTick = GetTickCount();
}

} // namespace ktmodel
