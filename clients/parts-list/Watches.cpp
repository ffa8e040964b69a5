#include "Watches.h"

#include <KtApDocManager.h>

namespace parts {

Watches::Watches() {
    ktDocManagerPtr()->addReactor(this);
}

Watches::~Watches() {
    if (KtApDocManager* documents = ktDocManagerPtr(); documents != nullptr) {
        documents->removeReactor(this);
    }
    for (const auto& [document, watch] : watches_) {
        watch->stopAll();
    }
}

DocumentWatch& Watches::of(KtApDocument& document) {
    std::unique_ptr<DocumentWatch>& watch = watches_[&document];
    if (!watch) {
        watch = std::make_unique<DocumentWatch>(document);
    }
    return *watch;
}

void Watches::documentToBeDestroyed(KtApDocument* document) {
    const auto found = watches_.find(document);
    if (found != watches_.end()) {
        found->second->stopWithDocument();
        watches_.erase(found);
    }
}

} // namespace parts
