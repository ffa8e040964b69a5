#include <ktdx/KtDxNotify.h>

#include "app/KtDxApplication.h"
#include "app/KtDxDocument.h"
#include "blocks/KtDxBlocks.h"

#include <algorithm>
#include <tuple>

namespace {

KtDxBlocks* monitorOf(KtApDocument* document, bool create) {
    KtDxDocument* record = documentRecord(document, create);
    return record == nullptr ? nullptr : record->blocks();
}

/// Starts watching, if nobody did before. What this first scan finds is where the clients start from and is
/// not reported to them.
bool startWatching(KtDxBlocks& monitor) {
    if (monitor.isEnabled()) {
        return true;
    }
    std::ignore =
        monitor.scanBlockTable(); // records that could not be scanned now are scanned when they are touched
    monitor.setPendingChanges(false);
    return monitor.setEnabled(true) == Orbx::eOk;
}

/// Nobody left to call.
bool hasNoCallbacks(KtDxBlocks& monitor) {
    KtDxCallbackSet callbacks;
    return monitor.collectBlockReferenceMonitors(callbacks) == Orbx::eOk && callbacks.empty();
}

bool isHeld(const KtDxBlocks& monitor, KtRxCallback callback) {
    const auto& monitors = monitor.blockMonitors();
    return std::any_of(monitors.begin(), monitors.end(), [callback](const auto& entry) {
        return entry.second != nullptr && entry.second->callbacks()->contains(callback);
    });
}

/// Tells the host when the callback has come to be held, or has ceased to be, however many definitions it
/// watches.
class HoldingNoted {
public:
    HoldingNoted(const KtDxBlocks& monitor, KtApDocument* document, KtRxCallback callback)
        : monitor_(monitor),
          document_(document),
          callback_(callback),
          wasHeld_(isHeld(monitor, callback)) {}

    HoldingNoted(const HoldingNoted&) = delete;
    HoldingNoted& operator=(const HoldingNoted&) = delete;

    ~HoldingNoted() {
        const bool held = isHeld(monitor_, callback_);
        if (held != wasHeld_) {
            ktrxNoteCallback(document_, callback_, held);
        }
    }

private:
    const KtDxBlocks& monitor_;
    KtApDocument* document_;
    KtRxCallback callback_;
    bool wasHeld_;
};

} // namespace

bool ktdxBlockReferenceMonitorAttach(KtApDocument* document, const KtArray<KtDbObjectId>* ids,
                                     KtRxCallback callback) {
    if (document == nullptr || ids == nullptr || ids->isEmpty() || callback == nullptr) {
        return false;
    }
    KtDxBlocks* monitor = monitorOf(document, true);
    if (monitor == nullptr || !startWatching(*monitor)) {
        return false;
    }
    const HoldingNoted noted(*monitor, document, callback);
    return monitor->attachBlockReferenceMonitor(callback, *ids) == Orbx::eOk;
}

void ktdxBlockReferenceMonitorDetach(KtApDocument* document, KtRxCallback callback) {
    KtDxBlocks* monitor = document == nullptr || callback == nullptr ? nullptr : monitorOf(document, false);
    if (monitor == nullptr) {
        return;
    }
    {
        const HoldingNoted noted(*monitor, document, callback);
        monitor->detachBlockReferenceMonitor(callback);
    }
    if (hasNoCallbacks(*monitor)) {
        std::ignore =
            monitor->setEnabled(false); // what could not be let go of now is let go of with the document
    }
}

bool ktdxUpdateBlockGraph(KtApDocument* document, bool force, bool notify) {
    KtDxBlocks* monitor = document == nullptr ? nullptr : monitorOf(document, true);
    if (monitor == nullptr) {
        return false;
    }
    monitor->update(force, notify);
    return true;
}
