#include "notify/KtDxExternalClientTimerReactor.h"

#include "notify/KtDxTimer.h"
#include "notify/Walk.h"

#include <tuple>

KtDxExternalClientTimerReactor::KtDxExternalClientTimerReactor(KtDxTimer* timer) : timer_(timer) {}

KtDxExternalClientTimerReactor::~KtDxExternalClientTimerReactor() {
    std::ignore =
        KtDxExternalClientTimerReactor::setEnabled(false); // without a timer there is nothing to leave
}

Orbx::ErrorStatus KtDxExternalClientTimerReactor::setEnabled(bool enable) {
    if (timer_ == nullptr) {
        return Orbx::eMissing;
    }
    if (!enable) {
        timer_->remove(this);
    } else if (!isEnabled()) {
        if (const Orbx::ErrorStatus status = timer_->add(this); status != Orbx::eOk) {
            return status; // no memory: unlike a timer that cannot be enabled, nothing would ever try this
                           // again
        }
    }
    std::ignore =
        timer_->setEnabled(enable); // a timer that cannot be enabled now may be able to at the next call
    return KtDxEnableBase::setEnabled(enable);
}

Orbx::ErrorStatus KtDxExternalClientTimerReactor::add(KtRxCallback callback) {
    if (const Orbx::ErrorStatus status = KtDxNotifierBase::add(callback); status != Orbx::eOk) {
        return status;
    }
    return isEnabled() ? Orbx::eOk : setEnabled(true);
}

std::size_t KtDxExternalClientTimerReactor::remove(KtRxCallback callback) {
    const std::size_t removed = KtDxNotifierBase::remove(callback);
    if (isEnabled() && listeners().empty()) {
        std::ignore = setEnabled(false); // fails only without a timer, and then it was never enabled
    }
    return removed;
}

void KtDxExternalClientTimerReactor::timerElapsed() {
    if (isEnabled()) {
        walkTakingNextAfter(listeners(), ktrxCall);
    }
}
