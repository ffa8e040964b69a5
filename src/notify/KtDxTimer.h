#pragma once

#include "notify/KtDxNotifierBase.h"
#include "notify/KtDxTimerReactor.h"

#include <cstdint>

class KtDxCmdLineHook;
class KtDxDocument;

/// Number of timers alive.
extern std::uint32_t gTimerCount;
/// The one command-line hook; there exactly while a timer is, and null even then if it could not be
/// allocated.
extern KtDxCmdLineHook* gCmdLineHook;

/// Puts work off to idle time. Nothing wakes a timer: it fires when an idle check of its document asks it to
/// `check` and its interval has elapsed since it fired last. The start tick begins at 0 and enabling does not
/// restart, so a timer is due at its first check.
class KtDxTimer : public KtDxNotifierBase<KtDxTimerReactor*> {
public:
    /// Disabled and repeating. `document` is not owned and outlives the timer; `interval`, in milliseconds,
    /// is taken as it is.
    KtDxTimer(KtDxDocument* document, std::uint32_t interval);
    ~KtDxTimer() override;

    /// While enabled, the timer is in its document's set of enabled timers. Enabling also enables the
    /// command-line hook; disabling never disables it, since other timers may need it. eMissing without a
    /// hook (when enabling) or a document, and when there is no memory.
    Orbx::ErrorStatus setEnabled(bool enable) override;
    /// Calls every reactor, in ascending order of address. A reactor may do anything to the timer but destroy
    /// it.
    virtual void notify();
    /// Measures the interval from now on; the present tick.
    virtual std::uint32_t restart();
    virtual bool isRepeating() const;
    /// Whether the timer goes on after firing or is disabled by it.
    virtual void setRepeating(bool repeating);
    /// Fires if the timer is enabled and due.
    virtual void check();
    virtual std::uint32_t interval() const;
    /// The interval stored: a negative one becomes 0.
    virtual std::uint32_t setInterval(std::int32_t interval);

private:
    KtDxDocument* document_;
    std::uint32_t interval_;
    std::uint32_t startTick_ = 0;
    bool repeating_ = true;
};
