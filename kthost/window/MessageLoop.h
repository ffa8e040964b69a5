#pragma once

#include <KtEd.h>

#include "kthost/runtime/CodeOrigin.h"
#include "kthost/runtime/ListenerList.h"

#include <cstddef>
#include <deque>
#include <type_traits>

namespace kthost {

/// The thread's message queue and the filters that see each message first, in the order of their
/// registration; the first that gives true keeps it. Messages and filters may come and go while one is
/// dispatched. One at a time in a process; user-interface thread only.
class MessageLoop {
public:
    MessageLoop();
    MessageLoop(const MessageLoop&) = delete;
    MessageLoop& operator=(const MessageLoop&) = delete;
    ~MessageLoop();

    static MessageLoop* current();

    /// Dispatches what is queued, also what is queued meanwhile; gives the number of messages. Handlers that
    /// keep posting do not hold it for ever: after kMostRounds times the queue the rest waits for the next
    /// pump.
    std::size_t pump();
    /// Shows one message to the filters; true when one of them kept it. Otherwise its window has had it.
    bool dispatch(MSG& message);

    static constexpr int kMostRounds = 100;

    /// What waits to be dispatched, the oldest first.
    const std::deque<MSG>& queue();

    /// False for null and for one that is registered.
    bool addFilter(KtEdMessageFilter filter);
    /// False for one that is not registered.
    bool removeFilter(KtEdMessageFilter filter);

    using Filters = ListenerList<std::remove_pointer_t<KtEdMessageFilter>, CodeOrigin>;

    Filters& filters() { return filters_; }

    const Filters& filters() const { return filters_; }

private:
    std::deque<MSG> queue_; // taken from the system's
    Filters filters_;
};

/// To be called when a message has been posted.
void tracePosting(UINT message, WPARAM wParam, LPARAM lParam);

} // namespace kthost
