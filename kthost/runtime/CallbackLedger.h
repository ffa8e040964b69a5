#pragma once

#include <KtRxCallback.h>

#include <cstddef>
#include <set>
#include <tuple>

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

    void note(KtApDocument* document, KtRxCallbackList list, KtRxCallback callback, bool held);
    void forget(const KtApDocument* document);

    std::size_t size() const { return held_.size(); }

    /// Calls `look(document, callback)` for each function held, once for each list.
    template <typename Look>
    void inspect(Look&& look) const {
        for (const auto& [document, list, callback] : held_) {
            look(document, callback);
        }
    }

private:
    std::set<std::tuple<KtApDocument*, KtRxCallbackList, KtRxCallback>> held_;
};

} // namespace kthost
