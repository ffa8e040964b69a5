#pragma once

#include "tests/model/TimerModel.h"

#include <optional>

namespace ktmodel {

/// Callbacks that clients have attached to the idle checks of a document, and the one timer that they share.
class IdleClientsModel {
public:
    IdleClientsModel(EnabledTimers& timers, std::uint32_t interval) : timer_(timers, interval) {}

    void add(CallbackNumber callback);
    void remove(CallbackNumber callback);
    /// The next to be called behind `last`, or the first.
    std::optional<CallbackNumber> behind(std::optional<CallbackNumber> last) const;

    TimerModel& timer() { return timer_; }

    bool isEnabled() const { return enabled_; }

    IdleClientsSnapshot snapshot() const { return {timer_.state(), enabled_, callbacks_}; }

private:
    void setEnabled(bool enable);

    TimerModel timer_;
    bool enabled_ = false;
    std::set<CallbackNumber> callbacks_;
};

} // namespace ktmodel
