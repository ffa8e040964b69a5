#pragma once

#include "tests/model/Snapshot.h"

#include <set>

namespace ktmodel {

class TimerModel;

/// The timers of all drawings: how many there are, and whether one was ever enabled since there were none.
struct TimerCount {
    std::uint32_t count = 0;
    bool filterRegistered = false;
};

/// Enabled timers of one document.
struct EnabledTimers {
    TimerCount& all;
    std::set<TimerModel*> enabled;
};

/// A timer fires when it is checked and its interval has passed since it last fired.
class TimerModel {
public:
    TimerModel(EnabledTimers& timers, std::uint32_t interval);
    TimerModel(const TimerModel&) = delete;
    TimerModel& operator=(const TimerModel&) = delete;
    ~TimerModel();

    void setEnabled(bool enable);
    /// Negative as a signed number counts as 0.
    void setInterval(std::uint32_t interval);
    bool isDue() const;
    void restart();

    const TimerSnapshot& state() const { return state_; }

private:
    EnabledTimers& timers_;
    TimerSnapshot state_;
};

} // namespace ktmodel
