#pragma once

#include <KtRxCallback.h>

#include <cstddef>
#include <map>
#include <utility>

namespace kthost {

/// Which functions modules hold to call others back by, for which document, as `ktrxNoteCallback` reported
/// it. One at a time in a process.
class CallbackLedger {
public:
    CallbackLedger();
    CallbackLedger(const CallbackLedger&) = delete;
    CallbackLedger& operator=(const CallbackLedger&) = delete;
    ~CallbackLedger();

    static CallbackLedger* current();

    void note(KtApDocument* document, KtRxCallback callback, bool held);
    /// The document has gone, and with it what was held for it.
    void forget(const KtApDocument* document);

    std::size_t size() const { return held_.size(); }

    /// Calls `look(document, callback)` for each function held.
    template <typename Look>
    void inspect(Look&& look) const {
        for (const auto& [key, times] : held_) {
            look(key.first, key.second);
        }
    }

private:
    std::map<std::pair<KtApDocument*, KtRxCallback>, std::size_t> held_;
};

} // namespace kthost
