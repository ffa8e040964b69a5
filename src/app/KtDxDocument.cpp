#include "app/KtDxDocument.h"

#include "blocks/KtDxBlocks.h"
#include "notify/KtDxExternalClientTimerReactor.h"
#include "notify/KtDxTimer.h"
#include "notify/Walk.h"

#include <new>
#include <tuple>
#include <utility>

KtDxDocument::KtDxDocument(KtApDocument* document) : document_(document) {
    std::ignore = setPartsEnabled(true); // cannot fail
}

KtDxDocument::~KtDxDocument() {
    std::ignore = setPartsEnabled(false); // cannot fail
    delete std::exchange(blockMonitor_, nullptr);
    delete std::exchange(clientReactor_, nullptr); // before the timer, whose reactors it leaves
    delete std::exchange(timer_, nullptr);
    ktrxForgetCallbacks(document_);
}

Orbx::ErrorStatus KtDxDocument::setEnabled(bool enable) {
    return setPartsEnabled(enable);
}

Orbx::ErrorStatus KtDxDocument::setPartsEnabled(bool enable) {
    // A part that cannot follow keeps its own state; the record's is about the record.
    if (blockMonitor_ != nullptr) {
        std::ignore = blockMonitor_->setEnabled(enable);
    }
    if (timer_ != nullptr) {
        std::ignore = timer_->setEnabled(enable);
    }
    if (clientReactor_ != nullptr) {
        std::ignore = clientReactor_->setEnabled(enable);
    }
    return KtDxEnableBase::setEnabled(enable);
}

KtDxBlocks* KtDxDocument::blocks() {
    if (blockMonitor_ == nullptr) {
        std::ignore =
            KtDxBlocks::create(this, blockMonitor_); // on failure there is no monitor, which says it all
    }
    return blockMonitor_;
}

Orbx::ErrorStatus KtDxDocument::attachTimerCallback(KtRxCallback callback, std::uint32_t interval,
                                                    bool attach) {
    if (callback == nullptr) {
        return Orbx::eMissing;
    }
    if (timer_ != nullptr) {
        timer_->setInterval(static_cast<std::int32_t>(interval));
    } else if (!makeTimer(interval)) {
        return Orbx::eMissing;
    }
    if (clientReactor_ == nullptr && !makeClientReactor()) {
        return Orbx::eMissing;
    }
    if (attach) {
        return clientReactor_->add(callback);
    }
    clientReactor_->remove(callback);
    return Orbx::eOk;
}

bool KtDxDocument::makeTimer(std::uint32_t interval) {
    timer_ = new (std::nothrow) KtDxTimer(this, interval);
    return timer_ != nullptr;
}

bool KtDxDocument::makeClientReactor() {
    clientReactor_ = new (std::nothrow) KtDxExternalClientTimerReactor(timer_);
    return clientReactor_ != nullptr;
}

KtDbDatabase* KtDxDocument::database() const {
    return document_ == nullptr ? nullptr : document_->database();
}

void KtDxDocument::checkTimers() {
    walkTakingNextFirst(enabledTimers_, [](KtDxTimer* timer) {
        if (timer != nullptr) {
            timer->check();
        }
    });
}
