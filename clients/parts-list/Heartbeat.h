#pragma once

#include "CallbackSlot.h"
#include "DocumentTimer.h"

#include <cstdint>

namespace parts {

/// Prints a line at the document's idle checks, at most once an interval.
class Heartbeat {
public:
    /// Throws Refusal. The timer must outlive it.
    Heartbeat(KtApDocument& document, DocumentTimer& timer, std::uint32_t milliseconds);
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;
    ~Heartbeat() = default;

    void stop() { timer_.detach(slot_.function()); }

private:
    void beat();

    KtApDocument& document_;
    DocumentTimer& timer_;
    CallbackSlot slot_;
    std::uint32_t milliseconds_;
    std::uint32_t lastTicks_ = 0;
    std::uint64_t beats_ = 0;
};

} // namespace parts
