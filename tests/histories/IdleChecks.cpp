#include "tests/histories/IdleChecks.h"

#include "kthost/documents/Host.h"

namespace histories {

namespace {

bool isIdle(const kthost::Document& document) {
    const KtAp::DocLockMode mode = document.lockMode();
    return document.isQuiescent() && (mode == KtAp::kNotLocked || mode == KtAp::kNone) &&
           document.pendingInputCount() == 0 && !kthost::Host::current()->window().isInputWaiting();
}

} // namespace

IdleChecks::IdleChecks() {
    kthost::Host::current()->documents().addReactor(this);
}

IdleChecks::~IdleChecks() {
    kthost::Host::current()->documents().removeReactor(this);
}

kthost::Document* IdleChecks::takeDone() {
    const KtApDocument* due = std::exchange(due_, nullptr);
    kthost::Document* current = kthost::Host::current()->documents().currentDocument();
    return due != nullptr && due == current && isIdle(*current) ? current : nullptr;
}

void IdleChecks::documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode /*previous*/,
                                         KtAp::DocLockMode /*current*/, KtAp::DocLockMode /*overall*/,
                                         const wchar_t* globalCommandName) {
    if (globalCommandName[0] == L'#' && document == kthost::Host::current()->documents().currentDocument()) {
        due_ = document;
    }
}

void IdleChecks::documentToBeDestroyed(KtApDocument* document) {
    due_ = due_ == document ? nullptr : due_;
}

} // namespace histories
