#include <ktdx/KtDxNotify.h>

#include "app/KtDxApplication.h"
#include "app/KtDxDocument.h"
#include "blocks/KtDxBlocks.h"

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
    ktrxNoteCallback(document, KtRxCallbackList::blockReferences, callback,
                     true); // part of it may stay attached
    return monitor->attachBlockReferenceMonitor(callback, *ids) == Orbx::eOk;
}

void ktdxBlockReferenceMonitorDetach(KtApDocument* document, KtRxCallback callback) {
    KtDxBlocks* monitor = document == nullptr || callback == nullptr ? nullptr : monitorOf(document, false);
    if (monitor == nullptr) {
        return;
    }
    monitor->detachBlockReferenceMonitor(callback);
    ktrxNoteCallback(document, KtRxCallbackList::blockReferences, callback, false);
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
