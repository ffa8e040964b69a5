#include "DocumentWatch.h"

#include "Refusal.h"

namespace parts {

void DocumentWatch::startList(const Options& options) {
    auto list = std::make_unique<PartsList>(document_, timer_, options);
    stopList();
    list_ = std::move(list);
}

void DocumentWatch::stopList() {
    if (list_) {
        list_->stop();
        list_.reset();
    }
}

const PartsList& DocumentWatch::list() const {
    if (!list_) {
        throw Refusal(L"no list is kept for this document");
    }
    return *list_;
}

void DocumentWatch::startHeartbeat(std::uint32_t milliseconds) {
    stopHeartbeat();
    heartbeat_ = std::make_unique<Heartbeat>(document_, timer_, milliseconds);
}

void DocumentWatch::stopHeartbeat() {
    if (heartbeat_) {
        heartbeat_->stop();
        heartbeat_.reset();
    }
}

void DocumentWatch::stopAll() {
    stopList();
    stopHeartbeat();
}

void DocumentWatch::stopWithDocument() {
    if (list_) {
        list_->stopWithDocument();
    }
}

} // namespace parts
