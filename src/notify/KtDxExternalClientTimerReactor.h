#pragma once

#include <KtRxCallback.h>

#include "notify/KtDxNotifierBase.h"
#include "notify/KtDxTimerReactor.h"

class KtDxTimer;

/// Calls the plain functions that clients have attached to a document whenever the document's callback timer
/// fires. It is enabled, and its timer with it, while it holds at least one callback.
class KtDxExternalClientTimerReactor : public KtDxNotifierBase<KtRxCallback>, public KtDxTimerReactor {
public:
    /// `timer` is not owned and outlives the reactor.
    explicit KtDxExternalClientTimerReactor(KtDxTimer* timer);
    ~KtDxExternalClientTimerReactor() override;

    /// Joins or leaves the timer and passes the state on to it, every time. eMissing without a timer.
    Orbx::ErrorStatus setEnabled(bool enable) override;
    /// The first callback enables the reactor.
    Orbx::ErrorStatus add(KtRxCallback callback) override;
    /// The last callback to go disables the reactor.
    std::size_t remove(KtRxCallback callback) override;

    /// Calls every callback once, in ascending order of address; one that is attached meanwhile behind the
    /// one being called is reached in the same round.
    void timerElapsed() override;

private:
    KtDxTimer* timer_;
};
