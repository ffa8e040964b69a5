#include "bench/literal/Application.h"

#include <AppFramework.h>
#include <KtApDocManager.h>
#include <KtEd.h>

#include <tuple>

namespace bench::literal {

Application* Application::current = nullptr;

Application::Application(const wchar_t* messageName) : messageName_(messageName) {
    current = this;
    ktDocManagerPtr()->addReactor(this);
    ktedRegisterFilterWinMsg(&filter);
}

Application::~Application() {
    ktedRemoveFilterWinMsg(&filter);
    ktDocManagerPtr()->removeReactor(this);
    current = nullptr;
}

DocumentRecord* Application::find(KtApDocument* document) {
    const auto entry = records_.find(document);
    return entry == records_.end() ? nullptr : entry->second.get();
}

DocumentRecord* Application::findOrMake(KtApDocument* document) {
    DocumentRecord* found = find(document);
    if (found != nullptr || document->database() == nullptr) {
        return found;
    }
    auto made = std::make_unique<DocumentRecord>();
    made->document = document;
    return records_.emplace(document, std::move(made)).first->second.get();
}

Blocks* Application::blocksOf(KtApDocument* document) {
    DocumentRecord* record = findOrMake(document);
    if (record != nullptr && record->blocks == nullptr) {
        auto made = std::make_unique<Blocks>(record->timers);
        if (made->attachDocument(document) == Orbx::eOk) {
            record->blocks = std::move(made);
        }
    }
    return record == nullptr ? nullptr : record->blocks.get();
}

bool Application::attach(KtApDocument* document, const IdArray& ids, KtRxCallback callback) {
    Blocks* blocks = blocksOf(document);
    if (blocks == nullptr || ids.isEmpty() || callback == nullptr) {
        return false;
    }
    if (!blocks->isEnabled()) {
        std::ignore = blocks->scanBlockTable(); // what it cannot scan is scanned later
        blocks->setPendingChanges(false);
        if (blocks->setEnabled(true) != Orbx::eOk) {
            return false;
        }
    }
    return blocks->attachBlockReferenceMonitor(callback, ids) == Orbx::eOk;
}

bool Application::update(KtApDocument* document, bool force, bool notify) {
    Blocks* blocks = blocksOf(document);
    if (blocks == nullptr) {
        return false;
    }
    blocks->update(force, notify);
    return true;
}

bool Application::attachTimer(KtApDocument* document, KtRxCallback callback) {
    DocumentRecord* record = findOrMake(document);
    if (record == nullptr || callback == nullptr) {
        return false;
    }
    if (record->clients == nullptr) {
        record->clients = std::make_unique<ClientTimer>(record->timers);
    }
    record->clients->add(callback);
    return true;
}

void Application::documentToBeDestroyed(KtApDocument* document) {
    records_.erase(document);
}

void Application::documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode /*previous*/,
                                          KtAp::DocLockMode /*current*/, KtAp::DocLockMode /*overall*/,
                                          const wchar_t* globalCommandName) {
    if (document == nullptr || globalCommandName == nullptr || globalCommandName[0] != L'#' ||
        ktDocManagerPtr()->curDocument() != document || find(document) == nullptr) {
        return;
    }
    const CWinThread* thread = AfxGetThread();
    if (thread == nullptr || thread->m_pMainWnd == nullptr) {
        return;
    }
    if (message_ == 0) {
        message_ = RegisterWindowMessageW(messageName_);
    }
    PostMessageW(thread->m_pMainWnd->m_hWnd, message_, reinterpret_cast<WPARAM>(document), 0);
}

bool Application::filter(MSG* message) {
    if (message->message != current->message_) {
        return false;
    }
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a message has no other place for a pointer
    current->check(reinterpret_cast<KtApDocument*>(message->wParam));
    return true;
}

void Application::check(KtApDocument* document) {
    if (document == nullptr || document != ktDocManagerPtr()->curDocument() || !document->isQuiescent()) {
        return;
    }
    DocumentRecord* record = find(document);
    if (record == nullptr || !isIdle(record->document)) {
        return;
    }
    for (auto next = record->timers.begin(); next != record->timers.end();) {
        Timer* timer = *next++;
        timer->check();
    }
}

bool Application::isIdle(KtApDocument* document) {
    if (!document->isQuiescent()) {
        return false;
    }
    const KtAp::DocLockMode mode = document->lockMode(false);
    return (mode == KtAp::kNotLocked || mode == KtAp::kNone) && !ktedCommandActive() &&
           ktDocManagerPtr()->pendingInputCount(document) == 0 && GetInputState() == 0;
}

} // namespace bench::literal
