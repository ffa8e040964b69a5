#include "kthost/documents/DocumentManager.h"

#include <KtRxModule.h>

#include "kthost/audit/Trace.h"
#include "kthost/documents/DocumentIterator.h"
#include "kthost/runtime/CallbackLedger.h"
#include "kthost/runtime/Faults.h"
#include "kthost/runtime/ModuleCode.h"
#include "kthost/runtime/ModuleLoader.h"
#include "kthost/runtime/RuntimeClass.h"
#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <utility>

KTHOST_RUNTIME_CLASS(KtApDocManager, KtRxObject)

namespace kthost {

namespace {

DocumentManager* currentManager = nullptr;

HostResult refuseNow(const Document& document, const char* what) {
    return refuseWhileModuleCodeRuns(toUtf8(document.name()) + " " + what);
}

void tellModules(std::uint32_t message) {
    if (ModuleLoader* modules = ModuleLoader::current()) {
        modules->sendToAll(message);
    }
}

} // namespace

DocumentManager::DocumentManager() {
    currentManager = this;
}

DocumentManager::~DocumentManager() {
    closeAll();
    currentManager = nullptr;
}

DocumentManager* DocumentManager::current() {
    return currentManager;
}

KtApDocumentIterator* DocumentManager::newDocumentIterator() {
    if (Faults::instance().next(HostCall::documentIterator) != Orbx::eOk) {
        return nullptr;
    }
    return new DocumentIterator(*this);
}

void DocumentManager::addReactor(KtApDocManagerReactor* reactor) {
    const bool added = reactor != nullptr && reactors_.add(reactor, originOfObject(reactor));
    if (tracing()) {
        TraceLine("document manager reactor add").field("done", added);
    }
}

void DocumentManager::removeReactor(KtApDocManagerReactor* reactor) {
    const bool removed = reactor != nullptr && reactors_.remove(reactor);
    if (tracing()) {
        TraceLine("document manager reactor remove").field("done", removed);
    }
}

int DocumentManager::pendingInputCount(KtApDocument* document) const {
    const auto found = std::ranges::find(open_, document);
    return found == open_.end() ? 0 : (*found)->pendingInputCount();
}

template <typename Notification>
void DocumentManager::notify(const char* event, const KtApDocument* document, Notification&& notification) {
    if (tracing()) {
        TraceLine(event).field("document", document == nullptr ? nullptr : document->name());
    }
    const ModuleCodeScope scope(ModuleCodeKind::notification, event);
    reactors_.visitUntil([&notification](KtApDocManagerReactor* reactor) {
        notification(*reactor);
        return false;
    });
}

Document& DocumentManager::create(std::wstring name, std::unique_ptr<Database> database) {
    Document& document = prepare(std::move(name), std::move(database));
    announce(document);
    setCurrent(&document);
    return document;
}

Document& DocumentManager::prepare(std::wstring name, std::unique_ptr<Database> database) {
    owned_.push_back(std::make_unique<Document>(std::move(name), std::move(database)));
    return *owned_.back();
}

void DocumentManager::announce(Document& document) {
    open_.push_back(&document);
    notify("documentCreated", &document, [&document](auto& reactor) { reactor.documentCreated(&document); });
    tellModules(KtRx::kDrawingOpened);
}

HostResult DocumentManager::cancelCreation(Document& document) {
    if (HostResult refused = refuseNow(document, "cannot be given up"); !refused) {
        return refused;
    }
    if (std::ranges::find(open_, &document) != open_.end()) {
        tellModules(KtRx::kDrawingClosing);
    }
    notify("documentCreateCancelled", &document,
           [&document](auto& reactor) { reactor.documentCreateCancelled(&document); });
    withdraw(document);
    destroy(document);
    return {};
}

HostResult DocumentManager::close(Document& document) {
    if (HostResult refused = refuseNow(document, "cannot be closed"); !refused) {
        return refused;
    }
    end(document);
    return {};
}

void DocumentManager::closeAll() {
    while (!open_.empty()) {
        end(*open_.back());
    }
    owned_.clear(); // what was prepared and never announced
}

void DocumentManager::end(Document& document) {
    const std::wstring name = document.name();
    tellModules(KtRx::kDrawingClosing);
    notify("documentToBeDestroyed", &document,
           [&document](auto& reactor) { reactor.documentToBeDestroyed(&document); });
    withdraw(document);
    destroy(document);
    notify("documentDestroyed", nullptr, [&name](auto& reactor) { reactor.documentDestroyed(name.c_str()); });
}

// From here on nobody finds the document any more.
void DocumentManager::withdraw(const Document& document) {
    std::erase(open_, &document);
    std::erase(recency_, &document);
    if (current_ == &document) {
        setCurrent(recency_.empty() ? nullptr : recency_.back());
    }
}

void DocumentManager::destroy(Document& document) {
    if (onDestroying) {
        onDestroying(document);
    }
    if (CallbackLedger* ledger = CallbackLedger::current()) {
        ledger->forget(&document);
    }
    std::erase_if(owned_, [&document](const auto& owned) { return owned.get() == &document; });
}

void DocumentManager::setCurrent(Document* document) {
    if (document == current_) {
        return;
    }
    current_ = document;
    if (document != nullptr) {
        std::erase(recency_, document);
        recency_.push_back(document);
    }
    notify("documentBecameCurrent", document,
           [document](auto& reactor) { reactor.documentBecameCurrent(document); });
}

Document* DocumentManager::find(std::wstring_view name) const {
    const auto found =
        std::ranges::find_if(open_, [name](const Document* document) { return document->name() == name; });
    return found == open_.end() ? nullptr : *found;
}

Document* DocumentManager::documentOf(const KtDbDatabase* database) const {
    const auto found = std::ranges::find_if(open_, [database](const Document* document) {
        return database != nullptr && document->database() == database;
    });
    return found == open_.end() ? nullptr : *found;
}

void DocumentManager::lock(Document& document, KtAp::DocLockMode mode, const std::wstring& name,
                           LockContext context) {
    std::vector<Document::Lock> locks = document.locks_;
    locks.push_back({mode, context});
    changeLocks(document, std::move(locks), name);
}

bool DocumentManager::unlock(Document& document, const std::wstring& name) {
    std::vector<Document::Lock> locks = document.locks_;
    if (locks.empty()) {
        return false;
    }
    locks.pop_back();
    changeLocks(document, std::move(locks), name);
    return true;
}

void DocumentManager::changeLocks(Document& document, std::vector<Document::Lock> locks,
                                  const std::wstring& name) {
    const KtAp::DocLockMode previous = document.lockMode();
    const KtAp::DocLockMode next = Document::strongest(locks, false);
    const KtAp::DocLockMode overall = Document::strongest(locks, true);
    if (tracing()) {
        TraceLine("lock mode")
            .field("document", document.name())
            .field("previous", previous)
            .field("current", next)
            .field("overall", overall)
            .field("command", name);
    }
    notify("documentLockModeWillChange", &document, [&](auto& reactor) {
        reactor.documentLockModeWillChange(&document, previous, next, overall, name.c_str());
    });
    document.locks_ = std::move(locks);
    notify("documentLockModeChanged", &document, [&](auto& reactor) {
        reactor.documentLockModeChanged(&document, previous, next, overall, name.c_str());
    });
}

} // namespace kthost

KtApDocManager* ktDocManagerPtr() {
    const bool missing = kthost::Faults::instance().next(kthost::HostCall::documentManager) != Orbx::eOk;
    return missing ? nullptr : kthost::DocumentManager::current();
}
