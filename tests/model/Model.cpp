#include "tests/model/Model.h"

#include "tests/model/Statuses.h"
#include "tests/model/Unnoticed.h"

#include <KtApDocManager.h>

#include <memory>

namespace ktmodel {

Model::Model() {
    const Unnoticed unnoticed;
    ktDocManagerPtr()->addReactor(this);
    const std::unique_ptr<KtApDocumentIterator> open(ktDocManagerPtr()->newDocumentIterator());
    for (; !open->done(); open->step()) {
        documentCreated(open->document());
    }
}

Model::~Model() {
    const Unnoticed unnoticed;
    ktDocManagerPtr()->removeReactor(this);
    documents_.clear();
}

void Model::documentCreated(KtApDocument* document) {
    const Unnoticed unnoticed;
    names_[document] = document->name();
    static_cast<void>(findOrMake(document)); // none is made for a document without a drawing
}

void Model::documentToBeDestroyed(KtApDocument* document) {
    const Unnoticed unnoticed;
    documents_.erase(document);
}

void Model::documentCreateCancelled(KtApDocument* document) {
    const Unnoticed unnoticed;
    documents_.erase(document);
}

/// The end of a command in the current document asks for an idle check.
void Model::documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode /*previous*/,
                                    KtAp::DocLockMode /*current*/, KtAp::DocLockMode /*overall*/,
                                    const wchar_t* globalCommandName) {
    const Unnoticed unnoticed;
    const bool ends = globalCommandName != nullptr && globalCommandName[0] == L'#';
    if (ends && ktDocManagerPtr()->curDocument() == document && find(document) != nullptr) {
        posted_.push_back(document);
    }
}

DocumentModel* Model::find(KtApDocument* document) const {
    const auto entry = documents_.find(document);
    return entry == documents_.end() ? nullptr : entry->second.get();
}

DocumentModel* Model::findOrMake(KtApDocument* document) {
    if (DocumentModel* known = find(document)) {
        return known;
    }
    if (document == nullptr || document->database() == nullptr) {
        return nullptr;
    }
    documents_[document] = std::make_unique<DocumentModel>(*document->database(), timers_);
    return documents_[document].get();
}

BlocksModel* Model::reachBlocks(KtApDocument* document) {
    DocumentModel* record = findOrMake(document);
    return record == nullptr ? nullptr : record->blocks();
}

bool Model::attachTimer(KtApDocument* document, CallbackNumber callback, std::uint32_t interval,
                        bool attaching) {
    const Unnoticed unnoticed;
    DocumentModel* record = findOrMake(document);
    if (record == nullptr) {
        return false;
    }
    record->attachIdle(callback, interval, attaching);
    return true;
}

/// What the first client's scan finds is not reported to it.
bool Model::attach(KtApDocument* document, const KtArray<KtDbObjectId>& ids, CallbackNumber callback) {
    const Unnoticed unnoticed;
    BlocksModel* blocks = ids.isEmpty() ? nullptr : reachBlocks(document);
    if (blocks == nullptr) {
        return false;
    }
    if (!blocks->isEnabled()) {
        blocks->scan();
        blocks->setPendingChanges(false);
        if (blocks->setEnabled(true) != kDone) {
            return false;
        }
    }
    blocks->addCallback(ids, callback);
    return true;
}

void Model::detach(KtApDocument* document, CallbackNumber callback) {
    const Unnoticed unnoticed;
    DocumentModel* record = find(document);
    BlocksModel* blocks = record == nullptr ? nullptr : record->blocks();
    if (blocks == nullptr) {
        return;
    }
    blocks->removeCallback(callback);
    if (!blocks->hasCallbacks()) {
        static_cast<void>(blocks->setEnabled(false)); // the caller is not told
    }
}

bool Model::update(KtApDocument* document, bool force, bool notify) {
    const Unnoticed unnoticed;
    BlocksModel* blocks = reachBlocks(document);
    if (blocks == nullptr) {
        return false;
    }
    if (blocks->scanIfNeeded(force) && notify) {
        callBlockClients(*blocks, [] {});
    }
    return true;
}

bool Model::queryTables(KtApDocument* document) {
    const Unnoticed unnoticed;
    return findOrMake(document) != nullptr;
}

} // namespace ktmodel
