#include "bench/limit/Application.h"

#include "bench/BlockTableWalk.h"

#include <AppFramework.h>
#include <KtApDocManager.h>
#include <KtEd.h>

#include <tuple>

namespace bench::limit {

Application* Application::current = nullptr;

Application::Application(KtApDocument& document) : document_(document), calls_(document) {
    current = this;
    ktDocManagerPtr()->addReactor(this);
    ktedRegisterFilterWinMsg(&filter);
}

Application::~Application() {
    ktedRemoveFilterWinMsg(&filter);
    ktDocManagerPtr()->removeReactor(this);
    current = nullptr;
}

void Application::attach(KtRxCallback callback) {
    calls_.create();
    calls_.enable();
    callback_ = callback;
}

void Application::update(bool notify) {
    if (calls_.update() && notify) {
        ktrxCall(callback_);
    }
}

void Application::documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode /*previous*/,
                                          KtAp::DocLockMode /*current*/, KtAp::DocLockMode /*overall*/,
                                          const wchar_t* globalCommandName) {
    if (document == nullptr || globalCommandName == nullptr || globalCommandName[0] != L'#' ||
        ktDocManagerPtr()->curDocument() != document) {
        return;
    }
    const CWinThread* thread = AfxGetThread();
    if (message_ == 0) {
        message_ = RegisterWindowMessageW(L"WM_KTDX_IDLE_CHECK");
    }
    PostMessageW(thread->m_pMainWnd->m_hWnd, message_, reinterpret_cast<WPARAM>(document), 0);
}

bool Application::filter(MSG* message) {
    if (message->message != current->message_) {
        return false;
    }
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a message has no other place for a pointer
    const auto* document = reinterpret_cast<KtApDocument*>(message->wParam);
    if (document == ktDocManagerPtr()->curDocument() && document->isQuiescent() && current->isIdle()) {
        current->check();
    }
    return true;
}

bool Application::isIdle() const {
    if (!document_.isQuiescent()) {
        return false;
    }
    const KtAp::DocLockMode mode = document_.lockMode(false);
    KtApDocument* document = &document_;
    return (mode == KtAp::kNotLocked || mode == KtAp::kNone) && !ktedCommandActive() &&
           ktDocManagerPtr()->pendingInputCount(document) == 0 && GetInputState() == 0;
}

/// One timer for the blocks, and one for the clients' callbacks if there are any.
void Application::check() {
    std::ignore = GetTickCount(); // is it due?
    if (calls_.isRescanNeeded() && callback_ != nullptr) {
        update(true);
    }
    std::ignore = GetTickCount(); // when it fired
    if (timerCallbacks_.empty()) {
        return;
    }
    std::ignore = GetTickCount();
    for (const KtRxCallback callback : timerCallbacks_) {
        ktrxCall(callback);
    }
    std::ignore = GetTickCount();
}

void Application::askForTables(KtArray<KtDbObjectId>& records, KtArray<KtDbObjectId>& tables) const {
    const auto isTable = [](const KtDbBlockTableRecord& record) {
        const wchar_t* name = nullptr;
        return !record.isDependent() && record.isAnonymous() && record.getName(name) == Orbx::eOk &&
               name[0] != L'\0' && name[1] == L'T';
    };
    const auto ask = [&] {
        records.setLogicalLengthZero();
        walkBlockTable(*document_.database(), [&](const KtDbBlockTableRecord& record) {
            if (isTable(record)) {
                records.append(record.objectId());
            }
            return true;
        });
    };
    ask(); // each of the two queries does
    ask();
    for (const KtDbObjectId id : records) {
        const Opened<KtDbBlockTableRecord> record(id, KtDb::kForRead);
        std::ignore = record->getBlockReferenceIds(tables, true, true); // they are there
    }
}

} // namespace bench::limit
