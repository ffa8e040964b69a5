#include "notify/KtDxTimer.h"

#include <WindowSystem.h>

#include "app/KtDxDocument.h"
#include "notify/KtDxCmdLineHook.h"
#include "notify/Walk.h"

#include <algorithm>
#include <new>
#include <tuple>
#include <utility>

std::uint32_t gTimerCount = 0;
KtDxCmdLineHook* gCmdLineHook = nullptr;

KtDxTimer::KtDxTimer(KtDxDocument* document, std::uint32_t interval)
    : document_(document),
      interval_(interval) {
    if (gTimerCount++ == 0) {
        gCmdLineHook = new (std::nothrow) KtDxCmdLineHook;
    }
}

KtDxTimer::~KtDxTimer() {
    if (--gTimerCount == 0) {
        delete std::exchange(gCmdLineHook, nullptr);
    }
    if (KtDxEnableBase::isEnabled() && document_ != nullptr) {
        document_->enabledTimers().erase(this);
        std::ignore = KtDxEnableBase::setEnabled(false); // storing the flag cannot fail
    }
}

Orbx::ErrorStatus KtDxTimer::setEnabled(bool enable) {
    if (enable) {
        // Before the comparison with the present state: enabling an enabled timer is how a filter that the
        // host refused at first is asked for again.
        if (gCmdLineHook == nullptr) {
            return Orbx::eMissing;
        }
        std::ignore =
            gCmdLineHook->setEnabled(true); // without the filter the timer waits; it is not an error
    }
    if (enable == isEnabled()) {
        return Orbx::eOk;
    }
    if (document_ == nullptr) {
        return Orbx::eMissing;
    }
    if (!enable) {
        document_->enabledTimers().erase(this);
        return KtDxEnableBase::setEnabled(false);
    }
    try {
        document_->enabledTimers().insert(this);
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    return KtDxEnableBase::setEnabled(true);
}

void KtDxTimer::notify() {
    walkTakingNextFirst(listeners(), [](KtDxTimerReactor* reactor) { reactor->timerElapsed(); });
}

std::uint32_t KtDxTimer::restart() {
    startTick_ = GetTickCount();
    return startTick_;
}

bool KtDxTimer::isRepeating() const {
    return repeating_;
}

void KtDxTimer::setRepeating(bool repeating) {
    repeating_ = repeating;
}

void KtDxTimer::check() {
    if (!isEnabled()) {
        return;
    }
    const std::uint32_t elapsed = GetTickCount() - startTick_; // right across the counter's wrap-around
    if (elapsed < interval_) {
        return;
    }
    notify();
    if (isRepeating()) {
        restart();
    } else {
        std::ignore = setEnabled(false); // a timer in use has a document, so disabling succeeds
    }
}

std::uint32_t KtDxTimer::interval() const {
    return interval_;
}

std::uint32_t KtDxTimer::setInterval(std::int32_t interval) {
    interval_ = static_cast<std::uint32_t>(std::max(interval, 0));
    return interval_;
}
