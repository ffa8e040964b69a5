#include "tests/model/DocumentModel.h"

#include "tests/model/Statuses.h"

namespace ktmodel {

BlocksModel* DocumentModel::blocks() {
    if (blocks_ == nullptr) {
        auto made = std::make_unique<BlocksModel>(database_, timers_);
        if (made->attach() == kDone) {
            blocks_ = std::move(made);
        }
    }
    return blocks_.get();
}

/// The interval of the last call holds for all. The first one is taken as it is.
void DocumentModel::attachIdle(CallbackNumber callback, std::uint32_t interval, bool attach) {
    if (idleClients_) {
        idleClients_->timer().setInterval(interval);
    } else {
        idleClients_.emplace(timers_, interval);
    }
    attach ? idleClients_->add(callback) : idleClients_->remove(callback);
}

DocumentSnapshot DocumentModel::snapshot() const {
    DocumentSnapshot snapshot;
    snapshot.enabled = true;
    if (blocks_ != nullptr) {
        snapshot.blocks = blocks_->snapshot();
    }
    if (idleClients_) {
        snapshot.idleClients = idleClients_->snapshot();
    }
    return snapshot;
}

} // namespace ktmodel
