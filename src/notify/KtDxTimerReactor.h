#pragma once

/// Listens to a timer. Nobody deletes a reactor through this interface, and a timer never owns its reactors.
class KtDxTimerReactor {
public:
    KtDxTimerReactor() = default;
    KtDxTimerReactor(const KtDxTimerReactor&) = delete;
    KtDxTimerReactor& operator=(const KtDxTimerReactor&) = delete;

    virtual void timerElapsed() = 0;

protected:
    ~KtDxTimerReactor() = default;
};
