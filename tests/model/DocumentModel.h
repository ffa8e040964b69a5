#pragma once

#include "tests/model/BlocksModel.h"
#include "tests/model/IdleClientsModel.h"

#include <KtApDocument.h>

#include <memory>
#include <optional>

namespace ktmodel {

/// What is kept of one open document.
class DocumentModel {
public:
    DocumentModel(KtDbDatabase& database, TimerCount& timers) : database_(database), timers_{timers, {}} {}

    /// Made on first use; null when it cannot be made.
    BlocksModel* blocks();

    /// As far as it has been made.
    BlocksModel* existingBlocks() const { return blocks_.get(); }

    std::optional<IdleClientsModel>& idleClients() { return idleClients_; }

    void attachIdle(CallbackNumber callback, std::uint32_t interval, bool attach);

    DocumentSnapshot snapshot() const;

private:
    KtDbDatabase& database_;
    EnabledTimers timers_;
    std::unique_ptr<BlocksModel> blocks_;
    std::optional<IdleClientsModel> idleClients_;
};

} // namespace ktmodel
