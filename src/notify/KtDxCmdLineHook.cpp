#include "notify/KtDxCmdLineHook.h"

#include <KtApDocManager.h>
#include <KtEd.h>

#include "app/KtDxApplication.h"
#include "app/KtDxDocument.h"

#include <tuple>

KtDxCmdLineHook::~KtDxCmdLineHook() {
    if (KtDxEnableBase::isEnabled() && ktedRemoveFilterWinMsg(&idleCheckFilter)) {
        std::ignore = KtDxEnableBase::setEnabled(false); // storing the flag cannot fail
    }
}

Orbx::ErrorStatus KtDxCmdLineHook::setEnabled(bool enable) {
    if (isEnabled() == enable) {
        return Orbx::eOk;
    }
    const bool done =
        enable ? ktedRegisterFilterWinMsg(&idleCheckFilter) : ktedRemoveFilterWinMsg(&idleCheckFilter);
    return done ? KtDxEnableBase::setEnabled(enable) : Orbx::eFilterRefused;
}

namespace {

/// Record of the document that an idle check was posted for, if the check concerns it: the document is still
/// current and quiescent, and its record is enabled. Null otherwise.
KtDxDocument* recordToCheck(KtApDocument* posted) {
    KtApDocManager* manager = ktDocManagerPtr();
    if (gApplication == nullptr || posted == nullptr || manager == nullptr ||
        posted != manager->curDocument() || !posted->isQuiescent()) {
        return nullptr;
    }
    KtDxDocument* record = gApplication->getData(posted, false);
    return record != nullptr && record->isEnabled() ? record : nullptr;
}

/// Whether nothing is going on in the document and nobody waits for the host.
bool isIdle(KtApDocument* document) {
    if (document == nullptr || !document->isQuiescent()) {
        return false;
    }
    const KtAp::DocLockMode mode = document->lockMode(false);
    if (mode != KtAp::kNotLocked && mode != KtAp::kNone) {
        return false;
    }
    if (ktedCommandActive()) {
        return false;
    }
    KtApDocManager* manager = ktDocManagerPtr();
    return manager != nullptr && manager->pendingInputCount(document) == 0 && GetInputState() == 0;
}

} // namespace

bool idleCheckFilter(MSG* message) {
    // No special case for an id that is still 0, before anything was posted: a message 0 is then taken for an
    // idle check, and nobody else has a use for one.
    if (message->message != gIdleCheckMessage) {
        return false;
    }
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a message has no other place for a pointer
    KtDxDocument* record = recordToCheck(reinterpret_cast<KtApDocument*>(message->wParam));
    if (record != nullptr && isIdle(record->document())) {
        record->checkTimers();
    }
    return true;
}
