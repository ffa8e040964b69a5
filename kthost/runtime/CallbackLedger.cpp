#include "kthost/runtime/CallbackLedger.h"

#include <new>

namespace kthost {

namespace {

CallbackLedger* currentLedger = nullptr;

} // namespace

CallbackLedger::CallbackLedger() {
    currentLedger = this;
}

CallbackLedger::~CallbackLedger() {
    currentLedger = nullptr;
}

CallbackLedger* CallbackLedger::current() {
    return currentLedger;
}

void CallbackLedger::note(KtApDocument* document, KtRxCallbackList list, KtRxCallback callback, bool held) {
    if (!held) {
        held_.erase({document, list, callback});
        return;
    }
    try {
        held_.emplace(document, list, callback);
    } catch (const std::bad_alloc&) {
        return; // an audit that misses one callback is better than a client that does not get it
    }
}

void CallbackLedger::forget(const KtApDocument* document) {
    std::erase_if(held_, [document](const auto& entry) { return std::get<0>(entry) == document; });
}

} // namespace kthost
