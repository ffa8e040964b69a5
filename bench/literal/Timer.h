#pragma once

#include <KtRxCallback.h>
#include <WindowSystem.h>

#include <cstdint>
#include <set>

namespace bench::literal {

class TimerReactor {
public:
    TimerReactor() = default;
    TimerReactor(const TimerReactor&) = delete;
    TimerReactor& operator=(const TimerReactor&) = delete;
    virtual ~TimerReactor() = default;

    virtual void timerElapsed() = 0;
};

class Timer;
/// The enabled timers of a document.
using Timers = std::set<Timer*>;

class Timer {
public:
    Timer(Timers& timers, std::uint32_t interval) : timers_(timers), interval_(interval) {}

    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    ~Timer() { timers_.erase(this); }

    void setEnabled(bool enable);

    void add(TimerReactor* reactor) { reactors_.insert(reactor); }

    void remove(TimerReactor* reactor) { reactors_.erase(reactor); }

    void check();

private:
    Timers& timers_;
    std::set<TimerReactor*> reactors_;
    bool enabled_ = false;
    std::uint32_t interval_;
    std::uint32_t startTick_ = 0;
};

/// Calls the callbacks of clients when its timer fires.
class ClientTimer final : public TimerReactor {
public:
    explicit ClientTimer(Timers& timers) : timer_(timers, 0) {}

    void add(KtRxCallback callback);
    void timerElapsed() override;

private:
    Timer timer_;
    std::set<KtRxCallback> callbacks_;
};

} // namespace bench::literal
