#include "kthost/runtime/CallbackLedger.h"

#include <algorithm>

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

void CallbackLedger::note(KtApDocument* document, KtRxCallback callback, bool held) {
    if (held) {
        ++held_[{document, callback}];
        return;
    }
    const auto entry = held_.find({document, callback});
    if (entry != held_.end() && --entry->second == 0) {
        held_.erase(entry);
    }
}

void CallbackLedger::forget(const KtApDocument* document) {
    std::erase_if(held_, [document](const auto& entry) { return entry.first.first == document; });
}

} // namespace kthost
